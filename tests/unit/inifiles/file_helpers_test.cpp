// The base library's file helpers on scratch trees: several new levels at
// once, wildcards, trees with links that must not be followed, the
// directories that must never go, and the desktop trash.
#include <regex>

#include "kelbase/kelbase.h"
#include "scratch_tree.h"

namespace {

using FileHelpers = ScratchTree;

TEST_F(FileHelpers, MkMDirMakesEveryMissingLevelInTheFamilyForm) {
  MakeDir("Work");
  EXPECT_TRUE(KEL::MkMDir((Wide("work") + L"\\Proj\\图纸\\A3\\").c_str()));
  EXPECT_TRUE(Exists("Work/Proj/图纸/A3"));
  EXPECT_FALSE(Exists("work"));  // the existing level was found in any case, not made again
  EXPECT_TRUE(KEL::MkMDir(Wide("Work/Proj").c_str()));  // already there

  Write("Work/plain.txt");
  EXPECT_FALSE(KEL::MkMDir(Wide("Work/plain.txt/below").c_str()));
  EXPECT_FALSE(KEL::MkMDir(L""));
  EXPECT_FALSE(KEL::MkMDir(nullptr));
}

TEST_F(FileHelpers, DeleteFilesTakesMatchingFilesAndLinksOnly) {
  Write("keep/target.dwg", "target");
  Write("d/a.dwg");
  Write("d/B.DWG");
  Write("d/c.txt");
  MakeDir("d/dir.dwg");
  ASSERT_EQ(symlink(Path("keep/target.dwg").c_str(), Path("d/link.dwg").c_str()), 0);

  CString problem;
  EXPECT_TRUE(KEL::DeleteFiles((Wide("D") + L"\\*.dwg").c_str(), false, &problem)) << problem.GetString();
  EXPECT_EQ(List("d"), (std::vector<std::string>{"c.txt", "dir.dwg"}));
  EXPECT_EQ(Read(Path("keep/target.dwg")), "target");  // the link went, not what it led to

  // Nothing left to match, or no such directory: nothing to delete.
  EXPECT_TRUE(KEL::DeleteFiles((Wide("d") + L"\\*.dwg").c_str(), false));
  EXPECT_TRUE(KEL::DeleteFiles((Wide("nowhere") + L"\\*.*").c_str(), false));
  EXPECT_FALSE(KEL::DeleteFiles(L"", false, &problem));
  EXPECT_FALSE(problem.IsEmpty());
}

TEST_F(FileHelpers, DeleteFilesReportsWhatItCouldNotDelete) {
  if (geteuid() == 0) GTEST_SKIP() << "permissions do not stop root";
  Write("locked/a.lsp");
  Write("locked/b.lsp");
  ASSERT_EQ(chmod(Path("locked").c_str(), 0555), 0);
  CString problem;
  EXPECT_FALSE(KEL::DeleteFiles((Wide("locked") + L"\\*.lsp").c_str(), false, &problem));
  EXPECT_NE(problem.str().find(L"locked/"), std::wstring::npos) << problem.GetString();
  chmod(Path("locked").c_str(), 0755);
}

TEST_F(FileHelpers, DeleteTreeNeverFollowsLinksOutOfTheTree) {
  Write("outside/precious.txt", "keep me");
  MakeDir("outside/deep");
  Write("tree/a/b/c/file.txt");
  Write("tree/top.txt");
  ASSERT_EQ(symlink(Path("outside").c_str(), Path("tree/a/to_outside").c_str()), 0);
  ASSERT_EQ(symlink(Path("outside/precious.txt").c_str(), Path("tree/a/b/to_file").c_str()), 0);
  ASSERT_EQ(symlink("/nonexistent", Path("tree/dangling").c_str()), 0);

  CString problem;
  EXPECT_TRUE(KEL::DeleteTree((Wide("TREE") + L"\\").c_str(), false, &problem)) << problem.GetString();
  EXPECT_FALSE(Exists("tree"));
  EXPECT_EQ(Read(Path("outside/precious.txt")), "keep me");
  EXPECT_TRUE(Exists("outside/deep"));

  // Named through a link, only the link goes.
  ASSERT_EQ(symlink(Path("outside").c_str(), Path("alias").c_str()), 0);
  EXPECT_TRUE(KEL::DeleteTree(Wide("alias").c_str(), false));
  EXPECT_FALSE(Exists("alias"));
  EXPECT_TRUE(Exists("outside/precious.txt"));

  EXPECT_TRUE(KEL::DeleteTree(Wide("never/was").c_str(), false));  // nothing to delete
  EXPECT_FALSE(KEL::DeleteTree(Wide("outside/precious.txt").c_str(), false, &problem));  // not a directory
  EXPECT_TRUE(Exists("outside/precious.txt"));
}

TEST_F(FileHelpers, DeleteTreeRefusesRootHomeAndWhatHoldsHome) {
  Write("home/documents/plan.dwg");
  CString problem;
  for (const std::wstring& dir : {std::wstring(L"/"), std::wstring(L"\\"), Wide("home"), Wide("home/"),
                                  Wide("home/documents/.."), kelhost::FromUtf8(root)}) {
    problem.Empty();
    EXPECT_FALSE(KEL::DeleteTree(dir.c_str(), false, &problem)) << kelhost::ToUtf8(dir);
    EXPECT_FALSE(problem.IsEmpty()) << kelhost::ToUtf8(dir);
    EXPECT_FALSE(KEL::DeleteTree(dir.c_str(), true)) << kelhost::ToUtf8(dir);
  }
  EXPECT_TRUE(Exists("home/documents/plan.dwg"));
  EXPECT_FALSE(KEL::DeleteTree(Wide("home/documents/.").c_str(), false));  // "." names no tree
  EXPECT_TRUE(Exists("home/documents/plan.dwg"));
  EXPECT_TRUE(KEL::DeleteTree(Wide("home/documents").c_str(), false));  // below home is fine
  EXPECT_FALSE(Exists("home/documents"));
}

TEST_F(FileHelpers, TrashKeepsTheDesktopLayoutWithUniqueNames) {
  Write("drawings/总图 v1.dwg", "first");
  CString problem;
  ASSERT_TRUE(KEL::DeleteFiles((Wide("drawings") + L"\\*.dwg").c_str(), true, &problem)) << problem.GetString();
  EXPECT_FALSE(Exists("drawings/总图 v1.dwg"));
  EXPECT_EQ(Read(Path("data/Trash/files/总图 v1.dwg")), "first");

  const std::string info = Read(Path("data/Trash/info/总图 v1.dwg.trashinfo"));
  const std::string encodedPath = root + "/drawings/%E6%80%BB%E5%9B%BE%20v1.dwg";
  EXPECT_EQ(info.substr(0, info.find("DeletionDate=")), "[Trash Info]\nPath=" + encodedPath + "\n");
  EXPECT_TRUE(std::regex_search(info, std::regex("\nDeletionDate=\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\n$"))) << info;

  // The same name again gets a name of its own; so does a whole tree.
  Write("drawings/总图 v1.dwg", "second");
  ASSERT_TRUE(KEL::MoveToRecycleBin(Wide("drawings/总图 v1.dwg").c_str(), &problem)) << problem.GetString();
  EXPECT_EQ(Read(Path("data/Trash/files/总图 v1.dwg.2")), "second");
  EXPECT_TRUE(Exists("data/Trash/info/总图 v1.dwg.2.trashinfo"));
  EXPECT_EQ(Read(Path("data/Trash/files/总图 v1.dwg")), "first");

  Write("drawings/sub/x.txt");
  ASSERT_TRUE(KEL::DeleteTree(Wide("drawings").c_str(), true, &problem)) << problem.GetString();
  EXPECT_FALSE(Exists("drawings"));
  EXPECT_TRUE(Exists("data/Trash/files/drawings/sub/x.txt"));
  EXPECT_NE(Read(Path("data/Trash/info/drawings.trashinfo")).find("Path=" + root + "/drawings\n"), std::string::npos);

  EXPECT_FALSE(KEL::MoveToRecycleBin(Wide("drawings/gone.txt").c_str(), &problem));
  EXPECT_FALSE(problem.IsEmpty());
}

TEST_F(FileHelpers, TrashDefaultsToTheHomeDataDirectory) {
  unsetenv("XDG_DATA_HOME");
  Write("f.txt");
  ASSERT_TRUE(KEL::MoveToRecycleBin(Wide("f.txt").c_str()));
  EXPECT_TRUE(Exists("home/.local/share/Trash/files/f.txt"));
  EXPECT_TRUE(Exists("home/.local/share/Trash/info/f.txt.trashinfo"));
}

TEST_F(FileHelpers, FixLenStrPadsOnEitherSideAndNeverCuts) {
  EXPECT_EQ(KEL::FixLenStr(L"ab", 5, false).str(), L"ab   ");
  EXPECT_EQ(KEL::FixLenStr(L"ab", 5, true).str(), L"   ab");
  EXPECT_EQ(KEL::FixLenStr(L"图框", 3, true).str(), L" 图框");
  EXPECT_EQ(KEL::FixLenStr(L"longer", 3, true).str(), L"longer");
  EXPECT_EQ(KEL::FixLenStr(nullptr, 2, false).str(), L"  ");
}

}  // namespace
