// Dictionaries, xrecords and groups: the named-object dictionary, the
// AutoLISP dict* functions, and the classes' own rules.
#include <cwctype>
#include <map>

#include "database_fixture.h"

namespace {

using Dictionaries = DrawingTest;

TEST_F(Dictionaries, NamedObjectDictionaryHasTheStandardEntries) {
  AcDbDictionary* nod = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(nod), Acad::eOk);
  for (const wchar_t* key : {L"ACAD_GROUP", L"ACAD_LAYOUT", L"ACAD_MLINESTYLE", L"acad_plotstylename"})
    EXPECT_TRUE(nod->has(key)) << key;
  AcDbObjectId groups;
  EXPECT_EQ(nod->getAt(L"ACAD_GROUP", groups), Acad::eOk);
  EXPECT_EQ(groups, db->groupDictionaryId());
  nod->close();
  EXPECT_EQ(eval(L"(cdr (assoc 0 (dictsearch (namedobjdict) \"ACAD_GROUP\")))"), L"\"DICTIONARY\"");
}

TEST_F(Dictionaries, XrecordsUnderNamedEntries) {
  eval(L"(setq x (entmakex '((0 . \"XRECORD\") (100 . \"AcDbXrecord\") (1 . \"值\") (40 . 2.5) (70 . 3))))");
  EXPECT_EQ(eval(L"(cdr (assoc 330 (entget x)))"), L"<Entity name: 0>");  // no owner yet
  EXPECT_EQ(eval(L"(eq (dictadd (namedobjdict) \"KEL_DATA\" x) x)"), L"T");
  EXPECT_EQ(eval(L"(dictadd (namedobjdict) \"KEL_OTHER\" x)"), L"nil");  // it has an owner now
  EXPECT_EQ(eval(L"(eq (cdr (assoc 330 (entget x))) (namedobjdict))"), L"T");
  EXPECT_EQ(eval(L"(mapcar '(lambda (k) (cdr (assoc k (dictsearch (namedobjdict) \"kel_data\")))) '(1 40 70))"),
            L"(\"值\" 2.5 3)");
  EXPECT_EQ(eval(L"(cdr (assoc 3 (member '(3 . \"KEL_DATA\") (entget (namedobjdict)))))"), L"\"KEL_DATA\"");
  EXPECT_EQ(eval(L"(dictrename (namedobjdict) \"KEL_DATA\" \"KEL_NEW\")"), L"\"KEL_NEW\"");
  EXPECT_EQ(eval(L"(dictrename (namedobjdict) \"KEL_NEW\" \"ACAD_GROUP\")"), L"nil");
  EXPECT_EQ(eval(L"(dictsearch (namedobjdict) \"KEL_DATA\")"), L"nil");
  EXPECT_EQ(eval(L"(eq (dictremove (namedobjdict) \"KEL_NEW\") x)"), L"T");
  EXPECT_EQ(eval(L"(dictsearch (namedobjdict) \"KEL_NEW\")"), L"nil");
  EXPECT_EQ(eval(L"(cdr (assoc 330 (entget x)))"), L"<Entity name: 0>");
  // Entities do not go into dictionaries.
  eval(L"(setq p (entmakex '((0 . \"POINT\") (10 0 0 0))))");
  EXPECT_EQ(eval(L"(dictadd (namedobjdict) \"P\" p)"), L"nil");
}

TEST_F(Dictionaries, DictnextWalksInKeyOrder) {
  eval(L"(setq d (entmakex '((0 . \"DICTIONARY\") (100 . \"AcDbDictionary\"))))");
  eval(L"(dictadd (namedobjdict) \"MINE\" d)");
  eval(L"(foreach k '(\"b\" \"C\" \"a\") (dictadd d k (entmakex (list '(0 . \"XRECORD\") (cons 1 k)))))");
  EXPECT_EQ(eval(L"(list (cdr (assoc 1 (dictnext d T))) (cdr (assoc 1 (dictnext d))) (cdr (assoc 1 (dictnext d))) (dictnext d))"),
            L"(\"a\" \"b\" \"C\" nil)");
  EXPECT_EQ(eval(L"(progn (dictsearch d \"a\" T) (cdr (assoc 1 (dictnext d))))"), L"\"b\"");
}

TEST_F(Dictionaries, XrecordDataRulesAndGroups) {
  AcDbXrecord rec;
  resbuf* good = acutBuildList(1, L"text", 10, std::vector<double>{1, 2, 3}.data(), 70, 5, RTNONE);
  ASSERT_NE(good, nullptr);
  EXPECT_EQ(rec.setFromRbChain(*good), Acad::eOk);
  resbuf* back = nullptr;
  ASSERT_EQ(rec.rbChain(&back), Acad::eOk);
  ASSERT_NE(back, nullptr);
  EXPECT_STREQ(back->resval.rstring, L"text");
  EXPECT_EQ(back->rbnext->resval.rpoint[2], 3.0);
  EXPECT_EQ(back->rbnext->rbnext->resval.rint, 5);
  acutRelRb(back);
  resbuf* bad = acutBuildList(1000, L"xdata code", RTNONE);
  EXPECT_EQ(rec.setFromRbChain(*bad), Acad::eInvalidResBuf);
  resbuf* bad2 = acutBuildList(RTSTR, L"result type", RTNONE);
  EXPECT_EQ(rec.setFromRbChain(*bad2), Acad::eInvalidResBuf);
  acutRelRb(good);
  acutRelRb(bad);
  acutRelRb(bad2);

  AcDbGroup group(L"members");
  AcDbObjectId a = db->layerZero(), b = db->byLayerLinetype();
  EXPECT_EQ(group.append(a), Acad::eOk);
  EXPECT_EQ(group.append(a), Acad::eAlreadyInGroup);
  EXPECT_EQ(group.append(AcDbObjectId::kNull), Acad::eNullObjectId);
  EXPECT_EQ(group.remove(b), Acad::eNotInGroup);
  EXPECT_EQ(group.append(b), Acad::eOk);
  AcDbObjectIdArray ids;
  EXPECT_EQ(group.allEntityIds(ids), 2u);
  EXPECT_EQ(ids[1], b);

  // A group kept in the group dictionary shows its members in its list.
  AcDbDictionary* groups = nullptr;
  ASSERT_EQ(db->getGroupDictionary(groups, AcDb::kForWrite), Acad::eOk);
  auto* stored = new AcDbGroup(L"stored");
  stored->append(a);
  AcDbObjectId gid;
  ASSERT_EQ(groups->setAt(L"G1", stored, gid), Acad::eOk);
  stored->close();
  groups->close();
  ads_name gname;
  acdbGetAdsName(gname, gid);
  resbuf* list = acdbEntGet(gname);
  int members = 0;
  for (resbuf* rb = list; rb; rb = rb->rbnext)
    if (rb->restype == 340) {
      ++members;
      EXPECT_EQ(rb->resval.rlname[0], a.asOldId());
    }
  EXPECT_EQ(members, 1);
  acutRelRb(list);
}

// Many entries added, removed and renamed (keys in either case) must stay
// found by any spelling of their key and iterate in key order: the lookup
// index is checked against an ordered map of what should be there.
TEST_F(Dictionaries, LargeDictionaryKeepsLookupAndOrderThroughChanges) {
  AcDbDictionary* nod = nullptr;
  ASSERT_EQ(db->getNamedObjectsDictionary(nod, AcDb::kForWrite), Acad::eOk);
  auto* dict = new AcDbDictionary();
  AcDbObjectId dictId;
  ASSERT_EQ(nod->setAt(L"KEL_MANY", dict, dictId), Acad::eOk);
  nod->close();
  std::map<std::wstring, std::wstring> expected;  // upper-case key to key as given
  auto upper = [](std::wstring key) {
    for (wchar_t& c : key) c = static_cast<wchar_t>(std::towupper(c));
    return key;
  };
  for (int i = 0; i < 600; ++i) {
    const std::wstring key = (i % 2 ? L"key" : L"KEY") + std::to_wstring(i * 7919 % 1000);
    auto* record = new AcDbXrecord();
    AcDbObjectId id;
    ASSERT_EQ(dict->setAt(key.c_str(), record, id), Acad::eOk);
    record->close();
    expected[upper(key)] = key;
  }
  for (int i = 0; i < 600; i += 3) {
    const std::wstring key = L"kEy" + std::to_wstring(i * 7919 % 1000);
    EXPECT_EQ(dict->remove(key.c_str()), Acad::eOk) << key;
    expected.erase(upper(key));
  }
  for (int i = 1; i < 600; i += 9) {  // renamed: to another case, or to a new key
    const std::wstring from = L"KEY" + std::to_wstring(i * 7919 % 1000);
    const std::wstring to = i % 2 ? L"Key" + std::to_wstring(i * 7919 % 1000) : L"NEW" + std::to_wstring(i);
    ASSERT_EQ(dict->setName(from.c_str(), to.c_str()), Acad::eOk) << from;
    expected.erase(upper(from));
    expected[upper(to)] = to;
  }
  EXPECT_EQ(dict->setName(L"NEW10", L"key919"), Acad::eDuplicateKey);  // renamed to Key919 above
  EXPECT_EQ(dict->remove(L"KEY0"), Acad::eKeyNotFound);

  EXPECT_EQ(dict->numEntries(), expected.size());
  for (const auto& entry : expected) {
    EXPECT_TRUE(dict->has(entry.first.c_str())) << entry.second;
    std::wstring lower = entry.first;
    for (wchar_t& c : lower) c = static_cast<wchar_t>(std::towlower(c));
    EXPECT_TRUE(dict->has(lower.c_str())) << entry.second;
  }
  EXPECT_FALSE(dict->has(L"KEY1000"));
  AcDbDictionaryIterator* it = dict->newIterator();
  auto want = expected.begin();
  for (; !it->done() && want != expected.end(); it->next(), ++want) EXPECT_STREQ(it->name(), want->second.c_str());
  EXPECT_TRUE(it->done());
  EXPECT_EQ(want, expected.end());
  delete it;
  dict->close();
}

}  // namespace
