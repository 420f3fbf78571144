// The attributes of an inserted block: the values INSERT asks for, one
// per attribute definition of the block, and the attributes made from
// them for the new reference.
#pragma once

#include <string>
#include <vector>

#include "arx/dbblkref.h"
#include "editor/command_context.h"

namespace kelhost::editor {

struct AttributeValue {
  AcDbObjectId definition;
  std::wstring value;
};

// A value for each attribute definition of the block that a reference
// holds (not the constant ones), in the block's order. With ask (ATTREQ
// 1) "Enter attribute values" and each definition's prompt with its
// default, then "Verify attribute values" for the verifiable ones;
// preset definitions and ask false take the defaults.
std::vector<AttributeValue> AskAttributeValues(CommandContext& c, AcDbObjectId block, bool ask);

// New attributes (not yet in a database) appended to the reference, each
// placed by its definition through the reference's transformation. A
// definition on layer 0 gives an attribute on the reference's layer.
Acad::ErrorStatus AttachAttributes(AcDbBlockReference& reference, const std::vector<AttributeValue>& values);

}  // namespace kelhost::editor
