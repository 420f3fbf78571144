// Complex entmake sequences. The lists of a sequence are checked as they
// come and kept; nothing enters the database until the SEQEND (or the
// ENDBLK of a block definition), so an abandoned sequence leaves nothing.
#include <string>
#include <vector>

#include "ads/entity_make.h"
#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "arx/dbapserv.h"
#include "arx/dbblkref.h"
#include "arx/dbsymtb.h"
#include "ads/rbkind.h"
#include "db/sequences.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "kelhost/text.h"

namespace kelhost::ads {
namespace {

// A copy of a list, released with it.
class Chain {
 public:
  explicit Chain(const resbuf* list) : mHead(rb::CopyChain(list)) {}
  ~Chain() { acutRelRb(mHead); }
  Chain(Chain&& o) noexcept : mHead(o.mHead) { o.mHead = nullptr; }
  Chain& operator=(Chain&&) = delete;
  Chain(const Chain&) = delete;
  const resbuf* get() const { return mHead; }

 private:
  resbuf* mHead;
};

// A main entity of a block definition: one list, or a complex entity's
// header followed by its sub-entity lists.
using Item = std::vector<Chain>;

struct Building {
  AcDbDatabase* db = nullptr;
  bool inBlock = false;
  std::wstring blockName;
  short blockFlags = 0;
  AcGePoint3d blockOrigin;
  std::vector<Item> blockItems;
  Item complex;  // empty when no complex entity is open
  bool complexIs3d = false, complexIsInsert = false;
};

Building& State() {
  static Building state;
  return state;
}

std::wstring LastName;

const resbuf* Find(const resbuf* list, int code) {
  for (const resbuf* rb = list; rb && rb->restype != -3; rb = rb->rbnext)
    if (rb->restype == code) return rb;
  return nullptr;
}

std::wstring TypeOf(const resbuf* list) {
  if (list && list->restype == -1) list = list->rbnext;
  return list && list->restype == 0 && list->resval.rstring ? ToUpper(list->resval.rstring) : L"";
}

short Flags(const resbuf* list) {
  const resbuf* rb = Find(list, 70);
  return rb ? rb->resval.rint : 0;
}

// Whether a list reads into an object of kind T.
template <class T>
bool Reads(const resbuf* list) {
  std::unique_ptr<AcDbObject> object;
  std::vector<dxf::GroupFiler::PendingRecord> pending;
  return ReadEntityList(list, object, pending) == RTNORM && T::cast(object.get());
}

void AbandonComplex() { State().complex.clear(); }

// Reads a list into an entity ready to add: its missing layers made.
std::unique_ptr<AcDbEntity> Prepare(AcDbDatabase* db, const resbuf* list) {
  std::unique_ptr<AcDbObject> object;
  std::vector<dxf::GroupFiler::PendingRecord> pending;
  if (ReadEntityList(list, object, pending) != RTNORM || !AcDbEntity::cast(object.get()) ||
      !CreatePendingRecords(db, pending))
    return nullptr;
  return std::unique_ptr<AcDbEntity>(AcDbEntity::cast(object.release()));
}

void EraseMade(AcDbObjectId id) {
  AcDbEntity* entity = nullptr;
  if (acdbOpenObject(entity, id, AcDb::kForWrite) != Acad::eOk) return;
  if (AcDbSubentSequence* seq = db::SequenceOf(entity)) {
    for (const AcDbObjectId& sub : seq->items) {
      AcDbEntity* s = nullptr;
      if (acdbOpenObject(s, sub, AcDb::kForWrite) == Acad::eOk) s->erase(), s->close();
    }
  }
  entity->erase();
  entity->close();
}

// Adds an item (simple or complex) to a block record; made is its id.
bool Commit(AcDbDatabase* db, const Item& item, AcDbObjectId blockId, AcDbObjectId& made) {
  made.setNull();
  std::unique_ptr<AcDbEntity> head = Prepare(db, item.front().get());
  if (!head) return false;
  if (blockId.isNull())
    blockId = dxf::Access::paperSpaceRequested(head.get()) ? db->paperSpaceId() : db->modelSpaceId();
  AcDbBlockTableRecord* block = nullptr;
  if (acdbOpenObject(block, blockId, AcDb::kForWrite) != Acad::eOk) return false;
  Acad::ErrorStatus es = block->appendAcDbEntity(made, head.get());
  block->close();
  if (es != Acad::eOk) return false;
  AcDbEntity* owner = head.release();
  bool ok = true;
  AcDbSubentSequence* seq = db::SequenceOf(owner);
  for (size_t i = 1; ok && i < item.size(); ++i) {
    std::unique_ptr<AcDbEntity> sub = Prepare(db, item[i].get());
    AcDbObjectId subId;
    ok = sub && seq && db::AppendToSequence(owner, *seq, sub.get(), subId) == Acad::eOk;
    if (ok) sub.release()->close();
  }
  owner->close();
  if (!ok) EraseMade(made);
  return ok;
}

// The next free anonymous name of that kind (*U1, *U2...).
std::wstring AnonymousName(AcDbBlockTable* table, const std::wstring& requested) {
  std::wstring prefix = requested.size() > 1 ? ToUpper(requested.substr(0, 2)) : L"*U";
  if (prefix[1] < L'A' || prefix[1] > L'Z') prefix = L"*U";
  for (int n = 1;; ++n) {
    const std::wstring name = prefix + std::to_wstring(n);
    if (!table->has(name.c_str())) return name;
  }
}

int CommitBlock(AcDbDatabase* db, AcDbObjectId& made) {
  Building& st = State();
  const bool anonymous = (st.blockFlags & 1) != 0;
  AcDbBlockTable* table = nullptr;
  if (acdbOpenObject(table, db->blockTableId(), AcDb::kForWrite) != Acad::eOk) return RTREJ;
  const std::wstring name = anonymous ? AnonymousName(table, st.blockName) : st.blockName;
  bool hasAttdefs = false;
  for (const Item& item : st.blockItems) hasAttdefs = hasAttdefs || TypeOf(item.front().get()) == L"ATTDEF";
  // The record is made from its own groups so that its flags are kept.
  resbuf* recordList = acutBuildList(RTDXF0, L"BLOCK_RECORD", 2, name.c_str(), 70,
                                     static_cast<short>((st.blockFlags & ~2) | (hasAttdefs ? 2 : 0)), 10,
                                     asDblArray(st.blockOrigin), 0);
  std::unique_ptr<AcDbObject> object;
  std::vector<dxf::GroupFiler::PendingRecord> pending;
  int rc = recordList ? ReadEntityList(recordList, object, pending) : RTREJ;
  acutRelRb(recordList);
  auto* record = AcDbBlockTableRecord::cast(object.get());
  AcDbObjectId blockId;
  if (rc != RTNORM || !record || table->add(blockId, record) != Acad::eOk) {
    table->close();
    return RTREJ;
  }
  object.release()->close();
  table->close();
  bool ok = true;
  for (const Item& item : st.blockItems) {
    AcDbObjectId id;
    ok = ok && Commit(db, item, blockId, id);
  }
  if (!ok) {
    AcDbObject* rec = nullptr;
    if (acdbOpenObject(rec, blockId, AcDb::kForWrite) == Acad::eOk) rec->erase(), rec->close();
    return RTREJ;
  }
  made = blockId;
  LastName = name;
  return anonymous ? RTKWORD : RTNORM;
}

bool StartBlock(const resbuf* list) {
  Building& st = State();
  const resbuf* name = Find(list, 2);
  if (!name || !name->resval.rstring) return false;
  const std::wstring text = name->resval.rstring;
  const short flags = Flags(list);
  // An anonymous block needs both the star and flag 1.
  const bool anonymous = (flags & 1) != 0;
  if (anonymous) {
    if (text.empty() || text[0] != L'*') return false;
  } else {
    auto* table = db::PeekAs<AcDbBlockTable>(st.db->blockTableId());
    if (acdbSNValid(text.c_str(), 0) != RTNORM || !table || table->has(text.c_str())) return false;
  }
  st.inBlock = true;
  st.blockName = text;
  st.blockFlags = static_cast<short>(anonymous ? (flags | 1) : flags);
  const resbuf* origin = Find(list, 10);
  st.blockOrigin = origin ? asPnt3d(origin->resval.rpoint) : AcGePoint3d::kOrigin;
  st.blockItems.clear();
  return true;
}

}  // namespace

std::unique_ptr<AcDbObject> NewObjectForList(const std::wstring& type, const resbuf* list) {
  return dxf::NewObjectOfType(type, [list](int code, long fallback) -> long {
    const resbuf* rb = Find(list, code);
    return rb ? rb->resval.rint : fallback;
  });
}

const std::wstring& LastBlockName() { return LastName; }

void AbandonSequences() {
  Building& st = State();
  st.complex.clear();
  st.blockItems.clear();
  st.inBlock = false;
}

bool MakeInSequence(const resbuf* list, AcDbObjectId& made, int& rc) {
  made.setNull();
  Building& st = State();
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  if (st.db != db) {
    AbandonSequences();
    st.db = db;
  }
  const std::wstring type = TypeOf(list);
  if (!db || type.empty()) return false;
  rc = RTREJ;
  if (type == L"BLOCK") {
    AbandonSequences();
    if (StartBlock(list)) rc = RTNORM;
    return true;
  }
  if (type == L"ENDBLK") {
    if (st.inBlock && st.complex.empty()) rc = CommitBlock(db, made);
    AbandonSequences();
    return true;
  }
  const resbuf* follows = Find(list, 66);
  if (type == L"POLYLINE" || (type == L"INSERT" && follows && follows->resval.rint == 1)) {
    AbandonComplex();
    std::unique_ptr<AcDbObject> object;
    std::vector<dxf::GroupFiler::PendingRecord> pending;
    if (ReadEntityList(list, object, pending) != RTNORM) return true;
    st.complex.emplace_back(list);
    st.complexIs3d = AcDb3dPolyline::cast(object.get()) != nullptr;
    st.complexIsInsert = AcDbBlockReference::cast(object.get()) != nullptr;
    rc = RTNORM;
    return true;
  }
  if (type == L"VERTEX" || type == L"ATTRIB") {
    const bool fits = !st.complex.empty() &&
                      (type == L"ATTRIB" ? st.complexIsInsert && Reads<AcDbAttribute>(list)
                       : st.complexIs3d  ? Reads<AcDb3dPolylineVertex>(list)
                                         : !st.complexIsInsert && Reads<AcDb2dVertex>(list));
    if (!fits) {
      AbandonComplex();
      return true;
    }
    st.complex.emplace_back(list);
    rc = RTNORM;
    return true;
  }
  if (type == L"SEQEND") {
    if (st.complex.empty() || !Reads<AcDbSequenceEnd>(list)) {
      AbandonComplex();
      return true;
    }
    Item item = std::move(st.complex);
    st.complex.clear();
    if (st.inBlock) {
      st.blockItems.push_back(std::move(item));
      rc = RTNORM;
    } else {
      rc = Commit(db, item, AcDbObjectId::kNull, made) ? RTNORM : RTREJ;
    }
    return true;
  }
  // Any other list ends an unfinished complex entity without making it.
  AbandonComplex();
  if (!st.inBlock) return false;
  std::unique_ptr<AcDbObject> object;
  std::vector<dxf::GroupFiler::PendingRecord> pending;
  if (ReadEntityList(list, object, pending) == RTNORM && AcDbEntity::cast(object.get())) {
    st.blockItems.emplace_back();
    st.blockItems.back().emplace_back(list);
    rc = RTNORM;
  }
  return true;
}

AcDbObjectId NextInSequence(AcDbObjectId id) {
  AcDbObject* object = db::Peek(id);
  if (!object) return AcDbObjectId::kNull;
  // The SEQEND of an erased entity is erased with it: nothing to walk.
  auto firstLive = [](const AcDbSubentSequence& seq, size_t from) {
    for (size_t i = from; i < seq.items.size(); ++i)
      if (!seq.items[i].isErased()) return seq.items[i];
    return seq.end.isErased() ? AcDbObjectId::kNull : seq.end;
  };
  if (AcDbSubentSequence* seq = db::SequenceOf(object)) return seq->items.empty() ? AcDbObjectId::kNull : firstLive(*seq, 0);
  AcDbSubentSequence* owner = db::SequenceOf(db::Peek(object->ownerId()));
  if (!owner || id == owner->end) return AcDbObjectId::kNull;
  for (size_t i = 0; i < owner->items.size(); ++i)
    if (owner->items[i] == id) return firstLive(*owner, i + 1);
  return AcDbObjectId::kNull;
}

AcDbStub* MainEntityOf(AcDbObjectId id) {
  AcDbObject* object = db::Peek(id);
  if (object && db::SequenceOf(db::Peek(object->ownerId()))) return object->ownerId();
  return id;
}

}  // namespace kelhost::ads
