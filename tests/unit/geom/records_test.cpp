// The kernel's records as callers write them: flat aggregates that
// brace-initialise field by field, an arc read wherever a circle is.
#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "kelcad/geom/plane.h"

namespace {

TEST(KernelRecords, ArcBraceInitialisesFieldByFieldAndReadsAsItsCircle) {
  static_assert(std::is_aggregate_v<atype> && std::is_standard_layout_v<atype>);
  static_assert(std::is_trivially_copyable_v<atype> && std::is_trivially_copyable_v<circ>);
  const atype a = {{1, 2, 0}, 2.0, 0.0, 3.14};
  EXPECT_EQ(a.center[1], 2.0);
  EXPECT_EQ(a.radius, 2.0);
  EXPECT_EQ(a.end, 3.14);

  // Every function that reads a circ* reads the arc's centre and radius.
  const circ c = a;
  const double top[3] = {1, 4, 0};
  EXPECT_DOUBLE_EQ(gl_ang_ptcirc(top, &a), gl_ang_ptcirc(top, &c));
  EXPECT_EQ(gl_ptarc(a.start, a.end, top, &a), 1);
  double onArc[3], onCircle[3];
  gl_pt_oncirc(onArc, &a, 1.0);
  gl_pt_oncirc(onCircle, &c, 1.0);
  EXPECT_DOUBLE_EQ(onArc[0], onCircle[0]);

  const atype other = {{4, 2, 0}, 2.0, 0.0, 0.0};
  double mixed[2][3], arcs[2][3];
  EXPECT_EQ(gl_intcc_pln(mixed, &c, &other), 2);
  EXPECT_EQ(gl_intcc_pln(arcs, &a, &other), 2);
  EXPECT_DOUBLE_EQ(mixed[0][0], arcs[0][0]);
  EXPECT_DOUBLE_EQ(arcs[0][0], 2.5);

  linfo horizontal{};
  const double p[3] = {-10, 2, 0}, q[3] = {10, 2, 0};
  gl_line_coef(&horizontal, p, q);
  double crossing[2][3];
  EXPECT_EQ(gl_intlc_pln(crossing, &horizontal, &a), 2);
  EXPECT_DOUBLE_EQ(std::fabs(crossing[0][0] - crossing[1][0]), 4.0);
  // A null record is still the plain failure of the circ* form.
  EXPECT_EQ(gl_intlc_pln(crossing, &horizontal, static_cast<const atype*>(nullptr)), 0);
}

}  // namespace
