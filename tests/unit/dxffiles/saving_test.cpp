// Saving a drawing: through symbolic links, with errors that say why, and
// with the temporary files of killed saves cleared away.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "dxf_fixture.h"
#include "kelhost/paths.h"

namespace {

namespace fs = std::filesystem;

bool IsLink(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
}

std::vector<std::string> Names(const std::string& dir) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(dir)) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// The number of a process that has ended.
pid_t GonePid() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  int status = 0;
  waitpid(child, &status, 0);
  return child;
}

class SavingTest : public DxfFileTest {
 protected:
  void SetUp() override {
    DxfFileTest::SetUp();
    ASSERT_EQ(eval(L"(progn (entmake '((0 . \"CIRCLE\") (10 1.0 2.0 0.0) (40 . 3.0))) T)"), L"T");
  }
  bool save(const std::string& file, std::wstring& error) {
    return kelhost::WriteDrawingFile(db.get(), kelhost::FromUtf8(file), error);
  }
  bool reopens(const std::string& file) {
    AcDbDatabase other(false);
    std::wstring error;
    return kelhost::ReadDrawingFile(&other, kelhost::FromUtf8(file), error);
  }
};

TEST_F(SavingTest, ThroughASymbolicLinkTheLinkedFileIsReplacedAndTheLinkStays) {
  fs::create_directories(path("real"));
  writeText("real/target.dxf", "old");
  fs::create_symlink("real/target.dxf", path("link.dxf"));         // relative to the link's folder
  fs::create_symlink(path("link.dxf"), path("chain.dxf"));          // a link to the link
  fs::create_symlink("real/new.dxf", path("dangling.dxf"));        // names a file still to make
  std::wstring error;
  for (const char* name : {"link.dxf", "chain.dxf", "dangling.dxf"}) {
    ASSERT_TRUE(save(path(name), error)) << name << ": " << kelhost::ToUtf8(error);
    EXPECT_TRUE(IsLink(path(name))) << name;
    EXPECT_TRUE(reopens(path(name))) << name;
  }
  EXPECT_TRUE(IsLink(path("link.dxf")));
  EXPECT_NE(readText("real/target.dxf"), "old");
  EXPECT_TRUE(reopens(path("real/target.dxf")));
  EXPECT_TRUE(reopens(path("real/new.dxf")));
  // Nothing else is left in either folder.
  EXPECT_EQ(Names(path("real")), (std::vector<std::string>{"new.dxf", "target.dxf"}));
  EXPECT_EQ(Names(dir), (std::vector<std::string>{"chain.dxf", "dangling.dxf", "link.dxf", "real"}));
}

TEST_F(SavingTest, WriteErrorsSayWhy) {
  std::wstring error;
  fs::create_directories(path("taken.dxf"));
  EXPECT_FALSE(save(path("taken.dxf"), error));
  EXPECT_EQ(kelhost::ToUtf8(error), path("taken.dxf") + ": cannot write the file: a directory is in the way");
  EXPECT_FALSE(save(path("missing/drawing.dxf"), error));
  EXPECT_EQ(kelhost::ToUtf8(error), path("missing/drawing.dxf") + ": cannot write the file: the folder does not exist");
  writeText("plain", "x");
  EXPECT_FALSE(save(path("plain/drawing.dxf"), error));
  EXPECT_NE(kelhost::ToUtf8(error).find("a file is in the way"), std::string::npos) << kelhost::ToUtf8(error);
  if (geteuid() != 0) {  // permissions do not stop the superuser
    fs::create_directories(path("locked"));
    fs::permissions(path("locked"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(save(path("locked/drawing.dxf"), error));
    EXPECT_NE(kelhost::ToUtf8(error).find("permission denied"), std::string::npos) << kelhost::ToUtf8(error);
    fs::permissions(path("locked"), fs::perms::owner_all);
  }
  EXPECT_EQ(kelhost::WriteErrorText(EACCES), L"permission denied");
  EXPECT_EQ(kelhost::WriteErrorText(ENOSPC), L"no space left on the device");
  EXPECT_EQ(kelhost::WriteErrorText(EROFS), L"the file system is read-only");
}

TEST_F(SavingTest, TheNextSaveRemovesTheTemporaryFilesOfKilledSaves) {
  const std::string gone = std::to_string(GonePid());
  const std::string mine = std::to_string(getpid());
  const std::vector<std::string> leftovers = {"drawing.dxf.kelcad-save-" + gone + "-0.tmp",
                                              "drawing.dxf.kelcad-save-" + mine + "-12.tmp"};
  const std::vector<std::string> kept = {"drawing.dxf.kelcad-save-1-0.tmp",  // a process that still runs
                                         "other.dxf.kelcad-save-" + gone + "-0.tmp",  // another file's
                                         "drawing.dxf.tmp", "drawing.dxf.kelcad-save-x-0.tmp"};
  for (const auto& name : leftovers) writeText(name.c_str(), "half a drawing");
  for (const auto& name : kept) writeText(name.c_str(), "someone else's");
  std::wstring error;
  ASSERT_TRUE(save(path("drawing.dxf"), error)) << kelhost::ToUtf8(error);
  std::vector<std::string> expected = kept;
  expected.push_back("drawing.dxf");
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(Names(dir), expected);
}

}  // namespace
