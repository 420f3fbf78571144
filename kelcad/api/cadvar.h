// The saved set of system variables: the drafting commands of the family
// change system variables while they work and put them back afterwards.
#pragma once

#include "kelcad/platform.h"

// The saved-set interface. Its operations, in slot order after the
// destructor, are save (read the variables into the record), restore (write
// the record back) and set-zero (put the variables into the drafting
// state); they come with the module's system-variable access, and the
// constructor of a saved set takes its first snapshot through save.
template <class T>
class cadVar {
 public:
  virtual ~cadVar() = default;
};

// The record of the saved set: one field per system variable.
class toKelCadVar : public cadVar<toKelCadVar> {
 public:
  toKelCadVar();

  Adesk::Int32 angDir;      // "ANGDIR"
  double angBase;           // "ANGBASE"
  Adesk::Int32 blipMode;    // "BLIPMODE"
  Adesk::Int32 ceColor;     // "CECOLOR", held as a 16-bit integer value
  CString ceLType;          // "CELTYPE"
  CString cLayer;           // "CLAYER"
  Adesk::Int32 cmdEcho;     // "CMDECHO"
  Adesk::Int32 edgeMode;    // "EDGEMODE"
  double elevation;         // "ELEVATION"
  double filletRad;         // "FILLETRAD"
  double unusedReal;        // part of the record's layout; never read or written
  double plineWid;          // "PLINEWID"
  double snapAng;           // "SNAPANG"
  double thickness;         // "THICKNESS"
  CString textStyle;        // "Textstyle"
};
