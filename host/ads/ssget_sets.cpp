// Selection sets: numbered lists of entities, in the order they were
// selected or added, each entity once.
#include <algorithm>
#include <map>
#include <mutex>

#include "ads/entity_names.h"
#include "ads/selection_sets.h"
#include "arx/acedads.h"
#include "arx/dbmain.h"
#include "db/stub.h"

namespace kelhost::ads {
namespace {

struct Store {
  std::mutex lock;
  std::map<std::int64_t, std::vector<AcDbObjectId>> sets;
  std::map<std::int64_t, SelectionHow> hows;
  std::int64_t next = 1;
};

Store& TheStore() {
  static Store store;
  return store;
}

std::vector<AcDbObjectId>* Find(Store& s, const ads_name name) {
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
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  name[0] = s.next++;
  name[1] = 0;
  s.sets[name[0]] = std::move(ids);
}

const std::vector<AcDbObjectId>* SelectionSetMembers(const ads_name name) {
  Store& s = TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  return Find(s, name);
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
  *len = static_cast<Adesk::Int32>(set->size());
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
  if (std::find(set->begin(), set->end(), id) == set->end()) set->push_back(id);
  ads_name_set(sname, result);
  return RTNORM;
}

int acedSSDel(const ads_name ename, const ads_name ss) {
  const AcDbObjectId id = kelhost::ads::IdOfName(ename);
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  auto* set = kelhost::ads::Find(s, ss);
  if (!set || id.isNull()) return RTERROR;
  auto it = std::find(set->begin(), set->end(), id);
  if (it == set->end()) return RTERROR;
  set->erase(it);
  return RTNORM;
}

int acedSSMemb(const ads_name ename, const ads_name ss) {
  const AcDbObjectId id = kelhost::ads::IdOfName(ename);
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const auto* set = kelhost::ads::Find(s, ss);
  if (!set || id.isNull()) return RTERROR;
  return std::find(set->begin(), set->end(), id) != set->end() ? RTNORM : RTERROR;
}

int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres) {
  auto& s = kelhost::ads::TheStore();
  std::lock_guard<std::mutex> hold(s.lock);
  const auto* set = kelhost::ads::Find(s, ss);
  if (!set || !entres || i < 0 || static_cast<size_t>(i) >= set->size()) return RTERROR;
  kelhost::ads::NameOfId((*set)[static_cast<size_t>(i)], entres);
  return RTNORM;
}
