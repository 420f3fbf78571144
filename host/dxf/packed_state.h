// An object's whole state packed into bytes, for the undo journal: what
// its dxfFields() describes (each group with its code), owner, extension
// dictionary and xdata. References are kept as ids, records included, so
// that a state put back after a layer was renamed still names that layer.
// The bytes are read back through the entity-list reader's rules, so a
// class reads them exactly as it reads its own list; they take a fraction
// of the memory of the same state as a result-buffer chain.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "arx/dbmain.h"

namespace kelhost::dxf {

// Replaces out with the packed state of object. False when the object's
// description failed (out is then unusable).
bool PackState(const AcDbObject* object, std::vector<std::uint8_t>& out);

// Puts a packed state back into object, which must be of the class that
// was packed. False when the bytes do not fit it (the object keeps what
// was read until the problem).
bool UnpackState(AcDbObject* object, const std::uint8_t* data, std::size_t size);

}  // namespace kelhost::dxf
