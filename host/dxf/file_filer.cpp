#include "dxf/file_filer.h"

#include <cstdio>
#include <cstdlib>

#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "kelhost/text.h"

namespace kelhost::dxf {

void FileWriter::subclass(const wchar_t* marker) { mOut.push_back({100, ToUtf8(marker)}); }

void FileWriter::text(int code, std::wstring& v, const wchar_t* def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  mOut.push_back({code, ToUtf8(v)});
}

namespace {
constexpr double kPi = 3.14159265358979323846;
bool IsAngle(int code) { return code >= 50 && code <= 58; }
// Conversions leave ulp-sized noise: 15 significant digits keep a file's
// "200" as 200 through a read and a write.
double Clean(double v) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.15g", v);
  return std::strtod(buf, nullptr);
}
}  // namespace

bool FileAnglesInDegrees(const std::wstring& type) { return !EqualNoCase(type, L"MTEXT"); }

std::string DegreesToRadiansText(const std::string& degrees) {
  double d = 0;
  ParseReal(degrees, d);
  return FormatReal(d * kPi / 180.0);
}

void FileWriter::real(int code, double& v, double def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  mOut.push_back({code, FormatReal(mDegrees && IsAngle(code) ? Clean(v * 180.0 / kPi) : v)});
}

void FileWriter::point(int code, AcGePoint3d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0 && v.z == 0) return;
  mOut.push_back({code, FormatReal(v.x)});
  mOut.push_back({code + 10, FormatReal(v.y)});
  mOut.push_back({code + 20, FormatReal(v.z)});
}

void FileWriter::point2d(int code, AcGePoint2d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0) return;
  mOut.push_back({code, FormatReal(v.x)});
  mOut.push_back({code + 10, FormatReal(v.y)});
}

void FileWriter::vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == def.x && v.y == def.y && v.z == def.z) return;
  mOut.push_back({code, FormatReal(v.x)});
  mOut.push_back({code + 10, FormatReal(v.y)});
  mOut.push_back({code + 20, FormatReal(v.z)});
}

void FileWriter::int16(int code, short& v, short def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  mOut.push_back({code, std::to_string(v)});
}

void FileWriter::int32(int code, std::int32_t& v, std::int32_t def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  mOut.push_back({code, std::to_string(v)});
}

void FileWriter::id(int code, AcDbObjectId& v, Presence p) {
  AcDbStub* stub = v;
  const bool live = db::IsLiveStub(stub) && !stub->erased;
  if (p == Presence::kUnlessDefault && !live) return;
  mOut.push_back({code, live ? HandleText(stub->handle) : "0"});
}

void FileWriter::record(int code, AcDbObjectId& v, AcDbObjectId, const wchar_t* def, Presence p, bool) {
  auto* rec = db::PeekAs<AcDbSymbolTableRecord>(v);
  std::wstring name = rec ? rec->getName() : def;
  if (p == Presence::kUnlessDefault && EqualNoCase(name, def)) return;
  mOut.push_back({code, ToUtf8(name)});
}

void FileWriter::chain(resbuf*& data) { ChainToGroups(data, mOut); }

}  // namespace kelhost::dxf
