// INSERT (and -INSERT): the command-line form. A block of the drawing or
// a drawing file, then the insertion point (with the options that preset
// the scale, the rotation or a base point), the X and Y scale factors,
// the rotation and, per ATTREQ, the attribute values (ATTDIA does not
// apply: the headless editor always asks on the command line). INSNAME
// keeps the last block placed, the default of the next INSERT.
//
// The reference is made when all of it is known, so a cancelled INSERT
// leaves no reference; a block defined from a file before the cancel
// stays defined, as it does on the platform.
#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

#include "ads/entity_names.h"
#include "arx/acedads.h"
#include "arx/acutads.h"
#include "arx/dbblkref.h"
#include "arx/wformat.h"
#include "db/curve_geometry.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "editor/commands/block_attributes.h"
#include "editor/commands/block_choice.h"
#include "editor/commands/drawing_support.h"
#include "editor/commands/insert_units.h"
#include "editor/commands/typed_text.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

std::wstring TextVar(const wchar_t* name) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return L"";
  std::wstring value = rb.resval.rstring;
  std::free(rb.resval.rstring);
  return value;
}

int ShortVar(const wchar_t* name, int fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTSHORT ? rb.resval.rint : fallback;
}

void SetTextVar(const wchar_t* name, const std::wstring& value) {
  resbuf rb{};
  rb.restype = RTSTR;
  rb.resval.rstring = const_cast<ACHAR*>(value.c_str());
  acedSetVar(name, &rb);
}

// "?": the blocks of the drawing that match a pattern, and the count of
// each kind.
void ListBlocks(CommandContext& c, AcDbDatabase* db) {
  std::wstring pattern = Trimmed(c.askString(L"\nEnter block(s) to list <*>: ").text);
  if (pattern.empty()) pattern = L"*";
  auto* table = db::PeekAs<AcDbBlockTable>(db->blockTableId());
  AcDbSymbolTableIterator* it = nullptr;
  if (!table || table->newIterator(it) != Acad::eOk) return;
  int user = 0, external = 0, dependent = 0, unnamed = 0;
  c.print(L"\nDefined blocks.");
  for (; !it->done(); it->step()) {
    AcDbObjectId id;
    it->getRecordId(id);
    auto* block = db::PeekAs<AcDbBlockTableRecord>(id);
    if (!block || block->isLayout()) continue;
    if (block->isAnonymous()) {
      ++unnamed;
      continue;
    }
    if (block->isFromExternalReference()) ++external;
    else if (block->isDependent()) ++dependent;
    else ++user;
    if (acutWcMatch(ToUpper(block->getName()).c_str(), ToUpper(pattern).c_str()) == RTNORM)
      c.print(L"\n  \"" + std::wstring(block->getName()) + L"\"");
  }
  delete it;
  c.print(L"\n\nUser      External     Dependent    Unnamed");
  c.print(L"\nBlocks    References   Blocks       Blocks");
  c.print(WFormat(L"\n%6d    %6d       %6d       %6d", user, external, dependent, unnamed));
}

struct Placement {
  double point[3] = {0, 0, 0};  // UCS
  double scale[3] = {1, 1, 1};
  bool scaled = false;  // preset before the point
  double rotation = 0;
  bool rotated = false;
  bool hasBase = false;  // a base point of the block's own, in its coordinates
  double base[3] = {0, 0, 0};
};

// A scale factor typed (or passed) as text: a number in the current
// units, not zero.
bool ScaleOf(CommandContext& c, const std::wstring& text, double& value) {
  if (acutDisToF(Trimmed(text).c_str(), -1, &value) != RTNORM) {
    c.print(L"\nPoint or option keyword required.");
    return false;
  }
  if (value == 0) {
    c.print(L"\nValue must be nonzero.");
    return false;
  }
  return true;
}

double AskFactor(CommandContext& c, const std::wstring& prompt, double fallback) {
  Answer a = c.askReal(prompt, L"", kNoZero);
  return a.status == RTNORM ? a.real : fallback;
}

// The insertion point, after any presets the options give.
void AskInsertionPoint(CommandContext& c, Placement& p, bool exploded) {
  for (;;) {
    Answer a = c.askPoint(L"\nSpecify insertion point or [Basepoint/Scale/X/Y/Z/Rotate]: ",
                          L"Basepoint Scale X Y Z Rotate", kNoNull);
    if (a.status == RTNORM) {
      for (int i = 0; i < 3; ++i) p.point[i] = a.point[i];
      return;
    }
    const std::wstring& o = a.text;
    if (o == L"Basepoint") {
      Answer b = c.askPoint(L"\nSpecify base point: ", L"", kNoNull);
      p.hasBase = true;
      for (int i = 0; i < 3; ++i) p.base[i] = b.point[i];
    } else if (o == L"Scale") {
      const double s = AskFactor(c, L"\nSpecify scale factor for XYZ axes <1>: ", 1.0);
      p.scale[0] = p.scale[1] = p.scale[2] = s;
      p.scaled = true;
    } else if (o == L"Rotate") {
      Answer r = c.askAngle(L"\nSpecify rotation angle <0>: ");
      p.rotation = r.status == RTNORM ? r.real : 0.0;
      p.rotated = true;
    } else if (!exploded) {
      const int axis = o == L"X" ? 0 : o == L"Y" ? 1 : 2;
      p.scale[axis] = AskFactor(c, L"\nSpecify " + o + L" scale factor <1>: ", 1.0);
      p.scaled = true;
    } else {
      c.print(L"\nAn exploded block takes one scale factor for all axes.");
    }
  }
}

// The scale from an opposite corner: the box from the insertion point.
bool CornerScale(CommandContext& c, const Placement& p, const double corner[3], double scale[3]) {
  const double dx = corner[0] - p.point[0], dy = corner[1] - p.point[1];
  if (dx == 0 || dy == 0) {
    c.print(L"\nValue must be nonzero.");
    return false;
  }
  scale[0] = scale[2] = dx;
  scale[1] = dy;
  return true;
}

// Corner: the scale from the opposite corner of a unit square.
bool AskCornerScale(CommandContext& c, Placement& p) {
  Answer corner = c.askCorner(L"\nSpecify opposite corner: ", p.point, kNoNull);
  return CornerScale(c, p, corner.point, p.scale);
}

void AskXYZ(CommandContext& c, Placement& p) {
  for (;;) {
    Answer a = c.askKeyword(L"\nSpecify X scale factor or [Corner] <1>: ", L"Corner", kArbitrary);
    if (a.text == L"Corner") {
      if (AskCornerScale(c, p)) return;
      continue;
    }
    double x = 1.0;
    if (!Trimmed(a.text).empty() && !ScaleOf(c, a.text, x)) continue;
    p.scale[0] = x;
    p.scale[1] = AskFactor(c, L"\nSpecify Y scale factor or <use X scale factor>: ", x);
    p.scale[2] = AskFactor(c, L"\nSpecify Z scale factor or <use X scale factor>: ", x);
    return;
  }
}

// X (with Y, or a corner for both) after the point: Z takes X's factor.
void AskScale(CommandContext& c, Placement& p) {
  for (;;) {
    Request r;
    r.want = Want::kPoint;
    r.prompt = L"\nEnter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: ";
    r.keywords = Keywords(L"Corner XYZ");
    r.flags = kArbitrary;
    r.hasBase = true;
    for (int i = 0; i < 3; ++i) r.base[i] = p.point[i];
    Answer a = c.ask(r);
    if (a.status == RTNORM) {
      if (CornerScale(c, p, a.point, p.scale)) return;
      continue;
    }
    if (a.text == L"XYZ") return AskXYZ(c, p);
    if (a.text == L"Corner") {
      if (AskCornerScale(c, p)) return;
      continue;
    }
    double x = 1.0;
    if (!Trimmed(a.text).empty() && !ScaleOf(c, a.text, x)) continue;
    p.scale[0] = p.scale[2] = x;
    p.scale[1] = AskFactor(c, L"\nEnter Y scale factor <use X scale factor>: ", x);
    return;
  }
}

// The reference as placed: in the plane of the current UCS, its rotation
// measured there from the UCS's X axis.
std::unique_ptr<AcDbBlockReference> MakeReference(AcDbDatabase* db, AcDbObjectId blockId, const Placement& p,
                                                  double conversion) {
  const double zero[3] = {0, 0, 0}, unitZ[3] = {0, 0, 1};
  const double along[3] = {std::cos(p.rotation), std::sin(p.rotation), 0};
  const AcGePoint3d o = ToWorld(zero);
  const AcGeVector3d normal = (ToWorld(unitZ) - o).normal();
  const AcGeVector3d scale(p.scale[0] * conversion, p.scale[1] * conversion, p.scale[2] * conversion);
  auto ref = std::make_unique<AcDbBlockReference>(ToWorld(p.point), blockId);
  ref->setDatabaseDefaults(db);
  ref->setScaleFactors(scale);
  ref->setNormal(normal);
  ref->setRotation(geom::OcsAngle(normal, ToWorld(along) - o));
  if (p.hasBase) {
    // The given base point, not the block's, lands on the insertion point.
    auto* block = db::PeekAs<AcDbBlockTableRecord>(blockId);
    const AcGePoint3d origin = block ? block->origin() : AcGePoint3d::kOrigin;
    const AcGeMatrix3d placed = ref->blockTransform();
    const AcGeVector3d shift = placed * AcGePoint3d(p.base[0], p.base[1], p.base[2]) - placed * origin;
    ref->setPosition(ToWorld(p.point) - shift);
  }
  return ref;
}

// The parts of an exploded insert join the current space with their own
// layers and properties.
bool AppendParts(AcDbDatabase* db, const AcDbBlockReference& ref) {
  AcDbVoidPtrArray parts;
  if (ref.explode(parts) != Acad::eOk) return false;
  AcDbBlockTableRecord* space = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(space, db->currentSpaceId(), AcDb::kForWrite);
  for (void* part : parts) {
    auto* entity = static_cast<AcDbEntity*>(part);
    AcDbObjectId id;
    if (es == Acad::eOk) es = space->appendAcDbEntity(id, entity);
    if (es == Acad::eOk) entity->close();
    else delete entity;
  }
  if (space) space->close();
  return es == Acad::eOk;
}

void RunInsert(CommandContext& c) {
  AcDbDatabase* db = ads::WorkingDb();
  if (!db) c.fail();
  BlockChoice choice;
  for (;;) {
    const std::wstring last = TextVar(L"INSNAME");
    const std::wstring prompt =
        last.empty() ? L"\nEnter block name or [?]: " : L"\nEnter block name or [?] <" + last + L">: ";
    std::wstring name = Trimmed(c.askString(prompt).text);
    if (name.empty()) {
      if (last.empty()) return;
      name = last;
    }
    if (name == L"?") {
      ListBlocks(c, db);
      continue;
    }
    if (!ChooseBlock(c, db, name, choice)) c.fail();
    break;
  }
  auto* block = db::PeekAs<AcDbBlockTableRecord>(choice.block);
  const AcDb::UnitsValue blockUnits = block ? block->blockInsertUnits() : AcDb::kUnitsUndefined;
  const double conversion = UnitsConversion(blockUnits, DrawingUnits(db));
  c.print(WFormat(L"\nUnits: %s   Conversion:%10.4f", UnitsName(blockUnits).c_str(), conversion));

  Placement p;
  AskInsertionPoint(c, p, choice.exploded);
  if (!p.scaled) {
    if (choice.exploded) {
      const double s = AskFactor(c, L"\nSpecify scale factor for XYZ axes <1>: ", 1.0);
      p.scale[0] = p.scale[1] = p.scale[2] = s;
    } else {
      AskScale(c, p);
    }
  }
  if (!p.rotated) {
    Answer r = c.askAngle(L"\nSpecify rotation angle <0>: ", L"", 0, p.point);
    p.rotation = r.status == RTNORM ? r.real : 0.0;
  }

  std::unique_ptr<AcDbBlockReference> ref = MakeReference(db, choice.block, p, conversion);
  if (choice.exploded) {
    if (!AppendParts(db, *ref)) c.fail(L"\nThe block could not be exploded.");
  } else {
    const std::vector<AttributeValue> values = AskAttributeValues(c, choice.block, ShortVar(L"ATTREQ", 1) != 0);
    if (AttachAttributes(*ref, values) != Acad::eOk) c.fail();
    if (AppendToCurrentSpace(std::move(ref)).isNull()) c.fail();
  }
  SetTextVar(L"INSNAME", choice.name);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Insert, {L"INSERT", RunInsert, /*hasDialog*/ true, /*transparent*/ false});

}  // namespace kelhost::editor
