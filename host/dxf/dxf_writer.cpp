// Writing a database as DXF 2013 (AC1027, UTF-8): HEADER from the
// database's variables, CLASSES, TABLES, BLOCKS (each block's BLOCK and
// ENDBLK with their handles kept from the file or given once), ENTITIES
// (model space, then paper space; a complex entity followed by its
// vertices or attributes and SEQEND), OBJECTS (the named-object dictionary
// first). Objects the host does not model are written back as read.
#include <cstdio>
#include <iterator>
#include <unordered_map>

#include "arx/dbblkref.h"
#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "dxf/dxf_file.h"
#include "dxf/file_extras.h"
#include "dxf/file_filer.h"
#include "dxf/header_io.h"
#include "dxf/huge_pages.h"
#include "db/sequences.h"
#include "dxf/kept_object.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

using db::Table;

class Writer {
 public:
  explicit Writer(AcDbDatabase* db) : mDb(db), mState(db->state()), mExtras(ExtrasOf(db)) {}
  bool run(std::string& out, std::wstring& error);

 private:
  // The writer's own groups go straight into the text, after any groups
  // gathered before them.
  void group(int code, std::string_view value) {
    flush();
    AppendGroupLine(code, value, mText);
  }
  // A reference as its handle, "0" for none or one erased.
  void handle(int code, AcDbObjectId id) {
    flush();
    AcDbStub* stub = id;
    if (db::IsLiveStub(stub) && !stub->erased) AppendHandleGroup(code, stub->handle, mText);
    else AppendGroupLine(code, "0", mText);
  }
  // What the writer needs of a modelled object's class, found once per class.
  struct ClassFacts {
    std::string type;  // DXF name, UTF-8
    int handleCode;    // 105 for a dimension style, else 5
    bool kept;         // objects of the class keep a file's groups
    bool inObjects;    // written in OBJECTS: not an entity, table or record
  };
  const ClassFacts& factsOf(AcDbObject* obj);
  void object(AcDbObject* obj);
  void reactors(const AcDbObject* obj);
  void blockEntityGroups(const RawGroups& read, bool paper);
  void classes();
  void table(Table t, const char* name);
  void blockRecord(AcDbBlockTableRecord* btr);
  void blocks();
  void entitiesOf(AcDbObjectId block);
  void objects();
  BlockExtras& extrasOf(AcDbBlockTableRecord* btr);
  bool isLayout(AcDbObjectId id) const { return id == mState.modelSpace || id == mState.paperSpace; }

  // Turns the groups so far into the file's text: done after each entity,
  // so that a drawing's groups are never all held at once.
  void flush() {
    if (mOut.empty()) return;
    AppendGroupLines(mOut.data(), mOut.data() + mOut.size(), mText);
    mOut.clear();
  }

  AcDbDatabase* mDb;
  db::DatabaseState& mState;
  FileExtras& mExtras;
  RawGroups mOut;
  std::string mText;
  std::unordered_map<const AcRxClass*, ClassFacts> mClassFacts;
  // Objects come in runs of one class: the last class's facts are at hand.
  const AcRxClass* mLastClass = nullptr;
  const ClassFacts* mLastFacts = nullptr;
  std::wstring mError;
};

void Writer::reactors(const AcDbObject* obj) {
  auto it = mExtras.reactors.find(static_cast<AcDbStub*>(obj->objectId()));
  if (it == mExtras.reactors.end()) return;
  // Reactors that are gone are left out; a group left empty goes too.
  RawGroups live;
  for (const RawGroup& g : it->second) {
    std::uint64_t h = 0;
    if (g.code == 330 || g.code == 360) {
      if (!ParseHandle(g.value, h)) continue;
      auto found = mState.byHandle.find(h);
      if (found == mState.byHandle.end() || found->second->erased || !found->second->object) continue;
    }
    live.push_back(g);
  }
  if (live.size() > 2) mOut.insert(mOut.end(), live.begin(), live.end());
}

const Writer::ClassFacts& Writer::factsOf(AcDbObject* obj) {
  const AcRxClass* cls = obj->isA();
  if (cls == mLastClass) return *mLastFacts;
  auto [it, added] = mClassFacts.try_emplace(cls);
  if (added) {
    const bool table = AcDbEntity::cast(obj) || AcDbSymbolTable::cast(obj) || AcDbSymbolTableRecord::cast(obj);
    it->second = {ToUtf8(cls->dxfName()), AcDbDimStyleTableRecord::cast(obj) ? 105 : 5, KeptDataOf(obj) != nullptr,
                  !table};
  }
  mLastClass = cls;
  mLastFacts = &it->second;
  return it->second;
}

void Writer::object(AcDbObject* obj) {
  const ClassFacts& classFacts = factsOf(obj);
  const KeptData* kept = classFacts.kept ? KeptDataOf(obj) : nullptr;
  const ClassFacts* facts = kept ? nullptr : &classFacts;
  const std::string keptType = kept ? ToUtf8(kept->type) : std::string();
  const std::string& type = kept ? keptType : facts->type;
  group(0, type);
  handle(facts ? facts->handleCode : 5, obj->objectId());
  if (kept) mOut.insert(mOut.end(), kept->reactors.begin(), kept->reactors.end());
  else reactors(obj);
  const AcDbObjectId xdict = obj->extensionDictionary();
  if (!xdict.isNull() && !xdict.isErased()) {
    group(102, "{ACAD_XDICTIONARY");
    handle(360, xdict);
    group(102, "}");
  }
  handle(330, obj->ownerId());
  bool follows = false;  // 66 written as 1: vertices or attributes follow
  if (kept) {
    mOut.insert(mOut.end(), kept->body.begin(), kept->body.end());
  } else {
    flush();  // the groups so far go first
    FileWriter w(mDb, mText, FileAnglesInDegrees(type));
    Access::fields(obj, w);
    if (w.failed() && mError.empty()) mError = FromUtf8(type) + L": " + w.error();
    follows = w.follows();
  }
  ChainToGroups(Access::xdata(obj), mOut);
  if (kept) mOut.insert(mOut.end(), kept->followers.begin(), kept->followers.end());
  // A complex entity's vertices or attributes follow it, then its SEQEND.
  if (AcDbSubentSequence* seq = follows ? db::SequenceOf(obj) : nullptr) {
    for (const AcDbObjectId& id : seq->items)
      if (!id.isErased())
        if (AcDbObject* sub = db::Peek(id)) object(sub);
    if (AcDbObject* end = db::Peek(seq->end)) object(end);
  }
}

// The classes of the file read, then those of the host's objects that are
// not built into the format, when the drawing has any.
void Writer::classes() {
  mOut.insert(mOut.end(), mExtras.classes.begin(), mExtras.classes.end());
  struct ClassInfo {
    const char* dxfName;
    const char* cppName;
  };
  static const ClassInfo kClasses[] = {{"ACDBDICTIONARYWDFLT", "AcDbDictionaryWithDefault"},
                                       {"ACDBPLACEHOLDER", "AcDbPlaceHolder"},
                                       {"LAYOUT", "AcDbLayout"},
                                       {"PLOTSETTINGS", "AcDbPlotSettings"}};
  // How many objects of each: one pass over the database.
  size_t counts[std::size(kClasses)] = {};
  const ClassFacts* lastFacts = nullptr;
  int lastIndex = -1;
  for (const auto& stub : mState.stubs) {
    if (!stub->object || stub->erased) continue;
    const ClassFacts& facts = factsOf(stub->object.get());
    if (&facts != lastFacts) {
      lastFacts = &facts;
      lastIndex = -1;
      for (size_t i = 0; i < std::size(kClasses) && !facts.kept; ++i)
        if (facts.type == kClasses[i].dxfName) lastIndex = static_cast<int>(i);
    }
    if (lastIndex >= 0) ++counts[lastIndex];
  }
  for (const ClassInfo& c : kClasses) {
    bool listed = false;
    for (size_t i = 0; i + 1 < mExtras.classes.size() && !listed; ++i)
      listed = mExtras.classes[i].code == 0 && mExtras.classes[i + 1].code == 1 &&
               EqualNoCase(FromUtf8(mExtras.classes[i + 1].value), FromUtf8(c.dxfName));
    if (listed) continue;
    const size_t count = counts[&c - kClasses];
    if (count == 0) continue;
    group(0, "CLASS");
    group(1, c.dxfName);
    group(2, c.cppName);
    group(3, "ObjectDBX Classes");
    group(90, "0");
    group(91, std::to_string(count));
    group(280, "0");
    group(281, "0");
  }
}

void Writer::table(Table t, const char* name) {
  auto* tbl = db::PeekAs<AcDbSymbolTable>(mState.tables[static_cast<int>(t)]);
  if (!tbl) return;
  std::vector<AcDbObjectId> live;
  for (AcDbObjectId id : Access::records(tbl))
    if (!id.isErased()) live.push_back(id);
  group(0, "TABLE");
  group(2, name);
  handle(5, tbl->objectId());
  group(330, "0");
  group(100, "AcDbSymbolTable");
  group(70, std::to_string(live.size()));
  if (t == Table::kDimStyle) {
    group(100, "AcDbDimStyleTable");
    group(71, "0");
  }
  for (AcDbObjectId id : live) {
    AcDbObject* obj = db::Peek(id);
    if (auto* btr = AcDbBlockTableRecord::cast(obj)) blockRecord(btr);
    else object(obj);
  }
  group(0, "ENDTAB");
}

BlockExtras& Writer::extrasOf(AcDbBlockTableRecord* btr) {
  BlockExtras& b = mExtras.blocks[static_cast<AcDbStub*>(btr->objectId())];
  // A block made in the host gets its BLOCK and ENDBLK handles once.
  if (b.beginHandle == 0) b.beginHandle = mState.nextHandle++;
  if (b.endHandle == 0) b.endHandle = mState.nextHandle++;
  return b;
}

void Writer::blockRecord(AcDbBlockTableRecord* btr) {
  BlockExtras& b = extrasOf(btr);
  group(0, "BLOCK_RECORD");
  handle(5, btr->objectId());
  const AcDbObjectId xdict = btr->extensionDictionary();
  if (!xdict.isNull() && !xdict.isErased()) {
    group(102, "{ACAD_XDICTIONARY");
    handle(360, xdict);
    group(102, "}");
  }
  handle(330, btr->ownerId());
  group(100, "AcDbSymbolTableRecord");
  group(100, "AcDbBlockTableRecord");
  group(2, ToUtf8(btr->getName()));
  handle(340, btr->getLayoutId());
  group(70, std::to_string(static_cast<int>(btr->blockInsertUnits())));
  group(280, btr->explodable() ? "1" : "0");
  group(281, btr->blockScaling() == AcDbBlockTableRecord::kUniform ? "1" : "0");
  mOut.insert(mOut.end(), b.recordOther.begin(), b.recordOther.end());
  ChainToGroups(Access::xdata(btr), mOut);
}

// A BLOCK's or ENDBLK's entity groups: as read when the file had subclass
// markers; else (a new block, an R12 file) its layer and space.
void Writer::blockEntityGroups(const RawGroups& read, bool paper) {
  if (!read.empty() && read.front().code == 100) {
    mOut.insert(mOut.end(), read.begin(), read.end());
    return;
  }
  group(100, "AcDbEntity");
  bool layer = false, space = false;
  for (const RawGroup& g : read)
    if (g.code == 8 || g.code == 67) {
      mOut.push_back(g);
      layer = layer || g.code == 8;
      space = space || g.code == 67;
    }
  if (paper && !space) group(67, "1");
  if (!layer) group(8, "0");
}

void Writer::blocks() {
  auto* bt = db::PeekAs<AcDbSymbolTable>(mState.tables[static_cast<int>(Table::kBlock)]);
  if (!bt) return;
  for (AcDbObjectId id : Access::records(bt)) {
    auto* btr = db::PeekAs<AcDbBlockTableRecord>(id);
    if (!btr || id.isErased()) continue;
    BlockExtras& b = extrasOf(btr);
    const std::string name = ToUtf8(btr->getName());
    const AcGePoint3d origin = btr->origin();
    group(0, "BLOCK");
    group(5, HandleText(b.beginHandle));
    handle(330, id);
    blockEntityGroups(b.beginEntity, id == mState.paperSpace);
    // The block's own part from the block record.
    short flags = Access::flags(btr);
    if (name.size() > 1 && name[0] == '*' && !isLayout(id)) flags |= 1;  // *U..., *D...: anonymous
    const ACHAR* path = L"";
    const ACHAR* comments = L"";
    btr->pathName(path);
    btr->comments(comments);
    group(100, "AcDbBlockBegin");
    group(2, name);
    group(70, std::to_string(flags));
    group(10, FormatReal(origin.x));
    group(20, FormatReal(origin.y));
    group(30, FormatReal(origin.z));
    group(3, name);
    group(1, ToUtf8(path));
    if (*comments) group(4, ToUtf8(comments));
    mOut.insert(mOut.end(), b.beginOther.begin(), b.beginOther.end());
    if (!isLayout(id)) entitiesOf(id);
    group(0, "ENDBLK");
    group(5, HandleText(b.endHandle));
    handle(330, id);
    bool marked = false;
    for (const RawGroup& g : b.endBody) marked = marked || (g.code == 100 && g.value == "AcDbBlockEnd");
    if (marked) {
      mOut.insert(mOut.end(), b.endBody.begin(), b.endBody.end());
    } else {
      blockEntityGroups(b.endBody, id == mState.paperSpace);
      group(100, "AcDbBlockEnd");
    }
  }
}

void Writer::entitiesOf(AcDbObjectId block) {
  auto* btr = db::PeekAs<AcDbBlockTableRecord>(block);
  if (!btr) return;
  // The block's own entities: live stubs of this database.
  for (AcDbObjectId id : Access::entities(btr)) {
    const AcDbStub* stub = id;
    if (stub && !stub->erased && stub->object) {
      object(stub->object.get());
      flush();
    }
  }
}

void Writer::objects() {
  if (AcDbObject* nod = db::Peek(mState.namedObjects)) object(nod);
  for (const auto& stub : mState.stubs) {
    AcDbObject* obj = stub->object.get();
    if (!obj || stub->erased || AcDbObjectId(stub.get()) == mState.namedObjects) continue;
    if (factsOf(obj).inObjects) object(obj);
  }
}

bool Writer::run(std::string& out, std::wstring& error) {
  TakeNonFiniteGroup();
  // Block handles first, so that $HANDSEED lies above all of them.
  if (auto* bt = db::PeekAs<AcDbSymbolTable>(mState.tables[static_cast<int>(Table::kBlock)]))
    for (AcDbObjectId id : Access::records(bt))
      if (auto* btr = db::PeekAs<AcDbBlockTableRecord>(id)) extrasOf(btr);

  // Room for the whole text at once (a few hundred bytes an object; pages
  // never written are never touched): growing it would copy it repeatedly.
  mText.reserve(mState.stubs.size() * 256 + 4096);
  AdviseHugePages(mText.data(), mText.capacity());
  auto section = [this](const char* name) {
    group(0, "SECTION");
    group(2, name);
  };
  section("HEADER");
  WriteHeader(mDb, mState.nextHandle, mOut);
  group(0, "ENDSEC");
  section("CLASSES");
  classes();
  group(0, "ENDSEC");
  section("TABLES");
  table(Table::kViewport, "VPORT");
  table(Table::kLinetype, "LTYPE");
  table(Table::kLayer, "LAYER");
  table(Table::kTextStyle, "STYLE");
  table(Table::kView, "VIEW");
  table(Table::kUcs, "UCS");
  table(Table::kRegApp, "APPID");
  table(Table::kDimStyle, "DIMSTYLE");
  table(Table::kBlock, "BLOCK_RECORD");
  for (const RawGroups& t : mExtras.unknownTables) mOut.insert(mOut.end(), t.begin(), t.end());
  group(0, "ENDSEC");
  section("BLOCKS");
  blocks();
  group(0, "ENDSEC");
  section("ENTITIES");
  entitiesOf(mState.modelSpace);
  entitiesOf(mState.paperSpace);
  group(0, "ENDSEC");
  section("OBJECTS");
  objects();
  group(0, "ENDSEC");
  for (const auto& s : mExtras.otherSections) {
    section(s.first.c_str());
    mOut.insert(mOut.end(), s.second.begin(), s.second.end());
    group(0, "ENDSEC");
  }
  group(0, "EOF");
  if (!mError.empty()) return error = mError, false;
  // A file that holds "inf" or "nan" would not open again: not written.
  if (const int code = TakeNonFiniteGroup())
    return error = L"the drawing holds a number that is not finite" +
                   (code > 0 ? L" (group " + std::to_wstring(code) + L")" : std::wstring()) + L"; nothing was written",
           false;

  flush();
  out = std::move(mText);
  return true;
}

}  // namespace

bool WriteDxf(AcDbDatabase* db, std::string& out, std::wstring& error) { return Writer(db).run(out, error); }

}  // namespace kelhost::dxf
