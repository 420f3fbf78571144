#include "editor/commands/layer_table.h"

#include <cmath>

#include "arx/acdbads.h"
#include "arx/acutads.h"
#include "arx/dbdatabase.h"
#include "arx/wformat.h"
#include "db/stub.h"
#include "editor/commands/typed_text.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

const wchar_t* const kColorNames[] = {L"red", L"yellow", L"green", L"cyan", L"blue", L"magenta", L"white"};

const AcDbLayerTable* Layers(AcDbDatabase* db) {
  return db ? db::PeekAs<AcDbLayerTable>(db->layerTableId()) : nullptr;
}

// The standard lineweights, in hundredths of a millimetre.
const int kWeights[] = {0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

}  // namespace

std::vector<std::wstring> SplitNameList(const std::wstring& text) {
  std::vector<std::wstring> items;
  size_t from = 0;
  for (;;) {
    const size_t comma = text.find(L',', from);
    std::wstring item = Trimmed(text.substr(from, comma == std::wstring::npos ? std::wstring::npos : comma - from));
    if (!item.empty()) items.push_back(std::move(item));
    if (comma == std::wstring::npos) break;
    from = comma + 1;
  }
  return items;
}

bool IsNamePattern(const std::wstring& item) { return item.find_first_of(L"*?#@~[`") != std::wstring::npos; }

AcDbObjectId FindLayer(AcDbDatabase* db, const std::wstring& name) {
  const AcDbLayerTable* table = Layers(db);
  AcDbObjectId id;
  if (!table || name.empty() || table->getAt(name.c_str(), id) != Acad::eOk) return AcDbObjectId::kNull;
  return id;
}

std::vector<AcDbObjectId> AllLayers(AcDbDatabase* db) {
  std::vector<AcDbObjectId> ids;
  const AcDbLayerTable* table = Layers(db);
  if (!table) return ids;
  AcDbSymbolTableIterator* it = nullptr;
  if (table->newIterator(it) != Acad::eOk) return ids;
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    if (it->getRecordId(id) == Acad::eOk) ids.push_back(id);
  }
  delete it;
  return ids;
}

std::vector<AcDbObjectId> MatchLayers(AcDbDatabase* db, const std::wstring& item) {
  if (!IsNamePattern(item)) {
    const AcDbObjectId id = FindLayer(db, item);
    return id.isNull() ? std::vector<AcDbObjectId>{} : std::vector<AcDbObjectId>{id};
  }
  std::vector<AcDbObjectId> matched;
  const std::wstring pattern = ToUpper(item);
  for (const AcDbObjectId& id : AllLayers(db))
    if (acutWcMatch(ToUpper(LayerName(id)).c_str(), pattern.c_str()) == RTNORM) matched.push_back(id);
  return matched;
}

std::wstring LayerName(AcDbObjectId layer) {
  auto* record = db::PeekAs<AcDbLayerTableRecord>(layer);
  return record ? record->getName() : L"";
}

bool IsValidLayerName(const std::wstring& name) { return !name.empty() && acdbSNValid(name.c_str(), 0) == RTNORM; }

Acad::ErrorStatus AddLayer(AcDbDatabase* db, const std::wstring& name, AcDbObjectId& id) {
  id.setNull();
  if (!db) return Acad::eNoDatabase;
  if (!IsValidLayerName(name)) return Acad::eInvalidInput;
  AcDbLayerTable* table = nullptr;
  Acad::ErrorStatus es = db->getLayerTable(table, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto* layer = new AcDbLayerTableRecord;
  layer->setName(name.c_str());
  layer->setColorIndex(7);
  layer->setLinetypeObjectId(db->continuousLinetype());
  es = table->add(id, layer);
  table->close();
  if (es != Acad::eOk) {
    delete layer;
    return es;
  }
  layer->close();
  return Acad::eOk;
}

Acad::ErrorStatus ChangeLayer(AcDbObjectId id, const std::function<void(AcDbLayerTableRecord&)>& change) {
  AcDbLayerTableRecord* layer = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(layer, id, AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  change(*layer);
  layer->close();
  return Acad::eOk;
}

std::wstring ColorText(int index) {
  std::wstring text = std::to_wstring(index);
  if (index >= 1 && index <= 7) text += L" (" + std::wstring(kColorNames[index - 1]) + L")";
  return text;
}

int ParseColor(const std::wstring& typed) {
  const std::wstring text = Trimmed(typed);
  for (int i = 0; i < 7; ++i)
    if (EqualNoCase(text, kColorNames[i])) return i + 1;
  if (text.empty() || text.size() > 3) return 0;
  int v = 0;
  for (wchar_t c : text) {
    if (c < L'0' || c > L'9') return 0;
    v = v * 10 + (c - L'0');
  }
  return v >= 1 && v <= 255 ? v : 0;
}

std::wstring LineWeightText(AcDb::LineWeight weight) {
  if (weight < 0) return L"Default";
  return WFormat(L"%.2fmm", weight / 100.0);
}

bool ParseLineWeight(const std::wstring& typed, AcDb::LineWeight& weight) {
  const std::wstring text = Trimmed(typed);
  if (EqualNoCase(text, L"Default") || EqualNoCase(text, L"D")) {
    weight = AcDb::kLnWtByLwDefault;
    return true;
  }
  std::wstring number = text;
  if (number.size() > 2 && EqualNoCase(number.substr(number.size() - 2), L"mm")) number.resize(number.size() - 2);
  double mm = 0;
  if (acutDisToF(number.c_str(), 2, &mm) != RTNORM || !(mm >= 0) || mm > 2.11 + 1e-9) return false;
  const double hundredths = mm * 100.0;
  int best = kWeights[0];
  for (int w : kWeights)
    if (std::fabs(w - hundredths) < std::fabs(best - hundredths)) best = w;
  weight = static_cast<AcDb::LineWeight>(best);
  return true;
}

}  // namespace kelhost::editor
