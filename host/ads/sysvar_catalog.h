// The system variables of the R20 generation: for each its type, new
// (metric) drawing's default, where it is kept and whether programs may
// set it. The host's own variables (computed ones, those in the
// database's fields) keep their definitions; the catalog supplies the
// rest, so that every variable a program reads exists and reads back
// what was set.
#pragma once

#include <string>
#include <vector>

namespace kelhost::sysvars {

struct CatalogVar {
  std::wstring name;
  int type;        // RTSHORT, RTLONG, RTREAL, RTSTR, RTPOINT, RT3DPOINT
  // 'H' the drawing, written in a DXF file's header under code; 'D' the
  // drawing, not in the header; 'R' the program's settings; 'N' not saved.
  char place;
  int code;
  bool readOnly;
  double lo, hi;   // lo > hi: any value
  double value[3];
  std::wstring text;
};

// Sorted by name.
const std::vector<CatalogVar>& Catalog();

}  // namespace kelhost::sysvars
