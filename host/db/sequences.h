// Complex entities (heavy polylines, block references with attributes):
// appending their sub-entities and closing the run with a SEQEND.
#pragma once

#include "arx/dbpoly.h"

namespace kelhost::db {

// Adds item to the database as the next sub-entity of owner (resident and
// open for write); item gets owner's properties unless it has a layer, and
// stays open for write. The first item brings the SEQEND.
Acad::ErrorStatus AppendToSequence(AcDbEntity* owner, AcDbSubentSequence& seq, AcDbEntity* item, AcDbObjectId& id);

// The sequence of a complex entity, or null for any other object.
AcDbSubentSequence* SequenceOf(AcDbObject* object);

}  // namespace kelhost::db
