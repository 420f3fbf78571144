#include "editor/commands/insert_units.h"

#include "arx/adsdef.h"
#include "db/database_state.h"

namespace kelhost::editor {
namespace {

struct Unit {
  const wchar_t* name;
  double meters;  // one unit in metres
};

const Unit kUnits[] = {
    {L"Unitless", 0},
    {L"Inches", 0.0254},
    {L"Feet", 0.3048},
    {L"Miles", 1609.344},
    {L"Millimeters", 0.001},
    {L"Centimeters", 0.01},
    {L"Meters", 1.0},
    {L"Kilometers", 1000.0},
    {L"Microinches", 2.54e-8},
    {L"Mils", 2.54e-5},
    {L"Yards", 0.9144},
    {L"Angstroms", 1e-10},
    {L"Nanometers", 1e-9},
    {L"Microns", 1e-6},
    {L"Decimeters", 0.1},
    {L"Dekameters", 10.0},
    {L"Hectometers", 100.0},
    {L"Gigameters", 1e9},
    {L"Astronomical Units", 1.495978707e11},
    {L"Light Years", 9.4607304725808e15},
    {L"Parsecs", 3.0856775814913673e16},
    {L"US Survey Feet", 1200.0 / 3937.0},
    {L"US Survey Inch", 100.0 / 3937.0},
    {L"US Survey Yard", 3600.0 / 3937.0},
    {L"US Survey Mile", 6336000.0 / 3937.0},
};

bool Known(int units) { return units >= 0 && units <= AcDb::kUnitsMax; }

}  // namespace

AcDb::UnitsValue DrawingUnits(const AcDbDatabase* db) {
  if (!db) return AcDb::kUnitsUndefined;
  const auto& vars = db->state().headerVars;
  auto it = vars.find(L"INSUNITS");
  if (it == vars.end() || it->second.type != RTSHORT || !Known(it->second.integer)) return AcDb::kUnitsUndefined;
  return static_cast<AcDb::UnitsValue>(it->second.integer);
}

std::wstring UnitsName(AcDb::UnitsValue units) { return Known(units) ? kUnits[units].name : kUnits[0].name; }

double UnitsConversion(AcDb::UnitsValue blockUnits, AcDb::UnitsValue drawingUnits) {
  if (!Known(blockUnits) || !Known(drawingUnits) || blockUnits == AcDb::kUnitsUndefined ||
      drawingUnits == AcDb::kUnitsUndefined)
    return 1.0;
  return kUnits[blockUnits].meters / kUnits[drawingUnits].meters;
}

}  // namespace kelhost::editor
