// The GroupFilers of DXF files. The writer puts an object's groups as a
// file has them: references as handles, points as their X/Y/Z groups, 2D
// points without Z. The reader takes them from a file's tokens.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dxf/dxf_tokens.h"
#include "dxf/group_filer.h"
#include "dxf/list_filer.h"
#include "dxf/raw_group.h"

namespace kelhost::dxf {

// The writer appends each group's lines to the file's text as it goes.
class FileWriter : public GroupFiler {
 public:
  // Angles (50-58) are radians in the database and entity lists but
  // degrees in files (see FileAnglesInDegrees).
  FileWriter(AcDbDatabase* db, std::string& text, bool anglesInDegrees = true)
      : GroupFiler(db), mText(text), mDegrees(anglesInDegrees) {}
  // Whether a 66 group of 1 was written: vertices or attributes follow.
  bool follows() const { return mFollows; }
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
  void addReal(int code, double v);
  void addInteger(int code, long v);
  std::string& mText;
  bool mDegrees;
  bool mFollows = false;
};

// Reads an object from its own groups in a file exactly as a ListReader
// reads the same groups made into a chain by GroupsToChain (angles in
// degrees made radians first): the result buffers are the reader's own,
// made in one block, which is what makes reading a large file fast.
class FileReader : public ListReader {
 public:
  FileReader(AcDbDatabase* db, const Token* begin, const Token* end, const ResolveHandle& resolve,
             bool anglesInDegrees = true);
  ~FileReader() override;
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;

  // The conversion's parts (see ConvertGroups).
  resbuf* newNode(int code);
  bool setText(resbuf* rb, std::string_view utf8);
  bool setBinary(resbuf* rb, std::string_view hex);

  // The buffers readers pass on to the next one (see the constructor).
  struct Buffers {
    std::vector<resbuf> nodes;
    std::wstring text;  // every text value, each ended by a null
    std::vector<const resbuf*> groups;
    std::vector<unsigned char> used;
  };

 protected:
  // Files name the same few records over and over: the last record found
  // in each table is checked first.
  AcDbObjectId findRecord(AcDbObjectId table, const wchar_t* name) override;

 private:
  Buffers mBuffers;
  Buffers* mLent = nullptr;  // whose buffers these are, to give back
  bool mBinary = false;      // a node holds a binary chunk to free
  bool mAngles = false;      // a node holds an angle
};

// Whether the file form of a DXF type holds its 50-58 angles in degrees.
bool FileAnglesInDegrees(std::string_view type);
// An angle group's file text in degrees as radians (and back).
std::string DegreesToRadiansText(const std::string& degrees);

}  // namespace kelhost::dxf
