#include "text/font_library.h"

#include <fontconfig/fontconfig.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <tuple>

#include "app/support_path.h"
#include "arx/acedads.h"
#include "kelhost/paths.h"
#include "kelhost/text.h"
#include "text/shape_font.h"
#include "text/truetype_font.h"

namespace kelhost::text {
namespace {

enum class Role { kStyleFont, kBigFont };

struct Located {
  std::string path;
  int index = 0;
};

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

std::string Extension(const std::string& name) {
  const size_t dot = name.find_last_of('.');
  const size_t slash = name.find_last_of("/\\");
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
  return Lower(name.substr(dot + 1));
}

std::string Stem(const std::string& name) {
  const size_t slash = name.find_last_of("/\\");
  std::string base = slash == std::string::npos ? name : name.substr(slash + 1);
  const size_t dot = base.find_last_of('.');
  return dot == std::string::npos ? base : base.substr(0, dot);
}

bool IsTrueTypeName(const std::string& name) {
  const std::string ext = Extension(name);
  return ext == "ttf" || ext == "ttc" || ext == "otf" || ext == "otc";
}

// ------------------------------------------------------------------ fontconfig

// Released at exit, with fontconfig's own caches, so that a leak checker
// sees only what the program itself keeps.
FcConfig* gConfig = nullptr;

void ReleaseConfig() {
  if (gConfig) FcConfigDestroy(gConfig);
  gConfig = nullptr;
  FcFini();
}

FcConfig* Config() {
  static FcConfig* config = [] {
    gConfig = FcInitLoadConfigAndFonts();
    std::atexit(ReleaseConfig);
    return gConfig;
  }();
  return config;
}

std::string PatternString(FcPattern* p, const char* object, int n = 0) {
  FcChar8* value = nullptr;
  return FcPatternGetString(p, object, n, &value) == FcResultMatch && value ? reinterpret_cast<char*>(value) : "";
}

// System fonts by their file's name, in lower case.
const std::map<std::string, Located>& SystemFontFiles() {
  static const std::map<std::string, Located> files = [] {
    std::map<std::string, Located> found;
    FcConfig* config = Config();
    if (!config) return found;
    FcPattern* all = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(FC_FILE, FC_INDEX, nullptr);
    FcFontSet* set = FcFontList(config, all, objects);
    for (int i = 0; set && i < set->nfont; ++i) {
      const std::string file = PatternString(set->fonts[i], FC_FILE);
      int index = 0;
      FcPatternGetInteger(set->fonts[i], FC_INDEX, 0, &index);
      const size_t slash = file.find_last_of('/');
      const std::string key = Lower(slash == std::string::npos ? file : file.substr(slash + 1));
      auto it = found.find(key);
      if (it == found.end() || index < it->second.index) found[key] = Located{file, index};
    }
    if (set) FcFontSetDestroy(set);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(all);
    return found;
  }();
  return files;
}

// The system font fontconfig chooses for a family name; with exact, only
// a font of that very family.
bool MatchFamily(const std::string& family, bool exact, Located& out) {
  FcConfig* config = Config();
  if (!config) return false;
  FcPattern* pattern = FcPatternCreate();
  FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
  FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
  FcConfigSubstitute(config, pattern, FcMatchPattern);
  FcDefaultSubstitute(pattern);
  FcResult result = FcResultNoMatch;
  FcPattern* match = FcFontMatch(config, pattern, &result);
  FcPatternDestroy(pattern);
  if (!match) return false;
  bool ok = !exact;
  for (int n = 0; exact && !ok; ++n) {
    const std::string name = PatternString(match, FC_FAMILY, n);
    if (name.empty()) break;
    ok = Lower(name) == Lower(family);
  }
  out.path = PatternString(match, FC_FILE);
  out.index = 0;
  FcPatternGetInteger(match, FC_INDEX, 0, &out.index);
  FcPatternDestroy(match);
  return ok && !out.path.empty();
}

// ------------------------------------------------------------------ the session's fonts

std::vector<std::unique_ptr<Font>>& OwnedFonts() {
  static std::vector<std::unique_ptr<Font>> fonts;
  return fonts;
}

Font* Keep(std::unique_ptr<Font> font) {
  if (!font) return nullptr;
  OwnedFonts().push_back(std::move(font));
  return OwnedFonts().back().get();
}

Font* OpenTrueType(const Located& at, HeightBasis basis) {
  static std::map<std::tuple<std::string, int, int>, Font*> opened;
  const auto key = std::make_tuple(at.path, at.index, static_cast<int>(basis));
  auto it = opened.find(key);
  if (it != opened.end()) return it->second;
  Font* font = Keep(TrueTypeFont::Open(at.path, at.index, basis));
  opened[key] = font;
  return font;
}

void SayOnce(const std::string& text) {
  static std::set<std::string> said;
  if (!said.insert(text).second) return;
  std::fprintf(stderr, "%s\n", text.c_str());
  std::fflush(stderr);
}

Font* FirstFamily(std::initializer_list<const char*> families, const char* generic, HeightBasis basis) {
  Located at;
  for (const char* family : families)
    if (MatchFamily(family, true, at)) return OpenTrueType(at, basis);
  return MatchFamily(generic, false, at) ? OpenTrueType(at, basis) : nullptr;
}

// A font file found where the platform looks for it, without substitution.
Font* FindFontFile(const std::string& name, Role role) {
  static std::map<std::string, Font*> found;
  const std::string key = Lower(name) + (role == Role::kBigFont ? "|big" : "|font");
  auto it = found.find(key);
  if (it != found.end()) return it->second;
  Font* font = nullptr;
  const auto onPath = app::FindSupportFile(FromUtf8(name));
  if (IsTrueTypeName(name)) {
    const HeightBasis basis = role == Role::kBigFont ? HeightBasis::kEmSquare : HeightBasis::kCapitals;
    if (onPath) {
      font = OpenTrueType(Located{NativePath(*onPath), 0}, basis);
    } else {
      const std::string base = Lower(name.substr(name.find_last_of("/\\") == std::string::npos ? 0 : name.find_last_of("/\\") + 1));
      const auto& system = SystemFontFiles();
      auto sys = system.find(base);
      if (sys != system.end()) font = OpenTrueType(sys->second, basis);
    }
  } else if (onPath) {
    std::string error;
    const std::string path = NativePath(*onPath);
    font = Keep(ShapeFont::Open(path, &error));
    if (!font) SayOnce("Font file " + path + " " + error + ".");
  }
  found[key] = font;
  return font;
}

// A style's font file name as the platform completes it: no extension
// means a shape font.
std::string CompleteName(const std::wstring& file) {
  std::string name = ToUtf8(file);
  while (!name.empty() && name.back() == ' ') name.pop_back();
  if (name.empty()) name = "txt";
  if (Extension(name).empty()) name += ".shx";
  return name;
}

Font* FontAlt() {
  resbuf rb{};
  if (acedGetVar(L"FONTALT", &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return nullptr;
  const std::wstring alt = rb.resval.rstring;
  std::free(rb.resval.rstring);
  if (alt.empty() || alt == L".") return nullptr;
  return FindFontFile(CompleteName(alt), Role::kStyleFont);
}

Font* OpenOrSubstitute(const std::wstring& file, Role role) {
  if (role == Role::kBigFont && file.empty()) return nullptr;
  const std::string name = CompleteName(file);
  if (Font* font = FindFontFile(name, role)) return font;
  Font* stand = nullptr;
  if (role == Role::kBigFont) {
    stand = CjkSubstitute();
  } else if (IsTrueTypeName(name)) {
    Located at;
    if (MatchFamily(Stem(name), false, at)) stand = OpenTrueType(at, HeightBasis::kCapitals);
  } else {
    stand = FontAlt();
  }
  if (!stand) stand = LatinSubstitute();
  if (stand) SayOnce("Substituting [" + stand->fileName() + "] for [" + name + "].");
  return stand;
}

}  // namespace

Font* LatinSubstitute() {
  static Font* font = FirstFamily({"Liberation Sans", "DejaVu Sans"}, "sans-serif", HeightBasis::kCapitals);
  return font;
}

Font* CjkSubstitute() {
  static Font* font = FirstFamily({"WenQuanYi Micro Hei", "Noto Sans CJK SC", "WenQuanYi Zen Hei"}, "sans-serif:lang=zh-cn",
                                  HeightBasis::kEmSquare);
  return font;
}

bool IsWideCharacter(char32_t c) {
  return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) || (c >= 0xAC00 && c <= 0xD7A3) ||
         (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

// ------------------------------------------------------------------ StyleFonts

struct StyleFonts::Cache {
  std::vector<std::unique_ptr<std::array<ResolvedGlyph, 256>>> pages;
  std::vector<std::unique_ptr<std::array<bool, 256>>> known;
};

StyleFonts::StyleFonts(Font* primary, Font* big) : mPrimary(primary), mBig(big), mCache(std::make_unique<Cache>()) {
  mCache->pages.resize((0x10FFFF >> 8) + 1);
  mCache->known.resize((0x10FFFF >> 8) + 1);
}

StyleFonts::~StyleFonts() = default;

const ResolvedGlyph& StyleFonts::resolve(char32_t c) {
  static const ResolvedGlyph kNothing;
  if (c > 0x10FFFF) return kNothing;
  const size_t page = c >> 8;
  if (!mCache->pages[page]) {
    mCache->pages[page] = std::make_unique<std::array<ResolvedGlyph, 256>>();
    mCache->known[page] = std::make_unique<std::array<bool, 256>>();
  }
  ResolvedGlyph& slot = (*mCache->pages[page])[c & 0xFF];
  bool& known = (*mCache->known[page])[c & 0xFF];
  if (!known) {
    slot = lookUp(c);
    known = true;
  }
  return slot;
}

ResolvedGlyph StyleFonts::lookUp(char32_t c) {
  auto from = [](Font* font, char32_t code) {
    ResolvedGlyph r;
    if (font && (r.metrics = font->glyph(code)) != nullptr) {
      r.font = font;
      r.code = code;
    }
    return r;
  };
  if (c < 0x20) return {};  // control characters take no room
  ResolvedGlyph r;
  const bool bigFirst = mBig && c >= 0x80;
  if (bigFirst && (r = from(mBig, c)).font) return r;
  if ((r = from(mPrimary, c)).font) return r;
  if (!bigFirst && (r = from(mBig, c)).font) return r;
  Font* first = IsWideCharacter(c) ? CjkSubstitute() : LatinSubstitute();
  Font* second = first == LatinSubstitute() ? CjkSubstitute() : LatinSubstitute();
  if ((r = from(first, c)).font || (r = from(second, c)).font) return r;
  if ((r = from(mPrimary, '?')).font || (r = from(LatinSubstitute(), '?')).font) return r;
  return {};
}

StyleFonts& FontsForStyle(const std::wstring& fontFile, const std::wstring& bigFontFile) {
  // Text is measured again and again with one style: the last one asked
  // for is answered without building a key.
  static std::wstring lastFont, lastBig;
  static StyleFonts* last = nullptr;
  if (last && fontFile == lastFont && bigFontFile == lastBig) return *last;
  static std::map<std::wstring, std::unique_ptr<StyleFonts>> styles;
  lastFont = fontFile;
  lastBig = bigFontFile;
  const std::wstring key = ToLower(fontFile) + L"|" + ToLower(bigFontFile);
  auto it = styles.find(key);
  if (it != styles.end()) return *(last = it->second.get());
  Font* primary = OpenOrSubstitute(fontFile, Role::kStyleFont);
  // A big font serves shape fonts only: a TrueType style ignores it.
  Font* big = IsTrueTypeName(CompleteName(fontFile)) ? nullptr : OpenOrSubstitute(bigFontFile, Role::kBigFont);
  auto& slot = styles[key];
  slot = std::make_unique<StyleFonts>(primary, big);
  return *(last = slot.get());
}

}  // namespace kelhost::text
