// Picks and messages: alert, nentsel and nentselp (the object picked,
// found inside the blocks it is part of), and ssnamex (how a selection
// set's members were chosen).
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "ads/entity_names.h"
#include "ads/object_snap.h"
#include "ads/selection_sets.h"
#include "arx/acedads.h"
#include "arx/dbblkref.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"
#include "editor/input_calls.h"
#include "editor/picking.h"
#include "lisp/machine.h"

namespace kelhost::lisp {
namespace {

ValuePtr PointValue(const double p[3]) {
  ListBuilder b;
  for (int i = 0; i < 3; ++i) b.add(MakeReal(p[i]));
  return b.take();
}

ValuePtr EnameValue(AcDbObjectId id) {
  ads_name name;
  ads::NameOfId(id, name);
  return std::make_shared<NameValue>(Kind::Ename, name);
}

ValuePtr Alert(Machine& m, Args& a) {
  acedAlert(StrArg(m, a[0]).c_str());
  return nullptr;
}

// What a pick found inside the blocks: the innermost entity, the
// transformation from its block to the world, and the references it lies
// in, innermost first.
struct NestedPick {
  AcDbObjectId entity;
  AcGeMatrix3d toWorld;
  std::vector<AcDbObjectId> containers;
};

// The entity of a block nearest to the point (in the block's coordinates).
AcDbObjectId NearestInBlock(AcDbObjectId block, const AcGePoint3d& local) {
  auto* record = db::PeekAs<AcDbBlockTableRecord>(block);
  if (!record) return AcDbObjectId::kNull;
  AcDbBlockTableRecordIterator* raw = nullptr;
  if (record->newIterator(raw) != Acad::eOk || !raw) return AcDbObjectId::kNull;
  std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
  AcDbObjectId best;
  double bestDistance = std::numeric_limits<double>::infinity();
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    if (it->getEntityId(id) != Acad::eOk) continue;
    const double d = editor::DistanceTo(AcDbEntity::cast(db::Peek(id)), local);
    if (d < bestDistance) {
      bestDistance = d;
      best = id;
    }
  }
  return best;
}

// Descends from a picked top-level entity to what lies under the point.
NestedPick Descend(AcDbObjectId picked, const AcGePoint3d& world) {
  NestedPick pick{picked, AcGeMatrix3d::kIdentity, {}};
  for (int depth = 0; depth < 64; ++depth) {
    auto* ref = db::PeekAs<AcDbBlockReference>(pick.entity);
    if (!ref) break;
    // An attribute under the point is the reference's own, in the world.
    const double toRef = editor::DistanceTo(ref, world);
    for (const AcDbObjectId& att : ref->attributeIds()) {
      const double d = editor::DistanceTo(AcDbEntity::cast(db::Peek(att)), world);
      if (depth == 0 && d <= toRef + editor::PickAperture() && d <= editor::PickAperture())
        return NestedPick{att, AcGeMatrix3d::kIdentity, {}};
    }
    const AcGeMatrix3d placed = pick.toWorld * ref->blockTransform();
    const AcDbObjectId inner = NearestInBlock(ref->blockTableRecord(), placed.inverse() * world);
    if (inner.isNull()) break;
    pick.containers.insert(pick.containers.begin(), pick.entity);
    pick.toWorld = placed;
    pick.entity = inner;
  }
  return pick;
}

ValuePtr MatrixValue(const AcGeMatrix3d& t, bool fourByFour) {
  ListBuilder rows;
  if (fourByFour) {
    for (int r = 0; r < 4; ++r) {
      ListBuilder row;
      for (int c = 0; c < 4; ++c) row.add(MakeReal(t.entry[r][c]));
      rows.add(row.take());
    }
  } else {
    // Model to world as four points: the three axes, then the origin.
    for (int c = 0; c < 4; ++c) {
      ListBuilder row;
      for (int r = 0; r < 3; ++r) row.add(MakeReal(t.entry[r][c]));
      rows.add(row.take());
    }
  }
  return rows.take();
}

ValuePtr PickResult(AcDbObjectId picked, const double ucsPoint[3], bool fourByFour) {
  ads_point wcs;
  resbuf from{}, to{};
  from.restype = to.restype = RTSHORT;
  from.resval.rint = 1;
  to.resval.rint = 0;
  if (acedTrans(ucsPoint, &from, &to, 0, wcs) != RTNORM) return nullptr;
  const NestedPick pick = Descend(picked, AcGePoint3d(wcs[0], wcs[1], wcs[2]));
  ListBuilder out;
  out.add(EnameValue(pick.entity));
  out.add(PointValue(ucsPoint));
  if (!pick.containers.empty()) {
    out.add(MatrixValue(pick.toWorld, fourByFour));
    ListBuilder refs;
    for (const AcDbObjectId& id : pick.containers) refs.add(EnameValue(id));
    out.add(refs.take());
  }
  return out.take();
}

ValuePtr AskPick(Machine& m, Args& a, bool fourByFour) {
  std::wstring msg = a.empty() || !a[0] ? L"\nSelect object: " : StrArg(m, a[0]);
  const editor::Answer answer = editor::AskUser(editor::Want::kEntity, msg.c_str());
  switch (answer.status) {
    case RTNORM: {
      const AcDbObjectId id = ads::IdOfName(answer.name);
      if (id.isNull()) return nullptr;
      return PickResult(id, answer.point, fourByFour);
    }
    case RTCAN: m.raise(L"Function cancelled");
    case RTKWORD: {
      ACHAR text[133] = {0};
      acedGetInput(text, 133);
      return MakeStr(text);
    }
    default: return nullptr;
  }
}

// (nentsel [msg])
ValuePtr NEntSel(Machine& m, Args& a) { return AskPick(m, a, false); }

// (nentselp [msg] [pt]): with a point, the object there without asking.
ValuePtr NEntSelP(Machine& m, Args& a) {
  const ValuePtr* pointArg = nullptr;
  Args promptArgs;
  for (const ValuePtr& v : a) {
    if (IsCons(v)) pointArg = &v;
    else if (v) promptArgs.push_back(v);
  }
  if (!pointArg) return AskPick(m, promptArgs, true);
  Args items;
  if (!ListElements(*pointArg, items) || items.size() < 2 || items.size() > 3) m.badArgument(L"2D/3D point: ", *pointArg);
  double p[3] = {0, 0, 0};
  for (size_t k = 0; k < items.size(); ++k) p[k] = NumArg(m, items[k]);
  const AcDbObjectId id = editor::PickIdAt(p);
  if (id.isNull()) return nullptr;
  return PickResult(id, p, true);
}

ValuePtr PointDescription(const AcGePoint3d& p) {
  ListBuilder d;
  d.add(MakeInt(0));
  const double xyz[3] = {p.x, p.y, p.z};
  d.add(PointValue(xyz));
  return d.take();
}

// (ssnamex ss [index]): for each member (or the one at index) its method,
// name and data; the polygons the members refer to follow.
ValuePtr SsNameX(Machine& m, Args& a) {
  if (!Is(a[0], Kind::Pickset)) m.badArgument(L"lselsetp ", a[0]);
  const std::int64_t* ss = As<NameValue>(a[0])->name;
  const std::vector<AcDbObjectId>* members = ads::SelectionSetMembers(ss);
  if (!members) return nullptr;
  std::vector<AcDbObjectId> chosen;
  if (a.size() > 1 && a[1]) {
    const std::int32_t index = IntArg(m, a[1]);
    if (index < 0 || static_cast<size_t>(index) >= members->size()) return nullptr;
    chosen.push_back((*members)[static_cast<size_t>(index)]);
  } else {
    chosen = *members;
  }
  m.step(chosen.size());
  ListBuilder out;
  std::vector<AcGePoint3d> polygon;
  for (const AcDbObjectId& id : chosen) {
    const ads::SelectionHow how = ads::SelectionHowOf(ss, id);
    ListBuilder item;
    item.add(MakeInt(how.method));
    item.add(EnameValue(id));
    if (how.method == 1) {
      item.add(MakeInt(0));
      item.add(PointDescription(how.points.front()));
    } else if (how.method >= 2) {
      item.add(MakeInt(0));
      item.add(MakeInt(-1));
      polygon = how.points;
    }
    out.add(item.take());
  }
  if (!polygon.empty()) {
    ListBuilder poly;
    poly.add(MakeInt(-1));
    for (const AcGePoint3d& p : polygon) poly.add(PointDescription(p));
    out.add(poly.take());
  }
  return out.take();
}

// A point between the UCS (1) and the WCS (0).
bool Converted(const double in[3], int from, int to, double out[3]) {
  resbuf f{}, t{};
  f.restype = t.restype = RTSHORT;
  f.resval.rint = static_cast<short>(from);
  t.resval.rint = static_cast<short>(to);
  return acedTrans(in, &f, &t, 0, out) == RTNORM;
}

double VarNumber(const wchar_t* name, double fallback) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM) return fallback;
  return rb.restype == RTSHORT ? rb.resval.rint : rb.restype == RTREAL ? rb.resval.rreal : fallback;
}

// (osnap pt modes): the snap point of the objects near pt, or nil.
ValuePtr OSnap(Machine& m, Args& a) {
  Args items;
  if (!IsCons(a[0]) || !ListElements(a[0], items) || items.size() < 2 || items.size() > 3)
    m.badArgument(L"2D/3D point: ", a[0]);
  double ucs[3] = {0, 0, 0};
  for (size_t k = 0; k < items.size(); ++k) {
    if (!IsNumber(items[k])) m.badArgument(L"2D/3D point: ", a[0]);
    ucs[k] = NumberOf(items[k]);
  }
  unsigned modes = 0;
  if (!ads::ParseSnapModes(StrArg(m, a[1]), modes)) return nullptr;
  double wcs[3], lastUcs[3] = {0, 0, 0}, lastWcs[3];
  if (!Converted(ucs, 1, 0, wcs)) return nullptr;
  resbuf rb{};
  const bool haveLast = acedGetVar(L"LASTPOINT", &rb) == RTNORM && rb.restype == RT3DPOINT;
  if (haveLast)
    for (int i = 0; i < 3; ++i) lastUcs[i] = rb.resval.rpoint[i];
  const AcGePoint3d last = haveLast && Converted(lastUcs, 1, 0, lastWcs) ? AcGePoint3d(lastWcs[0], lastWcs[1], lastWcs[2])
                                                                         : AcGePoint3d();
  // APERTURE pixels, as PICKBOX pixels make the pick box.
  const double aperture = editor::PickAperture() / std::max(1.0, VarNumber(L"PICKBOX", 3)) * VarNumber(L"APERTURE", 10);
  AcGePoint3d snapped;
  if (!ads::ObjectSnap(AcGePoint3d(wcs[0], wcs[1], wcs[2]), modes, aperture, haveLast ? &last : nullptr, snapped))
    return nullptr;
  const double world[3] = {snapped.x, snapped.y, snapped.z};
  double out[3];
  if (!Converted(world, 0, 1, out)) return nullptr;
  return PointValue(out);
}

}  // namespace

void RegisterPickBuiltins(Machine& m) {
  m.defineBuiltin(L"OSNAP", OSnap, 2, 2);
  m.defineBuiltin(L"ALERT", Alert, 1, 1);
  m.defineBuiltin(L"NENTSEL", NEntSel, 0, 1);
  m.defineBuiltin(L"NENTSELP", NEntSelP, 0, 2);
  m.defineBuiltin(L"SSNAMEX", SsNameX, 1, 2);
}

}  // namespace kelhost::lisp
