// Every setter of a database object needs write access; this keeps them
// one line each.
#pragma once

#define KELHOST_SET(member, value)                  \
  do {                                              \
    if (!writable()) return Acad::eNotOpenForWrite; \
    member = value;                                 \
    return Acad::eOk;                               \
  } while (0)
