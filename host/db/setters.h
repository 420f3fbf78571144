// Every setter of a database object needs write access; this keeps them
// one line each.
#pragma once

#define KELHOST_SET(member, value)                  \
  do {                                              \
    if (!writable()) return Acad::eNotOpenForWrite; \
    member = value;                                 \
    return Acad::eOk;                               \
  } while (0)

// The same for an object whose picture follows its properties (a
// dimension's block): it is marked to be drawn again as it closes.
#define KELHOST_SET_REDRAWN(member, value)          \
  do {                                              \
    if (!writable()) return Acad::eNotOpenForWrite; \
    member = value;                                 \
    changed();                                      \
    return Acad::eOk;                               \
  } while (0)
