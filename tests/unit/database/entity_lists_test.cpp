// Entity lists through AutoLISP: entmake and entget round trips, entmod,
// entdel toggling, walking with entnext, handles, tables.
#include "database_fixture.h"

namespace {

using EntityLists = DrawingTest;

TEST_F(EntityLists, EntmakeThenEntgetGivesTheGroupsBack) {
  eval(L"(setq e (entmakex '((0 . \"LINE\") (8 . \"Walls\") (62 . 1) (10 1 2 0) (11 4 6 0))))");
  EXPECT_EQ(eval(L"(cdr (assoc 0 (entget e)))"), L"\"LINE\"");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget e)))"), L"\"Walls\"");
  EXPECT_EQ(eval(L"(cdr (assoc 62 (entget e)))"), L"1");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget e)))"), L"(1.0 2.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget e)))"), L"(4.0 6.0 0.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 210 (entget e)))"), L"(0.0 0.0 1.0)");
  EXPECT_EQ(eval(L"(cdr (assoc 410 (entget e)))"), L"\"Model\"");
  EXPECT_EQ(eval(L"(eq (cdr (assoc 330 (entget e))) (tblobjname \"BLOCK\" \"*Model_Space\"))"), L"T");
  EXPECT_EQ(eval(L"(equal (car (entget e)) (cons -1 e))"), L"T");
  EXPECT_EQ(eval(L"(assoc 6 (entget e))"), L"nil");  // BYLAYER is left out
  // The layer was made on the way.
  EXPECT_EQ(eval(L"(cdr (assoc 2 (tblsearch \"LAYER\" \"walls\")))"), L"\"Walls\"");

  eval(L"(setq c (entmakex '((0 . \"CIRCLE\") (10 5 5 0) (40 . 2.5))))");
  EXPECT_EQ(eval(L"(cdr (assoc 40 (entget c)))"), L"2.5");
  eval(L"(setq a (entmakex '((0 . \"ARC\") (10 0 0 0) (40 . 3) (50 . 0.0) (51 . 1.5))))");
  EXPECT_EQ(eval(L"(mapcar '(lambda (k) (cdr (assoc k (entget a)))) '(40 50 51))"), L"(3.0 0.0 1.5)");
  EXPECT_EQ(eval(L"(vl-remove-if-not '(lambda (g) (= (car g) 100)) (entget a))"),
            L"((100 . \"AcDbEntity\") (100 . \"AcDbCircle\") (100 . \"AcDbArc\"))");
  eval(L"(setq t1 (entmakex '((0 . \"TEXT\") (10 1 1 0) (40 . 3.5) (1 . \"中文 text\") (72 . 1) (11 2 1 0))))");
  EXPECT_EQ(eval(L"(cdr (assoc 1 (entget t1)))"), L"\"中文 text\"");
  EXPECT_EQ(eval(L"(cdr (assoc 7 (entget t1)))"), L"\"Standard\"");
  EXPECT_EQ(eval(L"(cdr (assoc 72 (entget t1)))"), L"1");
  eval(L"(setq p (entmakex '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (100 . \"AcDbPolyline\") (90 . 3)"
       L" (70 . 1) (10 0 0) (42 . 0.5) (10 10 0) (10 10 5) (40 . 1.0) (41 . 2.0))))");
  EXPECT_EQ(eval(L"(cdr (assoc 90 (entget p)))"), L"3");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget p)))"), L"1");
  EXPECT_EQ(eval(L"(vl-remove-if-not '(lambda (g) (member (car g) '(10 42))) (entget p))"),
            L"((10 0.0 0.0) (42 . 0.5) (10 10.0 0.0) (42 . 0.0) (10 10.0 5.0) (42 . 0.0))");
  EXPECT_EQ(eval(L"(vl-remove-if-not '(lambda (g) (member (car g) '(40 41))) (entget p))"),
            L"((40 . 0.0) (41 . 0.0) (40 . 0.0) (41 . 0.0) (40 . 1.0) (41 . 2.0))");
  eval(L"(setq pt (entmakex '((0 . \"POINT\") (10 7 8 9))))");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget pt)))"), L"(7.0 8.0 9.0)");
  // entmake gives back the list it was given.
  EXPECT_EQ(eval(L"(entmake '((0 . \"POINT\") (10 1 1 0)))"), L"((0 . \"POINT\") (10 1 1 0))");
}

TEST_F(EntityLists, BadListsMakeNothing) {
  const Adesk::UInt64 before = handseed();
  EXPECT_EQ(eval(L"(entmake '((0 . \"CIRCLE\") (10 0 0 0)))"), L"nil");               // no radius
  EXPECT_EQ(eval(L"(entmake '((0 . \"CIRCLE\") (10 0 0 0) (40 . -1.0)))"), L"nil");  // bad radius
  EXPECT_EQ(eval(L"(entmake '((0 . \"NOSUCH\") (10 0 0 0)))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((10 0 0 0) (0 . \"LINE\")))"), L"nil");                // type not first
  EXPECT_EQ(eval(L"(entmake '((0 . \"LINE\") (10 0 0 0) (11 1 1 0) (6 . \"NOSUCH\")))"), L"nil");
  EXPECT_EQ(eval(L"(entmake '((0 . \"LINE\") (10 0 0 0) (11 1 1 0) (62 . 300)))"), L"nil");
  // A new layer named by a list that fails is not left behind.
  EXPECT_EQ(eval(L"(entmake '((0 . \"LINE\") (8 . \"Ghost\") (10 0 0 0) (11 1 1 0) (7 . \"NOSUCH\") (6 . \"X\")))"),
            L"nil");
  EXPECT_EQ(eval(L"(tblsearch \"LAYER\" \"Ghost\")"), L"nil");
  EXPECT_EQ(handseed(), before);
  EXPECT_EQ(eval(L"(entlast)"), L"nil");
  // A value of the wrong kind is an AutoLISP error, as on the platform.
  EXPECT_EQ(eval(L"(entmake '((0 . \"LINE\") (10 . \"x\")))"), L"error: bad DXF group: (10 . \"x\")");
  EXPECT_EQ(eval(L"(entget \"x\")"), L"error: bad argument type: lentityp \"x\"");
}

TEST_F(EntityLists, EntmodChangesOnlyWhatItIsGivenAndRefusesBadChanges) {
  eval(L"(setq e (entmakex '((0 . \"LINE\") (10 0 0 0) (11 1 0 0))))");
  EXPECT_NE(eval(L"(entmod (subst '(11 5 5 0) (assoc 11 (entget e)) (entget e)))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 11 (entget e)))"), L"(5.0 5.0 0.0)");
  EXPECT_NE(eval(L"(entmod (list (cons -1 e) (quote (8 . \"Moved\"))))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget e)))"), L"\"Moved\"");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget e)))"), L"(0.0 0.0 0.0)");  // untouched
  // A bad value changes nothing at all.
  EXPECT_EQ(eval(L"(entmod (list (cons -1 e) '(62 . 999) '(10 9 9 9)))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget e)))"), L"(0.0 0.0 0.0)");
  EXPECT_EQ(eval(L"(entmod (list (cons -1 e) '(0 . \"CIRCLE\")))"), L"nil");  // no change of type
  // Renaming a record keeps its table's index.
  eval(L"(entmod (subst '(2 . \"Renamed\") (assoc 2 (entget (tblobjname \"LAYER\" \"Moved\"))) "
       L"(entget (tblobjname \"LAYER\" \"Moved\"))))");
  EXPECT_EQ(eval(L"(tblsearch \"LAYER\" \"Moved\")"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget e)))"), L"\"Renamed\"");
  EXPECT_EQ(eval(L"(entmod (subst '(2 . \"0\") (assoc 2 (entget (tblobjname \"LAYER\" \"Renamed\"))) "
                 L"(entget (tblobjname \"LAYER\" \"Renamed\"))))"),
            L"nil");  // the name is taken
}

// The common idiom (entmod (append (entget e) (list (cons 62 n)))): the
// entity's own properties are taken wherever they stand in the list, even
// after the markers of its later subclasses, as the platform takes them.
TEST_F(EntityLists, CommonPropertiesAppendedAfterTheLastSubclassAreTaken) {
  eval(L"(setq e (entmakex '((0 . \"LINE\") (10 0 0 0) (11 1 0 0))))");
  EXPECT_NE(eval(L"(entmod (append (entget e) '((62 . 3) (8 . \"Late\") (6 . \"CONTINUOUS\"))))"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 62 (entget e)))"), L"3");
  EXPECT_EQ(eval(L"(cdr (assoc 8 (entget e)))"), L"\"Late\"");
  EXPECT_EQ(eval(L"(strcase (cdr (assoc 6 (entget e))))"), L"\"CONTINUOUS\"");
  eval(L"(setq m (entmakex (append '((0 . \"MTEXT\") (100 . \"AcDbEntity\") (100 . \"AcDbMText\")"
       L" (10 0 0 0) (1 . \"x\")) '((62 . 5)))))");
  EXPECT_EQ(eval(L"(cdr (assoc 62 (entget m)))"), L"5");
  // A subclass's own group of the same number still belongs to it: an
  // attribute definition's 70 and 73 are its flags and field length.
  eval(L"(setq d (entmakex '((0 . \"ATTDEF\") (100 . \"AcDbEntity\") (100 . \"AcDbText\") (10 0 0 0)"
       L" (40 . 2.5) (1 . \"v\") (100 . \"AcDbAttributeDefinition\") (3 . \"P\") (2 . \"T\") (70 . 1) (73 . 0))))");
  EXPECT_EQ(eval(L"(cdr (assoc 70 (entget d)))"), L"1");
}

TEST_F(EntityLists, EntdelTogglesAndWalkingSkipsErased) {
  eval(L"(setq a (entmakex '((0 . \"POINT\") (10 1 0 0))) b (entmakex '((0 . \"POINT\") (10 2 0 0)))"
       L" c (entmakex '((0 . \"POINT\") (10 3 0 0))))");
  EXPECT_EQ(eval(L"(eq (entnext) a)"), L"T");
  EXPECT_EQ(eval(L"(eq (entnext a) b)"), L"T");
  EXPECT_EQ(eval(L"(entnext c)"), L"nil");
  EXPECT_EQ(eval(L"(eq (entlast) c)"), L"T");
  EXPECT_EQ(eval(L"(eq (entdel b) b)"), L"T");
  EXPECT_EQ(eval(L"(entget b)"), L"nil");
  EXPECT_EQ(eval(L"(eq (entnext a) c)"), L"T");
  EXPECT_EQ(eval(L"(progn (entdel c) (eq (entlast) a))"), L"T");
  EXPECT_EQ(eval(L"(eq (entdel b) b)"), L"T");  // back again
  EXPECT_EQ(eval(L"(cdr (assoc 10 (entget b)))"), L"(2.0 0.0 0.0)");
  EXPECT_EQ(eval(L"(eq (entlast) b)"), L"T");
  // Handles find erased entities too.
  EXPECT_EQ(eval(L"(eq (handent (cdr (assoc 5 (entget a)))) a)"), L"T");
  EXPECT_EQ(eval(L"(eq (handent (cdr (assoc 5 (entget b)))) b)"), L"T");
  EXPECT_EQ(eval(L"(handent \"FFFFFF\")"), L"nil");
  EXPECT_EQ(eval(L"(handent \"not hex\")"), L"nil");
  EXPECT_EQ(eval(L"(entdel (tblobjname \"LAYER\" \"0\"))"), L"nil");  // records are not deleted so
  EXPECT_EQ(eval(L"(eq (entupd a) a)"), L"T");
}

TEST_F(EntityLists, StandardRecordsAndTableWalking) {
  EXPECT_EQ(eval(L"(tblsearch \"LAYER\" \"0\")"),
            L"((0 . \"LAYER\") (2 . \"0\") (70 . 0) (62 . 7) (6 . \"Continuous\"))");
  for (const wchar_t* ltype : {L"ByBlock", L"BYLAYER", L"continuous"})
    EXPECT_NE(eval(std::wstring(L"(tblsearch \"LTYPE\" \"") + ltype + L"\")"), L"nil") << ltype;
  EXPECT_EQ(eval(L"(cdr (assoc 2 (tblsearch \"STYLE\" \"Standard\")))"), L"\"Standard\"");
  EXPECT_EQ(eval(L"(cdr (assoc 41 (tblsearch \"DIMSTYLE\" \"ISO-25\")))"), L"2.5");  // DIMASZ
  EXPECT_EQ(eval(L"(cdr (assoc 41 (tblsearch \"DIMSTYLE\" \"Standard\")))"), L"0.18");
  EXPECT_NE(eval(L"(tblsearch \"VPORT\" \"*Active\")"), L"nil");
  EXPECT_NE(eval(L"(tblsearch \"APPID\" \"ACAD\")"), L"nil");
  EXPECT_NE(eval(L"(tblobjname \"BLOCK\" \"*Paper_Space\")"), L"nil");
  EXPECT_EQ(eval(L"(tblsearch \"NOSUCH\" \"0\")"), L"nil");

  eval(L"(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\")"
       L" (2 . \"Second\") (70 . 0) (62 . -3) (6 . \"Continuous\")))");
  EXPECT_EQ(eval(L"(cdr (assoc 62 (tblsearch \"LAYER\" \"Second\")))"), L"-3");  // off
  EXPECT_EQ(eval(L"(entmake '((0 . \"LAYER\") (2 . \"second\") (70 . 0)))"), L"nil");  // exists
  EXPECT_EQ(eval(L"(entmake '((0 . \"LAYER\") (2 . \"a<b\") (70 . 0)))"), L"nil");     // bad name
  EXPECT_EQ(eval(L"(list (cdr (assoc 2 (tblnext \"layer\" T))) (cdr (assoc 2 (tblnext \"LAYER\"))) (tblnext \"LAYER\"))"),
            L"(\"0\" \"Second\" nil)");
  // tblsearch with setnext moves the walk; tblnext skips model and paper space.
  EXPECT_EQ(eval(L"(progn (tblsearch \"LAYER\" \"0\" T) (cdr (assoc 2 (tblnext \"LAYER\"))))"), L"\"Second\"");
  EXPECT_EQ(eval(L"(tblnext \"BLOCK\" T)"), L"nil");
}

}  // namespace
