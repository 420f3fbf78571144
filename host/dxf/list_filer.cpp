#include "dxf/list_filer.h"

#include <cwchar>

#include "ads/rbkind.h"
#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

std::uint64_t CodeBit(int code) { return std::uint64_t{1} << (static_cast<unsigned>(code) & 63); }

}  // namespace

AcDbObjectId GroupFiler::findRecord(AcDbObjectId tableId, const wchar_t* name) {
  auto* table = db::PeekAs<AcDbSymbolTable>(tableId);
  AcDbObjectId id;
  if (table && name && table->getAt(name, id) == Acad::eOk) return id;
  return AcDbObjectId::kNull;
}

// ---------------------------------------------------------------- writer

ListWriter::~ListWriter() { acutRelRb(mHead); }

resbuf* ListWriter::add(int code) {
  resbuf* rb = acutNewRb(code);
  if (!rb) {
    fail(L"out of memory");
    return nullptr;
  }
  *mTail = rb;
  mTail = &rb->rbnext;
  return rb;
}

void ListWriter::addText(int code, const std::wstring& v) {
  if (resbuf* rb = add(code)) {
    if (acutNewString(v.c_str(), rb->resval.rstring) != RTNORM) fail(L"out of memory");
  }
}

void ListWriter::addName(int code, AcDbObjectId id) {
  if (resbuf* rb = add(code)) {
    rb->resval.rlname[0] = id.asOldId();
    rb->resval.rlname[1] = 0;
  }
}

resbuf* ListWriter::take() {
  if (failed()) return nullptr;
  resbuf* head = mHead;
  mHead = nullptr;
  mTail = &mHead;
  return head;
}

void ListWriter::subclass(const wchar_t* marker) { addText(100, marker); }

void ListWriter::text(int code, std::wstring& v, const wchar_t* def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  addText(code, v);
}

void ListWriter::real(int code, double& v, double def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  if (resbuf* rb = add(code)) rb->resval.rreal = v;
}

void ListWriter::point(int code, AcGePoint3d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0 && v.z == 0) return;
  if (resbuf* rb = add(code)) {
    rb->resval.rpoint[0] = v.x;
    rb->resval.rpoint[1] = v.y;
    rb->resval.rpoint[2] = v.z;
  }
}

void ListWriter::point2d(int code, AcGePoint2d& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == 0 && v.y == 0) return;
  if (resbuf* rb = add(code)) {
    rb->resval.rpoint[0] = v.x;
    rb->resval.rpoint[1] = v.y;
    rb->resval.rpoint[2] = 0.0;
  }
}

void ListWriter::vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) {
  if (p == Presence::kUnlessDefault && v.x == def.x && v.y == def.y && v.z == def.z) return;
  if (resbuf* rb = add(code)) {
    rb->resval.rpoint[0] = v.x;
    rb->resval.rpoint[1] = v.y;
    rb->resval.rpoint[2] = v.z;
  }
}

void ListWriter::int16(int code, short& v, short def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  if (resbuf* rb = add(code)) rb->resval.rint = v;
}

void ListWriter::int32(int code, std::int32_t& v, std::int32_t def, Presence p) {
  if (p == Presence::kUnlessDefault && v == def) return;
  if (resbuf* rb = add(code)) rb->resval.rlong = v;
}

void ListWriter::id(int code, AcDbObjectId& v, Presence p) {
  if (p == Presence::kUnlessDefault && v.isNull()) return;
  addName(code, v);
}

void ListWriter::record(int code, AcDbObjectId& v, AcDbObjectId, const wchar_t* def, Presence p, bool) {
  auto* rec = db::PeekAs<AcDbSymbolTableRecord>(v);
  std::wstring name = rec ? rec->getName() : def;
  if (p == Presence::kUnlessDefault && EqualNoCase(name, def)) return;
  addText(code, name);
}

void ListWriter::chain(resbuf*& data) {
  for (const resbuf* rb = data; rb; rb = rb->rbnext) {
    resbuf* copy = rb::CopyNode(rb);
    if (!copy) return fail(L"out of memory");
    *mTail = copy;
    mTail = &copy->rbnext;
  }
}

// ---------------------------------------------------------------- reader

ListReader::ListReader(AcDbDatabase* db, const std::vector<const resbuf*>& groups, bool modify)
    : GroupFiler(db), mGroups(groups), mUsed(groups.size(), 0), mEnd(groups.size()), mModify(modify) {
  for (const resbuf* rb : mGroups) {
    if (rb->restype == 100) mHasMarkers = true;
    mCodes |= CodeBit(rb->restype);
  }
}

ListReader::ListReader(AcDbDatabase* db, bool modify) : GroupFiler(db), mModify(modify) {}

void ListReader::setGroups(const resbuf* nodes, size_t count) {
  mGroups.resize(count);
  for (size_t i = 0; i < count; ++i) {
    mGroups[i] = nodes + i;
    if (nodes[i].restype == 100) mHasMarkers = true;
    mCodes |= CodeBit(nodes[i].restype);
  }
  mUsed.assign(count, 0);
  mBegin = 0;
  mEnd = count;
}

namespace {
// Markers come as the class writes them nearly always: compare exactly
// before comparing without regard to case.
bool SameMarker(const wchar_t* text, const wchar_t* marker) {
  return std::wcscmp(text, marker) == 0 || EqualNoCase(text, marker);
}
}  // namespace

void ListReader::subclass(const wchar_t* marker) {
  if (!mHasMarkers) return;
  mCommonScope = SameMarker(L"AcDbEntity", marker);
  for (size_t i = mMarkerPos; i < mGroups.size(); ++i) {
    const resbuf* rb = mGroups[i];
    if (rb->restype == 100 && rb->resval.rstring && SameMarker(rb->resval.rstring, marker)) {
      mUsed[i] = true;
      mBegin = i + 1;
      mEnd = mGroups.size();
      for (size_t j = mBegin; j < mGroups.size(); ++j)
        if (mGroups[j]->restype == 100) {
          mEnd = j;
          break;
        }
      mMarkerPos = mEnd;
      mScoped = true;
      return;
    }
  }
  // A list without this marker: its groups are looked for everywhere.
  mBegin = 0;
  mEnd = mGroups.size();
  mScoped = false;
}

// Outside its own subclass a group is only taken from where no other
// subclass claims it: before the first marker, or anywhere in a list whose
// markers do not match. A group after another subclass's marker (such as
// 71 in an attribute definition) belongs to that subclass. The entity's
// common properties (layer, colour, linetype, ...) are the exception: no
// subclass reuses their numbers, and programs append them to entget's list
// for entmod, which the platform honours.
bool ListReader::claimable(size_t i) const {
  if (!mScoped || mCommonScope) return true;
  for (size_t j = 0; j < i; ++j)
    if (mGroups[j]->restype == 100) return false;
  return true;
}

const resbuf* ListReader::take(int code, Presence p) {
  if (!(mCodes & CodeBit(code))) {
    if (p == Presence::kRequired && !mModify) fail(L"missing group " + std::to_wstring(code));
    return nullptr;
  }
  if (mCommonScope && !mInRepeat) {
    // A property given twice (entget's, then one appended) takes the last,
    // as reading the groups in order and setting each would.
    for (size_t i = mGroups.size(); i-- > 0;)
      if (!mUsed[i] && mGroups[i]->restype == code) return mUsed[i] = true, mGroups[i];
  }
  for (size_t i = mBegin; i < mEnd; ++i)
    if (!mUsed[i] && mGroups[i]->restype == code) return mUsed[i] = true, mGroups[i];
  if (!mInRepeat) {
    for (size_t i = 0; i < mGroups.size(); ++i)
      if (!mUsed[i] && mGroups[i]->restype == code && claimable(i)) return mUsed[i] = true, mGroups[i];
  }
  if (p == Presence::kRequired && !mModify) fail(L"missing group " + std::to_wstring(code));
  return nullptr;
}

void ListReader::text(int code, std::wstring& v, const wchar_t* def, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v = rb->resval.rstring ? rb->resval.rstring : L"";
  } else if (!mModify) {
    v = def;
  }
}

void ListReader::real(int code, double& v, double def, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v = rb->resval.rreal;
  } else if (!mModify) {
    v = def;
  }
}

void ListReader::point(int code, AcGePoint3d& v, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v.set(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
  } else if (!mModify) {
    v = AcGePoint3d::kOrigin;
  }
}

void ListReader::point2d(int code, AcGePoint2d& v, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v.set(rb->resval.rpoint[0], rb->resval.rpoint[1]);
  } else if (!mModify) {
    v = AcGePoint2d::kOrigin;
  }
}

void ListReader::vector(int code, AcGeVector3d& v, const AcGeVector3d& def, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v.set(rb->resval.rpoint[0], rb->resval.rpoint[1], rb->resval.rpoint[2]);
    if (v.isZeroLength()) fail(L"zero-length vector in group " + std::to_wstring(code));
  } else if (!mModify) {
    v = def;
  }
}

void ListReader::int16(int code, short& v, short def, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v = rb->resval.rint;
  } else if (!mModify) {
    v = def;
  }
}

void ListReader::int32(int code, std::int32_t& v, std::int32_t def, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    v = rb->resval.rlong;
  } else if (!mModify) {
    v = def;
  }
}

void ListReader::id(int code, AcDbObjectId& v, Presence p) {
  if (const resbuf* rb = take(code, p)) {
    AcDbObjectId found;
    found.setFromOldId(rb->resval.rlname[0]);
    if (rb->resval.rlname[0] != 0 && !found.isValid()) return fail(L"invalid entity name in group " + std::to_wstring(code));
    v = found;
  } else if (!mModify) {
    v.setNull();
  }
}

void ListReader::record(int code, AcDbObjectId& v, AcDbObjectId table, const wchar_t* def, Presence p,
                        bool createMissing) {
  const resbuf* rb = take(code, p);
  if (!rb && mModify) return;
  const wchar_t* name = rb && rb->resval.rstring ? rb->resval.rstring : def;
  AcDbObjectId found = findRecord(table, name);
  if (!found.isNull()) {
    v = found;
  } else if (createMissing && acdbSNValid(name, 0) == RTNORM) {
    pendingRecords.push_back({table, name, &v});
  } else {
    fail(L"no such record \"" + std::wstring(name) + L"\" for group " + std::to_wstring(code));
  }
}

void ListReader::chain(resbuf*& data) {
  acutRelRb(data);
  data = nullptr;
  resbuf** tail = &data;
  for (size_t i = mBegin; i < mEnd; ++i) {
    if (mUsed[i]) continue;
    mUsed[i] = true;
    resbuf* copy = rb::CopyNode(mGroups[i]);
    if (!copy) return fail(L"out of memory");
    *tail = copy;
    tail = &copy->rbnext;
  }
}

size_t ListReader::beginRepeat(int leadCode, size_t) {
  mSavedBegin = mBegin;
  mSavedEnd = mEnd;
  mLeads.clear();
  for (size_t i = mBegin; i < mEnd; ++i)
    if (!mUsed[i] && mGroups[i]->restype == leadCode) mLeads.push_back(i);
  mInRepeat = true;
  return mLeads.size();
}

void ListReader::enterRecord(size_t index) {
  if (index >= mLeads.size()) {
    mBegin = mEnd = mSavedEnd;
    return;
  }
  mBegin = mLeads[index];
  mEnd = index + 1 < mLeads.size() ? mLeads[index + 1] : mSavedEnd;
}

void ListReader::endRepeat() {
  mInRepeat = false;
  mBegin = mSavedBegin;
  mEnd = mSavedEnd;
}

}  // namespace kelhost::dxf
