// The saved set of system variables.
#include "kelcad/api/cadvar.h"

toKelCadVar::toKelCadVar()
    : angDir(0),
      angBase(0.0),
      blipMode(0),
      ceColor(0),
      cmdEcho(0),
      edgeMode(0),
      elevation(0.0),
      filletRad(0.0),
      unusedReal(0.0),
      plineWid(0.0),
      snapAng(0.0),
      thickness(0.0) {}
