// acutCvUnit: conversions between the units of the platform's unit file.
// Every unit is a multiple of a product of base dimensions (and, for
// temperatures, an offset from zero): two units convert when their
// dimensions agree. A name is matched without regard to case; SI prefixes
// (kilo, milli, ...) apply to any unit, and "sq", "square", "cu", "cubic"
// before a name or "^2", "^3" after it raise it to a power.
#include <array>
#include <cmath>
#include <cwctype>
#include <string>
#include <unordered_map>

#include "arx/acutads.h"
#include "kelhost/text.h"

namespace {

// Exponents of metre, kilogram, second, ampere, kelvin, mole, candela and
// radian (angles convert only to angles).
using Dimension = std::array<int, 8>;

struct UnitDef {
  const wchar_t* names;  // comma-separated, plural forms included
  Dimension dim;
  double factor;         // SI value of one unit
  double offset = 0.0;   // SI value of the unit's zero (temperatures)
};

constexpr Dimension kLength{1, 0, 0, 0, 0, 0, 0, 0};
constexpr Dimension kArea{2, 0, 0, 0, 0, 0, 0, 0};
constexpr Dimension kVolume{3, 0, 0, 0, 0, 0, 0, 0};
constexpr Dimension kMass{0, 1, 0, 0, 0, 0, 0, 0};
constexpr Dimension kTime{0, 0, 1, 0, 0, 0, 0, 0};
constexpr Dimension kCurrent{0, 0, 0, 1, 0, 0, 0, 0};
constexpr Dimension kTemperature{0, 0, 0, 0, 1, 0, 0, 0};
constexpr Dimension kSubstance{0, 0, 0, 0, 0, 1, 0, 0};
constexpr Dimension kLuminous{0, 0, 0, 0, 0, 0, 1, 0};
constexpr Dimension kAngle{0, 0, 0, 0, 0, 0, 0, 1};
constexpr Dimension kSolidAngle{0, 0, 0, 0, 0, 0, 0, 2};
constexpr Dimension kFrequency{0, 0, -1, 0, 0, 0, 0, 0};
constexpr Dimension kSpeed{1, 0, -1, 0, 0, 0, 0, 0};
constexpr Dimension kAcceleration{1, 0, -2, 0, 0, 0, 0, 0};
constexpr Dimension kForce{1, 1, -2, 0, 0, 0, 0, 0};
constexpr Dimension kPressure{-1, 1, -2, 0, 0, 0, 0, 0};
constexpr Dimension kEnergy{2, 1, -2, 0, 0, 0, 0, 0};
constexpr Dimension kPower{2, 1, -3, 0, 0, 0, 0, 0};
constexpr Dimension kCharge{0, 0, 1, 1, 0, 0, 0, 0};
constexpr Dimension kVoltage{2, 1, -3, -1, 0, 0, 0, 0};
constexpr Dimension kResistance{2, 1, -3, -2, 0, 0, 0, 0};
constexpr Dimension kCapacitance{-2, -1, 4, 2, 0, 0, 0, 0};
constexpr Dimension kInductance{2, 1, -2, -2, 0, 0, 0, 0};
constexpr Dimension kFlux{2, 1, -2, -1, 0, 0, 0, 0};
constexpr Dimension kFluxDensity{0, 1, -2, -1, 0, 0, 0, 0};
constexpr Dimension kConductance{-2, -1, 3, 2, 0, 0, 0, 0};
constexpr Dimension kNone{0, 0, 0, 0, 0, 0, 0, 0};

constexpr double kPi = 3.14159265358979323846;
constexpr double kInch = 0.0254;
constexpr double kFoot = 0.3048;
constexpr double kPound = 0.45359237;
constexpr double kGravity = 9.80665;
constexpr double kUsGallon = 3.785411784e-3;

const UnitDef kUnits[] = {
    // Length.
    {L"meter,meters,metre,metres,m", kLength, 1.0},
    {L"angstrom,angstroms", kLength, 1e-10},
    {L"micron,microns", kLength, 1e-6},
    {L"millimeter,millimeters,millimetre,millimetres,mm", kLength, 1e-3},
    {L"centimeter,centimeters,centimetre,centimetres,cm", kLength, 1e-2},
    {L"decimeter,decimeters,decimetre,decimetres,dm", kLength, 0.1},
    {L"kilometer,kilometers,kilometre,kilometres,km", kLength, 1e3},
    {L"inch,inches,in,\"", kLength, kInch},
    {L"foot,feet,ft,'", kLength, kFoot},
    {L"survey foot,survey feet,us survey foot,us survey feet", kLength, 1200.0 / 3937.0},
    {L"yard,yards,yd", kLength, 0.9144},
    {L"mile,miles,mi", kLength, 1609.344},
    {L"nautical mile,nautical miles,nmi", kLength, 1852.0},
    {L"mil,mils,thou", kLength, kInch / 1000},
    {L"hand,hands", kLength, 4 * kInch},
    {L"link,links", kLength, 0.66 * kFoot},
    {L"rod,rods,pole,poles,perch,perches", kLength, 16.5 * kFoot},
    {L"chain,chains", kLength, 66 * kFoot},
    {L"furlong,furlongs", kLength, 660 * kFoot},
    {L"fathom,fathoms", kLength, 6 * kFoot},
    {L"league,leagues", kLength, 3 * 1609.344},
    {L"cubit,cubits", kLength, 18 * kInch},
    {L"astronomical unit,astronomical units,au", kLength, 149597870700.0},
    {L"light year,light years,light-year,light-years", kLength, 9460730472580800.0},
    {L"parsec,parsecs", kLength, 3.0856775814913673e16},
    // Area (the square units come from the prefixes).
    {L"are,ares", kArea, 100.0},
    {L"hectare,hectares,ha", kArea, 1e4},
    {L"acre,acres", kArea, 4046.8564224},
    {L"township,townships", kArea, 36 * 2589988.110336},
    {L"section,sections", kArea, 2589988.110336},
    {L"barn,barns", kArea, 1e-28},
    // Volume.
    {L"liter,liters,litre,litres,l", kVolume, 1e-3},
    {L"milliliter,milliliters,millilitre,millilitres,ml", kVolume, 1e-6},
    {L"gallon,gallons,gal", kVolume, kUsGallon},
    {L"imperial gallon,imperial gallons", kVolume, 4.54609e-3},
    {L"quart,quarts,qt", kVolume, kUsGallon / 4},
    {L"pint,pints,pt", kVolume, kUsGallon / 8},
    {L"cup,cups", kVolume, kUsGallon / 16},
    {L"fluid ounce,fluid ounces,fl oz", kVolume, kUsGallon / 128},
    {L"tablespoon,tablespoons,tbsp", kVolume, kUsGallon / 256},
    {L"teaspoon,teaspoons,tsp", kVolume, kUsGallon / 768},
    {L"barrel,barrels,bbl", kVolume, 42 * kUsGallon},
    {L"bushel,bushels", kVolume, 35.23907016688e-3},
    {L"peck,pecks", kVolume, 35.23907016688e-3 / 4},
    {L"cord,cords", kVolume, 128 * kFoot * kFoot * kFoot},
    {L"stere,steres", kVolume, 1.0},
    // Mass.
    {L"gram,grams,gramme,grammes,g", kMass, 1e-3},
    {L"kilogram,kilograms,kg", kMass, 1.0},
    {L"milligram,milligrams,mg", kMass, 1e-6},
    {L"tonne,tonnes,metric ton,metric tons", kMass, 1e3},
    {L"pound,pounds,lb,lbs", kMass, kPound},
    {L"ounce,ounces,oz", kMass, kPound / 16},
    {L"grain,grains,gr", kMass, kPound / 7000},
    {L"dram,drams", kMass, kPound / 256},
    {L"stone,stones", kMass, 14 * kPound},
    {L"hundredweight,hundredweights,cwt", kMass, 100 * kPound},
    {L"ton,tons,short ton,short tons", kMass, 2000 * kPound},
    {L"long ton,long tons", kMass, 2240 * kPound},
    {L"slug,slugs", kMass, 14.593902937206364},
    {L"carat,carats", kMass, 2e-4},
    // Time.
    {L"second,seconds,sec,s", kTime, 1.0},
    {L"millisecond,milliseconds,msec,ms", kTime, 1e-3},
    {L"microsecond,microseconds", kTime, 1e-6},
    {L"nanosecond,nanoseconds", kTime, 1e-9},
    {L"minute,minutes,min", kTime, 60.0},
    {L"hour,hours,hr", kTime, 3600.0},
    {L"day,days", kTime, 86400.0},
    {L"week,weeks", kTime, 7 * 86400.0},
    {L"fortnight,fortnights", kTime, 14 * 86400.0},
    {L"year,years,yr", kTime, 365.25 * 86400.0},
    {L"decade,decades", kTime, 3652.5 * 86400.0},
    {L"century,centuries", kTime, 36525.0 * 86400.0},
    {L"millennium,millennia", kTime, 365250.0 * 86400.0},
    // Angles.
    {L"radian,radians,rad", kAngle, 1.0},
    {L"degree,degrees,deg", kAngle, kPi / 180},
    {L"grad,grads,gradian,gradians,gon,gons", kAngle, kPi / 200},
    {L"circle,circles,revolution,revolutions,rev,revs,turn,turns", kAngle, 2 * kPi},
    {L"arcminute,arcminutes,minute of arc,minutes of arc", kAngle, kPi / 10800},
    {L"arcsecond,arcseconds,second of arc,seconds of arc", kAngle, kPi / 648000},
    {L"quadrant,quadrants,right angle,right angles", kAngle, kPi / 2},
    {L"steradian,steradians,sr", kSolidAngle, 1.0},
    {L"sphere,spheres", kSolidAngle, 4 * kPi},
    // Temperature: absolute scales and the common ones, with their zeros.
    {L"kelvin,kelvins,k", kTemperature, 1.0},
    {L"celsius,centigrade,degree celsius,degrees celsius,c", kTemperature, 1.0, 273.15},
    {L"fahrenheit,degree fahrenheit,degrees fahrenheit,f", kTemperature, 5.0 / 9.0, 459.67 * 5.0 / 9.0},
    {L"rankine,degree rankine,degrees rankine", kTemperature, 5.0 / 9.0},
    // Mechanics.
    {L"hertz,hz", kFrequency, 1.0},
    {L"rpm", kFrequency, 1.0 / 60},
    {L"knot,knots,kn", kSpeed, 1852.0 / 3600},
    {L"mph", kSpeed, 1609.344 / 3600},
    {L"kph", kSpeed, 1000.0 / 3600},
    {L"mach", kSpeed, 340.29},
    {L"speed of light,c0", kSpeed, 299792458.0},
    {L"gravity,gee,gees", kAcceleration, kGravity},
    {L"gal acceleration,galileo,galileos", kAcceleration, 0.01},
    {L"newton,newtons,n", kForce, 1.0},
    {L"dyne,dynes,dyn", kForce, 1e-5},
    {L"pound force,pounds force,lbf", kForce, kPound * kGravity},
    {L"kilogram force,kilograms force,kgf,kilopond,kiloponds", kForce, kGravity},
    {L"poundal,poundals", kForce, kPound * kFoot},
    {L"kip,kips", kForce, 1000 * kPound * kGravity},
    {L"pascal,pascals,pa", kPressure, 1.0},
    {L"bar,bars", kPressure, 1e5},
    {L"millibar,millibars,mbar", kPressure, 100.0},
    {L"atmosphere,atmospheres,atm", kPressure, 101325.0},
    {L"torr,torrs", kPressure, 101325.0 / 760},
    {L"psi", kPressure, kPound * kGravity / (kInch * kInch)},
    {L"ksi", kPressure, 1000 * kPound * kGravity / (kInch * kInch)},
    {L"joule,joules,j", kEnergy, 1.0},
    {L"erg,ergs", kEnergy, 1e-7},
    {L"calorie,calories,cal", kEnergy, 4.1868},
    {L"btu,btus,british thermal unit,british thermal units", kEnergy, 1055.05585262},
    {L"therm,therms", kEnergy, 105505585.262},
    {L"electron volt,electron volts,ev", kEnergy, 1.602176634e-19},
    {L"watt hour,watt hours,wh", kEnergy, 3600.0},
    {L"kilowatt hour,kilowatt hours,kwh", kEnergy, 3.6e6},
    {L"foot pound,foot pounds,ft lbf", kEnergy, kFoot * kPound * kGravity},
    {L"watt,watts,w", kPower, 1.0},
    {L"horsepower,hp", kPower, 550 * kFoot * kPound * kGravity},
    {L"metric horsepower,ps", kPower, 735.49875},
    // Electricity and light.
    {L"ampere,amperes,amp,amps,a", kCurrent, 1.0},
    {L"coulomb,coulombs", kCharge, 1.0},
    {L"ampere hour,ampere hours,ah", kCharge, 3600.0},
    {L"volt,volts,v", kVoltage, 1.0},
    {L"ohm,ohms", kResistance, 1.0},
    {L"siemens,mho,mhos", kConductance, 1.0},
    {L"farad,farads", kCapacitance, 1.0},
    {L"henry,henries,henrys", kInductance, 1.0},
    {L"weber,webers,wb", kFlux, 1.0},
    {L"tesla,teslas", kFluxDensity, 1.0},
    {L"gauss", kFluxDensity, 1e-4},
    {L"mole,moles,mol", kSubstance, 1.0},
    {L"candela,candelas,cd", kLuminous, 1.0},
    {L"lumen,lumens,lm", kLuminous, 1.0},
    // Counts.
    {L"unit,units", kNone, 1.0},
    {L"pair,pairs", kNone, 2.0},
    {L"dozen,dozens", kNone, 12.0},
    {L"gross", kNone, 144.0},
    {L"percent", kNone, 0.01},
    {L"ppm", kNone, 1e-6},
};

struct Prefix {
  const wchar_t* name;
  double factor;
};
const Prefix kPrefixes[] = {{L"yotta", 1e24}, {L"zetta", 1e21}, {L"exa", 1e18},   {L"peta", 1e15},
                            {L"tera", 1e12},  {L"giga", 1e9},   {L"mega", 1e6},   {L"kilo", 1e3},
                            {L"hecto", 1e2},  {L"deca", 1e1},   {L"deka", 1e1},   {L"deci", 1e-1},
                            {L"centi", 1e-2}, {L"milli", 1e-3}, {L"micro", 1e-6}, {L"nano", 1e-9},
                            {L"pico", 1e-12}, {L"femto", 1e-15}, {L"atto", 1e-18}};

struct Resolved {
  Dimension dim{};
  double factor = 1.0;
  double offset = 0.0;
};

// Lower case, blanks, '_' and '-' run together into single spaces.
std::wstring Normalized(const std::wstring& name) {
  std::wstring out;
  for (wchar_t c : kelhost::ToLower(name)) {
    const bool gap = c == L' ' || c == L'\t' || c == L'_';
    if (gap) {
      if (!out.empty() && out.back() != L' ') out += L' ';
    } else {
      out += c;
    }
  }
  while (!out.empty() && out.back() == L' ') out.pop_back();
  return out;
}

const std::unordered_map<std::wstring, const UnitDef*>& ByName() {
  static const std::unordered_map<std::wstring, const UnitDef*> index = [] {
    std::unordered_map<std::wstring, const UnitDef*> m;
    for (const UnitDef& u : kUnits) {
      std::wstring names = u.names;
      size_t from = 0;
      while (from <= names.size()) {
        size_t comma = names.find(L',', from);
        if (comma == std::wstring::npos) comma = names.size();
        m.emplace(Normalized(names.substr(from, comma - from)), &u);
        from = comma + 1;
      }
    }
    return m;
  }();
  return index;
}

bool Resolve(const std::wstring& text, Resolved& out, int depth = 0) {
  if (depth > 3 || text.empty()) return false;
  auto it = ByName().find(text);
  if (it != ByName().end()) {
    out.dim = it->second->dim;
    out.factor = it->second->factor;
    out.offset = it->second->offset;
    return true;
  }
  // Powers: "sq inch", "square meters", "cu ft", "inch^2".
  int power = 0;
  std::wstring base;
  auto startsWith = [&](const wchar_t* p) {
    const std::wstring s = p;
    if (text.compare(0, s.size(), s) != 0) return false;
    base = text.substr(s.size());
    return true;
  };
  if (startsWith(L"sq ") || startsWith(L"square ")) power = 2;
  else if (startsWith(L"cu ") || startsWith(L"cubic ")) power = 3;
  else if (text.size() > 2 && text[text.size() - 2] == L'^' && (text.back() == L'2' || text.back() == L'3')) {
    power = text.back() - L'0';
    base = text.substr(0, text.size() - 2);
  }
  if (power) {
    Resolved r;
    if (!Resolve(base, r, depth + 1) || r.offset != 0.0) return false;
    for (int& e : r.dim) e *= power;
    r.factor = std::pow(r.factor, power);
    out = r;
    return true;
  }
  for (const Prefix& p : kPrefixes) {
    const std::wstring s = p.name;
    if (text.size() > s.size() && text.compare(0, s.size(), s) == 0) {
      Resolved r;
      if (!Resolve(text.substr(s.size()), r, depth + 1) || r.offset != 0.0) continue;
      r.factor *= p.factor;
      out = r;
      return true;
    }
  }
  return false;
}

}  // namespace

int acutCvUnit(ads_real value, const ACHAR* oldunit, const ACHAR* newunit, ads_real* result) {
  try {
    if (!oldunit || !newunit || !result) return RTERROR;
    Resolved from, to;
    if (!Resolve(Normalized(oldunit), from) || !Resolve(Normalized(newunit), to) || from.dim != to.dim)
      return RTERROR;
    const double si = value * from.factor + from.offset;
    const double converted = (si - to.offset) / to.factor;
    if (!std::isfinite(converted)) return RTERROR;
    *result = converted;
    return RTNORM;
  } catch (...) {
    return RTERROR;
  }
}
