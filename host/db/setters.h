// Every setter of a database object needs write access, and takes only
// finite numbers (an infinity or a NaN would be written into a file that
// no reader opens again); this keeps them one line each.
#pragma once

#include <cmath>

#include "arx/acarray.h"
#include "arx/acge.h"

namespace kelhost::db {
inline bool Finite(double v) { return std::isfinite(v); }
inline bool Finite(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }
inline bool Finite(const AcGeVector2d& v) { return std::isfinite(v.x) && std::isfinite(v.y); }
inline bool Finite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }
inline bool Finite(const AcGeVector3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }
// Values without a real in them: names, flags, ids.
template <class T>
bool Finite(const T&) {
  return true;
}
template <class T>
bool Finite(const AcArray<T>& values) {
  for (int i = 0; i < values.length(); ++i)
    if (!Finite(values[i])) return false;
  return true;
}
}  // namespace kelhost::db

#define KELHOST_SET(member, value)                                   \
  do {                                                               \
    if (!writable()) return Acad::eNotOpenForWrite;                  \
    const auto& kelhostValue = (value);                              \
    if (!kelhost::db::Finite(kelhostValue)) return Acad::eInvalidInput; \
    member = kelhostValue;                                           \
    return Acad::eOk;                                                \
  } while (0)

// The same for an object whose picture follows its properties (a
// dimension's block): it is marked to be drawn again as it closes.
#define KELHOST_SET_REDRAWN(member, value)                           \
  do {                                                               \
    if (!writable()) return Acad::eNotOpenForWrite;                  \
    const auto& kelhostValue = (value);                              \
    if (!kelhost::db::Finite(kelhostValue)) return Acad::eInvalidInput; \
    member = kelhostValue;                                           \
    changed();                                                       \
    return Acad::eOk;                                                \
  } while (0)

// A setter without a status ignores what it may not take.
#define KELHOST_SET_VOID(member, value)                               \
  do {                                                                \
    if (!writable()) break;                                           \
    const auto& kelhostValue = (value);                               \
    if (kelhost::db::Finite(kelhostValue)) member = kelhostValue;     \
  } while (0)
