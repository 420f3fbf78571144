#include "db/standard_objects.h"

#include <memory>
#include <string>
#include <vector>

#include "arx/acutads.h"
#include "arx/dbdictdflt.h"
#include "arx/dblayout.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "dxf/kept_object.h"
#include "dxf/list_filer.h"

namespace kelhost::db {
namespace {

// The entry key of a dictionary; when missing, the object make() gives
// joins the dictionary under that key. Null when the dictionary cannot be
// opened or the entry cannot be added.
template <class Make>
AcDbObjectId EnsureEntry(AcDbObjectId dictId, const wchar_t* key, Make make) {
  AcDbDictionary* dict = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(dict, dictId, AcDb::kForRead) != Acad::eOk) return id;
  if (dict->getAt(key, id) != Acad::eOk && dict->upgradeOpen() == Acad::eOk) {
    std::unique_ptr<AcDbObject> object(make());
    if (dict->setAt(key, object.get(), id) == Acad::eOk) object.release()->close();
  }
  dict->close();
  return id;
}

AcDbObject* NewDictionary() { return new AcDbDictionary; }

// The model layout's plot settings differ from a paper layout's: they are
// read from their groups as a file would give them.
std::unique_ptr<AcDbLayout> NewLayout(AcDbDatabase* db, bool model) {
  auto layout = std::make_unique<AcDbLayout>();
  if (!model) return layout;
  const AcDbPlotSettings modelSettings(true);
  resbuf* list = acutBuildList(100, L"AcDbPlotSettings", 70, static_cast<int>(688 | 1024), 74,
                               static_cast<int>(modelSettings.plotType()), 100, L"AcDbLayout", RTNONE);
  std::vector<const resbuf*> groups;
  for (const resbuf* rb = list; rb; rb = rb->rbnext) groups.push_back(rb);
  dxf::ListReader reader(db, groups, true);
  dxf::Access::fields(layout.get(), reader);
  acutRelRb(list);
  return layout;
}

// The layout of the dictionary that holds block, or null.
AcDbObjectId LayoutHolding(AcDbObjectId layouts, AcDbObjectId block) {
  auto* dict = PeekAs<AcDbDictionary>(layouts);
  if (!dict) return AcDbObjectId::kNull;
  std::unique_ptr<AcDbDictionaryIterator> it(dict->newIterator());
  for (; !it->done(); it->next())
    if (auto* layout = PeekAs<AcDbLayout>(it->objectId()); layout && layout->getBlockTableRecordId() == block)
      return it->objectId();
  return AcDbObjectId::kNull;
}

// Gives block its layout unless it has one; a layout that already names
// the block is linked, not doubled. The new layout is called name, or
// name<n> with the first n from 1 that is free when numbered.
void EnsureLayout(AcDbDatabase* db, AcDbObjectId layouts, AcDbObjectId block, const std::wstring& name, bool numbered,
                  int tab) {
  auto* btr = PeekAs<AcDbBlockTableRecord>(block);
  auto* dict = PeekAs<AcDbDictionary>(layouts);
  if (!btr || !dict) return;
  const AcDbObjectId current = btr->getLayoutId();
  if (PeekAs<AcDbLayout>(current) && !current.isErased()) return;
  AcDbObjectId layoutId = LayoutHolding(layouts, block);
  if (layoutId.isNull()) {
    std::wstring key = numbered ? name + L"1" : name;
    for (int n = 2; dict->has(key.c_str()); ++n) key = name + std::to_wstring(n);
    std::unique_ptr<AcDbLayout> layout = NewLayout(db, block == db->modelSpaceId());
    layout->setLayoutName(key.c_str());
    layout->setTabOrder(tab);
    layout->setBlockTableRecordId(block);
    layoutId = EnsureEntry(layouts, key.c_str(), [&layout] { return layout.release(); });
  }
  if (acdbOpenObject(btr, block, AcDb::kForWrite) != Acad::eOk) return;
  btr->setLayoutId(layoutId);
  btr->close();
}

// The "Standard" multiline style is kept as its groups: the host draws no
// multilines.
AcDbObject* NewStandardMlineStyle() {
  dxf::KeptData data;
  data.type = L"MLINESTYLE";
  data.body = {{100, "AcDbMlineStyle"}, {2, "Standard"}, {70, "0"},   {3, ""},       {62, "256"},
               {51, "90.0"},            {52, "90.0"},     {71, "2"},   {49, "0.5"},   {62, "256"},
               {6, "BYLAYER"},          {49, "-0.5"},     {62, "256"}, {6, "BYLAYER"}};
  return new dxf::KeptObject(std::move(data));
}

void EnsurePlotStyleNames(AcDbObjectId nod) {
  const AcDbObjectId names = EnsureEntry(nod, L"ACAD_PLOTSTYLENAME", [] { return new AcDbDictionaryWithDefault; });
  const AcDbObjectId normal = EnsureEntry(names, L"Normal", [] { return new AcDbPlaceHolder; });
  auto* withDefault = PeekAs<AcDbDictionaryWithDefault>(names);
  if (!withDefault || !withDefault->defaultId().isNull() || normal.isNull()) return;
  if (acdbOpenObject(withDefault, names, AcDb::kForWrite) != Acad::eOk) return;
  withDefault->setDefaultId(normal);
  withDefault->close();
}

}  // namespace

void EnsureStandardObjects(AcDbDatabase* db) {
  if (!db) return;
  DatabaseState& s = db->state();
  if (s.namedObjects.isNull()) return;
  s.groups = EnsureEntry(s.namedObjects, L"ACAD_GROUP", NewDictionary);
  s.layouts = EnsureEntry(s.namedObjects, L"ACAD_LAYOUT", NewDictionary);
  EnsureLayout(db, s.layouts, s.modelSpace, L"Model", false, 0);
  EnsureLayout(db, s.layouts, s.paperSpace, L"Layout", true, 1);
  const AcDbObjectId mlineStyles = EnsureEntry(s.namedObjects, L"ACAD_MLINESTYLE", NewDictionary);
  EnsureEntry(mlineStyles, L"Standard", NewStandardMlineStyle);
  EnsurePlotStyleNames(s.namedObjects);
}

}  // namespace kelhost::db
