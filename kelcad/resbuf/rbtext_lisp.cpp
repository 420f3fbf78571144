// The AutoLISP form of result-buffer chains (RbToStrEx): AutoLISP source
// text, or one labelled line per node when the base library's list-format
// switch is on. The spacing and the odd closing parenthesis of longs are
// what the family's tools and logs expect; keep them.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

#include "kelbase/debug.h"
#include "kelbase/tolerance.h"
#include "kelcad/resbuf/rbchain.h"
#include "kelcad/resbuf/rbtext.h"

namespace KEL {
namespace {
// Characters of the output buffer, the terminator included.
constexpr size_t kCapacity = 163840;

// The module-owned output buffer. Overrunning it is a fatal error: a cut
// text would be read back as a different list.
class OutputBuffer {
 public:
  static OutputBuffer& Cleared() {
    static OutputBuffer buffer;
    buffer.mText.clear();
    return buffer;
  }
  bool empty() const { return mText.empty(); }
  const std::wstring& text() const { return mText; }
  void Append(const wchar_t* part) {
    const size_t length = std::wcslen(part);
    if (mText.size() + length > kCapacity - 1) Overrun();
    mText += part;
  }
  // Wraps the whole text in one more pair of parentheses.
  void Wrap() {
    if (mText.size() + 2 > kCapacity - 1) Overrun();
    mText.insert(mText.begin(), L'(');
    mText += L')';
  }

 private:
  OutputBuffer() { mText.reserve(kCapacity); }
  [[noreturn]] static void Overrun() {
    std::fprintf(stderr, "KELCAD: RbToStrEx: the text of the chain does not fit in its buffer of %zu characters\n",
                 kCapacity);
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE);
  }
  std::wstring mText;
};

// A real in the short form: 0.0 (or -0.0) below the tolerance, otherwise
// five decimals without trailing zeros, keeping one after the point.
CString ShortReal(double value, double zero) {
  CString text;
  if (zero > std::fabs(value)) {
    text.Format(L"%.1f", value);
    return text;
  }
  text.Format(L"%.5f", value);
  if (text.Find(L'.') < 0) return text;  // inf, nan
  int end = text.GetLength();
  while (text[end - 1] == L'0') --end;
  if (text[end - 1] == L'.') ++end;
  return text.Left(end);
}

// The name's first word; the platform's long is 32 bits.
unsigned long FirstWord(const resbuf* rb) { return static_cast<unsigned long>(rb->resval.rlname[0]) & 0xFFFFFFFFul; }

// How one node's element joins the text before it.
enum class Join {
  kLine,     // a labelled line: appended as it stands
  kSpaced,   // one blank in front unless the text is still empty
  kClosing,  // the list end: no blank
};

struct Element {
  CString text;
  Join join = Join::kSpaced;
};

class ChainWriter {
 public:
  ChainWriter(bool labelled, double zero) : mLabelled(labelled), mZero(zero), mOut(OutputBuffer::Cleared()) {}

  void Write(const resbuf* rb) {
    if (rb->restype == RTDOTE) {
      mOut.Append(L" . ");
      Add(Element{L")", Join::kSpaced});
      return;
    }
    Add(ElementOf(rb));
  }

  CString Finish() {
    if (!mLabelled) {
      if (mInXdata) mOut.Append(L")");  // closes the "(-3" group
      if (mAnyPair) mOut.Wrap();
    }
    return CString(mOut.text());
  }

 private:
  void Add(const Element& element) {
    if (element.join == Join::kSpaced && !mOut.empty()) mOut.Append(L" ");
    mOut.Append(element.text);
  }

  Element Line(const CString& text) const { return Element{text, mLabelled ? Join::kLine : Join::kSpaced}; }
  CString R(double value) const { return ShortReal(value, mZero); }

  Element ElementOf(const resbuf* rb) {
    const int code = rb->restype;
    const int kind = GetDXFCodeDataType(code);
    // A value of the kind itself (an AutoLISP atom) or a group-code pair.
    const bool atom = code == kind;
    const ads_u_val& v = rb->resval;
    CString text;
    switch (kind) {
      case RTREAL:
        if (mLabelled) text.Format(L"    RTREAL[%4d] : %s\n", code, R(v.rreal).GetString());
        else if (atom) text = R(v.rreal);
        else text.Format(L"(%d . %s)", code, R(v.rreal).GetString());
        break;
      case RTPOINT: {
        const CString x = R(v.rpoint[X]), y = R(v.rpoint[Y]);
        if (mLabelled) text.Format(L"   RTPOINT[%4d] : %s,%s\n", code, x.GetString(), y.GetString());
        else if (atom) text.Format(L"(%s %s)", x.GetString(), y.GetString());
        else text.Format(L"(%d %s %s)", code, x.GetString(), y.GetString());
        break;
      }
      case RTSHORT:
        if (mLabelled) text.Format(L"   RTSHORT[%4d] : %d\n", code, static_cast<int>(v.rint));
        else if (atom) text.Format(L"%d", static_cast<int>(v.rint));
        else text.Format(L"(%d . %d)", code, static_cast<int>(v.rint));
        break;
      case RTSTR: text = StringElement(code, atom, v.rstring); break;
      case RTENAME:
        if (mLabelled) text.Format(L"   RTENAME[%4d] : <图元名: %-lx>\n", code, FirstWord(rb));
        else if (atom) text.Format(L"<图元名: %-lx>", FirstWord(rb));
        else text.Format(L"(%d . <图元名: %-lx>)", code, FirstWord(rb));
        break;
      case RTPICKS:
        if (mLabelled) text.Format(L"   RTPICKS[%4d] : <选择集: %-lx>\n", code, FirstWord(rb));
        else if (atom) text.Format(L"<选择集: %-lx>", FirstWord(rb));
        else text.Format(L"(%d . <选择集: %-lx>)", code, FirstWord(rb));
        break;
      case RT3DPOINT: {
        const CString x = R(v.rpoint[X]), y = R(v.rpoint[Y]), z = R(v.rpoint[Z]);
        if (mLabelled) text.Format(L" RT3DPOINT[%4d] : %s,%s,%s\n", code, x.GetString(), y.GetString(), z.GetString());
        else if (atom) text.Format(L"(%s %s %s)", x.GetString(), y.GetString(), z.GetString());
        else text.Format(L"(%d %s %s %s)", code, x.GetString(), y.GetString(), z.GetString());
        break;
      }
      case RTLONG:
        if (mLabelled) text.Format(L"    RTLONG[%4d] : %ld\n", code, static_cast<long>(v.rlong));
        else if (atom) text.Format(L"%ld)", static_cast<long>(v.rlong));
        else text.Format(L"(%d . %ld)", code, static_cast<long>(v.rlong));
        break;
      // List marks, nil and T join by the AutoLISP rule in both forms.
      case RTLB: return Element{mLabelled ? L"(\n" : L"(", Join::kSpaced};
      case RTLE: return Element{mLabelled ? L")\n" : L")", Join::kClosing};
      case RTNIL: return Element{L"nil", Join::kSpaced};
      case RTT: return Element{L"T", Join::kSpaced};
      default:
        if (mLabelled) text.Format(L"(未知的类型  ：  %d),肯请告知:-)\n", kind);
        else text.Format(L"(未知的类型  ：  %d)", kind);
        return Line(text);
    }
    if (!mLabelled && !atom) mAnyPair = true;
    return Line(text);
  }

  // The first application name (group 1001) opens the xdata: in the
  // AutoLISP form it is written as "(-3 (1001 . "APP")", and Finish closes
  // the group. The labelled form shows no xdata marker.
  CString StringElement(int code, bool atom, const wchar_t* string) {
    const wchar_t* prefix = nullptr;
    if (code == 1001 && !mInXdata) {
      mInXdata = true;
      prefix = mLabelled ? L"             -3 : ;;;下面为扩展数据\n" : L"(-3";
    }
    CString text;
    if (mLabelled) text.Format(L"     RTSTR[%4d] : \"%s\"\n", code, string);
    else if (atom) text.Format(L"\"%s\"", string);
    else if (prefix != nullptr) text.Format(L"%s (%d . \"%s\")", prefix, code, string);
    else text.Format(L"(%d . \"%s\")", code, string);
    return text;
  }

  const bool mLabelled;
  const double mZero;
  OutputBuffer& mOut;
  bool mInXdata = false;
  bool mAnyPair = false;
};
}  // namespace

CString RbToStrEx(const resbuf* rb) {
  if (rb == nullptr) return CString();
  ChainWriter writer(GetDSFormatLspList(), ZERO());
  for (; rb != nullptr; rb = rb->rbnext) writer.Write(rb);
  return writer.Finish();
}
}  // namespace KEL
