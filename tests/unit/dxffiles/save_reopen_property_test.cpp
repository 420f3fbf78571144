// Any drawing the host holds saves, and the file opens again with the same
// values: random drawings made through entmake with extreme but finite
// numbers (the largest and smallest doubles, subnormals, negative zero).
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cwchar>
#include <iterator>
#include <random>
#include <sstream>

#include "dxf_fixture.h"
#include "kelhost/resbuf_kinds.h"

namespace {

class Extremes {
 public:
  explicit Extremes(unsigned start) : mEngine(start) {}
  double operator()() {
    static const double kValues[] = {DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_MIN, 4.9e-324, -4.9e-324, 1e-320, -0.0, 0.0,
                                     1e300, -1e300, 1e-300, 1.0 / 3.0, 123456789.123456789, 1e15 + 0.3};
    std::uniform_int_distribution<int> pick(0, static_cast<int>(std::size(kValues)));
    const int i = pick(mEngine);
    if (i < static_cast<int>(std::size(kValues))) return kValues[i];
    return std::uniform_real_distribution<double>(-1e6, 1e6)(mEngine);
  }
  int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(mEngine); }

 private:
  std::mt19937 mEngine;
};

std::wstring Real(double v) {
  std::wostringstream s;
  s.precision(17);
  s << v;
  std::wstring t = s.str();
  if (t.find_first_of(L".e") == std::wstring::npos) t += L".0";
  return t;
}

std::wstring Point(Extremes& x) { return L"(list " + Real(x()) + L" " + Real(x()) + L" " + Real(x()) + L")"; }

std::wstring RandomEntity(Extremes& x) {
  switch (x.below(7)) {
    case 0: return L"(list '(0 . \"LINE\") (cons 10 " + Point(x) + L") (cons 11 " + Point(x) + L"))";
    case 1: return L"(list '(0 . \"CIRCLE\") (cons 10 " + Point(x) + L") (cons 40 " + Real(std::fabs(x())) + L"))";
    case 2:
      return L"(list '(0 . \"ARC\") (cons 10 " + Point(x) + L") (cons 40 " + Real(std::fabs(x())) + L") (cons 50 " +
             Real(x()) + L") (cons 51 " + Real(x()) + L"))";
    case 3: return L"(list '(0 . \"POINT\") (cons 10 " + Point(x) + L") (cons 39 " + Real(x()) + L"))";
    case 4:
      return L"(list '(0 . \"TEXT\") (cons 10 " + Point(x) + L") (cons 40 " + Real(std::fabs(x())) + L") (cons 50 " +
             Real(x()) + L") (cons 41 " + Real(std::fabs(x())) + L") '(1 . \"t\"))";
    case 5:
      return L"(list '(0 . \"LWPOLYLINE\") '(100 . \"AcDbEntity\") '(100 . \"AcDbPolyline\") '(90 . 2) (cons 38 " +
             Real(x()) + L") (list 10 " + Real(x()) + L" " + Real(x()) + L") (cons 42 " + Real(x()) + L") (list 10 " +
             Real(x()) + L" " + Real(x()) + L"))";
    default:
      return L"(list '(0 . \"LINE\") (cons 10 " + Point(x) + L") (cons 11 " + Point(x) + L") (cons 39 " + Real(x()) +
             L") (cons 48 " + Real(std::fabs(x())) + L") '(-3 (\"KELAPP\" (1040 . " + Real(x()) + L") (1010 " +
             Real(x()) + L" 0.0 0.0))))";
  }
}

// Angles are kept in degrees in the file: they come back within rounding,
// and one too large for degrees comes back reduced to a turn.
bool SameReal(int code, double a, double b) {
  if (a == b) return true;
  if (code < 50 || code > 58) return false;
  const double pi = 3.14159265358979323846;
  if (!std::isfinite(a * 180.0 / pi)) a = std::fmod(a, 2 * pi);
  return std::fabs(a - b) <= 1e-13 * std::max(std::fabs(a), 1.0);
}

// Differences between two entity lists (entity names left out).
std::string Compare(const resbuf* a, const resbuf* b) {
  for (; a && b; a = a->rbnext, b = b->rbnext) {
    if (a->restype != b->restype) return "group " + std::to_string(a->restype) + " became " + std::to_string(b->restype);
    switch (kelhost::ResbufKind(a->restype)) {
      case kelhost::RbKind::kReal:
        if (!SameReal(a->restype, a->resval.rreal, b->resval.rreal))
          return "group " + std::to_string(a->restype) + ": " + std::to_string(a->resval.rreal) + " vs " +
                 std::to_string(b->resval.rreal);
        break;
      case kelhost::RbKind::kPoint:
        for (int i = 0; i < 3; ++i)
          if (!SameReal(a->restype, a->resval.rpoint[i], b->resval.rpoint[i]))
            return "group " + std::to_string(a->restype) + " coordinate " + std::to_string(i);
        break;
      case kelhost::RbKind::kShort:
        if (a->resval.rint != b->resval.rint) return "group " + std::to_string(a->restype);
        break;
      case kelhost::RbKind::kLong:
        if (a->resval.rlong != b->resval.rlong) return "group " + std::to_string(a->restype);
        break;
      case kelhost::RbKind::kString:
        if (std::wcscmp(a->resval.rstring, b->resval.rstring) != 0) return "group " + std::to_string(a->restype);
        break;
      default: break;
    }
  }
  return a || b ? "lists of different lengths" : "";
}

}  // namespace

TEST_F(DxfFileTest, DrawingsWithExtremeFiniteValuesSaveAndReopenWithTheSameValues) {
  Extremes x(20240613);
  for (int drawing = 0; drawing < 60; ++drawing) {
    db = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(db.get());
    ASSERT_EQ(eval(L"(progn (regapp \"KELAPP\") T)"), L"T");
    std::vector<std::wstring> made;  // handles
    for (int i = 0; i < 12; ++i) {
      const std::wstring list = RandomEntity(x);
      const std::wstring handle = eval(L"(if (setq e (entmakex " + list + L")) (cdr (assoc 5 (entget e))) \"\")");
      if (handle != L"\"\"") made.push_back(handle);
    }
    std::vector<resbuf*> before;
    for (const std::wstring& h : made) {
      ads_name e;
      ASSERT_EQ(acdbHandEnt(h.substr(1, h.size() - 2).c_str(), e), RTNORM);
      resbuf* apps = acutBuildList(RTSTR, L"*", RTNONE);
      before.push_back(acdbEntGetX(e, apps));
      acutRelRb(apps);
    }
    const std::string file = "drawing" + std::to_string(drawing) + ".dxf";
    std::wstring error;
    ASSERT_TRUE(kelhost::WriteDrawingFile(db.get(), wpath(file.c_str()), error))
        << "drawing " << drawing << ": " << kelhost::ToUtf8(error);
    auto other = std::make_unique<AcDbDatabase>(false);
    ASSERT_TRUE(kelhost::ReadDrawingFile(other.get(), wpath(file.c_str()), error))
        << "drawing " << drawing << ": " << kelhost::ToUtf8(error);
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    db = std::move(other);
    for (size_t i = 0; i < made.size(); ++i) {
      ads_name e;
      ASSERT_EQ(acdbHandEnt(made[i].substr(1, made[i].size() - 2).c_str(), e), RTNORM) << "drawing " << drawing;
      resbuf* apps = acutBuildList(RTSTR, L"*", RTNONE);
      resbuf* after = acdbEntGetX(e, apps);
      acutRelRb(apps);
      EXPECT_EQ(Compare(before[i]->rbnext, after ? after->rbnext : nullptr), "") << "drawing " << drawing << " entity " << i;
      acutRelRb(after);
      acutRelRb(before[i]);
    }
    std::remove(path(file.c_str()).c_str());
  }
}
