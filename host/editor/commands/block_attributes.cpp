#include "editor/commands/block_attributes.h"

#include <cmath>
#include <memory>

#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "db/stub.h"

namespace kelhost::editor {
namespace {

std::wstring PromptOf(const AcDbAttributeDefinition& def, const std::wstring& value) {
  std::wstring prompt = def.promptConst();
  if (prompt.empty()) prompt = def.tagConst();
  return L"\n" + prompt + (value.empty() ? L"" : L" <" + value + L">") + L": ";
}

// The attribute placed by the reference. Text takes only uniform
// scaling: under another its points follow the reference, its height the
// Y scale and its width the ratio of the X scale to the Y scale.
Acad::ErrorStatus Place(AcDbAttribute& attribute, const AcDbAttributeDefinition& def, const AcDbBlockReference& ref) {
  const AcGeMatrix3d xform = ref.blockTransform();
  if (xform.isUniScaledOrtho()) return attribute.setAttributeFromBlock(&def, xform);
  Acad::ErrorStatus es = attribute.setAttributeFromBlock(&def, AcGeMatrix3d::kIdentity);
  if (es != Acad::eOk) return es;
  const AcGeVector3d scale = ref.scaleFactors();
  attribute.setPosition(xform * def.position());
  attribute.setAlignmentPoint(xform * def.alignmentPoint());
  attribute.setHeight(def.height() * std::fabs(scale.y));
  attribute.setWidthFactor(def.widthFactor() * std::fabs(scale.x) / std::fabs(scale.y));
  attribute.setRotation(def.rotation() + ref.rotation());
  attribute.setNormal(ref.normal());
  return Acad::eOk;
}

}  // namespace

std::vector<AttributeValue> AskAttributeValues(CommandContext& c, AcDbObjectId blockId, bool ask) {
  std::vector<AttributeValue> values;
  auto* block = db::PeekAs<AcDbBlockTableRecord>(blockId);
  if (!block) return values;
  for (const AcDbObjectId& id : block->entityIds()) {
    auto* def = id.isErased() ? nullptr : db::PeekAs<AcDbAttributeDefinition>(id);
    if (def && !def->isConstant()) values.push_back({id, def->textStringConst()});
  }
  if (!ask) return values;
  auto definition = [](const AttributeValue& v) { return db::PeekAs<AcDbAttributeDefinition>(v.definition); };
  bool announced = false;
  for (AttributeValue& v : values) {
    const AcDbAttributeDefinition* def = definition(v);
    if (!def || def->isPreset()) continue;
    if (!announced) c.print(L"\nEnter attribute values");
    announced = true;
    Answer a = c.askString(PromptOf(*def, v.value), true);
    if (!a.text.empty()) v.value = a.text;
  }
  announced = false;
  for (AttributeValue& v : values) {
    const AcDbAttributeDefinition* def = definition(v);
    if (!def || def->isPreset() || !def->isVerifiable()) continue;
    if (!announced) c.print(L"\nVerify attribute values");
    announced = true;
    Answer a = c.askString(PromptOf(*def, v.value), true);
    if (!a.text.empty()) v.value = a.text;
  }
  return values;
}

Acad::ErrorStatus AttachAttributes(AcDbBlockReference& reference, const std::vector<AttributeValue>& values) {
  for (const AttributeValue& v : values) {
    auto* def = db::PeekAs<AcDbAttributeDefinition>(v.definition);
    if (!def) continue;
    auto attribute = std::make_unique<AcDbAttribute>();
    Acad::ErrorStatus es = Place(*attribute, *def, reference);
    if (es != Acad::eOk) return es;
    attribute->setTextString(v.value.c_str());
    AcDbDatabase* db = def->database();
    if (db && def->layerId() == db->layerZero()) attribute->setLayer(reference.layerId());
    AcDbObjectId none;
    if ((es = reference.appendAttribute(none, attribute.get())) != Acad::eOk) return es;
    attribute.release();  // the reference holds it until it joins the database
  }
  return Acad::eOk;
}

}  // namespace kelhost::editor
