// Reading DCL: definitions resolved through their prototypes and the
// standard tiles, the errors a broken file is reported with, and the
// limits on nesting and @include.
#include <gtest/gtest.h>

#include "../platform/temp_dir.h"
#include "editor/dcl_tiles.h"
#include "kelhost/text.h"

namespace {

using kelhost::editor::dcl::DclLibrary;
using kelhost::editor::dcl::Error;
using kelhost::editor::dcl::Tile;

// Every tile of a tree, depth first, as "type:key".
void Flatten(const Tile& t, std::vector<std::wstring>& out) {
  out.push_back(t.type + L":" + t.key());
  for (const Tile& c : t.children) Flatten(c, out);
}

TEST(DclReader, TilesTakeTypeAndAttributesFromTheirPrototypes) {
  DclLibrary lib;
  Error error;
  ASSERT_TRUE(lib.read(LR"(
// a comment
/* and a block
   comment */
wide_button : button { width = 12; label = "Wide"; }
settings : dialog {
  label = "Settings";
  : wide_button { key = "more"; label = "More..."; }
  : edit_box { key = "name"; value = "pier 3"; edit_limit = 8; }
  ok_cancel;
}
)",
                       L"settings.dcl", error))
      << error.text().c_str();
  Tile d;
  ASSERT_TRUE(lib.make(L"settings", d, error));
  EXPECT_EQ(d.type, L"dialog");
  EXPECT_EQ(d.attribute(L"label"), L"Settings");
  ASSERT_EQ(d.children.size(), 3u);
  const Tile& more = d.children[0];
  EXPECT_EQ(more.type, L"button");
  EXPECT_EQ(more.attribute(L"width"), L"12");         // from the prototype
  EXPECT_EQ(more.attribute(L"label"), L"More...");    // the nearest wins
  EXPECT_EQ(d.children[1].attribute(L"value"), L"pier 3");
  std::vector<std::wstring> all;
  Flatten(d, all);
  EXPECT_EQ(all, (std::vector<std::wstring>{L"dialog:", L"button:more", L"edit_box:name", L"column:", L"row:",
                                             L"button:accept", L"spacer:", L"button:cancel"}));
  const Tile& ok = d.children[2].children[0].children[0];
  EXPECT_TRUE(ok.flag(L"is_default"));
  EXPECT_EQ(ok.attribute(L"label"), L"OK");
  EXPECT_TRUE(d.children[2].children[0].children[2].flag(L"is_cancel"));
  EXPECT_FALSE(lib.make(L"nosuch", d, error));
}

Error ErrorOf(const std::wstring& text) {
  DclLibrary lib;
  Error error;
  EXPECT_FALSE(lib.read(text, L"C:\\apps\\bad.dcl", error));
  return error;
}

TEST(DclReader, BrokenFilesAreReportedWithTheirLine) {
  Error e = ErrorOf(L"d : dialog {\n  label = \"x\";\n  : button { key = \"b\" }\n  ok_cancel;\n}\n");
  EXPECT_EQ(e.line, 3);
  EXPECT_EQ(e.text(), L"Error in dialog file\n\"C:\\apps\\bad.dcl\", line 3:\nsyntax error\nSymbol: \"}\".");

  e = ErrorOf(L"d : dialog {\n  label = \"never closed;\n  ok_cancel;\n}\n");
  EXPECT_EQ(e.line, 2);
  EXPECT_EQ(e.message, L"syntax error");

  e = ErrorOf(L"d : dialog { ok_cancel; }\n/* an endless comment\n\n");
  EXPECT_EQ(e.message, L"syntax error");

  e = ErrorOf(L"d : dialog {\n  ok_cancel;\n");  // the file ends inside the dialog
  EXPECT_EQ(e.line, 3);

  e = ErrorOf(L"d : dialog {\n  label = \"x\";\n  ok_cancl;\n}\n");
  EXPECT_EQ(e.line, 3);
  EXPECT_EQ(e.text(), L"Error in dialog file\n\"C:\\apps\\bad.dcl\", line 3:\nundefined tile\nSymbol: \"ok_cancl\".");

  e = ErrorOf(L"x : nosuchtype { }\n");
  EXPECT_EQ(e.symbol, L"nosuchtype");
}

TEST(DclReader, NestingIsBounded) {
  auto nested = [](int depth) {
    std::wstring text = L"d : dialog {";
    for (int i = 1; i < depth; ++i) text += L" : row {";
    text += L" ok_cancel;";
    for (int i = 0; i < depth; ++i) text += L" }";
    return text;
  };
  DclLibrary lib;
  Error error;
  EXPECT_TRUE(lib.read(nested(kelhost::editor::dcl::kMaxNesting), L"deep.dcl", error)) << error.text().c_str();
  Error e = ErrorOf(nested(kelhost::editor::dcl::kMaxNesting + 1));
  EXPECT_EQ(e.message, L"tiles nested too deeply");
  // Prototypes that derive from each other in a circle.
  e = ErrorOf(L"a : b { }\nb : a { }\n");
  EXPECT_EQ(e.message, L"tiles nested too deeply");
  // A very long file of deep nesting does not exhaust the stack.
  e = ErrorOf(nested(100000));
  EXPECT_EQ(e.message, L"tiles nested too deeply");
}

TEST(DclReader, IncludedFilesLendTheirDefinitions) {
  TempDir dir;
  TempDir::Write(dir.file("parts.dcl"), "big_button : button { width = 20; }\n");
  TempDir::Write(dir.file("main.dcl"), "@include \"parts.dcl\"\nd : dialog { : big_button { key = \"b\"; } ok_only; }\n");
  TempDir::Write(dir.file("loop.dcl"), "@include \"loop.dcl\"\n");
  DclLibrary lib;
  Error error;
  ASSERT_TRUE(lib.read(kelhost::FromUtf8(TempDir::Read(dir.file("main.dcl"))), dir.wfile("main.dcl"), error))
      << error.text().c_str();
  Tile d;
  ASSERT_TRUE(lib.make(L"d", d, error));
  EXPECT_EQ(d.children[0].attribute(L"width"), L"20");

  Error e = ErrorOf(L"@include \"nowhere.dcl\"\n");
  EXPECT_EQ(e.message, L"cannot open the @include file");
  DclLibrary loop;
  EXPECT_FALSE(loop.read(L"@include \"loop.dcl\"\n", dir.wfile("loop.dcl"), error));
  EXPECT_EQ(error.message, L"@include nested too deeply");
}

}  // namespace
