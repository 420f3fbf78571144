// Set1: the restore, then the LAYER commands that make "PP-COM" usable and
// current for each state of the layer, with command echo off meanwhile.
#include <gtest/gtest.h>

#include "command_recorder.h"
#include "editor_module_fixture.h"
#include "kelcad/kelcad.h"

namespace {

using Lines = std::vector<std::wstring>;
using WorkingLayer = EditorModuleTest;

TEST_F(WorkingLayer, EachStateOfTheLayerGetsItsCommands) {
  CommandRecorder recorder({L"LAYER"});
  ASSERT_TRUE(LoadModule());
  const Lines current = {L"LAYER S PP-COM \"\""};
  const struct {
    int flags, color;  // flags -1: no such layer
    Lines sent;
  } cases[] = {
      {-1, 7, {L"LAYER M PP-COM \"\""}},
      {0, 7, current},
      {1, 7, {L"LAYER T PP-COM \"\"", current[0]}},
      {3, 7, {L"LAYER T PP-COM \"\"", current[0]}},
      {4, 7, {L"LAYER U PP-COM \"\"", current[0]}},
      {5, 7, {L"LAYER T PP-COM U PP-COM \"\"", current[0]}},
      {6, 7, current},  // a lock with the viewport freeze is left alone
      {5, -3, {L"LAYER ON PP-COM \"\"", L"LAYER T PP-COM U PP-COM \"\"", current[0]}},
  };
  for (const auto& c : cases) {
    drawing = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(drawing.get());
    if (c.flags >= 0) {
      ASSERT_NE(MakeLayer(L"PP-COM", c.flags, c.color), L"nil");
    }
    recorder.clear();
    KEL::Set1();
    EXPECT_EQ(recorder.lines(), c.sent) << "flags " << c.flags << " colour " << c.color;
    for (const RecordedCommand& call : recorder.calls()) EXPECT_EQ(call.cmdecho, 0);
  }
}

TEST_F(WorkingLayer, TheUsersVariablesComeBackFirstAndEchoAndBlipsEndOn) {
  CommandRecorder recorder({L"LAYER"});
  ASSERT_TRUE(LoadModule());
  Eval(L"(setvar \"ANGDIR\" 1)");
  KEL::Set0();
  EXPECT_TRUE(Void(L"(kel_set1)"));
  EXPECT_EQ(Eval(L"(mapcar 'getvar '(\"ANGDIR\" \"CMDECHO\" \"BLIPMODE\"))"), L"(1 1 1)");
  EXPECT_EQ(recorder.calls().size(), 1u);
  EXPECT_EQ(out, L"");
}

}  // namespace
