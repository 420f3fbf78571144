#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "arx/win32.h"
#include "lisp_fixture.h"

namespace fs = std::filesystem;

namespace {

// A scratch directory for the file tests, removed afterwards.
class IoBuiltinsTest : public LispTest {
 protected:
  IoBuiltinsTest() {
    char pattern[] = "/tmp/kel-lisp-XXXXXX";
    dir = mkdtemp(pattern);
  }
  ~IoBuiltinsTest() override {
    std::error_code ec;
    fs::remove_all(dir, ec);
    SetEnvironmentVariableW(L"ACAD", nullptr);
  }
  void write(const std::string& name, const std::string& bytes) {
    std::ofstream(dir / name, std::ios::binary) << bytes;
  }
  std::wstring path(const std::string& name) const { return (dir / name).wstring(); }
  std::string contents(const std::string& name) const {
    std::ifstream in(dir / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  std::wstring quoted(const std::string& name) const { return L"\"" + path(name) + L"\""; }

  fs::path dir;
};

}  // namespace

using OutputTest = LispTest;

TEST_F(OutputTest, PrintFunctionsWriteToTheCommandLine) {
  EXPECT_EQ(eval(L"(princ \"a\\nb\")"), L"\"a\\nb\"");
  EXPECT_EQ(out, L"a\nb");
  out.clear();
  eval(L"(prin1 \"a\\nb\")");
  EXPECT_EQ(out, L"\"a\\nb\"");
  out.clear();
  eval(L"(print '(1 \"x\"))");
  EXPECT_EQ(out, L"\n(1 \"x\") ");
  out.clear();
  eval(L"(princ '(1 \"x\" 2.0))");
  EXPECT_EQ(out, L"(1 x 2.0)");
  out.clear();
  EXPECT_EQ(eval(L"(prompt \"Select: \")"), L"nil");
  EXPECT_EQ(eval(L"(terpri)"), L"nil");
  EXPECT_EQ(eval(L"(write-line \"line\")"), L"\"line\"");
  EXPECT_EQ(eval(L"(write-char 65)"), L"65");
  EXPECT_EQ(out, L"Select: \nline\nA");
}

TEST_F(OutputTest, FunctionsPrintWithTheirAddresses) {
  EXPECT_EQ(eval(L"car").rfind(L"#<SUBR @", 0), 0u);
  EXPECT_NE(eval(L"car").find(L" CAR>"), std::wstring::npos);
  EXPECT_NE(run(L"(defun foo () 1) foo").find(L"#<USUBR @"), std::wstring::npos);
  EXPECT_NE(eval(L"(lambda () 1)").find(L" -lambda->"), std::wstring::npos);
}

TEST_F(IoBuiltinsTest, WriteThenReadUtf8Lines) {
  std::wstring file = quoted("out.txt");
  EXPECT_EQ(run(L"(setq f (open " + file + L" \"w\"))"), L"#<file " + file + L">");
  run(L"(write-line \"caf\x00E9\" f) (princ \"x\" f) (prin1 \"q\" f) (print 1 f) (write-char 10 f) (close f)");
  EXPECT_EQ(contents("out.txt"), "caf\xC3\xA9\nx\"q\"\n1 \n");
  run(L"(setq f (open " + file + L" \"a\")) (write-line \"more\" f) (close f)");
  write("crlf.txt", "\xEF\xBB\xBFone\r\ntwo\n\nlast");
  EXPECT_EQ(run(L"(setq f (open " + quoted("crlf.txt") + L" \"R\"))"
                L"(list (read-line f) (read-line f) (read-line f) (read-line f) (read-line f))"),
            L"(\"one\" \"two\" \"\" \"last\" nil)");
  EXPECT_EQ(run(L"(close f)"), L"nil");
  EXPECT_EQ(eval(L"(close f)"), L"ERROR: bad argument type: streamp #<file " + quoted("crlf.txt") + L">");
  EXPECT_EQ(run(L"(setq f (open " + file + L" \"r\")) (list (read-char f) (read-char f) (read-char f) (read-char f))"),
            L"(99 97 102 233)");
  EXPECT_EQ(run(L"(read-line f) (read-line f) (read-line f) (read-line f)"), L"\"more\"");
  EXPECT_EQ(eval(L"(read-line f)"), L"nil");
  EXPECT_EQ(eval(L"(write-line \"x\" f)"), L"ERROR: bad argument type: streamp #<file " + file + L">");
  EXPECT_EQ(eval(L"(open " + quoted("missing/none.txt") + L" \"r\")"), L"nil");
  EXPECT_EQ(eval(L"(open " + file + L" \"x\")"), L"ERROR: bad argument value: \"x\"");
  EXPECT_EQ(eval(L"(type (open " + file + L" \"r\"))"), L"FILE");
}

TEST_F(IoBuiltinsTest, FindfileSearchesTheAcadPath) {
  fs::create_directories(dir / "lib");
  write("lib/Helper.lsp", "(setq helper-loaded t)");
  EXPECT_EQ(eval(L"(findfile \"Helper.lsp\")"), L"nil");
  SetEnvironmentVariableW(L"ACAD", (L"/nonexistent;" + path("lib")).c_str());
  EXPECT_EQ(eval(L"(findfile \"helper.lsp\")"), L"\"" + path("lib") + L"/helper.lsp\"");
  // A name with a directory is looked for there only.
  EXPECT_EQ(eval(L"(findfile \"x/helper.lsp\")"), L"nil");
  EXPECT_EQ(eval(L"(findfile " + quoted("lib/Helper.lsp") + L")"), quoted("lib/Helper.lsp"));
}

TEST_F(IoBuiltinsTest, LoadEvaluatesAFileAndReportsFailures) {
  write("first.lsp", "(defun f1 () 1)\n(load \"second\")\n(setq after (f2))");
  write("second.lsp", "(defun f2 () 2) (defun f3 () 3)");
  // "second" is found beside the file being loaded, with ".lsp" added.
  EXPECT_EQ(eval(L"(load " + quoted("first") + L")"), L"2");
  EXPECT_EQ(eval(L"(list (f1) (f3) after)"), L"(1 3 2)");
  EXPECT_EQ(eval(L"(load \"nowhere\")"), L"ERROR: LOAD failed: \"nowhere\"");
  EXPECT_EQ(eval(L"(load \"nowhere\" 'fallback)"), L"FALLBACK");
  EXPECT_EQ(eval(L"(load \"nowhere\" (lambda () 'called))"), L"CALLED");
  write("broken.lsp", "(setq part 1) (car 5) (setq part 2)");
  EXPECT_EQ(eval(L"(load " + quoted("broken.lsp") + L")"), L"ERROR: bad argument type: consp 5");
  EXPECT_EQ(eval(L"part"), L"1");
  out.clear();
  EXPECT_EQ(eval(L"(load " + quoted("broken.lsp") + L" \"failed\")"), L"\"failed\"");
  EXPECT_EQ(out, L"");
  write("unbalanced.lsp", "(defun g (");
  EXPECT_EQ(eval(L"(load " + quoted("unbalanced") + L")"), L"ERROR: malformed list on input");
  kelhost::lisp::Outcome o = lisp.loadFile(path("second.lsp"));
  EXPECT_TRUE(o.ok);
  EXPECT_EQ(o.valueText, L"F3");
  EXPECT_FALSE(lisp.loadFile(path("none.lsp")).ok);
}

TEST_F(IoBuiltinsTest, EnvironmentVariables) {
  EXPECT_EQ(eval(L"(setenv \"KEL_LISP_TEST\" \"v\x00E9\")"), L"\"v\x00E9\"");
  EXPECT_EQ(eval(L"(getenv \"KEL_LISP_TEST\")"), L"\"v\x00E9\"");
  EXPECT_STREQ(getenv("KEL_LISP_TEST"), "v\xC3\xA9");
  unsetenv("KEL_LISP_TEST");
  EXPECT_EQ(eval(L"(getenv \"KEL_LISP_TEST\")"), L"nil");
}

TEST_F(IoBuiltinsTest, SandboxOptionsKeepFilesAndEnvironmentAlone) {
  write("s.lsp", "(setq s 1)");
  kelhost::lisp::Options options;
  options.allowFiles = false;
  options.allowSetenv = false;
  lisp.setOptions(options);
  EXPECT_EQ(eval(L"(open " + quoted("s.lsp") + L" \"r\")"), L"ERROR: file access is not allowed");
  EXPECT_EQ(eval(L"(findfile " + quoted("s.lsp") + L")"), L"nil");
  EXPECT_EQ(eval(L"(load " + quoted("s.lsp") + L" 'no)"), L"NO");
  EXPECT_EQ(eval(L"(setenv \"KEL_LISP_TEST\" \"v\")"), L"ERROR: setenv is not allowed");
  EXPECT_EQ(getenv("KEL_LISP_TEST"), nullptr);
}
