// Selection filters: a chain of DXF groups that an entity's list must
// match, with -4 operators (relational tests before a group; <AND AND>,
// <OR OR>, <XOR XOR>, <NOT NOT> groupings), wildcard patterns on strings
// and -3 xdata application names.
#pragma once

#include <memory>

#include "arx/adsdef.h"

namespace kelhost::ads {

class SelectionFilter {
 public:
  // Null with a bad filter (unbalanced grouping, unknown operator...).
  static std::unique_ptr<SelectionFilter> Compile(const resbuf* filter);
  virtual ~SelectionFilter() = default;
  // The entity's list, its xdata included.
  virtual bool matches(const resbuf* entityList) const = 0;
};

}  // namespace kelhost::ads
