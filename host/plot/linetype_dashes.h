// A linetype's pattern as a stroke's dash array: the LTYPE record's dash
// lengths (positive a dash, negative a gap, zero a dot) merged into
// alternating dashes and gaps that start with a dash.
#pragma once

#include <vector>

class AcDbLinetypeTableRecord;

namespace kelhost::plot {

class Dashes {
 public:
  Dashes() = default;
  // lengths as the record holds them.
  explicit Dashes(const std::vector<double>& lengths);

  bool continuous() const { return mOnOff.empty(); }
  // The dash array and offset at unit device units per pattern unit, for
  // a pen width wide: false when the line plots continuous (no pattern,
  // or one too fine to tell from a solid line at that size).
  bool forDevice(double unit, double width, std::vector<double>& lengths, double& offset) const;

 private:
  std::vector<double> mOnOff;  // dash, gap, dash, gap ... (pattern units)
  double mOffset = 0.0;        // where the pattern starts within mOnOff
  double mTotal = 0.0;
};

// The record's pattern; continuous for a null record.
Dashes DashesOf(const AcDbLinetypeTableRecord* record);

}  // namespace kelhost::plot
