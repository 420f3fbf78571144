// For the tests of LAYER, INSERT, WBLOCK and the copies between drawings:
// a fresh working drawing, commands run with their answers as
// acedCommandS runs them (answers that run out cancel), the command line
// captured, a private directory for drawing files, and the discipline
// check that nothing is left open.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "arx/arxheaders.h"
#include "db/database_state.h"
#include "db/stub.h"
#include "editor/command_processor.h"
#include "editor/undo_journal.h"
#include "kelhost/host.h"
#include "kelhost/lisp.h"
#include "kelhost/sysvars.h"
#include "kelhost/text.h"

class BlocksTest : public ::testing::Test {
 protected:
  void SetUp() override {
    kelhost::sysvars::ResetSession();
    kelhost::editor::undo::Reset();
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    openAtStart = kelhost::db::OpenObjectCount();
    kelhost::Host::instance().setCommandLineSink([this](const std::wstring& t) { out += t; });
    std::string pattern = (std::filesystem::temp_directory_path() / "kelcad-blocks-XXXXXX").string();
    dir = mkdtemp(pattern.data());
  }
  void TearDown() override {
    EXPECT_EQ(kelhost::db::OpenObjectCount(), openAtStart) << "objects left open";
    kelhost::Host::instance().setCommandLineSink(nullptr);
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    db.reset();
    kelhost::editor::undo::Reset();
    kelhost::sysvars::ResetSession();
    unsetenv("ACAD");
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
  }

  // Runs a command with its answers ("" is Enter) as acedCommandS does:
  // RTNORM when it ended, RTCAN when the answers ran out first.
  int command(std::initializer_list<std::wstring> answers) {
    std::vector<kelhost::editor::Token> tokens;
    for (const std::wstring& a : answers) tokens.push_back(kelhost::editor::Token::Text(a));
    return command(tokens);
  }
  int command(const std::vector<kelhost::editor::Token>& tokens) {
    return kelhost::editor::RunCommandCall(tokens, kelhost::editor::TokenFeed::WhenEmpty::kCancel);
  }
  // An entity passed as a value (what a program gives "Select objects:").
  static kelhost::editor::Token entityToken(AcDbObjectId id) {
    kelhost::editor::Token t = kelhost::editor::Token::Of(kelhost::editor::Token::kEname);
    t.name[0] = id.asOldId();
    return t;
  }
  static kelhost::editor::Token text(const std::wstring& t) { return kelhost::editor::Token::Text(t); }
  // The printed value, or "error: ..." when evaluation failed.
  std::wstring eval(const std::wstring& text) {
    auto outcome = kelhost::Host::instance().lisp().evalOne(text);
    return outcome.ok ? outcome.valueText : L"error: " + outcome.error;
  }
  bool said(const std::wstring& text) const { return out.find(text) != std::wstring::npos; }
  // A file name in the test's own directory.
  std::wstring file(const std::string& name) const { return kelhost::FromUtf8((dir / name).string()); }

  // Shared with the tests' drawing builders.
 public:
  template <class T>
  static T* peek(AcDbObjectId id) {
    return kelhost::db::PeekAs<T>(id);
  }
  static std::wstring nameOf(AcDbObjectId record) {
    auto* r = peek<AcDbSymbolTableRecord>(record);
    return r ? r->getName() : L"";
  }
  template <class Table>
  static AcDbObjectId record(AcDbDatabase* in, AcDbObjectId tableId, const wchar_t* name) {
    auto* table = kelhost::db::PeekAs<Table>(tableId);
    AcDbObjectId id;
    if (!table || table->getAt(name, id) != Acad::eOk) return AcDbObjectId::kNull;
    return id;
  }
  static AcDbObjectId layer(AcDbDatabase* in, const wchar_t* name) {
    return record<AcDbLayerTable>(in, in->layerTableId(), name);
  }
  static AcDbObjectId block(AcDbDatabase* in, const wchar_t* name) {
    return record<AcDbBlockTable>(in, in->blockTableId(), name);
  }
  // The live entities of a block, in order.
  static std::vector<AcDbEntity*> entities(AcDbObjectId blockId) {
    std::vector<AcDbEntity*> found;
    if (auto* b = peek<AcDbBlockTableRecord>(blockId))
      for (const AcDbObjectId& id : b->entityIds())
        if (!id.isErased()) found.push_back(peek<AcDbEntity>(id));
    return found;
  }
  // Adds an entity to a block (closed again); one without a layer takes
  // the drawing's current properties.
  static AcDbObjectId append(AcDbObjectId blockId, AcDbEntity* entity) {
    AcDbBlockTableRecord* b = nullptr;
    EXPECT_EQ(acdbOpenObject(b, blockId, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(b->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    b->close();
    return id;
  }
  // Adds a record to a table (closed again); null when it could not.
  static AcDbObjectId addRecord(AcDbObjectId tableId, AcDbSymbolTableRecord* r, const wchar_t* name) {
    AcDbSymbolTable* table = nullptr;
    EXPECT_EQ(acdbOpenObject(table, tableId, AcDb::kForWrite), Acad::eOk);
    r->setName(name);
    AcDbObjectId id;
    EXPECT_EQ(table->add(id, r), Acad::eOk);
    r->close();
    table->close();
    return id;
  }

  std::unique_ptr<AcDbDatabase> db;
 protected:
  int openAtStart = 0;
  std::wstring out;
  std::filesystem::path dir;
};
