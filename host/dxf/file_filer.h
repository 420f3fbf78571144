// The GroupFiler that writes an object's groups as a DXF file has them:
// references as handles, points as their X/Y/Z groups, 2D points without Z.
#pragma once

#include "dxf/group_filer.h"
#include "dxf/raw_group.h"

namespace kelhost::dxf {

class FileWriter : public GroupFiler {
 public:
  // Angles (50-58) are radians in the database and entity lists but
  // degrees in files, except where the file keeps radians (MTEXT).
  FileWriter(AcDbDatabase* db, RawGroups& out, bool anglesInDegrees = true)
      : GroupFiler(db), mOut(out), mDegrees(anglesInDegrees) {}
  bool reading() const override { return false; }
  void subclass(const wchar_t* marker) override;
  void text(int code, std::wstring& v, const wchar_t* def, Presence p) override;
  void real(int code, double& v, double def, Presence p) override;
  void point(int code, AcGePoint3d& v, Presence p) override;
  void point2d(int code, AcGePoint2d& v, Presence p) override;
  void vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) override;
  void int16(int code, short& v, short def, Presence p) override;
  void int32(int code, std::int32_t& v, std::int32_t def, Presence p) override;
  void id(int code, AcDbObjectId& v, Presence p) override;
  void record(int code, AcDbObjectId& v, AcDbObjectId table, const wchar_t* def, Presence p,
              bool createMissing) override;
  void chain(resbuf*& data) override;
  size_t beginRepeat(int, size_t count) override { return count; }
  void enterRecord(size_t) override {}
  void endRepeat() override {}

 private:
  RawGroups& mOut;
  bool mDegrees;
};

// Whether the file form of a DXF type holds its 50-58 angles in degrees.
bool FileAnglesInDegrees(const std::wstring& type);
// An angle group's file text in degrees as radians (and back).
std::string DegreesToRadiansText(const std::string& degrees);

}  // namespace kelhost::dxf
