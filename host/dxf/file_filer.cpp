#include "dxf/file_filer.h"

#include <charconv>
#include <cstdint>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "dxf/access.h"
#include "dxf/group_values.h"
#include "kelhost/text.h"

namespace kelhost::dxf {

namespace {
// Wide text as UTF-8, without the general conversion for plain ASCII (the
// markers, most names and values).
std::string Utf8Of(const wchar_t* text, size_t length) {
  std::string out(length, '\0');
  for (size_t i = 0; i < length; ++i) {
    if (static_cast<std::uint32_t>(text[i]) >= 0x80) return ToUtf8(std::wstring(text, length));
    out[i] = static_cast<char>(text[i]);
  }
  return out;
}
}  // namespace

void FileWriter::subclass(const wchar_t* marker) { AppendGroupLine(100, Utf8Of(marker, std::wcslen(marker)), mText); }

void FileWriter::text(int code, std::wstring& v, const wchar_t* def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  AppendGroupLine(code, Utf8Of(v.data(), v.size()), mText);
}

namespace {
constexpr double kPi = 3.14159265358979323846;
bool IsAngle(int code) { return code >= 50 && code <= 58; }
// Conversions leave ulp-sized noise: 15 significant digits keep a file's
// "200" as 200 through a read and a write.
// An angle in radians too large to have a value in degrees (beyond about
// 3e306) is first reduced to one turn: it points the same way.
double Degrees(double radians) {
  const double degrees = radians * 180.0 / kPi;
  return std::isfinite(degrees) ? degrees : std::fmod(radians, 2 * kPi) * 180.0 / kPi;
}

double Clean(double v) {
  char buf[40];
  const std::to_chars_result r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, 14);
  double cleaned = v;
  std::from_chars(buf, r.ptr, cleaned);
  return cleaned;
}
}  // namespace

// MTEXT's rotation (50) is in degrees too, whatever the DXF reference
// says: that is what files hold (ezdxf and others write and read it so).
bool FileAnglesInDegrees(std::string_view) { return true; }

std::string DegreesToRadiansText(const std::string& degrees) {
  double d = 0;
  ParseReal(degrees, d);
  return FormatReal(d * kPi / 180.0);
}

void FileWriter::addReal(int code, double v) { AppendRealGroup(code, v, mText); }

void FileWriter::addInteger(int code, long v) {
  char buf[24];
  const std::to_chars_result r = std::to_chars(buf, buf + sizeof buf, v);
  AppendGroupLine(code, std::string_view(buf, static_cast<size_t>(r.ptr - buf)), mText);
}

void FileWriter::real(int code, double& v, double def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  addReal(code, mDegrees && IsAngle(code) ? Clean(Degrees(v)) : v);
}

void FileWriter::point(int code, AcGePoint3d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0 && v.z == 0) return;
  addReal(code, v.x);
  addReal(code + 10, v.y);
  addReal(code + 20, v.z);
}

void FileWriter::point2d(int code, AcGePoint2d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0) return;
  addReal(code, v.x);
  addReal(code + 10, v.y);
}

void FileWriter::vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == def.x && v.y == def.y && v.z == def.z) return;
  addReal(code, v.x);
  addReal(code + 10, v.y);
  addReal(code + 20, v.z);
}

void FileWriter::int16(int code, short& v, short def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  if (code == 66 && v == 1) mFollows = true;
  addInteger(code, v);
}

void FileWriter::int32(int code, std::int32_t& v, std::int32_t def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  addInteger(code, v);
}

void FileWriter::id(int code, AcDbObjectId& v, Presence p) {
  AcDbStub* stub = v;
  const bool live = db::IsLiveStub(stub) && !stub->erased;
  if (p == Presence::kUnlessDefault && !live) return;
  if (live) AppendHandleGroup(code, stub->handle, mText);
  else AppendGroupLine(code, "0", mText);
}

void FileWriter::record(int code, AcDbObjectId& v, AcDbObjectId, const wchar_t* def, Presence p, bool) {
  auto* rec = db::PeekAs<AcDbSymbolTableRecord>(v);
  const std::wstring* name = rec ? &Access::name(rec) : nullptr;
  if (p == Presence::kUnlessDefault && (name ? (*name == def || EqualNoCase(*name, def)) : true)) return;
  AppendGroupLine(code, name ? Utf8Of(name->data(), name->size()) : Utf8Of(def, std::wcslen(def)), mText);
}

void FileWriter::chain(resbuf*& data) {
  RawGroups groups;
  ChainToGroups(data, groups);
  AppendGroupLines(groups.data(), groups.data() + groups.size(), mText);
}

// ---------------------------------------------------------------- reader

namespace {

// One set of buffers, lent to one reader at a time (a reader made while
// another lives uses buffers of its own). Like the rest of the database
// layer, and the platform's, readers run on one thread.
struct SpareBuffers {
  FileReader::Buffers buffers;
  bool lent = false;
};
SpareBuffers gSpare;

// The records names were found as lately: a few dozen, each in a slot
// chosen by its table and name.
struct FoundRecord {
  AcDbObjectId table, record;
  std::wstring name;
};
FoundRecord gFound[64];

}  // namespace

FileReader::FileReader(AcDbDatabase* db, const Token* begin, const Token* end, const ResolveHandle& resolve,
                       bool anglesInDegrees)
    : ListReader(db, false) {
  if (!gSpare.lent) {
    gSpare.lent = true;
    mLent = &gSpare.buffers;
    std::swap(mBuffers, *mLent);
  }
  std::vector<resbuf>& nodes = mBuffers.nodes;
  // One node per group at most, and no more text than the groups' values
  // have bytes: neither moves once made, so nodes link to each other and
  // point at their text as they are made.
  nodes.clear();
  nodes.reserve(static_cast<size_t>(end - begin));
  size_t room = 0;
  for (const Token* t = begin; t != end; ++t) room += t->value.size() + 1;
  mBuffers.text.clear();
  mBuffers.text.reserve(room);
  if (!ConvertGroups(begin, end, resolve, *this)) fail(L"out of memory");
  // Degrees made radians as DegreesToRadiansText makes them (its text
  // reads back as the same double; a product too large for a double has no
  // text that reads, and becomes 0).
  if (anglesInDegrees && mAngles)
    for (resbuf& rb : nodes)
      if (IsAngle(rb.restype)) {
        const double r = rb.resval.rreal * kPi / 180.0;
        rb.resval.rreal = std::isfinite(r) ? r : 0.0;
      }
  swapBuffers(mBuffers.groups, mBuffers.used);
  setGroups(nodes.data(), nodes.size());
}

FileReader::~FileReader() {
  if (mBinary)
    for (resbuf& rb : mBuffers.nodes)
      if (FileResbufKind(rb.restype) == RbKind::kBinary) std::free(rb.resval.rbinary.buf);
  swapBuffers(mBuffers.groups, mBuffers.used);
  if (mLent) {
    std::swap(mBuffers, *mLent);
    gSpare.lent = false;
  }
}

resbuf* FileReader::newNode(int code) {
  std::vector<resbuf>& nodes = mBuffers.nodes;
  resbuf* previous = nodes.empty() ? nullptr : &nodes.back();
  resbuf& rb = nodes.emplace_back();
  std::memset(&rb, 0, sizeof rb);
  rb.restype = static_cast<short>(code);
  if (previous) previous->rbnext = &rb;
  if (IsAngle(code)) mAngles = true;
  return &rb;
}

bool FileReader::setText(resbuf* rb, std::string_view utf8) {
  std::wstring& text = mBuffers.text;
  const size_t at = text.size();
  text.resize(at + utf8.size() + 1);  // with the null that ends it
  wchar_t* out = &text[at];
  rb->resval.rstring = out;
  for (size_t i = 0; i < utf8.size(); ++i) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    if (c >= 0x80) {  // never more characters than bytes: still in the room made
      text.resize(at);
      text += FromUtf8(std::string(utf8));
      text += L'\0';
      return true;
    }
    out[i] = static_cast<wchar_t>(c);
  }
  out[utf8.size()] = L'\0';
  return true;
}

bool FileReader::setBinary(resbuf* rb, std::string_view hex) {
  mBinary = true;
  return HexToBinary(hex, rb);
}

AcDbObjectId FileReader::findRecord(AcDbObjectId table, const wchar_t* name) {
  std::size_t hash = reinterpret_cast<std::uintptr_t>(static_cast<AcDbStub*>(table)) / sizeof(AcDbStub);
  for (const wchar_t* c = name; *c; ++c) hash = hash * 31 + static_cast<std::size_t>(*c);
  FoundRecord& slot = gFound[hash % 64];
  // Still that table's record of exactly that name? Names are unique in a
  // table, so then it is the one the table would find.
  if (slot.table == table && slot.name == name) {
    AcDbStub* stub = slot.record;
    auto* record = db::IsLiveStub(stub) && !stub->erased ? AcDbSymbolTableRecord::cast(stub->object.get()) : nullptr;
    if (record && record->ownerId() == table && Access::name(record) == name) return slot.record;
  }
  const AcDbObjectId id = GroupFiler::findRecord(table, name);
  if (!id.isNull()) {
    slot.table = table;
    slot.record = id;
    slot.name = name;
  }
  return id;
}

}  // namespace kelhost::dxf
