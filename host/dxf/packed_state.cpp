#include "dxf/packed_state.h"

#include <cstring>
#include <cwchar>
#include <deque>
#include <string>
#include <unordered_map>

#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "ads/rbkind.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "dxf/list_filer.h"
#include "kelhost/resbuf_kinds.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

// What follows a group's code in the bytes.
enum Tag : std::uint8_t {
  kMarker,   // a subclass marker: its number in the marker table
  kNarrow,   // text of code points below 128: length, one byte each
  kWide,     // other text: length, then the wchar_t values
  kNoText,   // a string node without a string
  kReal,
  kPoint,    // three reals
  kShort,
  kLong,
  kInt64,
  kName,     // an object's id (an ads name's first word)
  kRecord,   // a symbol-table record by id
  kBinary,   // length, then the bytes
  kEmpty,    // a node without a value
  kXData,    // the groups end here; xdata nodes follow
};

// Subclass markers are the same few strings over and over: each is kept
// once, and a group names it by number. Markers come from string literals,
// so the literal's address finds its number without comparing text.
class MarkerTable {
 public:
  std::uint16_t number(const wchar_t* marker) {
    if (auto it = mByAddress.find(marker); it != mByAddress.end()) return it->second;
    std::uint16_t n;
    if (auto it = mByText.find(marker); it != mByText.end()) {
      n = it->second;
    } else {
      n = static_cast<std::uint16_t>(mTexts.size());
      mTexts.emplace_back(marker);
      mByText.emplace(mTexts.back(), n);
    }
    mByAddress.emplace(marker, n);
    return n;
  }
  const wchar_t* text(std::uint16_t n) const { return n < mTexts.size() ? mTexts[n].c_str() : nullptr; }

 private:
  std::deque<std::wstring> mTexts;  // stable addresses
  std::unordered_map<std::wstring, std::uint16_t> mByText;
  std::unordered_map<const wchar_t*, std::uint16_t> mByAddress;
};

MarkerTable& Markers() {
  static MarkerTable table;
  return table;
}

// ---------------------------------------------------------------- writing

class Bytes {
 public:
  explicit Bytes(std::vector<std::uint8_t>& out) : mOut(out) {}
  void byte(std::uint8_t b) { mOut.push_back(b); }
  template <class T>
  void raw(const T& v) {
    const auto* p = reinterpret_cast<const std::uint8_t*>(&v);
    mOut.insert(mOut.end(), p, p + sizeof(T));
  }
  void count(std::size_t n) {
    while (n >= 0x80) {
      byte(static_cast<std::uint8_t>(n | 0x80));
      n >>= 7;
    }
    byte(static_cast<std::uint8_t>(n));
  }
  void group(int code, Tag tag) {
    raw(static_cast<std::int16_t>(code));
    byte(tag);
  }
  template <class T>
  void value(int code, Tag tag, const T& v) {
    group(code, tag);
    raw(v);
  }
  void text(int code, const wchar_t* s) {
    if (!s) return group(code, kNoText);
    const std::size_t n = std::wcslen(s);
    bool narrow = true;
    for (std::size_t i = 0; i < n && narrow; ++i) narrow = static_cast<std::uint32_t>(s[i]) < 0x80;
    group(code, narrow ? kNarrow : kWide);
    count(n);
    if (narrow) {
      for (std::size_t i = 0; i < n; ++i) byte(static_cast<std::uint8_t>(s[i]));
    } else {
      const auto* p = reinterpret_cast<const std::uint8_t*>(s);
      mOut.insert(mOut.end(), p, p + n * sizeof(wchar_t));
    }
  }
  void point(int code, double x, double y, double z) {
    group(code, kPoint);
    raw(x);
    raw(y);
    raw(z);
  }
  void id(int code, Tag tag, AcDbObjectId v) { value(code, tag, static_cast<std::int64_t>(v.asOldId())); }
  // A node of a free-form chain (xrecord data, xdata), by what its type
  // code holds.
  void node(const resbuf* rb) {
    const int code = rb->restype;
    switch (ResbufKind(code)) {
      case RbKind::kReal: return value(code, kReal, rb->resval.rreal);
      case RbKind::kPoint: return point(code, rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
      case RbKind::kShort: return value(code, kShort, rb->resval.rint);
      case RbKind::kLong: return value(code, kLong, rb->resval.rlong);
      case RbKind::kInt64: return value(code, kInt64, rb->resval.mnInt64);
      case RbKind::kString: return text(code, rb->resval.rstring);
      case RbKind::kName: return value(code, kName, rb->resval.rlname[0]);
      case RbKind::kBinary: {
        const std::size_t n = rb->resval.rbinary.buf && rb->resval.rbinary.clen > 0
                                  ? static_cast<std::size_t>(rb->resval.rbinary.clen)
                                  : 0;
        group(code, kBinary);
        count(n);
        const auto* p = reinterpret_cast<const std::uint8_t*>(rb->resval.rbinary.buf);
        if (n) mOut.insert(mOut.end(), p, p + n);
        return;
      }
      default: return group(code, kEmpty);
    }
  }

 private:
  std::vector<std::uint8_t>& mOut;
};

// The writer mirrors ListWriter group for group (the same groups left out
// at their defaults), so that reading the bytes back is reading that list.
class PackWriter : public GroupFiler {
 public:
  PackWriter(AcDbDatabase* db, std::vector<std::uint8_t>& out) : GroupFiler(db), mBytes(out) {}
  bool reading() const override { return false; }
  bool keepsErased() const override { return true; }
  Bytes& bytes() { return mBytes; }

  void subclass(const wchar_t* marker) override {
    mBytes.group(100, kMarker);
    mBytes.raw(Markers().number(marker));
  }
  void text(int code, std::wstring& v, const wchar_t* def, Presence p) override {
    if (p == Presence::kUnlessDefault && v == def) return;
    mBytes.text(code, v.c_str());
  }
  void real(int code, double& v, double def, Presence p) override {
    if (p == Presence::kUnlessDefault && v == def) return;
    mBytes.value(code, kReal, v);
  }
  void point(int code, AcGePoint3d& v, Presence p) override {
    if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0 && v.z == 0) return;
    mBytes.point(code, v.x, v.y, v.z);
  }
  void point2d(int code, AcGePoint2d& v, Presence p) override {
    if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0) return;
    mBytes.point(code, v.x, v.y, 0.0);
  }
  void vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) override {
    if (p == Presence::kUnlessDefault && v.x == def.x && v.y == def.y && v.z == def.z) return;
    mBytes.point(code, v.x, v.y, v.z);
  }
  void int16(int code, short& v, short def, Presence p) override {
    if (p == Presence::kUnlessDefault && v == def) return;
    mBytes.value(code, kShort, v);
  }
  void int32(int code, std::int32_t& v, std::int32_t def, Presence p) override {
    if (p == Presence::kUnlessDefault && v == def) return;
    mBytes.value(code, kLong, static_cast<Adesk::Int32>(v));
  }
  void id(int code, AcDbObjectId& v, Presence p) override {
    if (p == Presence::kUnlessDefault && v.isNull()) return;
    mBytes.id(code, kName, v);
  }
  void record(int code, AcDbObjectId& v, AcDbObjectId, const wchar_t* def, Presence p, bool) override {
    auto* rec = db::PeekAs<AcDbSymbolTableRecord>(v);
    const ACHAR* name = def;
    if (rec) rec->getName(name);
    if (p == Presence::kUnlessDefault && (std::wcscmp(name, def) == 0 || EqualNoCase(name, def))) return;
    if (rec) mBytes.id(code, kRecord, v);
    else mBytes.text(code, def);
  }
  void chain(resbuf*& data) override {
    for (const resbuf* rb = data; rb; rb = rb->rbnext) mBytes.node(rb);
  }
  size_t beginRepeat(int, size_t count) override { return count; }
  void enterRecord(size_t) override {}
  void endRepeat() override {}

 private:
  Bytes mBytes;
};

// ---------------------------------------------------------------- reading

// A record reference reaches the reader as text: a mark and the id's 16
// hex digits, which no record name can be.
constexpr wchar_t kRecordMark = L'\x01';
constexpr std::size_t kRecordText = 17;

void RecordText(std::int64_t oldId, wchar_t* out) {
  out[0] = kRecordMark;
  auto v = static_cast<std::uint64_t>(oldId);
  for (int i = 16; i >= 1; --i, v >>= 4) out[i] = L"0123456789ABCDEF"[v & 15];
}

bool RecordFromText(const wchar_t* text, AcDbObjectId& id) {
  if (!text || text[0] != kRecordMark) return false;
  std::uint64_t v = 0;
  for (std::size_t i = 1; i < kRecordText; ++i) {
    const wchar_t c = text[i];
    const int digit = c >= L'0' && c <= L'9' ? c - L'0' : c >= L'A' && c <= L'F' ? c - L'A' + 10 : -1;
    if (digit < 0) return false;
    v = v << 4 | static_cast<std::uint64_t>(digit);
  }
  id.setFromOldId(static_cast<std::int64_t>(v));
  return true;
}

class PackedReader : public ListReader {
 public:
  PackedReader(AcDbDatabase* db, const std::vector<resbuf>& groups) : ListReader(db, false) {
    setGroups(groups.data(), groups.size());
  }

 protected:
  AcDbObjectId findRecord(AcDbObjectId table, const wchar_t* name) override {
    AcDbObjectId id;
    if (RecordFromText(name, id)) return id.isValid() ? id : AcDbObjectId::kNull;
    return ListReader::findRecord(table, name);
  }
};

// The bytes back as result-buffer nodes: the groups, then the xdata. Text
// lives in one pool that the nodes point into once it is complete.
class Unpacker {
 public:
  Unpacker(const std::uint8_t* data, std::size_t size) : mAt(data), mEnd(data + size) {
    groups.reserve(size / 8);  // a group takes at least 3 bytes, most take 11 or more
  }

  bool run(AcDbObjectId& owner, AcDbObjectId& xdict) {
    std::int64_t o = 0, x = 0;
    if (!raw(o) || !raw(x)) return false;
    owner.setFromOldId(o);
    xdict.setFromOldId(x);
    std::vector<resbuf>* into = &groups;
    while (mAt < mEnd) {
      std::int16_t code;
      std::uint8_t tag;
      if (!raw(code) || !raw(tag)) return false;
      if (tag == kXData) {
        into = &xdata;
        continue;
      }
      resbuf rb{};
      rb.restype = code;
      if (!value(static_cast<Tag>(tag), rb, into == &groups ? groups.size() : kInXData + xdata.size())) return false;
      into->push_back(rb);
    }
    for (const auto& [node, offset] : mTexts) {
      resbuf& rb = node >= kInXData ? xdata[node - kInXData] : groups[node];
      rb.resval.rstring = mPool.data() + offset;
    }
    for (std::size_t i = 0; i + 1 < xdata.size(); ++i) xdata[i].rbnext = &xdata[i + 1];
    return true;
  }

  std::vector<resbuf> groups, xdata;

 private:
  static constexpr std::size_t kInXData = std::size_t{1} << 62;

  template <class T>
  bool raw(T& v) {
    if (static_cast<std::size_t>(mEnd - mAt) < sizeof(T)) return false;
    std::memcpy(&v, mAt, sizeof(T));
    mAt += sizeof(T);
    return true;
  }
  bool count(std::size_t& n) {
    n = 0;
    for (int shift = 0; shift < 64; shift += 7) {
      std::uint8_t b;
      if (!raw(b)) return false;
      n |= static_cast<std::size_t>(b & 0x7F) << shift;
      if (!(b & 0x80)) return true;
    }
    return false;
  }
  // Text is added to the pool (with its terminator) and its node noted.
  std::size_t poolText(std::size_t node, std::size_t length) {
    const std::size_t offset = mPool.size();
    mPool.resize(offset + length + 1, L'\0');
    mTexts.emplace_back(node, offset);
    return offset;
  }

  bool value(Tag tag, resbuf& rb, std::size_t node) {
    switch (tag) {
      case kMarker: {
        std::uint16_t n;
        if (!raw(n) || !Markers().text(n)) return false;
        rb.resval.rstring = const_cast<wchar_t*>(Markers().text(n));
        return true;
      }
      case kNarrow:
      case kWide: {
        std::size_t n;
        const std::size_t width = tag == kNarrow ? 1 : sizeof(wchar_t);
        if (!count(n) || static_cast<std::size_t>(mEnd - mAt) / width < n) return false;
        const std::size_t offset = poolText(node, n);
        for (std::size_t i = 0; i < n; ++i) {
          if (tag == kNarrow) mPool[offset + i] = static_cast<wchar_t>(mAt[i]);
          else std::memcpy(&mPool[offset + i], mAt + i * width, width);
        }
        mAt += n * width;
        return true;
      }
      case kNoText: rb.resval.rstring = nullptr; return true;
      case kReal: return raw(rb.resval.rreal);
      case kPoint: return raw(rb.resval.rpoint[0]) && raw(rb.resval.rpoint[1]) && raw(rb.resval.rpoint[2]);
      case kShort: return raw(rb.resval.rint);
      case kLong: return raw(rb.resval.rlong);
      case kInt64: return raw(rb.resval.mnInt64);
      case kName: return raw(rb.resval.rlname[0]);
      case kRecord: {
        std::int64_t id;
        if (!raw(id)) return false;
        RecordText(id, &mPool[poolText(node, kRecordText)]);
        return true;
      }
      case kBinary: {
        std::size_t n;
        if (!count(n) || static_cast<std::size_t>(mEnd - mAt) < n) return false;
        rb.resval.rbinary.clen = static_cast<short>(n);
        rb.resval.rbinary.buf = n ? reinterpret_cast<char*>(const_cast<std::uint8_t*>(mAt)) : nullptr;
        mAt += n;
        return true;
      }
      case kEmpty: return true;
      default: return false;
    }
  }

  const std::uint8_t* mAt;
  const std::uint8_t* mEnd;
  std::vector<wchar_t> mPool;
  std::vector<std::pair<std::size_t, std::size_t>> mTexts;  // node, offset in the pool
};

}  // namespace

bool PackState(const AcDbObject* object, std::vector<std::uint8_t>& out) {
  out.clear();
  if (!object) return false;
  auto* obj = const_cast<AcDbObject*>(object);  // a writer only reads the object
  PackWriter w(obj->database(), out);
  w.bytes().raw(static_cast<std::int64_t>(obj->ownerId().asOldId()));
  w.bytes().raw(static_cast<std::int64_t>(obj->extensionDictionary().asOldId()));
  Access::fields(obj, w);
  if (w.failed()) return false;
  if (const resbuf* xdata = Access::xdata(obj)) {
    w.bytes().group(-3, kXData);
    for (const resbuf* rb = xdata; rb; rb = rb->rbnext) w.bytes().node(rb);
  }
  return true;
}

bool UnpackState(AcDbObject* object, const std::uint8_t* data, std::size_t size) {
  if (!object || !data) return false;
  Unpacker unpacker(data, size);
  AcDbObjectId owner, xdict;
  if (!unpacker.run(owner, xdict)) return false;
  PackedReader reader(object->database(), unpacker.groups);
  Access::fields(object, reader);
  if (reader.failed()) return false;
  Access::setOwner(object, owner);
  Access::setExtensionDictionary(object, xdict);
  resbuf* xdata = unpacker.xdata.empty() ? nullptr : rb::CopyChain(unpacker.xdata.data());
  if (!unpacker.xdata.empty() && !xdata) return false;
  acutRelRb(Access::xdata(object));
  Access::xdata(object) = xdata;
  return true;
}

}  // namespace kelhost::dxf
