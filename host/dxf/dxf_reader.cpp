// Reading an ASCII DXF file into an empty database. The file is checked
// and split into sections and items (an entity or object with its groups)
// first; then every object is made under its handle, so that references
// resolve whatever their order in the file; then each is filled from its
// groups through its class's description; a complex entity's vertices or
// attributes join it only when all of them read. Types the host does not
// model are kept verbatim. Last, whatever an older file lacks (tables,
// standard records and objects, layouts) is added as a new drawing has it.
#include <set>
#include <unordered_map>

#include "arx/acutads.h"
#include "arx/dbblkref.h"
#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/sequences.h"
#include "db/standard_objects.h"
#include "dxf/access.h"
#include "dxf/codec.h"
#include "dxf/dxf_file.h"
#include "dxf/file_extras.h"
#include "dxf/file_filer.h"
#include "dxf/header_io.h"
#include "dxf/kept_object.h"
#include "dxf/list_filer.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

using db::Table;

struct Section {
  std::string name;
  size_t begin = 0, end = 0;  // token range of the body
};

struct TableKind {
  const char* name;
  Table table;
  AcDbSymbolTable* (*make)();
};
template <class T>
AcDbSymbolTable* MakeTable() {
  return new T;
}
const TableKind kTables[] = {
    {"BLOCK_RECORD", Table::kBlock, MakeTable<AcDbBlockTable>},
    {"LAYER", Table::kLayer, MakeTable<AcDbLayerTable>},
    {"LTYPE", Table::kLinetype, MakeTable<AcDbLinetypeTable>},
    {"STYLE", Table::kTextStyle, MakeTable<AcDbTextStyleTable>},
    {"DIMSTYLE", Table::kDimStyle, MakeTable<AcDbDimStyleTable>},
    {"VIEW", Table::kView, MakeTable<AcDbViewTable>},
    {"UCS", Table::kUcs, MakeTable<AcDbUCSTable>},
    {"VPORT", Table::kViewport, MakeTable<AcDbViewportTable>},
    {"APPID", Table::kRegApp, MakeTable<AcDbRegAppTable>},
};
const TableKind* FindTableKind(const std::string& name) {
  for (const TableKind& k : kTables)
    if (name == k.name) return &k;
  return nullptr;
}

enum class Place { kTable, kBlocks, kEntities, kObjects };

// A sub-entity of a complex entity (VERTEX, ATTRIB, SEQEND): its tokens.
struct Follower {
  size_t begin = 0, end = 0;
  std::uint64_t handle = 0;
};

// One entity or object of the file: its tokens from the 0 group on.
struct Item {
  TokenText type;  // its 0 group's value
  Place place = Place::kEntities;
  size_t begin = 0, end = 0;  // [0 group, next item)
  size_t followersEnd = 0;  // end of VERTEX/ATTRIB... SEQEND that belong to it
  std::vector<Follower> followers;
  std::uint64_t handle = 0;
  AcDbObjectId id;
  const TableKind* table = nullptr;  // for a TABLE of a known kind
};

struct Head;

std::wstring AtLine(size_t line, const std::wstring& what) { return L"line " + std::to_wstring(line) + L": " + what; }

class Reader {
 public:
  Reader(AcDbDatabase* db, TokenList& tokens) : mDb(db), mState(db->state()), mTokens(tokens) {}
  bool run(std::wstring& error);

 private:
  bool splitSections();
  bool collectItems(const Section& s, Place place);
  bool createObjects();
  bool fillTables();
  bool fillBlocks();
  bool fillEntities(const Section& s);
  bool fillObjects();
  // head: the item's common groups when the caller has parsed them already.
  bool fillObject(Item& item, AcDbObjectId owner, bool mayKeep, const Head* head = nullptr);
  bool fillComplex(Item& item, AcDbObjectId owner);
  // A lightweight polyline's vertex count (90) must agree with the
  // vertices (10) it has: a file that says otherwise is refused.
  bool checkVertexCount(const Item& item);
  // Reads an item's own groups into obj through its class's description
  // (making the layers it names that the file lacks); false, with why, when
  // they do not fit the class.
  bool readFields(AcDbObject* obj, std::string_view type, const Head& head, std::wstring& why);
  bool readXdata(const Head& head, resbuf*& xdata);
  // Replaces the object made for an item by one keeping the item's groups
  // (and its followers') verbatim, with the same owner, xdata and handle.
  AcDbObject* keepAsRead(Item& item, const Head& head);
  AcDbObjectId layerNamed(const RawGroups& body);
  void complete();
  AcDbObjectId ensureRecord(Table t, const wchar_t* name, AcDbSymbolTableRecord* (*make)());
  AcDbObjectId ensureTable(Table t);
  AcDbObjectId resolve(std::uint64_t h) const;
  bool failAt(size_t line, const std::wstring& what) {
    if (mError.empty()) mError = AtLine(line, what);
    return false;
  }
  const Section* section(const char* name) const {
    for (const Section& s : mSections)
      if (s.name == name) return &s;
    return nullptr;
  }
  static const TokenText& typeOf(const Item& i) { return i.type; }
  // The object of an id the reader has from the database's own index (an
  // item's, or one found by handle): its stub is live, no check needed.
  static AcDbObject* objectOf(AcDbObjectId id) {
    AcDbStub* stub = id;
    return stub ? stub->object.get() : nullptr;
  }
  // Records a handle the file uses; false when it was used before.
  bool useHandle(std::uint64_t h);

  AcDbDatabase* mDb;
  db::DatabaseState& mState;
  TokenList& mTokens;
  std::vector<Section> mSections;
  std::vector<Item> mItems;
  std::wstring mError;
  OwnHeaderVars mOwnVars;
  // The handles the file uses. Handles are given densely from 1 up, so
  // there are fewer than the file has groups: those below a few per group
  // are marked in a bitmap, any larger kept in a set.
  std::vector<bool> mHandleBits;
  std::set<std::uint64_t> mLargeHandles;
  std::uint64_t mHighestHandle = 0;
};

bool Reader::useHandle(std::uint64_t h) {
  if (mHandleBits.empty()) mHandleBits.assign(mTokens.size() * 4 + 1024, false);
  if (h > mHighestHandle) mHighestHandle = h;
  if (h < mHandleBits.size()) {
    if (mHandleBits[h]) return false;
    mHandleBits[h] = true;
    return true;
  }
  return mLargeHandles.insert(h).second;
}

bool Reader::splitSections() {
  static const std::set<std::string> kKnown = {"HEADER", "CLASSES", "TABLES", "BLOCKS", "ENTITIES",
                                               "OBJECTS", "THUMBNAILIMAGE", "ACDSDATA"};
  using Mark = TokenList::Mark;
  const std::vector<Mark>& starts = mTokens.starts;
  auto start = starts.begin();  // the first 0 group at or after i
  size_t i = 0;
  const size_t n = mTokens.size();
  while (i < n) {
    const Token& t = mTokens[i];
    if (t.code == 999) {  // comments between sections
      ++i;
      continue;
    }
    if (t.code != 0) return failAt(mTokens.lineOf(t), L"expected a section (group 0)");
    if (t.value == "EOF") return true;
    if (t.value != "SECTION") return failAt(mTokens.lineOf(t), L"expected SECTION, found \"" + FromUtf8(t.value) + L"\"");
    if (i + 1 >= n || mTokens[i + 1].code != 2) return failAt(mTokens.lineOf(t), L"a section without its name (group 2)");
    Section s;
    s.name = mTokens[i + 1].value;
    if (!kKnown.count(s.name)) return failAt(mTokens.lineOf(mTokens[i + 1]), L"unknown section \"" + FromUtf8(s.name) + L"\"");
    if (section(s.name.c_str())) return failAt(mTokens.lineOf(t), L"section " + FromUtf8(s.name) + L" appears twice");
    s.begin = i + 2;
    // Its end: the next ENDSEC (or EOF, a truncated file) among the 0 groups.
    start = std::lower_bound(start, starts.end(), s.begin, [](const Mark& m, size_t at) { return m.index < at; });
    while (start != starts.end() && start->value != "ENDSEC" && start->value != "EOF") ++start;
    const size_t j = start == starts.end() ? n : start->index;
    if (j >= n || mTokens[j].value != "ENDSEC")
      return failAt(j < n ? mTokens.lineOf(mTokens[j]) : mTokens.lineOf(mTokens.back()),
                    L"section " + FromUtf8(s.name) + L" has no ENDSEC (truncated file)");
    s.end = j;
    mSections.push_back(s);
    i = j + 1;
  }
  return failAt(mTokens.empty() ? 1 : mTokens.lineOf(mTokens.back()) + 1, L"the file ends without EOF (truncated)");
}

bool Reader::collectItems(const Section& s, Place place) {
  size_t i = s.begin;
  if (i < s.end && mTokens[i].code != 0) return failAt(mTokens.lineOf(mTokens[i]), L"expected group 0");
  // Every item starts at a 0 group, and the section's ENDSEC is one too:
  // each item's end is the next 0 group.
  using Mark = TokenList::Mark;
  auto before = [](const Mark& m, size_t at) { return m.index < at; };
  const std::vector<Mark>& starts = mTokens.starts;
  const std::vector<Mark>& handles = mTokens.handles;
  auto start = std::lower_bound(starts.begin(), starts.end(), i, before);
  auto handle = std::lower_bound(handles.begin(), handles.end(), i, before);
  mItems.reserve(mItems.size() + static_cast<size_t>(std::lower_bound(start, starts.end(), s.end, before) - start));
  while (i < s.end) {
    Item item;
    item.type = start->value;
    item.place = place;
    item.begin = i;
    const size_t j = (++start)->index;
    item.end = item.followersEnd = j;
    const TokenText& type = item.type;
    if (type.empty()) return failAt(mTokens.lineOf(mTokens[i]), L"an entity without a type");
    // A complex entity's followers belong to it: a polyline's vertices, an
    // insert's attributes (66 set), up to SEQEND.
    bool complex = type == "POLYLINE";
    if (type == "INSERT")
      for (size_t k = i + 1; k < j; ++k)
        if (mTokens[k].code == 66 && mTokens[k].value.find('1') != std::string::npos) complex = true;
    if (complex && (place == Place::kBlocks || place == Place::kEntities)) {
      size_t k = j;
      while (k < s.end) {
        const std::string_view t = start->value;
        const size_t e = (++start)->index;
        item.followers.push_back({k, e, 0});
        if (t == "SEQEND") {
          k = e;
          break;
        }
        if (t != "VERTEX" && t != "ATTRIB") return failAt(mTokens.lineOf(mTokens[k]), L"" + FromUtf8(type) + L" without SEQEND");
        k = e;
        if (k >= s.end) return failAt(mTokens.lineOf(mTokens[i]), FromUtf8(type) + L" without SEQEND");
      }
      item.followersEnd = k;
    }
    // Handles (5, or 105 for a dimension style) of the item and its followers.
    size_t follower = 0;
    for (; handle != handles.end() && handle->index < item.followersEnd; ++handle) {
      // A dimension style's handle is its 105; its 5 is DIMBLK, a block
      // name (empty in most files), in R12 files and later ones alike.
      if ((handle->code == 105) != (type == "DIMSTYLE")) continue;
      const size_t at = handle->index;
      std::uint64_t h = 0;
      if (!ParseHandle(handle->value, h) || h == 0)
        return failAt(mTokens.lineOf(mTokens[at]), L"bad handle \"" + FromUtf8(handle->value) + L"\"");
      if (!useHandle(h)) return failAt(mTokens.lineOf(mTokens[at]), L"duplicate handle " + FromUtf8(handle->value));
      std::uint64_t* slot = &item.handle;
      if (at >= item.end) {  // in a follower: the one whose groups hold it
        while (at >= item.followers[follower].end) ++follower;
        slot = &item.followers[follower].handle;
      }
      if (*slot == 0) *slot = h;
    }
    i = item.followersEnd;
    mItems.push_back(std::move(item));
  }
  return true;
}

AcDbObjectId Reader::resolve(std::uint64_t h) const {
  auto it = mState.byHandle.find(h);
  return it == mState.byHandle.end() ? AcDbObjectId() : AcDbObjectId(it->second);
}

bool Reader::createObjects() {
  // Objects without a handle (older files) get new ones above every
  // handle the file uses.
  if (mHighestHandle != 0 && mHighestHandle >= mState.nextHandle) mState.nextHandle = mHighestHandle + 1;
  for (Item& item : mItems) {
    const TokenText& type = typeOf(item);
    AcDbObject* obj = nullptr;
    if (item.place == Place::kTable) {
      if (type == "ENDTAB") continue;
      if (type == "TABLE") {
        std::string name;
        for (size_t k = item.begin + 1; k < item.end; ++k)
          if (mTokens[k].code == 2) {
            name = mTokens[k].value;
            break;
          }
        const TableKind* kind = FindTableKind(name);
        if (!kind) continue;  // kept verbatim with its records
        if (!mState.tables[static_cast<int>(kind->table)].isNull())
          return failAt(mTokens.lineOf(mTokens[item.begin]), L"table " + FromUtf8(name) + L" appears twice");
        obj = kind->make();
        item.table = kind;
      } else {
        std::unique_ptr<AcDbObject> made = NewObjectOfType(std::string_view(type));
        if (!AcDbSymbolTableRecord::cast(made.get())) continue;  // in an unknown table: kept with it
        obj = made.release();
      }
    } else if (item.place == Place::kBlocks && (type == "BLOCK" || type == "ENDBLK")) {
      continue;
    } else {
      const bool entity = item.place != Place::kObjects;
      // The item's own integer groups pick among classes sharing its type.
      auto intGroup = [&](int code, long fallback) -> long {
        for (size_t k = item.begin + 1; k < item.end; ++k)
          if (mTokens[k].code == code) {
            long long v = 0;
            return ParseInteger(mTokens[k].value, v) ? static_cast<long>(v) : fallback;
          }
        return fallback;
      };
      std::unique_ptr<AcDbObject> made = NewObjectOfType(std::string_view(type), intGroup);
      // Of complex entities the host models heavy polylines (not meshes,
      // 16 and 64 in group 70) and block references with attributes.
      const bool complexModeled = item.followers.empty() ||
                                  (made && db::SequenceOf(made.get()) &&
                                   !(type == "POLYLINE" && (intGroup(70, 0) & (16 | 64))));
      const bool modeled = made && complexModeled && (AcDbEntity::cast(made.get()) != nullptr) == entity &&
                           !AcDbSymbolTableRecord::cast(made.get());
      if (modeled) {
        obj = made.release();
      } else {
        KeptData data;
        data.type = FromUtf8(type);
        obj = entity ? static_cast<AcDbObject*>(new KeptEntity(std::move(data))) : new KeptObject(std::move(data));
      }
    }
    AcDbStub* stub = mState.add(mDb, obj, item.handle);
    item.id = AcDbObjectId(stub);
  }
  return true;
}

// The common groups of an item: handle, reactors, extension dictionary,
// owner; where its own groups begin.
struct Head {
  AcDbObjectId owner, xdict;
  bool hasOwner = false;
  RawGroups reactors;
  size_t body = 0, xdata = 0, end = 0;
};

Head ParseHead(const std::vector<Token>& tokens, size_t begin, size_t end, const std::function<AcDbObjectId(std::uint64_t)>& resolve) {
  Head h;
  size_t k = begin + 1;
  while (k < end) {
    const Token& t = tokens[k];
    if (t.code == 5 || t.code == 105) {
      ++k;
    } else if (t.code == 102 && t.value == "{ACAD_XDICTIONARY") {
      for (++k; k < end && !(tokens[k].code == 102 && tokens[k].value == "}"); ++k) {
        std::uint64_t handle = 0;
        if (tokens[k].code == 360 && ParseHandle(tokens[k].value, handle)) h.xdict = resolve(handle);
      }
      if (k < end) ++k;  // the closing brace (absent in a malformed file)
    } else if (t.code == 102 && !t.value.empty() && t.value[0] == '{') {
      for (; k < end; ++k) {
        h.reactors.push_back({tokens[k].code, tokens[k].value});
        if (tokens[k].code == 102 && tokens[k].value == "}") break;
      }
      if (k < end) ++k;
    } else if (t.code == 330 && !h.hasOwner) {
      std::uint64_t handle = 0;
      if (ParseHandle(t.value, handle) && handle) h.owner = resolve(handle);
      h.hasOwner = true;
      ++k;
    } else {
      break;
    }
  }
  h.body = k;
  h.xdata = k;
  while (h.xdata < end && tokens[h.xdata].code != 1001) ++h.xdata;
  h.end = end;
  return h;
}

RawGroups ToRaw(const std::vector<Token>& tokens, size_t begin, size_t end) {
  RawGroups out;
  if (begin >= end) return out;
  out.reserve(end - begin);
  for (size_t k = begin; k < end; ++k) out.push_back({tokens[k].code, tokens[k].value});
  return out;
}

bool Reader::readFields(AcDbObject* obj, std::string_view type, const Head& head, std::wstring& why) {
  FileReader reader(mDb, mTokens.data() + head.body, mTokens.data() + head.xdata,
                    [this](std::uint64_t h) { return resolve(h); }, FileAnglesInDegrees(type));
  Access::fields(obj, reader);
  // A layer an entity names that the file lacks is made, as entmake does.
  for (GroupFiler::PendingRecord& p : reader.pendingRecords) {
    if (reader.failed()) break;
    if (p.table != mDb->layerTableId()) {
      reader.fail(L"no such record \"" + p.name + L"\"");
      break;
    }
    *p.target = ensureRecord(Table::kLayer, p.name.c_str(), [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbLayerTableRecord); });
  }
  why = reader.error();
  return !reader.failed();
}

bool Reader::readXdata(const Head& head, resbuf*& xdata) {
  RawGroups raw = ToRaw(mTokens, head.xdata, head.end);
  xdata = nullptr;
  return GroupsToChain(raw.data(), raw.data() + raw.size(), [this](std::uint64_t h) { return resolve(h); }, xdata);
}

AcDbObject* Reader::keepAsRead(Item& item, const Head& head) {
  AcDbStub* stub = item.id;
  AcDbObject* old = stub->object.get();
  KeptData data;
  data.type = FromUtf8(typeOf(item));
  data.reactors = head.reactors;
  data.body = ToRaw(mTokens, head.body, head.xdata);
  data.followers = ToRaw(mTokens, item.end, item.followersEnd);
  const AcDbObjectId layer = layerNamed(data.body);
  AcDbObject* kept = AcDbEntity::cast(old) ? static_cast<AcDbObject*>(new KeptEntity(std::move(data)))
                                           : new KeptObject(std::move(data));
  Access::setOwner(kept, old->ownerId());
  Access::setExtensionDictionary(kept, old->extensionDictionary());
  std::swap(Access::xdata(kept), Access::xdata(old));
  Access::setStub(old, nullptr);
  stub->object.reset(kept);
  Access::setStub(kept, stub);
  ExtrasOf(mDb).reactors.erase(stub);
  if (auto* e = AcDbEntity::cast(kept); e && !layer.isNull()) e->setLayer(layer);
  return kept;
}

AcDbObjectId Reader::layerNamed(const RawGroups& body) {
  for (const RawGroup& g : body)
    if (g.code == 8) {
      auto* table = db::PeekAs<AcDbSymbolTable>(mDb->layerTableId());
      AcDbObjectId found;
      if (table && table->getAt(FromUtf8(g.value).c_str(), found) == Acad::eOk) return found;
      break;
    }
  return mState.layerZero;
}

bool Reader::checkVertexCount(const Item& item) {
  long long claimed = -1, found = 0;
  size_t countAt = 0;
  for (size_t k = item.begin + 1; k < item.end; ++k) {
    if (mTokens[k].code == 90 && claimed < 0) {
      ParseInteger(mTokens[k].value, claimed);
      countAt = k;
    }
    if (mTokens[k].code == 10) ++found;
  }
  if (claimed >= 0 && claimed != found)
    return failAt(mTokens.lineOf(mTokens[countAt]), L"LWPOLYLINE claims " + std::to_wstring(claimed) +
                                                        L" vertices but has " + std::to_wstring(found));
  return true;
}

bool Reader::fillObject(Item& item, AcDbObjectId owner, bool mayKeep, const Head* parsed) {
  if (typeOf(item) == "LWPOLYLINE" && !checkVertexCount(item)) return false;
  AcDbObject* obj = objectOf(item.id);
  Head own;
  if (!parsed) own = ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); });
  const Head& head = parsed ? *parsed : own;
  auto line = [&] { return mTokens.lineOf(mTokens[item.begin]); };
  const TokenText& type = typeOf(item);
  if (owner.isNull()) owner = head.owner;

  // Xdata as the object keeps it: 1001 application, its groups, ...
  resbuf* xdata = nullptr;
  if (!readXdata(head, xdata)) return failAt(line(), L"out of memory");

  if (KeptEntity::cast(obj) || KeptObject::cast(obj)) {
    KeptData& data = KeptEntity::cast(obj) ? KeptEntity::cast(obj)->kept() : KeptObject::cast(obj)->kept();
    data.reactors = head.reactors;
    data.body = ToRaw(mTokens, head.body, head.xdata);
    data.followers = ToRaw(mTokens, item.end, item.followersEnd);
    if (auto* e = KeptEntity::cast(obj)) {
      const AcDbObjectId layer = layerNamed(data.body);
      if (!layer.isNull()) e->setLayer(layer);
    }
  } else {
    std::wstring why;
    if (!readFields(obj, type, head, why)) {
      if (!mayKeep) {
        acutRelRb(xdata);
        return failAt(line(), FromUtf8(type) + L": " + why);
      }
      // Kept as it was read rather than lost.
      obj = keepAsRead(item, head);
    } else if (!head.reactors.empty()) {
      ExtrasOf(mDb).reactors[item.id] = head.reactors;
    }
  }
  Access::setOwner(obj, owner);
  Access::setExtensionDictionary(obj, head.xdict);
  acutRelRb(Access::xdata(obj));
  Access::xdata(obj) = xdata;
  return true;
}

bool Reader::fillComplex(Item& item, AcDbObjectId owner) {
  if (!fillObject(item, owner, true)) return false;
  AcDbObject* head = objectOf(item.id);
  AcDbSubentSequence* seq = db::SequenceOf(head);
  if (!seq) return true;  // kept verbatim with its followers
  // Every follower is read before any joins the database: one that does
  // not read leaves the whole entity as the file gave it.
  struct Part {
    std::unique_ptr<AcDbObject> object;
    AcDbObjectId xdict;
    resbuf* xdata = nullptr;
  };
  std::vector<Part> parts;
  bool ok = true;
  const bool insert = AcDbBlockReference::cast(head) != nullptr;
  const bool is3d = AcDb3dPolyline::cast(head) != nullptr;
  for (size_t i = 0; ok && i < item.followers.size(); ++i) {
    const Follower& f = item.followers[i];
    const TokenText& type = mTokens[f.begin].value;
    auto intGroup = [&](int code, long fallback) -> long {
      for (size_t k = f.begin + 1; k < f.end; ++k)
        if (mTokens[k].code == code) {
          long long v = 0;
          return ParseInteger(mTokens[k].value, v) ? static_cast<long>(v) : fallback;
        }
      return fallback;
    };
    std::unique_ptr<AcDbObject> object = NewObjectOfType(std::string_view(type), intGroup);
    const bool last = i + 1 == item.followers.size();
    const AcDbObject* o = object.get();
    ok = last ? AcDbSequenceEnd::cast(o) != nullptr
              : insert ? AcDbAttribute::cast(o) != nullptr
                       : is3d ? AcDb3dPolylineVertex::cast(o) != nullptr : AcDb2dVertex::cast(o) != nullptr;
    Head h = ParseHead(mTokens, f.begin, f.end, [this](std::uint64_t handle) { return resolve(handle); });
    std::wstring why;
    Part part;
    ok = ok && readFields(object.get(), type, h, why) && readXdata(h, part.xdata);
    part.object = std::move(object);
    part.xdict = h.xdict;
    parts.push_back(std::move(part));
  }
  if (!ok) {
    for (Part& p : parts) acutRelRb(p.xdata);
    keepAsRead(item, ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); }));
    return true;
  }
  for (size_t i = 0; i < parts.size(); ++i) {
    AcDbObject* object = parts[i].object.release();
    AcDbStub* stub = mState.add(mDb, object, item.followers[i].handle);
    Access::setOwner(object, item.id);
    Access::setExtensionDictionary(object, parts[i].xdict);
    Access::xdata(object) = parts[i].xdata;
    if (i + 1 == parts.size()) seq->end = AcDbObjectId(stub);
    else seq->items.push_back(AcDbObjectId(stub));
  }
  return true;
}

bool Reader::fillTables() {
  AcDbSymbolTable* table = nullptr;
  RawGroups* unknown = nullptr;
  FileExtras& extras = ExtrasOf(mDb);
  for (Item& item : mItems) {
    if (item.place != Place::kTable) continue;
    const TokenText& type = typeOf(item);
    auto line = [&] { return mTokens.lineOf(mTokens[item.begin]); };
    if (type == "TABLE") {
      table = AcDbSymbolTable::cast(objectOf(item.id));
      unknown = nullptr;
      if (!table) {
        extras.unknownTables.push_back(ToRaw(mTokens, item.begin, item.end));
        unknown = &extras.unknownTables.back();
        continue;
      }
      if (!fillObject(item, AcDbObjectId(), false)) return false;
      mState.tables[static_cast<int>(item.table->table)] = item.id;
      continue;
    }
    if (type == "ENDTAB") {
      if (unknown) {
        auto raw = ToRaw(mTokens, item.begin, item.end);
        unknown->insert(unknown->end(), raw.begin(), raw.end());
      }
      table = nullptr;
      unknown = nullptr;
      continue;
    }
    if (unknown) {
      auto raw = ToRaw(mTokens, item.begin, item.end);
      unknown->insert(unknown->end(), raw.begin(), raw.end());
      continue;
    }
    auto* record = AcDbSymbolTableRecord::cast(objectOf(item.id));
    if (!table || !record) return failAt(line(), L"a table record outside its table");
    if (!record->isKindOf(static_cast<AcDbSymbolTable*>(table)->recordClass()))
      return failAt(line(), FromUtf8(type) + L" in the wrong table");
    if (auto* btr = AcDbBlockTableRecord::cast(record)) {
      // A block record's file groups are not its entity-list groups (70 is
      // the insertion units here, the flags on the BLOCK): read them here.
      Head head = ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); });
      BlockExtras& b = extras.blocks[static_cast<AcDbStub*>(item.id)];
      std::wstring name;
      for (size_t k = head.body; k < head.xdata; ++k) {
        const Token& t = mTokens[k];
        long long n = 0;
        std::uint64_t h = 0;
        if (t.code == 2 && name.empty()) {
          name = FromUtf8(t.value);
        } else if (t.code == 340 && ParseHandle(t.value, h)) {
          // A link to anything but a layout is dropped.
          btr->setLayoutId(resolve(h));
        } else if (t.code == 70 && ParseInteger(t.value, n)) {
          if (btr->setBlockInsertUnits(static_cast<AcDb::UnitsValue>(n)) != Acad::eOk)
            return failAt(mTokens.lineOf(t), L"BLOCK_RECORD: bad insertion units in group 70");
        } else if (t.code == 280 && ParseInteger(t.value, n)) {
          btr->setExplodable(n != 0);
        } else if (t.code == 281 && ParseInteger(t.value, n)) {
          btr->setBlockScaling(n != 0 ? AcDbBlockTableRecord::kUniform : AcDbBlockTableRecord::kAny);
        } else if (t.code != 100) {
          b.recordOther.push_back({t.code, t.value});
        }
      }
      if (name.empty()) return failAt(line(), L"BLOCK_RECORD: missing group 2");
      btr->setName(name.c_str());
      if (!head.reactors.empty()) extras.reactors[item.id] = head.reactors;
      Access::setOwner(btr, table->objectId());
      Access::setExtensionDictionary(btr, head.xdict);
      resbuf* xdata = nullptr;
      RawGroups xraw = ToRaw(mTokens, head.xdata, head.end);
      GroupsToChain(xraw.data(), xraw.data() + xraw.size(), [this](std::uint64_t h) { return resolve(h); }, xdata);
      Access::xdata(btr) = xdata;
    } else if (!fillObject(item, table->objectId(), false)) {
      return false;
    }
    AcDbObjectId existing;
    if (table->getAt(record->getName(), existing, true) == Acad::eOk)
      return failAt(line(), FromUtf8(type) + L" \"" + record->getName() + L"\" appears twice");
    Access::index(table, record, item.id);
    // Standard records as the database knows them.
    const std::wstring upper = ToUpper(record->getName());
    if (AcDbLinetypeTableRecord::cast(record)) {
      if (upper == L"BYLAYER") mState.byLayer = item.id;
      if (upper == L"BYBLOCK") mState.byBlock = item.id;
      if (upper == L"CONTINUOUS") mState.continuous = item.id;
    } else if (AcDbLayerTableRecord::cast(record) && upper == L"0") {
      mState.layerZero = item.id;
    } else if (AcDbBlockTableRecord::cast(record)) {
      if (upper == L"*MODEL_SPACE") mState.modelSpace = item.id;
      if (upper == L"*PAPER_SPACE") mState.paperSpace = item.id;
    }
  }
  return true;
}

bool Reader::fillBlocks() {
  const Section* s = section("BLOCKS");
  if (!s) return true;
  FileExtras& extras = ExtrasOf(mDb);
  AcDbObjectId block;
  for (Item& item : mItems) {
    if (item.place != Place::kBlocks) continue;
    const TokenText& type = typeOf(item);
    auto line = [&] { return mTokens.lineOf(mTokens[item.begin]); };
    if (type == "BLOCK") {
      Head head = ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); });
      // The entity part: up to the AcDbBlockBegin marker, or (files
      // without markers) the layer and space groups.
      size_t blockPart = head.body;
      while (blockPart < head.end && !(mTokens[blockPart].code == 100 && mTokens[blockPart].value == "AcDbBlockBegin"))
        ++blockPart;
      const bool marked = blockPart < head.end;
      if (!marked) blockPart = head.body;
      RawGroups entityPart = ToRaw(mTokens, head.body, blockPart), other;
      std::wstring name, path, comments;
      AcGePoint3d origin;
      long long flags = 0;
      for (size_t k = marked ? blockPart + 1 : blockPart; k < head.end; ++k) {
        const Token& t = mTokens[k];
        if (t.code == 2 && name.empty()) name = FromUtf8(t.value);
        else if (t.code == 10) ParseReal(t.value, origin.x);
        else if (t.code == 20) ParseReal(t.value, origin.y);
        else if (t.code == 30) ParseReal(t.value, origin.z);
        else if (t.code == 70) ParseInteger(t.value, flags);
        else if (t.code == 1) path = FromUtf8(t.value);
        else if (t.code == 4) comments = FromUtf8(t.value);
        else if (!marked && (t.code == 8 || t.code == 67)) entityPart.push_back({t.code, t.value});
        else if (t.code != 2 && t.code != 3) other.push_back({t.code, t.value});
      }
      if (name.empty()) return failAt(line(), L"BLOCK: missing group 2");
      // R12 names the layouts' blocks differently.
      if (EqualNoCase(name, L"$MODEL_SPACE")) name = ACDB_MODEL_SPACE;
      if (EqualNoCase(name, L"$PAPER_SPACE")) name = ACDB_PAPER_SPACE;
      block = ensureRecord(Table::kBlock, name.c_str(), [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbBlockTableRecord); });
      auto* btr = db::PeekAs<AcDbBlockTableRecord>(block);
      if (!btr) return failAt(line(), L"BLOCK \"" + name + L"\" cannot be made");
      btr->setOrigin(origin);
      btr->setPathName(path.c_str());
      btr->setComments(comments.c_str());
      Access::flags(btr) = static_cast<short>(flags);
      BlockExtras& b = extras.blocks[static_cast<AcDbStub*>(block)];
      b.beginHandle = item.handle;
      b.beginEntity = std::move(entityPart);
      b.beginOther = std::move(other);
      continue;
    }
    if (block.isNull()) return failAt(line(), FromUtf8(type) + L" outside a block");
    if (type == "ENDBLK") {
      Head head = ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); });
      BlockExtras& b = extras.blocks[static_cast<AcDbStub*>(block)];
      b.endHandle = item.handle;
      b.endBody = ToRaw(mTokens, head.body, head.end);
      block.setNull();
      continue;
    }
    if (!(item.followers.empty() ? fillObject(item, block, true) : fillComplex(item, block))) return false;
    auto* btr = db::PeekAs<AcDbBlockTableRecord>(block);
    AcDbObject* obj = objectOf(item.id);
    Access::setOwner(obj, block);
    Access::entities(btr).push_back(item.id);
  }
  if (!block.isNull()) return failAt(mTokens.lineOf(mTokens[s->end]), L"a block without ENDBLK");
  return true;
}

bool Reader::fillEntities(const Section& s) {
  AcDbObjectId lastOwner;
  AcDbBlockTableRecord* lastBlock = nullptr;
  for (Item& item : mItems) {
    if (item.place != Place::kEntities) continue;
    // The owner: the block the entity names, else its space (67).
    Head head = ParseHead(mTokens, item.begin, item.end, [this](std::uint64_t h) { return resolve(h); });
    AcDbObjectId owner = head.owner;
    // Entities come in long runs of the same owner.
    if (owner != lastOwner) {
      lastBlock = AcDbBlockTableRecord::cast(objectOf(owner));
      lastOwner = owner;
    }
    AcDbBlockTableRecord* block = lastBlock;
    if (!block) {
      bool paper = false;
      for (size_t k = head.body; k < head.xdata; ++k)
        if (mTokens[k].code == 67) paper = mTokens[k].value.find('1') != std::string::npos;
      owner = paper ? mState.paperSpace : mState.modelSpace;
      block = AcDbBlockTableRecord::cast(objectOf(owner));
    }
    if (!(item.followers.empty() ? fillObject(item, owner, true, &head) : fillComplex(item, owner))) return false;
    Access::setOwner(objectOf(item.id), owner);
    Access::entities(block).push_back(item.id);
  }
  (void)s;
  return true;
}

bool Reader::fillObjects() {
  bool first = true;
  for (Item& item : mItems) {
    if (item.place != Place::kObjects) continue;
    if (!fillObject(item, AcDbObjectId(), true)) return false;
    // The first dictionary is the named-object dictionary.
    if (first && AcDbDictionary::cast(objectOf(item.id))) mState.namedObjects = item.id;
    first = false;
  }
  return true;
}

AcDbObjectId Reader::ensureTable(Table t) {
  AcDbObjectId& slot = mState.tables[static_cast<int>(t)];
  if (!slot.isNull()) return slot;
  for (const TableKind& k : kTables)
    if (k.table == t) {
      AcDbSymbolTable* table = k.make();
      slot = AcDbObjectId(mState.add(mDb, table));
    }
  return slot;
}

AcDbObjectId Reader::ensureRecord(Table t, const wchar_t* name, AcDbSymbolTableRecord* (*make)()) {
  auto* table = db::PeekAs<AcDbSymbolTable>(ensureTable(t));
  AcDbObjectId id;
  if (!table) return id;
  if (table->getAt(name, id) == Acad::eOk) return id;
  AcDbSymbolTableRecord* record = make();
  record->setName(name);
  if (table->add(id, record) != Acad::eOk) delete record;  // the table is open for write while reading
  return id;
}

void Reader::complete() {
  for (int t = 0; t < static_cast<int>(Table::kCount); ++t) ensureTable(static_cast<Table>(t));
  auto linetype = [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbLinetypeTableRecord); };
  if (mState.byBlock.isNull()) mState.byBlock = ensureRecord(Table::kLinetype, L"ByBlock", linetype);
  if (mState.byLayer.isNull()) mState.byLayer = ensureRecord(Table::kLinetype, L"ByLayer", linetype);
  if (mState.continuous.isNull()) mState.continuous = ensureRecord(Table::kLinetype, L"Continuous", linetype);
  if (mState.layerZero.isNull())
    mState.layerZero = ensureRecord(Table::kLayer, L"0", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbLayerTableRecord); });
  auto block = [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbBlockTableRecord); };
  if (mState.modelSpace.isNull()) mState.modelSpace = ensureRecord(Table::kBlock, ACDB_MODEL_SPACE, block);
  if (mState.paperSpace.isNull()) mState.paperSpace = ensureRecord(Table::kBlock, ACDB_PAPER_SPACE, block);
  mState.textstyle = ensureRecord(Table::kTextStyle, L"Standard", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbTextStyleTableRecord); });
  ensureRecord(Table::kRegApp, L"ACAD", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbRegAppTableRecord); });
  AcDbObjectId dimstyle = ensureRecord(Table::kDimStyle, L"Standard", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbDimStyleTableRecord); });
  if (mState.dimstyle.isNull()) mState.dimstyle = dimstyle;
  mState.clayer = mState.layerZero;
  mState.celtype = mState.byLayer;

  if (mState.namedObjects.isNull()) {
    auto* nod = new AcDbDictionary;
    mState.namedObjects = AcDbObjectId(mState.add(mDb, nod));
  }
  auto* nod = db::PeekAs<AcDbDictionary>(mState.namedObjects);
  auto entry = [&](const wchar_t* key) {
    AcDbObjectId id;
    if (nod->getAt(key, id) == Acad::eOk) return id;
    auto* dict = new AcDbDictionary;
    if (nod->setAt(key, dict, id) != Acad::eOk) delete dict;
    return id;
  };
  mState.groups = entry(L"ACAD_GROUP");
  mState.layouts = entry(L"ACAD_LAYOUT");
  ApplyOwnHeaderVars(mDb, mOwnVars);
}

bool Reader::run(std::wstring& error) {
  if (!splitSections()) return error = mError, false;
  if (!section("ENTITIES") && !section("TABLES"))
    return error = AtLine(mTokens.empty() ? 1 : mTokens.lineOf(mTokens.front()), L"no ENTITIES section: not a drawing"), false;
  FileExtras& extras = ExtrasOf(mDb);
  if (const Section* h = section("HEADER")) {
    if (!ReadHeader(mTokens, h->begin, h->end, mDb, mOwnVars, error)) return false;
    extras.version = mOwnVars.count(L"ACADVER") ? mOwnVars[L"ACADVER"] : "";
    std::uint64_t handSeed = 0;
    if (mOwnVars.count(L"HANDSEED") && ParseHandle(mOwnVars[L"HANDSEED"], handSeed) && handSeed > mState.nextHandle)
      mState.nextHandle = handSeed;
  }
  if (const Section* c = section("CLASSES")) extras.classes = ToRaw(mTokens, c->begin, c->end);
  for (const char* name : {"THUMBNAILIMAGE", "ACDSDATA"})
    if (const Section* o = section(name)) extras.otherSections.push_back({name, ToRaw(mTokens, o->begin, o->end)});
  const std::pair<const char*, Place> places[] = {
      {"TABLES", Place::kTable}, {"BLOCKS", Place::kBlocks}, {"ENTITIES", Place::kEntities}, {"OBJECTS", Place::kObjects}};
  for (const auto& p : places)
    if (const Section* s = section(p.first))
      if (!collectItems(*s, p.second)) return error = mError, false;
  if (!createObjects() || !fillTables()) return error = mError, false;
  // The layouts' blocks and layer 0 exist before any entity is read.
  auto block = [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbBlockTableRecord); };
  if (mState.modelSpace.isNull()) mState.modelSpace = ensureRecord(Table::kBlock, ACDB_MODEL_SPACE, block);
  if (mState.paperSpace.isNull()) mState.paperSpace = ensureRecord(Table::kBlock, ACDB_PAPER_SPACE, block);
  if (mState.layerZero.isNull())
    mState.layerZero = ensureRecord(Table::kLayer, L"0", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbLayerTableRecord); });
  if (mState.byLayer.isNull())
    mState.byLayer = ensureRecord(Table::kLinetype, L"ByLayer", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbLinetypeTableRecord); });
  // Texts and attributes name the Standard style unless they say otherwise.
  ensureRecord(Table::kTextStyle, L"Standard", [] { return static_cast<AcDbSymbolTableRecord*>(new AcDbTextStyleTableRecord); });
  if (!fillBlocks()) return error = mError, false;
  if (const Section* s = section("ENTITIES"))
    if (!fillEntities(*s)) return error = mError, false;
  if (!fillObjects()) return error = mError, false;
  complete();
  if (!mError.empty()) return error = mError, false;
  return true;
}

}  // namespace

bool ReadDxf(const std::string& bytes, AcDbDatabase* db, std::wstring& error) {
  TokenList tokens;
  if (!Tokenize(bytes, tokens, error)) return false;
  Reader reader(db, tokens);
  const bool ok = reader.run(error);
  // Everything the reader made is still open for write: done with it.
  for (auto& stub : db->state().stubs)
    if (stub->writer && stub->object) stub->object->close();
  // What an older file lacks: layouts, plot style names, ...
  if (ok) db::EnsureStandardObjects(db);
  return ok;
}

}  // namespace kelhost::dxf
