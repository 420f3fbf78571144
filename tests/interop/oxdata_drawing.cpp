// A drawing holding the object data store's values, for the round trip
// through a DXF file: "write OUT.dxf" makes it through OxData and the
// drawing records and saves it; "check IN.dxf" reads a drawing back and
// exits 0 when every value reads back the same (each mismatch printed).
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "kelcad/kelcad.h"
#include "kelhost/drawing_files.h"
#include "kelhost/text.h"

namespace {

constexpr const wchar_t* kApp = L"KEL_OX";
constexpr const wchar_t* kSecondApp = L"KEL_B";
constexpr const wchar_t* kObjectPath = L"LVL1\\LVL2";
constexpr const wchar_t* kDrawingPath = L"KEL_DWG\\设置";
const double kPoint[3] = {1.0, 2.0, 3.0};

std::vector<AcDbObjectId> Lines(AcDbDatabase* db) {
  std::vector<AcDbObjectId> ids;
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db->modelSpaceId(), AcDb::kForRead) != Acad::eOk) return ids;
  ids = space->entityIds();
  space->close();
  return ids;
}

bool Write(const std::wstring& path) {
  AcDbDatabase db;
  acdbHostApplicationServices()->setWorkingDatabase(&db);
  AcDbBlockTableRecord* space = nullptr;
  if (acdbOpenObject(space, db.modelSpaceId(), AcDb::kForWrite) != Acad::eOk) return false;
  for (int i = 0; i < 2; ++i) {
    auto* line = new AcDbLine(AcGePoint3d(i, 0, 0), AcGePoint3d(i, 5, 0));
    AcDbObjectId id;
    space->appendAcDbEntity(id, line);
    line->close();
  }
  space->close();
  const std::vector<AcDbObjectId> lines = Lines(&db);
  OxData first(lines.at(0));
  bool ok = first.SetxData(kApp, 1000, L"墙体") && first.SetxData(kApp, 1070, 5, 2) &&
            first.SetxData(kApp, 1071, 100000L) && first.SetxData(kApp, 1040, 2.5) &&
            first.SetxData(kApp, 1010, kPoint) && first.SetxData(kSecondApp, 1000, L"b") &&
            first.SetxData(L"", 39, 1.25);
  ok = ok && first.SetxRecord(L"REC", 1, L"对象", 0, kObjectPath) && first.SetxRecord(L"REC", 70, 7, 0, kObjectPath) &&
       first.SetxRecord(L"REC", 40, 3.25, 1, kObjectPath) && first.SetxRecord(L"REC", 10, kPoint, 0, kObjectPath);
  OxData second(lines.at(1));
  ok = ok && second.SetxData(kApp, 1000, L"second", 1);
  ok = ok && OxData::SetDWGxRecord(kDrawingPath, L"参数", 1, L"图纸") &&
       OxData::SetDWGxRecord(kDrawingPath, L"参数", 90, 123456L) &&
       OxData::SetDWGxRecord(kDrawingPath, L"参数", 10, kPoint, 1);
  resbuf* chain = acutBuildList(1, L"fixed", 70, 2, RTNONE);
  ok = ok && KEL::SetXRecord(L"KELSET", L"REC1", chain) == 1;
  acutRelRb(chain);
  std::wstring error;
  ok = ok && kelhost::WriteDrawingFile(&db, path, error);
  if (!error.empty()) std::fprintf(stderr, "%s\n", kelhost::ToUtf8(error).c_str());
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return ok;
}

int failures = 0;

void Expect(bool condition, const char* what) {
  if (condition) return;
  std::printf("mismatch: %s\n", what);
  ++failures;
}

bool Same(const double* a, const double* b) { return a[0] == b[0] && a[1] == b[1] && a[2] == b[2]; }

bool Check(const std::wstring& path) {
  AcDbDatabase db;
  std::wstring error;
  if (!kelhost::ReadDrawingFile(&db, path, error)) {
    std::printf("cannot read: %s\n", kelhost::ToUtf8(error).c_str());
    return false;
  }
  acdbHostApplicationServices()->setWorkingDatabase(&db);
  const std::vector<AcDbObjectId> lines = Lines(&db);
  Expect(lines.size() == 2, "two lines");
  if (lines.size() != 2) return false;
  OxData first(lines[0]);
  CString text;
  int small = -1;
  long wide = -1;
  double real = -1;
  double point[3] = {0, 0, 0};
  Expect(first.GetxData(kApp, 1000, text) == 0 && text == L"墙体", "1000 of the first line");
  Expect(first.GetxData(kApp, 1070, small, 0) == 0 && small == 0, "zero-filled 1070");
  Expect(first.GetxData(kApp, 1070, small, 2) == 2 && small == 5, "1070 at index 2");
  Expect(first.GetxData(kApp, 1071, wide) == 0 && wide == 100000, "1071");
  Expect(first.GetxData(kApp, 1040, real) == 0 && real == 2.5, "1040");
  Expect(first.GetxData(kApp, 1010, point) == 0 && Same(point, kPoint), "1010");
  Expect(first.GetxData(kSecondApp, 1000, text) == 0 && text == L"b", "second application");
  Expect(first.GetxData(L"", 39, real) == 0 && real == 1.25, "thickness from the entity list");
  Expect(first.GetxRecord(L"REC", 1, text, 0, kObjectPath) == 0 && text == L"对象", "object record 1");
  Expect(first.GetxRecord(L"REC", 70, small, 0, kObjectPath) == 0 && small == 7, "object record 70");
  Expect(first.GetxRecord(L"REC", 40, real, 0, kObjectPath) == 0 && real == 0.0, "object record 40 zero");
  Expect(first.GetxRecord(L"REC", 40, real, 1, kObjectPath) == 1 && real == 3.25, "object record 40");
  Expect(first.GetxRecord(L"REC", 10, point, 0, kObjectPath) == 0 && Same(point, kPoint), "object record 10");
  OxData second(lines[1]);
  Expect(second.GetxData(kApp, 1000, text, 0) == 0 && text == L"", "second line, zero-filled string");
  Expect(second.GetxData(kApp, 1000, text, 1) == 1 && text == L"second", "second line");
  Expect(OxData::GetDWGxRecord(kDrawingPath, L"参数", 1, text) == 0 && text == L"图纸", "drawing record 1");
  Expect(OxData::GetDWGxRecord(kDrawingPath, L"参数", 90, wide) == 0 && wide == 123456, "drawing record 90");
  Expect(OxData::GetDWGxRecord(kDrawingPath, L"参数", 10, point, 1) == 1 && Same(point, kPoint),
         "drawing record 10");
  resbuf* fixed = nullptr;
  Expect(KEL::GetXRecord(L"KELSET", L"REC1", fixed) && fixed != nullptr && fixed->restype == 1 &&
             std::wcscmp(fixed->resval.rstring, L"fixed") == 0 && fixed->rbnext != nullptr &&
             fixed->rbnext->resval.rint == 2,
         "fixed record");
  acutRelRb(fixed);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  return failures == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || (std::strcmp(argv[1], "write") != 0 && std::strcmp(argv[1], "check") != 0)) {
    std::fprintf(stderr, "usage: oxdata_drawing write|check FILE.dxf\n");
    return 2;
  }
  const std::wstring path = kelhost::FromUtf8(argv[2]);
  const bool ok = std::strcmp(argv[1], "write") == 0 ? Write(path) : Check(path);
  return ok ? 0 : 1;
}
