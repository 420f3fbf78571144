// What undoing a step puts back: entities made, changed and erased,
// symbol-table records, dictionaries and xrecords, the drawing's
// variables; and what REDO puts back in turn.
#include <cstdio>
#include <fstream>
#include <sstream>

#include "kelhost/drawing_files.h"
#include "kelhost/text.h"
#include "undo_fixture.h"

namespace {

using kelhost::editor::undo::StepCount;

class UndoJournalTest : public UndoTest {};

// Each kind of object, changed in every group it has, comes back exactly:
// the state is kept in a packed form of its own, so every class's groups
// (texts wide and narrow, points, ids, repeated records, free-form data)
// must read back as they were.
TEST_F(UndoJournalTest, EveryKindOfObjectComesBackAsItWas) {
  const std::vector<std::pair<std::wstring, std::wstring>> cases = {
      {LR"((entmakex '((0 . "LINE") (10 1 2 3) (11 4 5 6) (62 . 3) (-3 ("ACAD" (1000 . "note") (1040 . 2.5))))))",
       LR"((entmod (list (cons -1 e) '(10 9 9 9) '(62 . 5) '(-3 ("ACAD" (1000 . "other"))))))"},
      {LR"((entmakex '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (100 . "AcDbPolyline") (90 . 3) (70 . 1)
                       (10 0 0) (42 . 0.5) (10 5 0) (40 . 1.0) (41 . 2.0) (10 5 5))))",
       LR"((entmod (list (cons -1 e) '(90 . 2) '(70 . 0) '(10 1 1) '(10 2 2))))"},
      {LR"((entmakex '((0 . "TEXT") (10 1 1 0) (40 . 3.0) (1 . "图层 text") (50 . 0.5))))",
       LR"((entmod (list (cons -1 e) '(1 . "plain") '(40 . 1.0))))"},
      {LR"((entmakex (list '(0 . "MTEXT") '(100 . "AcDbEntity") '(100 . "AcDbMText") '(10 0 0 0) '(40 . 2.5)
                          (cons 3 (substr (apply 'strcat (mapcar 'itoa (repeat 60 (setq n (cons 12345 n))))) 1 250))
                          '(1 . "tail"))))",
       LR"((entmod (list (cons -1 e) '(1 . "short"))))"},
      {LR"((dictadd (namedobjdict) "UNDOTEST"
                (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "a") (40 . 1.5) (10 1 2 3) (70 . 7)
                            (90 . 70000) (1 . "字")))))",
       LR"((entmod (list (cons -1 e) '(100 . "AcDbXrecord") '(1 . "b"))))"},
  };
  for (const auto& [make, change] : cases) {
    SCOPED_TRACE(make);
    lisp(L"(setq e nil e " + make + L")");
    ASSERT_NE(lisp(L"e"), L"nil");
    const std::wstring before = fingerprint();
    ASSERT_NE(lisp(change), L"nil") << out;
    ASSERT_NE(fingerprint(), before);
    const std::wstring changed = fingerprint();
    type(L"U");
    EXPECT_EQ(fingerprint(), before);
    type(L"REDO");
    EXPECT_EQ(fingerprint(), changed);
  }
}

TEST_F(UndoJournalTest, AnUndoneEntityIsGoneForEntnextSsgetAndSavingAndRedoBringsItBack) {
  lisp(LR"((entmake '((0 . "LINE") (10 0 0 0) (11 10 0 0))))");
  const std::wstring handle = lisp(L"(cdr (assoc 5 (entget (entlast))))");
  type(L"U");
  EXPECT_EQ(out, L" GROUP");
  EXPECT_EQ(lisp(L"(entnext)"), L"nil");
  EXPECT_EQ(live(L"LINE"), 0);

  const std::string path = ::testing::TempDir() + "undo_saved.dxf";
  std::wstring error;
  ASSERT_TRUE(kelhost::WriteDrawingFile(db.get(), kelhost::FromUtf8(path), error)) << error;
  std::ifstream file(path);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_EQ(text.str().find("\nLINE\n"), std::string::npos);
  std::remove(path.c_str());

  type(L"REDO");
  EXPECT_EQ(out, L" GROUP");
  EXPECT_EQ(lisp(L"(cdr (assoc 5 (entget (entnext))))"), handle);
  EXPECT_EQ(live(L"LINE"), 1);
}

TEST_F(UndoJournalTest, AnErasedEntityComesBack) {
  lisp(LR"((setq e (entmakex '((0 . "CIRCLE") (10 0 0 0) (40 . 2.0)))))");
  const std::wstring before = fingerprint();
  lisp(L"(entdel e)");
  EXPECT_EQ(live(L"CIRCLE"), 0);
  type(L"U");
  EXPECT_EQ(live(L"CIRCLE"), 1);
  EXPECT_EQ(fingerprint(), before);
}

TEST_F(UndoJournalTest, DrawingVariablesAreUndoneAndSessionVariablesAreNot) {
  const std::wstring before = fingerprint();
  lisp(LR"((progn (entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
                              (2 . "L1") (70 . 0) (62 . 1) (6 . "Continuous")))
                  (setvar "CLAYER" "L1") (setvar "CECOLOR" "1") (setvar "TEXTSIZE" 7.5) (setvar "LTSCALE" 2.0)
                  (setvar "USERI1" 42) (setvar "USERR1" 0.25) (setvar "ANGBASE" 1.0) (setvar "PDMODE" 3)
                  (setvar "CMDECHO" 0) (setvar "OSMODE" 7)))");
  const std::wstring changed = fingerprint();
  type(L"U");
  EXPECT_EQ(fingerprint(), before);
  EXPECT_EQ(lisp(LR"((tblsearch "LAYER" "L1"))"), L"nil");
  EXPECT_EQ(lisp(LR"((list (getvar "CMDECHO") (getvar "OSMODE")))"), L"(0 7)");
  type(L"REDO");
  EXPECT_EQ(fingerprint(), changed);
  EXPECT_EQ(lisp(LR"((getvar "CLAYER"))"), L"\"L1\"");
}

// A record is restored by identity: an entity keeps its layer through the
// layer's renames, within a step and across steps.
TEST_F(UndoJournalTest, RenamedLayersKeepTheirEntitiesThroughUndo) {
  lisp(LR"((progn (foreach name '("A" "X")
                    (entmake (list '(0 . "LAYER") '(100 . "AcDbSymbolTableRecord") '(100 . "AcDbLayerTableRecord")
                                   (cons 2 name) '(70 . 0) '(62 . 2) '(6 . "Continuous"))))
                  (setq e (entmakex '((0 . "LINE") (8 . "A") (10 0 0 0) (11 1 1 0))))
                  (defun rename (from to)
                    (entmod (subst (cons 2 to) (cons 2 from) (entget (tblobjname "LAYER" from)))))))");
  const std::wstring made = fingerprint();
  // The line is saved while its layer is called B; undoing puts it back
  // on that layer when it is called C.
  lisp(LR"((progn (rename "A" "B") (entmod (list (cons -1 e) '(8 . "X") '(62 . 4))) (rename "B" "C")))");
  EXPECT_EQ(lisp(L"(cdr (assoc 8 (entget e)))"), L"\"X\"");
  const std::wstring renamed = fingerprint();
  type(L"U");
  EXPECT_EQ(fingerprint(), made);
  type(L"REDO");
  EXPECT_EQ(fingerprint(), renamed);

  lisp(LR"((rename "C" "D"))");
  lisp(LR"((entmod (list (cons -1 e) '(8 . "D"))))");
  lisp(LR"((rename "D" "E"))");
  EXPECT_EQ(lisp(L"(cdr (assoc 8 (entget e)))"), L"\"E\"");
  type(L"UNDO", {L"4"});
  EXPECT_EQ(fingerprint(), made);
  EXPECT_EQ(lisp(LR"((mapcar '(lambda (n) (tblsearch "LAYER" n)) '("B" "C" "D" "E")))"), L"(nil nil nil nil)");
}

// A record erased and replaced by a new one of the same name: undoing
// both finds the first record by its name again.
TEST_F(UndoJournalTest, AnUnerasedRecordIsFoundByItsNameAgain) {
  lisp(LR"((entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
                       (2 . "A") (70 . 0) (62 . 2) (6 . "Continuous"))))");
  const std::wstring first = lisp(LR"((cdr (assoc 5 (entget (tblobjname "LAYER" "A")))))");
  kelhost::editor::undo::ExpressionStarted();
  AcDbLayerTable* table = nullptr;
  ASSERT_EQ(db->getLayerTable(table, AcDb::kForRead), Acad::eOk);
  AcDbLayerTableRecord* record = nullptr;
  ASSERT_EQ(table->getAt(L"A", record, AcDb::kForWrite), Acad::eOk);
  table->close();
  EXPECT_EQ(record->erase(), Acad::eOk);
  record->close();
  kelhost::editor::undo::ExpressionEnded();
  lisp(LR"((entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord")
                       (2 . "A") (70 . 0) (62 . 5) (6 . "Continuous"))))");
  EXPECT_NE(lisp(LR"((cdr (assoc 5 (entget (tblobjname "LAYER" "A")))))"), first);
  type(L"U");
  EXPECT_EQ(lisp(LR"((tblsearch "LAYER" "A"))"), L"nil");
  type(L"U");
  EXPECT_EQ(lisp(LR"((cdr (assoc 5 (entget (tblobjname "LAYER" "A")))))"), first);
  EXPECT_EQ(lisp(LR"((cdr (assoc 62 (tblsearch "LAYER" "A"))))"), L"2");
}

// The same for a dictionary: an entry whose object was erased, then
// replaced under its key, is the first object again after both are undone.
TEST_F(UndoJournalTest, AnUnerasedXrecordIsItsDictionarysEntryAgain) {
  lisp(LR"((setq x (dictadd (namedobjdict) "KEY" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "first"))))))");
  kelhost::editor::undo::ExpressionStarted();
  AcDbDictionary* dict = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(dict, AcDb::kForRead), Acad::eOk);
  AcDbObject* first = nullptr;
  ASSERT_EQ(dict->getAt(L"KEY", first, AcDb::kForWrite), Acad::eOk);
  dict->close();
  EXPECT_EQ(first->erase(), Acad::eOk);
  first->close();
  kelhost::editor::undo::ExpressionEnded();
  EXPECT_EQ(lisp(LR"((dictsearch (namedobjdict) "KEY"))"), L"nil");
  lisp(LR"((dictadd (namedobjdict) "KEY" (entmakex '((0 . "XRECORD") (100 . "AcDbXrecord") (1 . "second")))))");
  EXPECT_EQ(lisp(LR"((cdr (assoc 1 (dictsearch (namedobjdict) "KEY"))))"), L"\"second\"");
  type(L"UNDO", {L"2"});
  EXPECT_EQ(lisp(LR"((cdr (assoc 1 (dictsearch (namedobjdict) "KEY"))))"), L"\"first\"");
}

// Objects made through the platform's C interfaces and its classes, not
// only through AutoLISP, are undone with the step they were made in.
TEST_F(UndoJournalTest, ObjectsMadeByModuleCallsUndoLikeAnyOthers) {
  kelhost::editor::undo::ExpressionStarted();
  resbuf* list = acutBuildList(RTDXF0, L"LINE", 10, std::vector<double>{0, 0, 0}.data(), 11,
                               std::vector<double>{3, 0, 0}.data(), RTNONE);
  ASSERT_EQ(acdbEntMake(list), RTNORM);
  acutRelRb(list);
  AcDbBlockTableRecord* space = nullptr;
  ASSERT_EQ(acdbOpenObject(space, db->modelSpaceId(), AcDb::kForWrite), Acad::eOk);
  auto* circle = new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0);
  AcDbObjectId id;
  ASSERT_EQ(space->appendAcDbEntity(id, circle), Acad::eOk);
  circle->close();
  space->close();
  kelhost::editor::undo::ExpressionEnded();
  EXPECT_EQ(StepCount(), 1);
  type(L"U");
  EXPECT_EQ(live(L"LINE") + live(L"CIRCLE"), 0);
}

// Only what changed costs a step: an object opened for write and put back
// unchanged, or an expression that reads, makes none.
TEST_F(UndoJournalTest, WhatChangesNothingMakesNoStep) {
  lisp(LR"((setq e (entmakex '((0 . "LINE") (10 0 0 0) (11 1 0 0)))))");
  ASSERT_EQ(StepCount(), 1);
  lisp(L"(entmod (entget e))");
  lisp(L"(entget e)");
  lisp(LR"((setvar "CLAYER" (getvar "CLAYER")))");
  EXPECT_EQ(StepCount(), 1);
}

}  // namespace
