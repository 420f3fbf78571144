// Selection sets: numbered lists of entities, in the order they were
// selected or added, each entity once.
#include <algorithm>
#include <map>
#include <mutex>
#include <unordered_set>

#include "ads/entity_names.h"
#include "ads/selection_sets.h"
#include "arx/acedads.h"
#include "arx/dbmain.h"
#include "db/stub.h"

namespace kelhost::ads {
namespace {

// A set's members in order, with an index of them so that adding one
// (which must not add it twice) and testing membership do not walk the
// whole set.
struct SelectionSet {
  std::vector<AcDbObjectId> order;
  std::unordered_set<AcDbStub*> index;

  bool has(AcDbObjectId id) const { return index.count(id) != 0; }
  void add(AcDbObjectId id) {
    if (index.insert(id).second) order.push_back(id);
  }
  bool remove(AcDbObjectId id) {
    if (index.erase(id) == 0) return false;
    order.erase(std::find(order.begin(), order.end(), id));
    return true;
  }
};

struct Store {
  std::mutex lock;
  std::map<std::int64_t, SelectionSet> sets;
  std::map<std::int64_t, SelectionHow> hows;
  std::int64_t next = 1;
};

Store& TheStore() {
  static Store store;
  return store;
}

SelectionSet* Find(Store& s, const ads_name name) {
  if (!name || name[1] != 0) return nullptr;
  auto it = s.sets.find(name[0]);
  return it == s.sets.end() ? nullptr : &it->second;
}

// A live entity (not a table record or other object).
AcDbObjectId EntityOf(const ads_name ename) {
  const AcDbObjectId id = IdOfName(ename);
  if (id.isNull() || id.isErased() || !AcDbEntity::cast(db::Peek(id))) return AcDbObjectId::kNull;
  return id;
}

}  // namespace

void NewSelectionSet(std::vector<AcDbObjectId> ids, ads_name name) {
  SelectionSet set;
  set.order.reserve(ids.size());
  for (const AcDbObjectId& id : ids) set.add(id);
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  name[0] = s.next++;
  name[1] = 0;
  s.sets[name[0]] = std::move(set);
}

const std::vector<AcDbObjectId>* SelectionSetMembers(const ads_name name) {
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const SelectionSet* set = Find(s, name);
  return set ? &set->order : nullptr;
}

void SetSelectionHow(const ads_name name, SelectionHow how) {
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  if (Find(s, name)) s.hows[name[0]] = std::move(how);
}

SelectionHow SelectionHowOf(const ads_name name, AcDbObjectId member) {
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  if (!Find(s, name)) return {};
  auto it = s.hows.find(name[0]);
  if (it == s.hows.end() || !it->second.members.count(member)) return {};
  return it->second;
}

}  // namespace kelhost::ads

int acedSSFree(const ads_name sname) {
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  if (!kelhost::ads::Find(s, sname)) return RTERROR;
  s.sets.erase(sname[0]);
  s.hows.erase(sname[0]);
  return RTNORM;
}

int acedSSLength(const ads_name sname, Adesk::Int32* len) {
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const auto* set = kelhost::ads::Find(s, sname);
  if (!set || !len) return RTERROR;
  *len = static_cast<Adesk::Int32>(set->order.size());
  return RTNORM;
}

int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result) {
  if (!result) return RTERROR;
  const bool haveEntity = ename && !ads_name_nil(ename);
  const bool haveSet = sname && !ads_name_nil(sname);
  AcDbObjectId id;
  if (haveEntity && (id = kelhost::ads::EntityOf(ename)).isNull()) return RTERROR;
  if (!haveSet) {
    std::vector<AcDbObjectId> ids;
    if (haveEntity) ids.push_back(id);
    kelhost::ads::NewSelectionSet(std::move(ids), result);
    return RTNORM;
  }
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  auto* set = kelhost::ads::Find(s, sname);
  if (!set || !haveEntity) return RTERROR;
  set->add(id);
  ads_name_set(sname, result);
  return RTNORM;
}

int acedSSDel(const ads_name ename, const ads_name ss) {
  const AcDbObjectId id = kelhost::ads::IdOfName(ename);
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  auto* set = kelhost::ads::Find(s, ss);
  if (!set || id.isNull()) return RTERROR;
  return set->remove(id) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name ename, const ads_name ss) {
  const AcDbObjectId id = kelhost::ads::IdOfName(ename);
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const auto* set = kelhost::ads::Find(s, ss);
  if (!set || id.isNull()) return RTERROR;
  return set->has(id) ? RTNORM : RTERROR;
}

int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres) {
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const auto* set = kelhost::ads::Find(s, ss);
  if (!set || !entres || i < 0 || static_cast<size_t>(i) >= set->order.size()) return RTERROR;
  kelhost::ads::NameOfId(set->order[static_cast<size_t>(i)], entres);
  return RTNORM;
}
