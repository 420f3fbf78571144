// Dimension styles: one table of the style variables (group code, name,
// imperial Standard default, metric ISO-25 default) drives the record's
// storage, its accessors and its DXF groups.
#include "db/setters.h"
#include "arx/dbsymtb.h"
#include "db/database_state.h"
#include "db/dimstyle_vars.h"
#include "db/rx_define.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

namespace kelhost::db {

const std::vector<DimVar>& DimRealVars() {
  static const std::vector<DimVar> vars = {
      {40, L"DIMSCALE", 1.0, 1.0},     {41, L"DIMASZ", 0.18, 2.5},   {42, L"DIMEXO", 0.0625, 0.625},
      {43, L"DIMDLI", 0.38, 3.75},     {44, L"DIMEXE", 0.18, 1.25},  {45, L"DIMRND", 0.0, 0.0},
      {46, L"DIMDLE", 0.0, 0.0},       {47, L"DIMTP", 0.0, 0.0},     {48, L"DIMTM", 0.0, 0.0},
      {140, L"DIMTXT", 0.18, 2.5},     {141, L"DIMCEN", 0.09, 2.5},  {142, L"DIMTSZ", 0.0, 0.0},
      {143, L"DIMALTF", 25.4, 0.0394}, {144, L"DIMLFAC", 1.0, 1.0},  {145, L"DIMTVP", 0.0, 0.0},
      {146, L"DIMTFAC", 1.0, 1.0},     {147, L"DIMGAP", 0.09, 0.625}, {148, L"DIMALTRND", 0.0, 0.0},
  };
  return vars;
}

const std::vector<DimVar>& DimIntVars() {
  static const std::vector<DimVar> vars = {
      {71, L"DIMTOL", 0, 0},     {72, L"DIMLIM", 0, 0},    {73, L"DIMTIH", 1, 0},    {74, L"DIMTOH", 1, 0},
      {75, L"DIMSE1", 0, 0},     {76, L"DIMSE2", 0, 0},    {77, L"DIMTAD", 0, 1},    {78, L"DIMZIN", 0, 8},
      {79, L"DIMAZIN", 0, 0},    {170, L"DIMALT", 0, 0},   {171, L"DIMALTD", 2, 3},  {172, L"DIMTOFL", 0, 1},
      {173, L"DIMSAH", 0, 0},    {174, L"DIMTIX", 0, 0},   {175, L"DIMSOXD", 0, 0},  {176, L"DIMCLRD", 0, 0},
      {177, L"DIMCLRE", 0, 0},   {178, L"DIMCLRT", 0, 0},  {179, L"DIMADEC", 0, 0},  {271, L"DIMDEC", 4, 2},
      {272, L"DIMTDEC", 4, 2},   {273, L"DIMALTU", 2, 2},  {274, L"DIMALTTD", 2, 3}, {275, L"DIMAUNIT", 0, 0},
      {276, L"DIMFRAC", 0, 0},   {277, L"DIMLUNIT", 2, 2}, {278, L"DIMDSEP", 46, 44}, {279, L"DIMTMOVE", 0, 0},
      {280, L"DIMJUST", 0, 0},   {281, L"DIMSD1", 0, 0},   {282, L"DIMSD2", 0, 0},   {283, L"DIMTOLJ", 1, 0},
      {284, L"DIMTZIN", 0, 8},   {285, L"DIMALTZ", 0, 0},  {286, L"DIMALTTZ", 0, 0}, {288, L"DIMUPT", 0, 0},
      {289, L"DIMATFIT", 3, 3},  {371, L"DIMLWD", -2, -2}, {372, L"DIMLWE", -2, -2},
  };
  return vars;
}

void UseMetricDimDefaults(AcDbDimStyleTableRecord* style) {
  for (const DimVar& v : DimRealVars()) style->setReal(v.code, v.metric);
  for (const DimVar& v : DimIntVars()) style->setInteger(v.code, static_cast<int>(v.metric));
}

}  // namespace kelhost::db

namespace {
int IndexOf(const std::vector<kelhost::db::DimVar>& vars, int code) {
  for (size_t i = 0; i < vars.size(); ++i)
    if (vars[i].code == code) return static_cast<int>(i);
  return -1;
}
}  // namespace

AcDbDimStyleTableRecord::AcDbDimStyleTableRecord() {
  for (const auto& v : kelhost::db::DimRealVars()) mReals.push_back(v.imperial);
  for (const auto& v : kelhost::db::DimIntVars()) mInts.push_back(static_cast<short>(v.imperial));
}

double AcDbDimStyleTableRecord::real(int code) const {
  int i = IndexOf(kelhost::db::DimRealVars(), code);
  return i < 0 ? 0.0 : mReals[static_cast<size_t>(i)];
}

int AcDbDimStyleTableRecord::integer(int code) const {
  int i = IndexOf(kelhost::db::DimIntVars(), code);
  return i < 0 ? 0 : mInts[static_cast<size_t>(i)];
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setReal(int code, double value) {
  if (!kelhost::db::Finite(value)) return Acad::eInvalidInput;
  int i = IndexOf(kelhost::db::DimRealVars(), code);
  if (i < 0) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mReals[static_cast<size_t>(i)] = value;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setInteger(int code, int value) {
  int i = IndexOf(kelhost::db::DimIntVars(), code);
  if (i < 0 || value < -32768 || value > 32767) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mInts[static_cast<size_t>(i)] = static_cast<short>(value);
  return Acad::eOk;
}

// Null: the drawing's current text style.
Acad::ErrorStatus AcDbDimStyleTableRecord::setDimtxsty(AcDbObjectId style) {
  if (!style.isNull() && !kelhost::db::PeekAs<AcDbTextStyleTableRecord>(style)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mTextStyle = style;
  return Acad::eOk;
}

AcDbObjectId AcDbDimStyleTableRecord::recordVar(int code) const {
  if (code == 340) return mTextStyle;
  return code >= 341 && code <= 344 ? mBlocks[code - 341] : AcDbObjectId::kNull;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setRecordVar(int code, AcDbObjectId record) {
  if (code == 340) return setDimtxsty(record);
  if (code < 341 || code > 344) return Acad::eInvalidInput;
  if (!record.isNull() && !kelhost::db::PeekAs<AcDbBlockTableRecord>(record)) return Acad::eInvalidInput;
  if (!writable()) return Acad::eNotOpenForWrite;
  mBlocks[code - 341] = record;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimpost(const ACHAR* text) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mPostfix = text ? text : L"";
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDimStyleTableRecord::setDimapost(const ACHAR* text) {
  if (!writable()) return Acad::eNotOpenForWrite;
  mAltPostfix = text ? text : L"";
  return Acad::eOk;
}

void AcDbDimStyleTableRecord::dxfFields(kelhost::dxf::GroupFiler& f) {
  AcDbSymbolTableRecord::dxfFields(f);
  f.subclass(L"AcDbDimStyleTableRecord");
  nameAndFlags(f);
  f.text(3, mPostfix, L"", Presence::kAlways);
  f.text(4, mAltPostfix, L"", Presence::kAlways);
  const auto& reals = kelhost::db::DimRealVars();
  for (size_t i = 0; i < reals.size(); ++i) f.real(reals[i].code, mReals[i], reals[i].imperial, Presence::kAlways);
  const auto& ints = kelhost::db::DimIntVars();
  for (size_t i = 0; i < ints.size(); ++i)
    f.int16(ints[i].code, mInts[i], static_cast<short>(ints[i].imperial), Presence::kAlways);
  f.id(340, mTextStyle, Presence::kAlways);
  for (int code = 341; code <= 344; ++code) f.id(code, mBlocks[code - 341], Presence::kUnlessDefault);
}
