// Small helpers the entity tests share: the last entity made, an entity
// added to model space, points and matrices compared within 1e-9.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "arx/arxheaders.h"

namespace entity_tests {

constexpr double kPi = 3.14159265358979323846;

// A string the callee allocated, taken over and released.
inline std::wstring Owned(ACHAR* s) {
  std::wstring out = s ? s : L"";
  std::free(s);
  return out;
}

inline AcDbObjectId LastId() {
  ads_name e;
  AcDbObjectId id;
  if (acdbEntLast(e) == RTNORM) acdbGetObjectId(id, e);
  return id;
}

// Appends e to model space and closes it; the null id when that fails.
inline AcDbObjectId AddToModelSpace(AcDbDatabase* db, AcDbEntity* e) {
  AcDbBlockTableRecord* ms = nullptr;
  AcDbObjectId id;
  if (acdbOpenObject(ms, db->modelSpaceId(), AcDb::kForWrite) != Acad::eOk) return id;
  if (ms->appendAcDbEntity(id, e) == Acad::eOk) e->close();
  ms->close();
  return id;
}

inline bool Near(const AcGeMatrix3d& a, const AcGeMatrix3d& b) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (std::fabs(a.entry[r][c] - b.entry[r][c]) > 1e-9) return false;
  return true;
}

}  // namespace entity_tests

#define EXPECT_PT(p, X, Y, Z)     \
  do {                            \
    const AcGePoint3d q_ = (p);   \
    EXPECT_NEAR(q_.x, (X), 1e-9); \
    EXPECT_NEAR(q_.y, (Y), 1e-9); \
    EXPECT_NEAR(q_.z, (Z), 1e-9); \
  } while (0)
