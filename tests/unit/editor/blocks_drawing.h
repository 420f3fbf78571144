// A drawing like a family's block file, for the tests of INSERT, WBLOCK
// and the copies between drawings.
#pragma once

#include "arx/acutads.h"
#include "blocks_fixture.h"
#include "db/header_vars.h"

// A drawing like a family's block file: layer WALL (colour 2), linetype
// DASHED, text style ROMANS, application KELAPP, a block INNER (a circle on
// WALL and an attribute definition), and in model space, in this order, a
// text in ROMANS, a reference to INNER with its attribute, a DASHED line on
// WALL with KELAPP xdata and a dimension (with its anonymous block) in
// the dimension style FAMILY, whose text style is ROMANS.
struct Source {
  std::unique_ptr<AcDbDatabase> db;  // when the drawing is one of its own
  AcDbObjectId wall, dashed, romans, family, inner, text, ref, line, dim;
};

// Builds it into d (a new drawing's contents there).
inline Source BuildSource(AcDbDatabase* d) {
  Source s;
  auto* dashed = new AcDbLinetypeTableRecord;
  dashed->setNumDashes(2);
  dashed->setDashLengthAt(0, 5.0);
  dashed->setDashLengthAt(1, -2.5);
  dashed->setPatternLength(7.5);
  s.dashed = BlocksTest::addRecord(d->linetypeTableId(), dashed, L"DASHED");
  auto* wall = new AcDbLayerTableRecord;
  wall->setColorIndex(2);
  wall->setLinetypeObjectId(d->continuousLinetype());
  s.wall = BlocksTest::addRecord(d->layerTableId(), wall, L"WALL");
  auto* romans = new AcDbTextStyleTableRecord;
  romans->setFileName(L"romans.shx");
  s.romans = BlocksTest::addRecord(d->textStyleTableId(), romans, L"ROMANS");
  BlocksTest::addRecord(d->regAppTableId(), new AcDbRegAppTableRecord, L"KELAPP");
  auto* family = new AcDbDimStyleTableRecord;
  family->setDimtxsty(s.romans);
  family->setDimtxt(3.5);
  s.family = BlocksTest::addRecord(d->dimStyleTableId(), family, L"FAMILY");

  auto* inner = new AcDbBlockTableRecord;
  inner->setOrigin(AcGePoint3d(1, 1, 0));
  s.inner = BlocksTest::addRecord(d->blockTableId(), inner, L"INNER");
  auto* circle = new AcDbCircle(AcGePoint3d(1, 1, 0), AcGeVector3d::kZAxis, 2.0);
  circle->setDatabaseDefaults(d);
  circle->setLayer(s.wall);
  BlocksTest::append(s.inner, circle);
  auto* number = new AcDbAttributeDefinition(AcGePoint3d(1, 4, 0), L"D-1", L"NO", L"Door number");
  number->setHeight(2.5);
  const AcDbObjectId def = BlocksTest::append(s.inner, number);

  s.text = BlocksTest::append(d->modelSpaceId(), new AcDbText(AcGePoint3d(0, 10, 0), L"Plan", s.romans, 2.5));
  auto* ref = new AcDbBlockReference(AcGePoint3d(20, 0, 0), s.inner);
  ref->setDatabaseDefaults(d);
  auto* attribute = new AcDbAttribute;
  attribute->setAttributeFromBlock(BlocksTest::peek<AcDbAttributeDefinition>(def), ref->blockTransform());
  attribute->setTextString(L"D-7");
  ref->appendAttribute(attribute);
  s.ref = BlocksTest::append(d->modelSpaceId(), ref);
  auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(10, 0, 0));
  line->setDatabaseDefaults(d);
  line->setLayer(s.wall);
  line->setLinetype(s.dashed);
  s.line = BlocksTest::append(d->modelSpaceId(), line);
  AcDbEntity* e = nullptr;
  acdbOpenObject(e, s.line, AcDb::kForWrite);
  resbuf* xdata = acutBuildList(1001, L"KELAPP", 1000, L"mark", 0);
  EXPECT_EQ(e->setXData(xdata), Acad::eOk);
  acutRelRb(xdata);
  e->close();
  s.dim = BlocksTest::append(d->modelSpaceId(), new AcDbRotatedDimension(0.0, AcGePoint3d(0, 0, 0),
                                                                         AcGePoint3d(10, 0, 0), AcGePoint3d(5, -5, 0),
                                                                         nullptr, s.family));
  kelhost::db::HeaderValue base;
  base.type = RT3DPOINT;
  base.code = 10;
  base.point[0] = 10;
  base.point[1] = 20;
  d->state().headerVars[L"INSBASE"] = base;
  return s;
}

// The same in a database of its own.
inline Source MakeSource() {
  auto d = std::make_unique<AcDbDatabase>();
  Source s = BuildSource(d.get());
  s.db = std::move(d);
  return s;
}

