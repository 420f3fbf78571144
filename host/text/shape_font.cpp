// Reading compiled shape files and running their shape language. The
// layouts and the codes follow the platform's published description of
// shape definitions (codes 0-14, vector bytes of a length and one of 16
// directions) and of their compiled form.
#include "text/shape_font.h"

#include <iconv.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "kelhost/paths.h"
#include "kelhost/text.h"

namespace kelhost::text {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMaxSubshapeDepth = 8;   // code 7 may nest; a loop must end
constexpr int kMaxPositionStack = 16;  // codes 5 and 6
constexpr size_t kMaxFileBytes = 64u << 20;

// The 16 directions of a vector byte: the longer component is the length.
constexpr double kDirections[16][2] = {{1, 0},  {1, 0.5},  {1, 1},   {0.5, 1},  {0, 1},  {-0.5, 1},
                                       {-1, 1}, {-1, 0.5}, {-1, 0},  {-1, -0.5}, {-1, -1}, {-0.5, -1},
                                       {0, -1}, {0.5, -1}, {1, -1},  {1, -0.5}};

class Reader {
 public:
  Reader(const std::string& bytes, size_t pos) : mBytes(bytes), mPos(pos) {}
  bool u8(unsigned& v) {
    if (mPos + 1 > mBytes.size()) return false;
    v = static_cast<unsigned char>(mBytes[mPos++]);
    return true;
  }
  bool u16(unsigned& v) {
    unsigned lo, hi;
    if (!u8(lo) || !u8(hi)) return false;
    v = lo | (hi << 8);
    return true;
  }
  bool u32(unsigned long& v) {
    unsigned lo, hi;
    if (!u16(lo) || !u16(hi)) return false;
    v = lo | (static_cast<unsigned long>(hi) << 16);
    return true;
  }
  bool block(size_t length, std::string& out) {
    if (length > mBytes.size() - mPos) return false;
    out.assign(mBytes, mPos, length);
    mPos += length;
    return true;
  }
  size_t pos() const { return mPos; }

 private:
  const std::string& mBytes;
  size_t mPos;
};

// A shape's definition block: its name, a null, then its drawing bytes.
void SplitNamed(const std::string& block, std::string& name, std::string& definition) {
  const size_t nul = block.find('\0');
  if (nul == std::string::npos) {
    name.clear();
    definition = block;
  } else {
    name = block.substr(0, nul);
    definition = block.substr(nul + 1);
  }
}

std::string LowerAscii(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// Bytes of one character in a code page (iconv); empty when it has none.
std::string Encode(char32_t c, const std::string& codePage) {
  iconv_t cd = iconv_open(codePage.c_str(), "UTF-32LE");
  if (cd == reinterpret_cast<iconv_t>(-1)) return {};
  char in[4] = {static_cast<char>(c & 0xFF), static_cast<char>((c >> 8) & 0xFF), static_cast<char>((c >> 16) & 0xFF),
                static_cast<char>((c >> 24) & 0xFF)};
  char out[8];
  char* inp = in;
  char* outp = out;
  size_t inLeft = 4, outLeft = sizeof out;
  const size_t rc = iconv(cd, &inp, &inLeft, &outp, &outLeft);
  iconv_close(cd);
  if (rc == static_cast<size_t>(-1)) return {};
  return std::string(out, outp);
}

struct Box {
  double xMin = 1e300, yMin = 1e300, xMax = -1e300, yMax = -1e300;
  void add(double x, double y) {
    xMin = std::min(xMin, x);
    yMin = std::min(yMin, y);
    xMax = std::max(xMax, x);
    yMax = std::max(yMax, y);
  }
  bool empty() const { return xMin > xMax; }
};

}  // namespace

// The drawing state of the shape language.
struct ShapeFont::Pen {
  double x = 0, y = 0, scale = 1;
  bool down = true;
  bool started = false;  // the path has a move to the current position
  bool tooDeep = false;  // subshapes nested past the limit: the shape is broken
  double stack[kMaxPositionStack][2];
  int depth = 0;
  GlyphPath* path = nullptr;  // null when only measuring
  Box box;

  void jump(double nx, double ny) {
    x = nx;
    y = ny;
    started = false;
  }
  void start() {
    if (!started && path) path->moveTo(x, y);
    started = true;
    box.add(x, y);
  }
  void vector(double dx, double dy) {
    const double nx = x + dx * scale, ny = y + dy * scale;
    if (!down) return jump(nx, ny);
    start();
    if (path) path->lineTo(nx, ny);
    box.add(nx, ny);
    x = nx;
    y = ny;
  }
  // An arc about (cx, cy) from angle a0 turning by sweep (anticlockwise
  // positive), ending at the pen's new position.
  void arc(double cx, double cy, double r, double a0, double sweep) {
    const double ex = cx + r * std::cos(a0 + sweep), ey = cy + r * std::sin(a0 + sweep);
    if (!down || r <= 0) return jump(ex, ey);
    start();
    // Extreme points the arc passes (quadrant angles inside the sweep).
    const double lo = std::min(a0, a0 + sweep), hi = std::max(a0, a0 + sweep);
    for (double q = std::ceil(lo / (kPi / 2)) * (kPi / 2); q < hi; q += kPi / 2)
      box.add(cx + r * std::cos(q), cy + r * std::sin(q));
    box.add(ex, ey);
    if (path) {
      const int pieces = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (kPi / 2) - 1e-9)));
      const double step = sweep / pieces, k = 4.0 / 3.0 * std::tan(step / 4);
      for (int i = 0; i < pieces; ++i) {
        const double s = a0 + step * i, e = s + step;
        const double sx = cx + r * std::cos(s), sy = cy + r * std::sin(s);
        const double qx = cx + r * std::cos(e), qy = cy + r * std::sin(e);
        path->cubicTo(sx - k * r * std::sin(s), sy + k * r * std::cos(s), qx + k * r * std::sin(e),
                      qy - k * r * std::cos(e), qx, qy);
      }
    }
    x = ex;
    y = ey;
  }
  // Code 12: to (dx, dy) bulging by b/127 (the tangent of a quarter of
  // the included angle; 0 is a straight line).
  void bulge(double dx, double dy, int b) {
    if (b == 0) return vector(dx, dy);
    dx *= scale;
    dy *= scale;
    const double k = b / 127.0, d = std::hypot(dx, dy);
    if (d == 0) return;
    const double theta = 4 * std::atan(k);
    const double mx = x + dx / 2, my = y + dy / 2;
    const double off = d / 2 * (1 - k * k) / (2 * k);  // midpoint to centre, to the left of the chord
    const double cx = mx - dy / d * off, cy = my + dx / d * off;
    const double r = std::hypot(x - cx, y - cy);
    arc(cx, cy, r, std::atan2(y - cy, x - cx), theta);
  }
};

ShapeFont::ShapeFont(const std::string& path, Layout layout) : Font(path, layout == Layout::kBigfont ? Kind::kBigShape : Kind::kShape), mLayout(layout) {}

std::unique_ptr<ShapeFont> ShapeFont::Open(const std::string& path, std::string* error) {
  std::string bytes;
  if (!ReadWholeFile(path, bytes)) {
    if (error) *error = "cannot be read";
    return nullptr;
  }
  return Parse(path, bytes, error);
}

std::unique_ptr<ShapeFont> ShapeFont::Parse(const std::string& path, const std::string& bytes, std::string* error) {
  auto fail = [&](const char* why) -> std::unique_ptr<ShapeFont> {
    if (error) *error = why;
    return nullptr;
  };
  if (bytes.size() > kMaxFileBytes) return fail("is too large for a shape font");
  const size_t eol = bytes.find("\r\n\x1a");
  if (eol == std::string::npos || eol > 40 || bytes.compare(0, 11, "AutoCAD-86 ") != 0) return fail("is not a compiled shape file");
  const std::string kind = bytes.substr(11, eol - 11);
  Layout layout;
  if (kind == "shapes 1.0" || kind == "shapes 1.1") layout = Layout::kShapes;
  else if (kind == "unifont 1.0") layout = Layout::kUnifont;
  else if (kind == "bigfont 1.0") layout = Layout::kBigfont;
  else return fail("is a compiled shape file of an unknown kind");

  std::unique_ptr<ShapeFont> font(new ShapeFont(path, layout));
  Reader r(bytes, eol + 3);
  std::string block, name, definition;
  bool haveInfo = false;
  auto takeInfo = [&](const std::string& infoSpec) {
    // above, below, modes (a big font may give its height second).
    if (infoSpec.size() < 2) return false;
    font->mAbove = static_cast<unsigned char>(infoSpec[0]);
    font->mBelow = static_cast<unsigned char>(infoSpec[1]);
    if (font->mAbove == 0 && layout == Layout::kBigfont) std::swap(font->mAbove, font->mBelow);
    haveInfo = font->mAbove > 0;
    return haveInfo;
  };

  if (layout == Layout::kShapes) {
    unsigned first, last, count;
    if (!r.u16(first) || !r.u16(last) || !r.u16(count)) return fail("is cut short");
    std::vector<std::pair<unsigned, unsigned>> index(count);
    for (auto& e : index)
      if (!r.u16(e.first) || !r.u16(e.second)) return fail("is cut short");
    for (const auto& e : index) {
      if (!r.block(e.second, block)) return fail("is cut short");
      SplitNamed(block, name, definition);
      if (e.first == 0) {
        font->mName = name;
        if (!takeInfo(definition)) return fail("has a font description without a height");
      } else {
        font->mShapes[e.first] = definition;
      }
    }
  } else if (layout == Layout::kUnifont) {
    unsigned long count;
    unsigned infoLength;
    if (!r.u32(count) || !r.u16(infoLength) || !r.block(infoLength, block)) return fail("is cut short");
    SplitNamed(block, name, definition);
    font->mName = name;
    if (!takeInfo(definition)) return fail("has a font description without a height");
    for (unsigned long i = 1; i < count; ++i) {
      unsigned number, length;
      if (!r.u16(number) || !r.u16(length) || !r.block(length, block)) return fail("is cut short");
      SplitNamed(block, name, definition);
      font->mShapes[number] = definition;
    }
  } else {
    unsigned count, unused, ranges;
    if (!r.u16(count) || !r.u16(unused) || !r.u16(ranges)) return fail("is cut short");
    for (unsigned i = 0; i < ranges; ++i) {
      unsigned from, to;
      if (!r.u16(from) || !r.u16(to)) return fail("is cut short");
    }
    for (unsigned i = 0; i < count; ++i) {
      unsigned number, length;
      unsigned long offset;
      if (!r.u16(number) || !r.u16(length) || !r.u32(offset)) return fail("is cut short");
      if (length == 0) continue;  // an unused slot
      if (offset > bytes.size() || length > bytes.size() - offset) return fail("has a shape outside the file");
      SplitNamed(bytes.substr(offset, length), name, definition);
      if (number == 0) {
        font->mName = name;
        if (!takeInfo(definition)) return fail("has a font description without a height");
      } else {
        font->mShapes[number] = definition;
      }
    }
    const std::string lower = LowerAscii(path);
    if (lower.find("chineset") != std::string::npos) font->mCodePage = "BIG5";
    else if (lower.find("extfont") != std::string::npos || lower.find("bigfont") != std::string::npos)
      font->mCodePage = "SHIFT_JIS";
    else if (lower.find("whg") != std::string::npos || lower.find("kor") != std::string::npos)
      font->mCodePage = "CP949";
    else font->mCodePage = "GBK";
  }
  if (!haveInfo) return fail("is a shape file, not a font");
  return font;
}

unsigned ShapeFont::shapeNumberOf(char32_t c) const {
  auto has = [&](unsigned n) { return n != 0 && mShapes.count(n) != 0; };
  switch (mLayout) {
    case Layout::kUnifont:
      if (has(c)) return c;
      if (c == 0x2300 && has(0x2205)) return 0x2205;  // the diameter sign under either code
      return 0;
    case Layout::kShapes: {
      if (c < 0x80) return has(c) ? c : 0;
      if (c == 0xB0 && has(256)) return 256;
      if (c == 0xB1 && has(257)) return 257;
      if ((c == 0x2205 || c == 0x2300) && has(258)) return 258;
      const std::string b = Encode(c, "CP1252");
      return b.size() == 1 && has(static_cast<unsigned char>(b[0])) ? static_cast<unsigned char>(b[0]) : 0;
    }
    case Layout::kBigfont: {
      if (c < 0x80) return has(c) ? c : 0;
      const std::string b = Encode(c, mCodePage);
      unsigned n = 0;
      for (unsigned char byte : b) n = (n << 8) | byte;
      return b.size() <= 2 && has(n) ? n : 0;
    }
  }
  return 0;
}

// Runs one shape's drawing bytes; false for a malformed one.
bool ShapeFont::draw(unsigned number, Pen& pen, int depth) const {
  if (depth > kMaxSubshapeDepth) {
    pen.tooDeep = true;
    return false;
  }
  const auto found = mShapes.find(number);
  if (found == mShapes.end()) return false;
  const std::string& s = found->second;
  size_t i = 0;
  auto next = [&](unsigned& v) {
    if (i >= s.size()) return false;
    v = static_cast<unsigned char>(s[i++]);
    return true;
  };
  auto nextSigned = [&](int& v) {
    unsigned u;
    if (!next(u)) return false;
    v = u > 127 ? static_cast<int>(u) - 256 : static_cast<int>(u);
    return true;
  };
  // Code 14 runs its command only for vertical text: this host lays text
  // out horizontally, so the command is stepped over.
  bool skip = false;
  while (i < s.size()) {
    const bool skipping = skip;
    skip = false;
    GlyphPath* savedPath = pen.path;
    Pen saved = pen;
    if (skipping) pen.path = nullptr;
    unsigned b;
    next(b);
    bool ok = true;
    if (b >= 0x10) {
      const double len = b >> 4;
      pen.vector(len * kDirections[b & 0xF][0], len * kDirections[b & 0xF][1]);
    } else {
      switch (b) {
        case 0:
          if (!skipping) return true;
          break;
        case 1: pen.down = true; break;
        case 2: pen.down = false; pen.started = false; break;
        case 3: case 4: {
          unsigned f;
          ok = next(f) && f != 0;
          if (ok) pen.scale = b == 3 ? pen.scale / f : pen.scale * f;
          break;
        }
        case 5:
          ok = pen.depth < kMaxPositionStack;
          if (ok) {
            pen.stack[pen.depth][0] = pen.x;
            pen.stack[pen.depth][1] = pen.y;
            ++pen.depth;
          }
          break;
        case 6:
          ok = pen.depth > 0;
          if (ok) {
            --pen.depth;
            pen.jump(pen.stack[pen.depth][0], pen.stack[pen.depth][1]);
          }
          break;
        case 7: {
          unsigned n = 0, hi = 0, lo = 0;
          if (mLayout == Layout::kShapes) {
            ok = next(n);
          } else if (mLayout == Layout::kUnifont) {
            ok = next(hi) && next(lo);
            n = (hi << 8) | lo;
          } else {
            ok = next(hi);
            if (ok && hi == 0) {  // the extended form: number, origin and size follow
              unsigned skipByte;
              ok = next(hi) && next(lo) && next(skipByte) && next(skipByte) && next(skipByte) && next(skipByte);
            } else {
              ok = ok && next(lo);
            }
            n = (hi << 8) | lo;
          }
          if (ok && !skipping) draw(n, pen, depth + 1);  // a missing subshape draws nothing
          ok = ok && !pen.tooDeep;
          break;
        }
        case 8: case 9: {
          int dx, dy;
          do {
            ok = nextSigned(dx) && nextSigned(dy);
            if (ok && (dx != 0 || dy != 0 || b == 8)) pen.vector(dx, dy);
          } while (ok && b == 9 && (dx != 0 || dy != 0));
          break;
        }
        case 10: case 11: {
          unsigned startOffset = 0, endOffset = 0, rHi = 0, rLo = 0, octants;
          if (b == 11) ok = next(startOffset) && next(endOffset) && next(rHi);
          ok = ok && next(rLo) && next(octants);
          if (!ok) break;
          const double r = (rHi * 256.0 + rLo) * pen.scale;
          const double dir = (octants & 0x80) ? -1 : 1;
          const int first = (octants >> 4) & 7;
          const int count = (octants & 7) == 0 ? 8 : (octants & 7);
          const double eighth = kPi / 4;
          double a0 = first * eighth, sweep = dir * count * eighth;
          if (b == 11) {
            a0 += dir * startOffset * eighth / 256;
            const double end = first * eighth + dir * ((endOffset ? count - 1 : count) * eighth + endOffset * eighth / 256);
            sweep = end - a0;
          }
          pen.arc(pen.x - r * std::cos(a0), pen.y - r * std::sin(a0), r, a0, sweep);
          break;
        }
        case 12: case 13: {
          int dx, dy, bulge;
          do {
            ok = nextSigned(dx) && nextSigned(dy);
            if (!ok || (b == 13 && dx == 0 && dy == 0)) break;
            ok = nextSigned(bulge);
            if (ok) pen.bulge(dx, dy, bulge);
          } while (ok && b == 13);
          break;
        }
        case 14: skip = true; break;
        default: break;
      }
    }
    if (skipping) {
      pen = saved;
      pen.path = savedPath;
    }
    if (!ok) return false;
  }
  return true;
}

bool ShapeFont::loadMetrics(char32_t c, GlyphMetrics& m) {
  const unsigned n = shapeNumberOf(c);
  if (n == 0) return false;
  Pen pen;
  if (!draw(n, pen, 0)) return false;
  const double unit = 1.0 / mAbove;
  m.advance = pen.x * unit;
  m.inked = !pen.box.empty();
  if (m.inked) {
    m.xMin = pen.box.xMin * unit;
    m.yMin = pen.box.yMin * unit;
    m.xMax = pen.box.xMax * unit;
    m.yMax = pen.box.yMax * unit;
  }
  return true;
}

bool ShapeFont::outline(char32_t c, GlyphPath& path) {
  const unsigned n = shapeNumberOf(c);
  if (n == 0) return false;
  Pen pen;
  pen.path = &path;
  path.filled = false;
  if (!draw(n, pen, 0)) return false;
  const double unit = 1.0 / mAbove;
  path.transform(unit, unit, 0, 0);
  return true;
}

}  // namespace kelhost::text
