#include "plot/linetype_dashes.h"

#include <cmath>

#include "arx/dbsymtb.h"

namespace kelhost::plot {

// Smallest pattern, in device units, that still reads as a pattern.
constexpr double kFinestPattern = 2.0;

Dashes::Dashes(const std::vector<double>& lengths) {
  // Runs of the same kind merge: a dot is a dash of no length.
  std::vector<std::pair<bool, double>> runs;
  for (double d : lengths) {
    const bool on = d >= 0;
    const double length = std::fabs(d);
    if (!runs.empty() && runs.back().first == on) runs.back().second += length;
    else runs.push_back({on, length});
  }
  if (runs.size() < 2) return;  // all dash (or all gap): continuous
  double total = 0.0;
  for (const auto& r : runs) total += r.second;
  if (!(total > 0)) return;
  // Where the record's pattern begins, in the runs as they are rearranged.
  double origin = 0.0;
  // The last and first runs meet around the cycle: one run when of a kind.
  if (runs.front().first == runs.back().first) {
    origin = runs.back().second;
    runs.front().second += runs.back().second;
    runs.pop_back();
  }
  // A dash array starts with a dash: a leading gap goes to the end.
  if (!runs.front().first) {
    origin = std::fmod(origin - runs.front().second + total, total);
    runs.push_back(runs.front());
    runs.erase(runs.begin());
  }
  for (const auto& r : runs) mOnOff.push_back(r.second);
  mTotal = total;
  mOffset = origin;
}

bool Dashes::forDevice(double unit, double width, std::vector<double>& lengths, double& offset) const {
  if (mOnOff.empty() || !(unit > 0) || mTotal * unit < kFinestPattern + width) return false;
  lengths.clear();
  for (double d : mOnOff) lengths.push_back(d * unit);
  offset = mOffset * unit;
  return true;
}

Dashes DashesOf(const AcDbLinetypeTableRecord* record) {
  if (!record) return Dashes();
  std::vector<double> lengths;
  for (int i = 0; i < record->numDashes(); ++i) lengths.push_back(record->dashLengthAt(i));
  return Dashes(lengths);
}

}  // namespace kelhost::plot
