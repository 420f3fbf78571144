// Template import from AutoLISP:
//   (kel_importdwt template kind name [replace])  -> the new record's entity name, or nil
//   (kel_importdwtall template kind [replace])    -> the new records' entity names, or nil
// template: a drawing path (".dwt"/".dwg" read from the ".dxf" of the same
// name), or nil for the family's shipped template; kind: a table name as
// tblsearch takes it ("STYLE", "DIMSTYLE", "LAYER", "LTYPE", "BLOCK"),
// and for the all form "*" for every kind.
#include <memory>

#include "kelbase/kelbase.h"
#include "kelcad/lisp/template_handlers.h"
#include "kelcad/symtab/import_dwt.h"

namespace KEL {
namespace Lisp {

namespace {

using ImportOne = Acad::ErrorStatus (CImportDWT::*)(CString, AcDbObjectId&, bool);
using ImportAll = Acad::ErrorStatus (CImportDWT::*)(AcDbObjectIdArray&, bool);

struct KindRow {
  const wchar_t* name;
  const wchar_t* alias;
  ImportOne one;
  ImportAll all;
};

// In the order "*" imports them: what later records name comes first.
const KindRow kKinds[] = {
    {L"LTYPE", L"LINETYPE", &CImportDWT::ImportLinetype, &CImportDWT::ImportLinetypeAll},
    {L"STYLE", L"TEXTSTYLE", &CImportDWT::ImportTextStyle, &CImportDWT::ImportTextStyleAll},
    {L"LAYER", nullptr, &CImportDWT::ImportLayer, &CImportDWT::ImportLayerAll},
    {L"DIMSTYLE", nullptr, &CImportDWT::ImportDimStyle, &CImportDWT::ImportDimStyleAll},
    {L"BLOCK", nullptr, &CImportDWT::ImportBlock, &CImportDWT::ImportBlockAll},
};

const KindRow* FindKind(const wchar_t* name) {
  for (const KindRow& row : kKinds)
    if (CString(name).CompareNoCase(row.name) == 0 || (row.alias && CString(name).CompareNoCase(row.alias) == 0))
      return &row;
  return nullptr;
}

bool IsText(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR && rb->resval.rstring != nullptr; }

// Absent or nil is false, T is true; anything else is refused.
bool ReadFlag(const resbuf* rb, bool& flag) {
  flag = rb != nullptr && rb->restype == RTT;
  return rb == nullptr || rb->restype == RTNIL || rb->restype == RTT;
}

// The message for a bad argument; the call then returns nil.
int Refuse(const wchar_t* function, const wchar_t* argument) {
  acutPrintf(L"\nError:%s(%s).", function, argument);
  return RTNORM;
}

// The template of the call read into the importer; the caller deletes
// the source database afterwards, read or not.
bool ReadTemplate(const wchar_t* function, const resbuf* arg, CImportDWT& importer) {
  const CString path = arg->restype == RTNIL ? FamilyTemplatePath() : CString(arg->resval.rstring);
  if (importer.SetDWTFileName(path)) return true;
  acutPrintf(L"\nError:%s(template) cannot be read: %s", function, path.GetString());
  return false;
}

// Appends an entity-name node for id.
void AppendName(resbuf**& tail, AcDbObjectId id) {
  ads_name name;
  if (acdbGetAdsName(name, id) != Acad::eOk) return;
  resbuf* node = acutNewRb(RTENAME);
  if (node == nullptr) return;
  ads_name_set(name, node->resval.rlname);
  *tail = node;
  tail = &node->rbnext;
}

}  // namespace

CString FamilyTemplatePath() {
  CString dir;
  if (!GetInstallDir(dir)) return CString();
  return dir + L"template\\kelstd.dwt";
}

int KEL_ImportDwt() {
  acedRetNil();
  try {
    const wchar_t* function = L"kel_importdwt";
    const resbuf* args = acedGetArgs();
    const resbuf* kindArg = args != nullptr ? args->rbnext : nullptr;
    const resbuf* nameArg = kindArg != nullptr ? kindArg->rbnext : nullptr;
    bool replace = false;
    if (args == nullptr || (args->restype != RTNIL && !IsText(args))) return Refuse(function, L"template");
    const KindRow* kind = IsText(kindArg) ? FindKind(kindArg->resval.rstring) : nullptr;
    if (kind == nullptr) return Refuse(function, L"kind");
    if (!IsText(nameArg)) return Refuse(function, L"name");
    if (!ReadFlag(nameArg->rbnext, replace)) return Refuse(function, L"replace");

    CImportDWT importer;
    const bool read = ReadTemplate(function, args, importer);
    std::unique_ptr<AcDbDatabase> source(importer.m_pSourceDB);
    if (!read) return RTNORM;
    const CString name(nameArg->resval.rstring);
    AcDbObjectId id;
    const Acad::ErrorStatus es = (importer.*(kind->one))(name, id, replace);
    if (es != Acad::eOk) {
      acutPrintf(L"\nImport %s error:%d", name.GetString(), static_cast<int>(es));
      return RTNORM;
    }
    ads_name made;
    if (acdbGetAdsName(made, id) == Acad::eOk) acedRetName(made, RTENAME);
  } catch (...) {
    acedRetNil();
  }
  return RTNORM;
}

int KEL_ImportDwtAll() {
  acedRetNil();
  try {
    const wchar_t* function = L"kel_importdwtall";
    const resbuf* args = acedGetArgs();
    const resbuf* kindArg = args != nullptr ? args->rbnext : nullptr;
    bool replace = false;
    if (args == nullptr || (args->restype != RTNIL && !IsText(args))) return Refuse(function, L"template");
    const bool every = IsText(kindArg) && CString(kindArg->resval.rstring) == L"*";
    const KindRow* kind = IsText(kindArg) ? FindKind(kindArg->resval.rstring) : nullptr;
    if (kind == nullptr && !every) return Refuse(function, L"kind");
    if (!ReadFlag(kindArg->rbnext, replace)) return Refuse(function, L"replace");

    CImportDWT importer;
    const bool read = ReadTemplate(function, args, importer);
    std::unique_ptr<AcDbDatabase> source(importer.m_pSourceDB);
    if (!read) return RTNORM;
    AcDbObjectIdArray ids;
    if (every) {
      for (const KindRow& row : kKinds) (importer.*(row.all))(ids, replace);
    } else {
      (importer.*(kind->all))(ids, replace);
    }
    resbuf* names = nullptr;
    resbuf** tail = &names;
    for (int i = 0; i < ids.length(); ++i) AppendName(tail, ids[i]);
    if (names != nullptr) {
      acedRetList(names);
      acutRelRb(names);
    }
  } catch (...) {
    acedRetNil();
  }
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
