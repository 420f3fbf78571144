// "kel_entmakeline" and "kel_entmakepline": the layer is the first string
// anywhere among the arguments, the points the first run of points.
#include "kelcad/lisp/entity_handlers.h"
#include "kelcad/lisp/entmake_support.h"

namespace KEL {
namespace Lisp {

namespace {

const resbuf* FirstOf(const resbuf* args, bool (*is)(const resbuf*)) {
  for (const resbuf* rb = args; rb != nullptr; rb = rb->rbnext)
    if (is(rb)) return rb;
  return nullptr;
}

// The argument after rb in the run of points: the layer argument is
// passed over, so it may stand between the points.
const resbuf* NextInRun(const resbuf* rb, const resbuf* layer) {
  rb = rb->rbnext;
  return rb == layer ? rb->rbnext : rb;
}

}  // namespace

int MakeLineRun(const resbuf* args, const LineRunMessages& messages, Report report, const wchar_t* linetype) {
  if (args == nullptr) {
    report(messages.noArgs);
    return kRunRefused;
  }
  const resbuf* layer = FirstOf(args, IsTextArg);
  if (layer == nullptr) {
    report(messages.noLayer);
    return kRunRefused;
  }
  const resbuf* previous = FirstOf(args, IsPointArg);
  if (previous == nullptr) {
    report(messages.noPoints);
    return kRunRefused;
  }
  if (linetype != nullptr && messages.noLinetype != nullptr) {
    resbuf* record = acdbTblSearch(L"LTYPE", linetype, 0);
    if (record == nullptr) {
      report(messages.noLinetype);
      return kRunRefused;
    }
    acutRelRb(record);
  }
  for (const resbuf* rb = NextInRun(previous, layer); IsPointArg(rb); rb = NextInRun(rb, layer)) {
    resbuf* list = linetype ? acutBuildList(RTDXF0, L"LINE", 8, layer->resval.rstring, 6, linetype, 10,
                                            previous->resval.rpoint, 11, rb->resval.rpoint, RTNONE)
                            : acutBuildList(RTDXF0, L"LINE", 8, layer->resval.rstring, 10, previous->resval.rpoint,
                                            11, rb->resval.rpoint, RTNONE);
    if (!MakeFromList(list)) {
      report(messages.refused);
      return kRunRefused;
    }
    previous = rb;
  }
  return kRunMade;
}

// (kel_entmakeline ...): a LINE from each point of the run to the next.
int KEL_EntMakeLine() {
  const resbuf* args = acedGetArgs();
  acedRetNil();
  MakeLineRun(args,
              {L"\nError:kel_EntMakeLine 没输入参数.", L"\nError:kel_EntMakeLine 没输入lay参数.",
               L"\nError:kel_EntMakeLine 没输入ptb参数.", L"\nError:kel_EntMakeLine error."},
              Say, nullptr);
  return RTNORM;
}

// (kel_entmakepline ...): a heavy polyline through the run of points, with
// the drawing's THICKNESS and PLINEWID. Without points its header is made
// and left waiting for vertices.
int KEL_EntMakePLine() {
  resbuf value;
  double thickness = 0.0, width = 0.0;
  if (acedGetVar(L"THICKNESS", &value) == RTNORM && value.restype == RTREAL) thickness = value.resval.rreal;
  if (acedGetVar(L"PLINEWID", &value) == RTNORM && value.restype == RTREAL) width = value.resval.rreal;
  const resbuf* args = acedGetArgs();
  acedRetNil();
  if (args == nullptr) {
    Fail(L"\nError:mkpl(kel_EntMakePLine) 没输入参数.");
    return RTNORM;
  }
  const resbuf* layer = FirstOf(args, IsTextArg);
  if (layer == nullptr) {
    Fail(L"\nError:mkpl 没输入lay参数.");
    return RTNORM;
  }
  const wchar_t* lay = layer->resval.rstring;
  if (!MakeFromList(acutBuildList(RTDXF0, L"POLYLINE", 8, lay, 39, thickness, 40, width, 41, width, 66, 1, RTNONE))) {
    Fail(L"\nError:mkpl top error.");
    return RTNORM;
  }
  const resbuf* first = FirstOf(args, IsPointArg);
  if (first == nullptr) {
    Fail(L"\nError:mkpl 没输入ptb参数.");
    return RTNORM;
  }
  for (const resbuf* rb = first; IsPointArg(rb); rb = NextInRun(rb, layer)) {
    if (!MakeFromList(acutBuildList(RTDXF0, L"VERTEX", 8, lay, 10, rb->resval.rpoint, 39, thickness, 40, width, 41,
                                    width, RTNONE))) {
      Fail(L"\nError:mkpl VERTEX error.");
      return RTNORM;
    }
  }
  resbuf* end = acutBuildList(RTDXF0, L"SEQEND", 8, lay, 39, thickness, RTNONE);
  if (end == nullptr) {
    Fail(L"\nError:mkpl SEQEND error1.");
    return RTNORM;
  }
  if (!MakeFromList(end)) Fail(L"\nError:mkpl SEQEND error2.");
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
