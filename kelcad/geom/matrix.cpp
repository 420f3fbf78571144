// 4x4 matrices: identity, translation, scaling and products.
#include <cstring>

#include "kelcad/geom/plane.h"

void gl_mat_ident(double m[4][4]) {
  if (m == nullptr) return;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) m[i][j] = i == j ? 1.0 : 0.0;
}

void gl_mat_trans(double m[4][4], double dx, double dy, double dz) {
  if (m == nullptr) return;
  gl_mat_ident(m);
  m[0][3] = dx;
  m[1][3] = dy;
  m[2][3] = dz;
}

void gl_mat_scal(double r[4][4], double s, const double m[4][4]) {
  if (r == nullptr || m == nullptr) return;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) r[i][j] = s * m[i][j];
}

void gl_matXmat(double r[4][4], const double a[4][4], const double b[4][4]) {
  if (r == nullptr || a == nullptr || b == nullptr) return;
  // Built apart and copied, so r may be one of the factors.
  double product[4][4];
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double sum = 0.0;
      for (int k = 0; k < 4; ++k) sum += a[i][k] * b[k][j];
      product[i][j] = sum;
    }
  std::memcpy(r, product, sizeof product);
}
