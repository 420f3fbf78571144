// The saved set of system variables: the drafting commands of the family
// change system variables while they work and put them back afterwards.
#pragma once

#include "kelcad/platform.h"

// The saved-set interface. Its operations, in slot order after the
// destructor: Save reads the variables into the record, Restore writes the
// record back, SetZero puts the variables into the drafting state.
template <class T>
class cadVar {
 public:
  virtual ~cadVar() = default;
  virtual void Save() = 0;
  virtual void Restore() = 0;
  virtual void SetZero() = 0;
};

// The record of the saved set: one field per system variable. The module
// keeps one, made at start-up; its constructor takes the first snapshot.
class toKelCadVar : public cadVar<toKelCadVar> {
 public:
  toKelCadVar();

  // Each variable in field order through acedGetVar; a variable that
  // cannot be read keeps the field's earlier value.
  void Save() override;
  // Each field in the same order through acedSetVar: integers as RTSHORT,
  // reals as RTREAL, names as RTSTR. A refused value is passed over.
  void Restore() override;
  // CMDECHO, BLIPMODE, ANGDIR, EDGEMODE to 0; ANGBASE, SNAPANG, THICKNESS,
  // ELEVATION to 0.0; CELTYPE and CECOLOR to "BYLAYER".
  void SetZero() override;

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

namespace KEL {

// The module's saved set (nothing happens when it could not be made).
// SaveCADVar takes a new snapshot, overwriting the last; RestoreCADVar
// writes the last snapshot back.
void SaveCADVar();
void RestoreCADVar();
// Snapshot, then the drafting state (SetZero).
void Set0();
// Restore, then make the family's working layer "PP-COM" usable and
// current (on, thawed, unlocked; made when missing) with LAYER, and end
// with CMDECHO and BLIPMODE at 1.
void Set1();

}  // namespace KEL
