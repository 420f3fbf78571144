// GroupFilers over result-buffer chains: the writer builds an entity list,
// the reader takes groups from one in any order (the platform accepts
// entity lists so), confined to the right subclass when markers are given.
#pragma once

#include <cstdint>
#include <vector>

#include "dxf/group_filer.h"

namespace kelhost::dxf {

class ListWriter : public GroupFiler {
 public:
  explicit ListWriter(AcDbDatabase* db) : GroupFiler(db) {}
  ~ListWriter() override;
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
  size_t beginRepeat(int leadCode, size_t count) override { return count; }
  void enterRecord(size_t) override {}
  void endRepeat() override {}

  // Appends a node of that group code (value zeroed); null when out of
  // memory (the writer then fails).
  resbuf* add(int code);
  void addText(int code, const std::wstring& v);
  void addName(int code, AcDbObjectId id);
  // Hands over the chain built so far (null when the writer failed).
  resbuf* take();

 private:
  resbuf* mHead = nullptr;
  resbuf** mTail = &mHead;
};

class ListReader : public GroupFiler {
 public:
  // groups: the object's groups (no -1, 0, 5, 330 or xdata); the reader
  // does not own them.
  ListReader(AcDbDatabase* db, const std::vector<const resbuf*>& groups, bool modify);
  bool reading() const override { return true; }
  bool keepsAbsent() const override { return mModify; }
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
  size_t beginRepeat(int leadCode, size_t count) override;
  void enterRecord(size_t index) override;
  void endRepeat() override;

 protected:
  // For a reader that makes its groups itself: setGroups before use.
  ListReader(AcDbDatabase* db, bool modify);
  void setGroups(const resbuf* nodes, size_t count);
  // Exchanges the reader's own buffers with a caller's (to reuse their
  // memory from one reader to the next).
  void swapBuffers(std::vector<const resbuf*>& groups, std::vector<unsigned char>& used) {
    mGroups.swap(groups);
    mUsed.swap(used);
  }

 private:
  // The first unused node of that code in scope (then anywhere, as the
  // platform is lenient with entity lists); marks it used.
  const resbuf* take(int code, Presence p);
  std::vector<const resbuf*> mGroups;
  std::vector<unsigned char> mUsed;
  std::uint64_t mCodes = 0;  // bit (code mod 64) of every group's code: most absent codes need no search
  bool claimable(size_t index) const;
  size_t mBegin = 0, mEnd = 0;      // the current scope
  size_t mMarkerPos = 0;            // where the next marker search starts
  bool mHasMarkers = false;
  bool mScoped = false;             // the current subclass's marker was found
  bool mCommonScope = false;        // the current subclass is AcDbEntity's common properties
  bool mModify;
  bool mInRepeat = false;
  size_t mSavedBegin = 0, mSavedEnd = 0;
  std::vector<size_t> mLeads;  // record starts of the current repeat
};

}  // namespace kelhost::dxf
