// Writing a database as DXF 2013 (AC1027, UTF-8): HEADER from the
// database's variables, CLASSES, TABLES, BLOCKS (each block's BLOCK and
// ENDBLK with their handles kept from the file or given once), ENTITIES
// (model space, then paper space), OBJECTS (the named-object dictionary
// first). Objects the host does not model are written back as read.
#include <cstdio>

#include "arx/dbdict.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "dxf/access.h"
#include "dxf/dxf_file.h"
#include "dxf/file_extras.h"
#include "dxf/file_filer.h"
#include "dxf/header_io.h"
#include "dxf/kept_object.h"
#include "kelhost/text.h"

namespace kelhost::dxf {
namespace {

using db::Table;

std::string HandleOf(AcDbObjectId id) {
  AcDbStub* stub = id;
  return db::IsLiveStub(stub) && !stub->erased ? HandleText(stub->handle) : "0";
}

class Writer {
 public:
  explicit Writer(AcDbDatabase* db) : mDb(db), mState(db->state()), mExtras(ExtrasOf(db)) {}
  bool run(std::string& out, std::wstring& error);

 private:
  void group(int code, const std::string& value) { mOut.push_back({code, value}); }
  void object(AcDbObject* obj);
  void table(Table t, const char* name);
  void blockRecord(AcDbBlockTableRecord* btr);
  void blocks();
  void entitiesOf(AcDbObjectId block);
  void objects();
  BlockExtras& extrasOf(AcDbBlockTableRecord* btr);
  bool isLayout(AcDbObjectId id) const { return id == mState.modelSpace || id == mState.paperSpace; }

  AcDbDatabase* mDb;
  db::DatabaseState& mState;
  FileExtras& mExtras;
  RawGroups mOut;
  std::wstring mError;
};

void Writer::object(AcDbObject* obj) {
  const KeptData* kept = KeptDataOf(obj);
  const std::wstring type = kept ? kept->type : obj->isA()->dxfName();
  group(0, ToUtf8(type));
  group(AcDbDimStyleTableRecord::cast(obj) ? 105 : 5, HandleOf(obj->objectId()));
  if (kept) mOut.insert(mOut.end(), kept->reactors.begin(), kept->reactors.end());
  const AcDbObjectId xdict = obj->extensionDictionary();
  if (!xdict.isNull() && !xdict.isErased()) {
    group(102, "{ACAD_XDICTIONARY");
    group(360, HandleOf(xdict));
    group(102, "}");
  }
  group(330, HandleOf(obj->ownerId()));
  if (kept) {
    mOut.insert(mOut.end(), kept->body.begin(), kept->body.end());
  } else {
    FileWriter w(mDb, mOut, FileAnglesInDegrees(type));
    Access::fields(obj, w);
    if (w.failed() && mError.empty()) mError = type + L": " + w.error();
  }
  ChainToGroups(Access::xdata(obj), mOut);
  if (kept) mOut.insert(mOut.end(), kept->followers.begin(), kept->followers.end());
}

void Writer::table(Table t, const char* name) {
  auto* tbl = db::PeekAs<AcDbSymbolTable>(mState.tables[static_cast<int>(t)]);
  if (!tbl) return;
  std::vector<AcDbObjectId> live;
  for (AcDbObjectId id : Access::records(tbl))
    if (!id.isErased()) live.push_back(id);
  group(0, "TABLE");
  group(2, name);
  group(5, HandleOf(tbl->objectId()));
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
  group(5, HandleOf(btr->objectId()));
  const AcDbObjectId xdict = btr->extensionDictionary();
  if (!xdict.isNull() && !xdict.isErased()) {
    group(102, "{ACAD_XDICTIONARY");
    group(360, HandleOf(xdict));
    group(102, "}");
  }
  group(330, HandleOf(btr->ownerId()));
  group(100, "AcDbSymbolTableRecord");
  group(100, "AcDbBlockTableRecord");
  group(2, ToUtf8(btr->getName()));
  if (b.recordBody.empty()) {
    group(70, "0");  // insertion units: none
    group(280, "1");
    group(281, "0");
  } else {
    mOut.insert(mOut.end(), b.recordBody.begin(), b.recordBody.end());
  }
  ChainToGroups(Access::xdata(btr), mOut);
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
    group(330, HandleOf(id));
    if (b.beginBody.empty()) {
      group(100, "AcDbEntity");
      if (id == mState.paperSpace) group(67, "1");
      group(8, "0");
      group(100, "AcDbBlockBegin");
      group(2, name);
      group(70, name.size() > 1 && name[0] == '*' && !isLayout(id) ? "1" : "0");
      group(10, FormatReal(origin.x));
      group(20, FormatReal(origin.y));
      group(30, FormatReal(origin.z));
      group(3, name);
      group(1, "");
    } else {
      // As read, with the block's current name and base point.
      for (RawGroup g : b.beginBody) {
        if (g.code == 2 || g.code == 3) g.value = name;
        if (g.code == 10) g.value = FormatReal(origin.x);
        if (g.code == 20) g.value = FormatReal(origin.y);
        if (g.code == 30) g.value = FormatReal(origin.z);
        mOut.push_back(g);
      }
    }
    if (!isLayout(id)) entitiesOf(id);
    group(0, "ENDBLK");
    group(5, HandleText(b.endHandle));
    group(330, HandleOf(id));
    if (b.endBody.empty()) {
      group(100, "AcDbEntity");
      if (id == mState.paperSpace) group(67, "1");
      group(8, "0");
      group(100, "AcDbBlockEnd");
    } else {
      mOut.insert(mOut.end(), b.endBody.begin(), b.endBody.end());
    }
  }
}

void Writer::entitiesOf(AcDbObjectId block) {
  auto* btr = db::PeekAs<AcDbBlockTableRecord>(block);
  if (!btr) return;
  for (AcDbObjectId id : Access::entities(btr))
    if (!id.isErased())
      if (AcDbObject* obj = db::Peek(id)) object(obj);
}

void Writer::objects() {
  if (AcDbObject* nod = db::Peek(mState.namedObjects)) object(nod);
  for (const auto& stub : mState.stubs) {
    AcDbObject* obj = stub->object.get();
    if (!obj || stub->erased || AcDbObjectId(stub.get()) == mState.namedObjects) continue;
    if (AcDbEntity::cast(obj) || AcDbSymbolTable::cast(obj) || AcDbSymbolTableRecord::cast(obj)) continue;
    object(obj);
  }
}

bool Writer::run(std::string& out, std::wstring& error) {
  // Block handles first, so that $HANDSEED lies above all of them.
  if (auto* bt = db::PeekAs<AcDbSymbolTable>(mState.tables[static_cast<int>(Table::kBlock)]))
    for (AcDbObjectId id : Access::records(bt))
      if (auto* btr = db::PeekAs<AcDbBlockTableRecord>(id)) extrasOf(btr);

  auto section = [this](const char* name) {
    group(0, "SECTION");
    group(2, name);
  };
  section("HEADER");
  WriteHeader(mDb, mState.nextHandle, mOut);
  group(0, "ENDSEC");
  section("CLASSES");
  mOut.insert(mOut.end(), mExtras.classes.begin(), mExtras.classes.end());
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

  out.clear();
  out.reserve(mOut.size() * 16);
  char code[16];
  for (const RawGroup& g : mOut) {
    std::snprintf(code, sizeof code, "%3d\n", g.code);
    out += code;
    out += g.value;
    out += '\n';
  }
  return true;
}

}  // namespace

bool WriteDxf(AcDbDatabase* db, std::string& out, std::wstring& error) { return Writer(db).run(out, error); }

}  // namespace kelhost::dxf
