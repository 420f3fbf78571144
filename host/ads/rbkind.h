// What a result-buffer node owns, by its type code: the host's one answer
// for releasing and copying nodes.
#pragma once

#include "arx/adsdef.h"

namespace kelhost::rb {
// The node's rstring is a heap string it owns.
bool OwnsString(int restype);
// The node's rbinary.buf is a heap buffer it owns.
bool OwnsBinary(int restype);
// A deep copy of one node (rbnext null); null when out of memory.
resbuf* CopyNode(const resbuf* node);
// A deep copy of a whole chain; null for null or when out of memory.
resbuf* CopyChain(const resbuf* chain);
}  // namespace kelhost::rb
