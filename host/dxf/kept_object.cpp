#include "dxf/kept_object.h"

#include <map>
#include <memory>

#include "arx/acutads.h"
#include "db/stub.h"
#include "dxf/group_filer.h"

namespace kelhost::dxf {

AcRxClass* KeptObject::desc() {
  static AcRxClass cls(L"AcDbKeptObject", L"", AcDbObject::desc());
  return &cls;
}
AcRxClass* KeptObject::isA() const { return mClass; }
void KeptObject::rxInit() { desc(); }
AcRxClass* KeptEntity::desc() {
  static AcRxClass cls(L"AcDbKeptEntity", L"", AcDbEntity::desc());
  return &cls;
}
AcRxClass* KeptEntity::isA() const { return mClass; }
void KeptEntity::rxInit() { desc(); }
namespace {

// One runtime class per DXF type kept, so that isA()->dxfName() gives the
// type as entity lists show it. Never destroyed: ids may outlive statics.
AcRxClass* ClassFor(const std::wstring& type, AcRxClass* parent) {
  struct Entry {
    std::wstring name;
    std::unique_ptr<AcRxClass> cls;
  };
  static auto* classes = new std::map<std::pair<std::wstring, AcRxClass*>, std::unique_ptr<Entry>>;
  auto& slot = (*classes)[{type, parent}];
  if (!slot) {
    slot = std::make_unique<Entry>();
    slot->name = type;
    slot->cls = std::make_unique<AcRxClass>(parent->name(), slot->name.c_str(), parent);
  }
  return slot->cls.get();
}

// The kept groups as an entity list shows them (references as names) and
// back: an entity list, undo and cloning all go through this.
void KeptFields(GroupFiler& f, KeptData& data) {
  if (!f.reading()) {
    resbuf* chain = nullptr;
    AcDbDatabase* db = f.database();
    GroupsToChain(data.body.data(), data.body.data() + data.body.size(),
                  [db](std::uint64_t h) {
                    AcDbObjectId id;
                    if (db) db->getAcDbObjectId(id, false, AcDbHandle(h));
                    return id;
                  },
                  chain);
    f.chain(chain);
    acutRelRb(chain);
    return;
  }
  resbuf* chain = nullptr;
  f.chain(chain);
  if (f.failed()) return acutRelRb(chain), void();
  data.body.clear();
  ChainToGroups(chain, data.body);
  acutRelRb(chain);
}

}  // namespace

KeptObject::KeptObject(KeptData data) : mData(std::move(data)), mClass(ClassFor(mData.type, KeptObject::desc())) {}
void KeptObject::dxfFields(GroupFiler& f) { KeptFields(f, mData); }

KeptEntity::KeptEntity(KeptData data) : mData(std::move(data)), mClass(ClassFor(mData.type, KeptEntity::desc())) {}
void KeptEntity::dxfFields(GroupFiler& f) { KeptFields(f, mData); }

const KeptData* KeptDataOf(const AcDbObject* object) {
  if (auto* o = KeptObject::cast(object)) return &o->kept();
  if (auto* e = KeptEntity::cast(object)) return &e->kept();
  return nullptr;
}

}  // namespace kelhost::dxf
