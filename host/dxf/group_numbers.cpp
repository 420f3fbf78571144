// Numbers as DXF files write them, and back. Drawings hold millions of
// them, so the common forms take a fast path (std::to_chars and
// std::from_chars); anything unusual goes through the C library, which
// defines the results.
#include <cerrno>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstdint>
#include <cstring>
#include <limits>

#include "dxf/caret_text.h"
#include "dxf/eight_digits.h"
#include "dxf/raw_group.h"

namespace kelhost::dxf {
namespace {

bool Blank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trimmed(std::string_view t) {
  while (!t.empty() && Blank(t.front())) t.remove_prefix(1);
  while (!t.empty() && Blank(t.back())) t.remove_suffix(1);
  return t;
}

// The group code of the first infinite or NaN value formatted since the
// writer last asked (0 for none, -1 when the code was not known).
thread_local int tNonFiniteGroup = 0;

// printf's "%.15g" ... "%.17g" search, the definition FormatReal follows.
// No reader takes "inf" or "nan", so those are noted for the writer to
// refuse the save, and stand as 0.0 in the text it throws away.
void AppendRealSlowly(double v, std::string& out, int code = -1) {
  if (!std::isfinite(v)) {
    if (tNonFiniteGroup == 0) tNonFiniteGroup = code;
    out += "0.0";
    return;
  }
  char buf[40];
  for (int precision = 15; precision <= 17; ++precision) {
    std::snprintf(buf, sizeof buf, "%.*g", precision, v);
    if (std::strtod(buf, nullptr) == v) break;
  }
  out += buf;
  if (std::strpbrk(buf, ".eEn") == nullptr) out += ".0";
}

// The parts of std::to_chars's scientific form "-d.ddde+XX".
struct Decimal {
  bool negative = false;
  char digits[24];
  int count = 0;     // significant digits, trailing zeros dropped
  int exponent = 0;  // of the first digit
};

bool Scientific(double v, int precision, Decimal& d) {
  char buf[48];
  const std::to_chars_result r = precision < 0 ? std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific)
                                               : std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific,
                                                               precision);
  if (r.ec != std::errc()) return false;
  const char* p = buf;
  d.negative = *p == '-';
  if (d.negative) ++p;
  d.count = 0;
  d.digits[d.count++] = *p++;
  if (*p == '.')
    for (++p; p < r.ptr && *p != 'e' && d.count < static_cast<int>(sizeof d.digits); ++p) d.digits[d.count++] = *p;
  if (p == r.ptr || *p != 'e') return false;
  ++p;
  const bool minus = *p == '-';
  int e = 0;
  for (++p; p < r.ptr; ++p) e = e * 10 + (*p - '0');
  d.exponent = minus ? -e : e;
  while (d.count > 1 && d.digits[d.count - 1] == '0') --d.count;
  return true;
}

bool SameDigits(const Decimal& a, const Decimal& b) {
  return a.count == b.count && a.exponent == b.exponent && std::memcmp(a.digits, b.digits, a.count) == 0;
}

// printf's %g layout at a precision: fixed notation for exponents from -4
// to precision - 1, scientific otherwise; no trailing zeros. buf holds 40.
int LaidOut(const Decimal& d, int precision, char* buf) {
  char* p = buf;
  if (d.negative) *p++ = '-';
  const int x = d.exponent;
  if (x < -4 || x >= precision) {
    *p++ = d.digits[0];
    if (d.count > 1) {
      *p++ = '.';
      std::memcpy(p, d.digits + 1, d.count - 1);
      p += d.count - 1;
    }
    const int e = x < 0 ? -x : x;
    *p++ = 'e';
    *p++ = x < 0 ? '-' : '+';
    if (e >= 100) *p++ = static_cast<char>('0' + e / 100);
    *p++ = static_cast<char>('0' + e / 10 % 10);
    *p++ = static_cast<char>('0' + e % 10);
  } else if (x < 0) {
    *p++ = '0';
    *p++ = '.';
    for (int i = 1; i < -x; ++i) *p++ = '0';
    std::memcpy(p, d.digits, d.count);
    p += d.count;
  } else if (d.count <= x + 1) {
    std::memcpy(p, d.digits, d.count);
    p += d.count;
    for (int i = d.count; i < x + 1; ++i) *p++ = '0';
    *p++ = '.';  // a whole number still reads as a real
    *p++ = '0';
  } else {
    std::memcpy(p, d.digits, x + 1);
    p += x + 1;
    *p++ = '.';
    std::memcpy(p, d.digits + x + 1, d.count - x - 1);
    p += d.count - x - 1;
  }
  return static_cast<int>(p - buf);
}

// A number in the form [-]digits[.digits][(e|E)[+|-]digits] with a digit
// in the mantissa: the form std::from_chars reads exactly as strtod does.
struct PlainDecimal {
  bool negative = false;
  std::uint64_t mantissa = 0;  // the first 19 significant digits
  int significant = 0;         // significant digits in all
  int exponent = 0;            // of the mantissa's last digit
  bool zero = true;            // every mantissa digit is 0
};

bool ReadPlainDecimal(std::string_view t, PlainDecimal& d) {
  const char* p = t.data();
  const char* const end = p + t.size();
  const bool negative = p < end && *p == '-';
  if (negative) ++p;
  std::uint64_t mantissa = 0;
  int significant = 0, exponent = 0;
  const char* const first = p;
  auto isDigit = [](char c) { return static_cast<unsigned char>(c - '0') < 10; };
  while (p < end && *p == '0') ++p;  // leading zeros
  for (; significant <= 11 && end - p >= 8 && AllDigits(EightBytes(p)); p += 8, significant += 8)
    mantissa = mantissa * 100000000 + EightDigitsValue(EightBytes(p));
  for (; p < end && isDigit(*p); ++p, ++significant) {
    if (significant < 19) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
    else ++exponent;
  }
  bool anyDigit = p > first;
  if (p < end && *p == '.') {
    ++p;
    const char* fraction = p;
    if (significant == 0)
      for (; p < end && *p == '0'; ++p) --exponent;  // zeros before the first significant digit
    for (; significant <= 11 && end - p >= 8 && AllDigits(EightBytes(p)); p += 8, significant += 8, exponent -= 8)
      mantissa = mantissa * 100000000 + EightDigitsValue(EightBytes(p));
    for (; p < end && isDigit(*p); ++p, ++significant) {
      if (significant < 19) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - '0');
        --exponent;
      }
    }
    anyDigit = anyDigit || p > fraction;
  }
  if (!anyDigit) return false;
  if (p < end && (*p == 'e' || *p == 'E')) {
    ++p;
    const bool minus = p < end && *p == '-';
    if (p < end && (*p == '+' || *p == '-')) ++p;
    const char* digits = p;
    int e = 0;
    for (; p < end && isDigit(*p); ++p)
      if (e < 100000) e = e * 10 + (*p - '0');
    if (p == digits) return false;
    exponent += minus ? -e : e;
  }
  d.negative = negative;
  d.mantissa = mantissa;
  d.significant = significant;
  d.exponent = exponent;
  d.zero = significant == 0;
  return p == end;
}

// Up to 19 digits and a power of ten up to 10^27 are exact in the x87's
// extended precision (64-bit mantissa): the quotient or product is rounded
// once to 64 bits, and rounding that to a double's 53 is right unless it
// lies exactly halfway between two doubles (then the true value's side is
// unknown and the caller takes the general way).
bool ExtendedQuotient(const PlainDecimal& d, double& out) {
  if constexpr (std::numeric_limits<long double>::digits != 64) {
    return false;
  } else {
    static const long double kPowers[] = {1e0L,  1e1L,  1e2L,  1e3L,  1e4L,  1e5L,  1e6L,  1e7L,  1e8L,  1e9L,
                                          1e10L, 1e11L, 1e12L, 1e13L, 1e14L, 1e15L, 1e16L, 1e17L, 1e18L, 1e19L,
                                          1e20L, 1e21L, 1e22L, 1e23L, 1e24L, 1e25L, 1e26L, 1e27L};
    if (d.significant > 19 || d.exponent < -27 || d.exponent > 27) return false;
    const long double m = static_cast<long double>(d.mantissa);
    const long double q = d.exponent < 0 ? m / kPowers[-d.exponent] : m * kPowers[d.exponent];
    std::uint64_t bits;
    std::memcpy(&bits, &q, sizeof bits);  // the 64-bit mantissa, integer bit included
    if ((bits & 0x7FF) == 0x400) return false;
    const double v = static_cast<double>(q);
    out = d.negative ? -v : v;
    return true;
  }
}

// Powers of ten that doubles hold exactly.
const double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                               1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// printf's search done with integers, for the doubles drawings mostly
// hold: 1e-3 <= |v| < 1e14, not a power of two. Then v = m / 2^e exactly
// (2^52 <= m < 2^53, 6 <= e <= 62), and every product below fits in 128
// bits (10^19 * 2^53 * 2 < 2^118; 10^17 * 2^63 < 2^120).
using Wide = unsigned __int128;

const std::uint64_t kPowersOfTen[] = {1ULL,
                                      10ULL,
                                      100ULL,
                                      1000ULL,
                                      10000ULL,
                                      100000ULL,
                                      1000000ULL,
                                      10000000ULL,
                                      100000000ULL,
                                      1000000000ULL,
                                      10000000000ULL,
                                      100000000000ULL,
                                      1000000000000ULL,
                                      10000000000000ULL,
                                      100000000000000ULL,
                                      1000000000000000ULL,
                                      10000000000000000ULL,
                                      100000000000000000ULL,
                                      1000000000000000000ULL,
                                      10000000000000000000ULL};

// m / 2^e >= 10^k, for k from -3 to 14.
bool AtLeastPowerOfTen(std::uint64_t m, int e, int k) {
  if (k >= 0) return Wide{m} >= Wide{kPowersOfTen[k]} << e;
  return Wide{m} * kPowersOfTen[-k] >= Wide{1} << e;
}

// m * 10^s / 2^e rounded to an integer, ties to even (as printf rounds).
std::uint64_t Rounded(std::uint64_t m, int s, int e) {
  const Wide p = Wide{m} * kPowersOfTen[s];
  Wide q = p >> e;
  const Wide rest = p - (q << e), half = Wide{1} << (e - 1);
  if (rest > half || (rest == half && (q & 1))) ++q;
  return static_cast<std::uint64_t>(q);
}

// Whether d / 10^s reads back as m / 2^e: nearer to it than half a unit
// of m, or exactly half and m even (strtod's ties go to the even one).
// Below a power of two (m = 2^52) the neighbour is nearer, half a unit
// of m away, and so is the limit: a quarter unit (a tie goes to m, even).
bool ReadsBack(std::uint64_t d, std::uint64_t m, int s, int e) {
  // Both sides times 10^s * 2^(e+1).
  const Wide a = Wide{d} << (e + 1), b = (Wide{m} * kPowersOfTen[s]) << 1, unit = kPowersOfTen[s];
  const Wide distance = a > b ? a - b : b - a;
  if (a < b && m == (std::uint64_t{1} << 52)) return 2 * distance <= unit;
  return distance < unit || (distance == unit && (m & 1) == 0);
}

// Writes the decimal digits of n (n > 0) to end backwards, two at a
// time; the count written.
int DigitsBackwards(std::uint64_t n, char* end) {
  static const char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  char* p = end;
  while (n >= 100) {
    const auto pair = static_cast<unsigned>(n % 100);
    n /= 100;
    p -= 2;
    std::memcpy(p, kPairs + 2 * pair, 2);
  }
  if (n >= 10) {
    p -= 2;
    std::memcpy(p, kPairs + 2 * n, 2);
  } else {
    *--p = static_cast<char>('0' + n);
  }
  return static_cast<int>(end - p);
}

bool IntegerSearch(double v, Decimal& d, int& precision) {
  const double a = std::fabs(v);
  if (!(a >= 1e-3 && a < 1e14)) return false;
  std::uint64_t bits;
  std::memcpy(&bits, &a, sizeof bits);
  const std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
  const int binary = static_cast<int>(bits >> 52) - 1022;  // a is in [2^(binary-1), 2^binary)
  const int e = 53 - binary;
  // The decimal exponent: from the binary one (78913 / 2^18 is just above
  // log10(2)), then made exact.
  int x = ((binary - 1) * 78913) >> 18;
  while (x > -3 && !AtLeastPowerOfTen(m, e, x)) --x;
  while (x < 13 && AtLeastPowerOfTen(m, e, x + 1)) ++x;
  std::uint64_t digits = 0;
  for (precision = 15; precision <= 17; ++precision) {
    const int s = precision - 1 - x;
    digits = Rounded(m, s, e);
    if (precision == 17 || ReadsBack(digits, m, s, e)) break;
  }
  // Rounding up to the next power of ten moves the exponent.
  if (digits == kPowersOfTen[precision]) {
    digits = 1;
    ++x;
  }
  while (digits % 10 == 0) digits /= 10;
  char buf[20];
  const int n = DigitsBackwards(digits, buf + sizeof buf);
  std::memcpy(d.digits, buf + sizeof buf - n, n);
  d.count = n;
  d.negative = v < 0;
  d.exponent = x;
  return true;
}

}  // namespace

namespace {
// A real's text into buf (room for 48), as AppendReal gives it; -1 when
// only the C library's search settles it.
int RealText(double v, char* buf) {
  if (v == 0) {
    const char* zero = std::signbit(v) ? "-0.0" : "0.0";
    const auto n = static_cast<int>(std::strlen(zero));
    std::memcpy(buf, zero, static_cast<size_t>(n));
    return n;
  }
  int searched = 0;
  Decimal found;
  if (IntegerSearch(v, found, searched)) return LaidOut(found, searched, buf);
  // Subnormal numbers have fewer digits than printf's search assumes.
  Decimal shortest;
  if (!(std::isnormal(v) || v == 0) || !Scientific(v, -1, shortest)) return -1;
  // The shortest digits that read back are what printf's search finds:
  // "%.15g" rounds to them, padded, whenever 15 digits or fewer do; "%.17g"
  // is the nearest 17 digits, which always read back. With 16, "%.16g" is
  // the nearest 16 digits: the shortest are those unless the value is a
  // power of two, whose lower neighbour is nearer than its upper, so that
  // the nearest 16 digits may fall outside what reads back; printf's
  // search then goes on to 17.
  int precision = shortest.count <= 15 ? 15 : shortest.count;
  if (shortest.count == 16) {
    int exponent = 0;
    if (std::frexp(v, &exponent) == 0.5 || std::frexp(v, &exponent) == -0.5) {
      Decimal rounded;
      if (!Scientific(v, 15, rounded)) return -1;
      if (!SameDigits(rounded, shortest)) {
        if (!Scientific(v, 16, shortest)) return -1;
        precision = 17;
      }
    }
  }
  return LaidOut(shortest, precision, buf);
}
}  // namespace

void AppendReal(double v, std::string& out) {
  char buf[48];
  const int n = RealText(v, buf);
  if (n < 0) return AppendRealSlowly(v, out);
  out.append(buf, static_cast<size_t>(n));
}

int TakeNonFiniteGroup() {
  const int code = tNonFiniteGroup;
  tNonFiniteGroup = 0;
  return code;
}

std::string FormatReal(double v) {
  std::string s;
  AppendReal(v, s);
  return s;
}

bool ParseReal(std::string_view text, double& out) {
  const std::string_view t = Trimmed(text);
  if (t.empty()) return false;
  PlainDecimal d;
  if (ReadPlainDecimal(t, d)) {
    if (d.zero) {
      out = d.negative ? -0.0 : 0.0;
      return true;
    }
    // A mantissa and a power of ten that doubles hold exactly: one
    // division or multiplication rounds correctly, as strtod does.
    if (d.significant <= 19 && d.mantissa <= (std::uint64_t{1} << 53) && d.exponent >= -22 && d.exponent <= 22) {
      const double m = static_cast<double>(d.mantissa);
      const double v = d.exponent < 0 ? m / kExactPowers[-d.exponent] : m * kExactPowers[d.exponent];
      out = d.negative ? -v : v;
      return true;
    }
    if (ExtendedQuotient(d, out)) return true;
    const std::from_chars_result r = std::from_chars(t.data(), t.data() + t.size(), out);
    // strtod flags underflow (a tiny nonzero value) as out of range: the C
    // library settles those.
    if (r.ec == std::errc() && r.ptr == t.data() + t.size() && std::isnormal(out)) return true;
  }
  const std::string copy(t);
  char* end = nullptr;
  errno = 0;
  out = std::strtod(copy.c_str(), &end);
  // Underflow is no error: a subnormal value reads as itself, and one below
  // the smallest of them as zero. Overflow, "inf" and "nan" are refused.
  return end && *end == '\0' && std::isfinite(out) && (errno != ERANGE || std::fabs(out) < DBL_MIN);
}

bool ParseInteger(std::string_view text, long long& out) {
  const std::string_view t = Trimmed(text);
  if (t.empty()) return false;
  // Up to 18 digits cannot overflow.
  const size_t first = t[0] == '-' ? 1 : 0;
  if (t.size() > first && t.size() - first <= 18) {
    long long v = 0;
    size_t i = first;
    for (; i < t.size() && t[i] >= '0' && t[i] <= '9'; ++i) v = v * 10 + (t[i] - '0');
    if (i == t.size()) {
      out = first ? -v : v;
      return true;
    }
  }
  const std::string copy(t);
  char* end = nullptr;
  errno = 0;
  out = std::strtoll(copy.c_str(), &end, 10);
  return end && *end == '\0' && errno != ERANGE;
}

bool ParseHandle(std::string_view text, std::uint64_t& out) {
  const std::string_view t = Trimmed(text);
  if (t.empty() || t.size() > 16) return false;
  out = 0;
  for (char c : t) {
    int d;
    if (c >= '0' && c <= '9') d = c - '0';
    else if (c >= 'a' && c <= 'f') d = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F') d = c - 'A' + 10;
    else return false;
    out = out * 16 + static_cast<std::uint64_t>(d);
  }
  return true;
}

namespace {
// A handle's hexadecimal text into buf (room for 16).
int HandleDigits(std::uint64_t handle, char* buf) {
  char reversed[16];
  int n = 0;
  do {
    reversed[n++] = "0123456789ABCDEF"[handle & 15];
    handle >>= 4;
  } while (handle);
  for (int i = 0; i < n; ++i) buf[i] = reversed[n - 1 - i];
  return n;
}
}  // namespace

void AppendHandle(std::uint64_t handle, std::string& out) {
  char buf[16];
  out.append(buf, static_cast<size_t>(HandleDigits(handle, buf)));
}

std::string HandleText(std::uint64_t handle) {
  std::string s;
  AppendHandle(handle, s);
  return s;
}

namespace {
// The code right-aligned in three columns and its line end.
// The code line into buf (room for 16): right-aligned in three columns,
// and its line end. Codes below 1000, all but a few, come from a table.
int CodeLineText(int code, char* buf) {
  struct Lines {
    char text[1000][4];
    Lines() {
      for (int c = 0; c < 1000; ++c) {
        text[c][0] = c >= 100 ? static_cast<char>('0' + c / 100) : ' ';
        text[c][1] = c >= 10 ? static_cast<char>('0' + c / 10 % 10) : ' ';
        text[c][2] = static_cast<char>('0' + c % 10);
        text[c][3] = '\n';
      }
    }
  };
  static const Lines kLines;
  if (code >= 0 && code < 1000) {
    std::memcpy(buf, kLines.text[code], 4);
    return 4;
  }
  const std::to_chars_result r = std::to_chars(buf, buf + 15, code);
  auto width = static_cast<int>(r.ptr - buf);
  if (width < 3) {  // a negative code
    std::memmove(buf + 3 - width, buf, static_cast<size_t>(width));
    std::memset(buf, ' ', static_cast<size_t>(3 - width));
    width = 3;
  }
  buf[width] = '\n';
  return width + 1;
}

void AppendCodeLine(int code, std::string& out) {
  char buf[16];
  out.append(buf, static_cast<size_t>(CodeLineText(code, buf)));
}
}  // namespace

void AppendGroupLine(int code, std::string_view value, std::string& out) {
  AppendCodeLine(code, out);
  const FileKind* const kinds = FileKinds();
  if (code >= 0 && code < kFileCodes && kinds[code] == FileKind::kText && NeedsCarets(value)) {
    const size_t at = out.size();
    out.resize(at + CaretSpelledSize(value));
    SpellCarets(value, out.data() + at);
  } else {
    out.append(value);
  }
  out += '\n';
}

// Both lines made in one buffer and added at once.
void AppendRealGroup(int code, double v, std::string& out) {
  char line[16 + 48 + 1];
  const int k = CodeLineText(code, line);
  const int n = RealText(v, line + k);
  if (n < 0) {
    out.append(line, static_cast<size_t>(k));
    AppendRealSlowly(v, out, code);
    out += '\n';
    return;
  }
  line[k + n] = '\n';
  out.append(line, static_cast<size_t>(k + n + 1));
}

void AppendHandleGroup(int code, std::uint64_t handle, std::string& out) {
  char line[16 + 16 + 1];
  int n = CodeLineText(code, line);
  n += HandleDigits(handle, line + n);
  line[n++] = '\n';
  out.append(line, static_cast<size_t>(n));
}

void AppendGroupLines(const RawGroup* begin, const RawGroup* end, std::string& out) {
  // Sized first, then filled: one allocation for the whole text.
  auto codeWidth = [](int code) -> size_t {
    if (code >= 0 && code < 1000) return 3;
    char buf[16];
    const auto digits = static_cast<size_t>(std::to_chars(buf, buf + sizeof buf, code).ptr - buf);
    return digits < 3 ? 3 : digits;
  };
  // Only text values may hold control characters or carets.
  const FileKind* const kinds = FileKinds();
  auto spelled = [kinds](const RawGroup& g) {
    return g.code >= 0 && g.code < kFileCodes && kinds[g.code] == FileKind::kText && NeedsCarets(g.value);
  };
  size_t size = 0;
  for (const RawGroup* g = begin; g != end; ++g)
    size += codeWidth(g->code) + 1 + (spelled(*g) ? CaretSpelledSize(g->value) : g->value.size()) + 1;
  const size_t at = out.size();
  out.resize(at + size);
  char* p = out.data() + at;
  for (const RawGroup* g = begin; g != end; ++g) {
    const int c = g->code;
    if (c >= 0 && c < 1000) {
      p[0] = c >= 100 ? static_cast<char>('0' + c / 100) : ' ';
      p[1] = c >= 10 ? static_cast<char>('0' + c / 10 % 10) : ' ';
      p[2] = static_cast<char>('0' + c % 10);
      p += 3;
    } else {
      char code[16];
      const std::to_chars_result r = std::to_chars(code, code + sizeof code, c);
      const auto width = static_cast<size_t>(r.ptr - code);
      for (size_t i = width; i < 3; ++i) *p++ = ' ';
      std::memcpy(p, code, width);
      p += width;
    }
    *p++ = '\n';
    const size_t n = g->value.size();
    const char* v = g->value.data();
    if (spelled(*g)) {
      p = SpellCarets(g->value, p);
      *p++ = '\n';
      continue;
    }
    if (n <= 16) {
      for (size_t i = 0; i < n; ++i) p[i] = v[i];
    } else {
      std::memcpy(p, v, n);
    }
    p += n;
    *p++ = '\n';
  }
}

}  // namespace kelhost::dxf
