#include "db/dimension_arrows.h"

#include <cmath>
#include <cwctype>
#include <string>

#include "arx/dbdatabase.h"
#include "arx/dbents.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"

namespace kelhost::db {
namespace {

bool SameName(const std::wstring& a, const std::wstring& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::towupper(a[i]) != std::towupper(b[i])) return false;
  return true;
}

// A polyline through points with the same bulge and width on each segment.
AcDbPolyline* Pline(std::initializer_list<AcGePoint2d> points, bool closed = false, double bulge = 0.0,
                    double width = 0.0) {
  auto* p = new AcDbPolyline(static_cast<unsigned>(points.size()));
  unsigned i = 0;
  for (const AcGePoint2d& pt : points) p->addVertexAt(i++, pt, bulge, width, width);
  p->setClosed(closed);
  return p;
}

AcDbPolyline* Disc(double radius) {
  return Pline({AcGePoint2d(-radius / 2, 0), AcGePoint2d(radius / 2, 0)}, true, 1.0, radius);
}

AcDbLine* Line(double x1, double y1, double x2, double y2) {
  return new AcDbLine(AcGePoint3d(x1, y1, 0), AcGePoint3d(x2, y2, 0));
}

AcDbCircle* Circle(double x, double radius) {
  return new AcDbCircle(AcGePoint3d(x, 0, 0), AcGeVector3d::kZAxis, radius);
}

struct Arrowhead {
  const wchar_t* name;
  bool tick;
  void (*draw)(std::vector<AcDbEntity*>& out);
};

const double kOpen30 = std::tan(15.0 * 3.14159265358979323846 / 180.0);

const Arrowhead kArrowheads[] = {
    {L"_Closed", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(0, 0), AcGePoint2d(-1, 1.0 / 6), AcGePoint2d(-1, -1.0 / 6)}, true));
       o.push_back(Line(-1, 0, 0, 0));
     }},
    {L"_ClosedBlank", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(0, 0), AcGePoint2d(-1, 1.0 / 6), AcGePoint2d(-1, -1.0 / 6)}, true));
     }},
    {L"_Dot", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Disc(0.5));
       o.push_back(Line(-1, 0, -0.25, 0));
     }},
    {L"_DotSmall", false, [](std::vector<AcDbEntity*>& o) { o.push_back(Disc(0.125)); }},
    {L"_DotBlank", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Circle(0, 0.5));
       o.push_back(Line(-1, 0, -0.5, 0));
     }},
    {L"_Small", false, [](std::vector<AcDbEntity*>& o) { o.push_back(Circle(0, 0.25)); }},
    {L"_Origin", false, [](std::vector<AcDbEntity*>& o) { o.push_back(Circle(0, 0.5)); }},
    {L"_Origin2", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Circle(0, 0.5));
       o.push_back(Circle(0, 0.25));
     }},
    {L"_Open", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-1, 1.0 / 6), AcGePoint2d(0, 0), AcGePoint2d(-1, -1.0 / 6)}));
       o.push_back(Line(-1, 0, 0, 0));
     }},
    {L"_Open90", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-0.5, 0.5), AcGePoint2d(0, 0), AcGePoint2d(-0.5, -0.5)}));
       o.push_back(Line(-1, 0, 0, 0));
     }},
    {L"_Open30", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-1, kOpen30), AcGePoint2d(0, 0), AcGePoint2d(-1, -kOpen30)}));
       o.push_back(Line(-1, 0, 0, 0));
     }},
    {L"_BoxBlank", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-0.5, -0.5), AcGePoint2d(0.5, -0.5), AcGePoint2d(0.5, 0.5),
                          AcGePoint2d(-0.5, 0.5)},
                         true));
       o.push_back(Line(-1, 0, -0.5, 0));
     }},
    {L"_BoxFilled", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-0.5, 0), AcGePoint2d(0.5, 0)}, false, 0.0, 1.0));
       o.push_back(Line(-1, 0, -0.5, 0));
     }},
    {L"_DatumBlank", false,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(0, 0.5), AcGePoint2d(-1, 0), AcGePoint2d(0, -0.5)}, true));
     }},
    {L"_DatumFilled", false,
     [](std::vector<AcDbEntity*>& o) {
       auto* p = new AcDbPolyline(2);
       p->addVertexAt(0, AcGePoint2d(-1, 0), 0.0, 0.0, 1.0);
       p->addVertexAt(1, AcGePoint2d(0, 0));
       o.push_back(p);
     }},
    {L"_Integral", true,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-0.45, -0.45), AcGePoint2d(0, 0)}, false, -0.4142));
       o.push_back(Pline({AcGePoint2d(0, 0), AcGePoint2d(0.45, 0.45)}, false, 0.4142));
     }},
    {L"_ArchTick", true,
     [](std::vector<AcDbEntity*>& o) {
       o.push_back(Pline({AcGePoint2d(-0.5, -0.5), AcGePoint2d(0.5, 0.5)}, false, 0.0, 0.15));
     }},
    {L"_Oblique", true, [](std::vector<AcDbEntity*>& o) { o.push_back(Line(-0.5, -0.5, 0.5, 0.5)); }},
    {L"_None", true, [](std::vector<AcDbEntity*>&) {}},
};

const Arrowhead* Standard(const std::wstring& name) {
  const std::wstring withUnderscore = !name.empty() && name[0] == L'_' ? name : L"_" + name;
  for (const Arrowhead& a : kArrowheads)
    if (SameName(withUnderscore, a.name)) return &a;
  return nullptr;
}

Acad::ErrorStatus MakeArrowhead(AcDbDatabase* db, const Arrowhead& head, AcDbObjectId& id) {
  AcDbBlockTable* table = nullptr;
  Acad::ErrorStatus es = acdbOpenObject(table, db->blockTableId(), AcDb::kForWrite);
  if (es != Acad::eOk) return es;
  auto* block = new AcDbBlockTableRecord;
  block->setName(head.name);
  block->setOrigin(AcGePoint3d::kOrigin);
  es = table->add(id, block);
  table->close();
  if (es != Acad::eOk) {
    delete block;
    return es;
  }
  std::vector<AcDbEntity*> parts;
  head.draw(parts);
  for (AcDbEntity* part : parts) {
    part->setDatabaseDefaults(db);
    part->setLayer(db->layerZero());
    part->setColorIndex(0);
    part->setLinetype(db->byBlockLinetype());
    part->setLineWeight(AcDb::kLnWtByBlock);
    if (block->appendAcDbEntity(part) == Acad::eOk)
      part->close();
    else
      delete part;
  }
  block->close();
  return Acad::eOk;
}

}  // namespace

Acad::ErrorStatus ArrowBlock(AcDbDatabase* db, const wchar_t* name, AcDbObjectId& id) {
  id.setNull();
  const std::wstring wanted = name ? name : L"";
  if (wanted.empty() || wanted == L"." || SameName(wanted, L"_ClosedFilled") || SameName(wanted, L"ClosedFilled"))
    return Acad::eOk;
  if (!db) return Acad::eNoDatabase;
  auto* table = PeekAs<AcDbBlockTable>(db->blockTableId());
  if (!table) return Acad::eWasErased;
  const Arrowhead* standard = Standard(wanted);
  if (table->getAt(wanted.c_str(), id) == Acad::eOk) return Acad::eOk;
  if (standard && table->getAt(standard->name, id) == Acad::eOk) return Acad::eOk;
  if (!standard) return Acad::eKeyNotFound;
  return MakeArrowhead(db, *standard, id);
}

bool IsTickArrow(AcDbObjectId block) {
  auto* record = PeekAs<AcDbBlockTableRecord>(block);
  if (!record) return false;
  const Arrowhead* head = Standard(record->getName());
  return head && head->tick;
}

}  // namespace kelhost::db
