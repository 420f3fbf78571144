#include "db/dimension_style_data.h"

#include "arx/dbdatabase.h"
#include "db/dimension_overrides.h"
#include "db/dimstyle_vars.h"
#include "db/stub.h"

namespace kelhost::db {

void CopyDimStyleData(const AcDbDimStyleTableRecord& from, AcDbDimStyleTableRecord& to) {
  for (const DimVar& v : DimRealVars()) to.setReal(v.code, from.real(v.code));
  for (const DimVar& v : DimIntVars()) to.setInteger(v.code, from.integer(v.code));
  for (int code = 340; code <= 344; ++code) to.setRecordVar(code, from.recordVar(code));
  to.setDimpost(from.dimpost());
  to.setDimapost(from.dimapost());
}

std::unique_ptr<AcDbDimStyleTableRecord> EffectiveDimStyle(AcDbObjectId style, const AcDbObject* dimension) {
  auto data = std::make_unique<AcDbDimStyleTableRecord>();
  if (auto* record = PeekAs<AcDbDimStyleTableRecord>(style)) CopyDimStyleData(*record, *data);
  if (!dimension) return data;
  AcDbDatabase* db = dimension->database();
  ForEachDimOverride(dimension, [&](int code, const resbuf& value) {
    switch (value.restype) {
      case 1040:
        data->setReal(code, value.resval.rreal);
        break;
      case 1070:
        data->setInteger(code, value.resval.rint);
        break;
      case 1071:
        data->setInteger(code, static_cast<int>(value.resval.rlong));
        break;
      case 1000:
        if (code == 3) data->setDimpost(value.resval.rstring);
        if (code == 4) data->setDimapost(value.resval.rstring);
        break;
      case 1005: {
        AcDbObjectId id;
        if (db && value.resval.rstring)
          db->getAcDbObjectId(id, false, AcDbHandle(value.resval.rstring));
        data->setRecordVar(code, id);
        break;
      }
      default:
        break;
    }
  });
  return data;
}

}  // namespace kelhost::db
