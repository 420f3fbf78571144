// acedTextBox: a text entity list measured with its style's fonts.
#include <cwctype>
#include <string>

#include "arx/acedads.h"
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "arx/dbsymtb.h"
#include "kelhost/text.h"
#include "text/text_layout.h"

namespace {

struct TextGroups {
  const wchar_t* type = nullptr;
  const wchar_t* text = nullptr;
  const wchar_t* tag = nullptr;
  const wchar_t* style = nullptr;
  double height = 0.0, width = 0.0, oblique = 0.0;
  bool hasHeight = false, hasWidth = false, hasOblique = false, hasFlags = false;
  int flags = 0;
};

TextGroups ReadGroups(const resbuf* args) {
  TextGroups g;
  for (const resbuf* rb = args; rb; rb = rb->rbnext) {
    switch (rb->restype) {
      case 0: g.type = rb->resval.rstring; break;
      case 1: g.text = rb->resval.rstring; break;
      case 2: g.tag = rb->resval.rstring; break;
      case 7: g.style = rb->resval.rstring; break;
      case 40: g.height = rb->resval.rreal; g.hasHeight = g.height > 0; break;
      case 41: g.width = rb->resval.rreal; g.hasWidth = g.width > 0; break;
      case 51: g.oblique = rb->resval.rreal; g.hasOblique = true; break;
      case 71: g.flags = rb->resval.rint; g.hasFlags = true; break;
      default: break;
    }
  }
  return g;
}

bool IsAttributeDefinition(const wchar_t* type) {
  if (!type) return false;
  return kelhost::EqualNoCase(type, L"ATTDEF");
}

std::wstring StringVar(const wchar_t* name, const wchar_t* fallback) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return fallback;
  std::wstring value = rb.resval.rstring;
  std::free(rb.resval.rstring);
  return value;
}

double RealVar(const wchar_t* name, double fallback) {
  resbuf rb{};
  return acedGetVar(name, &rb) == RTNORM && rb.restype == RTREAL ? rb.resval.rreal : fallback;
}

// What measuring takes from the text style record.
struct StyleSettings {
  std::wstring fontFile, bigFontFile;
  double fixedHeight = 0.0, widthFactor = 1.0, oblique = 0.0;
  int flags = 0;
};

bool ReadStyle(const std::wstring& name, StyleSettings& s) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  AcDbTextStyleTable* table = nullptr;
  if (!db || db->getTextStyleTable(table, AcDb::kForRead) != Acad::eOk) return false;
  AcDbTextStyleTableRecord* record = nullptr;
  const bool found = table->getAt(name.c_str(), record, AcDb::kForRead) == Acad::eOk;
  table->close();
  if (!found) return false;
  const ACHAR* file = nullptr;
  const ACHAR* big = nullptr;
  record->fileName(file);
  record->bigFontFileName(big);
  s.fontFile.assign(file ? file : L"");
  s.bigFontFile.assign(big ? big : L"");
  s.fixedHeight = record->textSize();
  s.widthFactor = record->xScale() > 0 ? record->xScale() : 1.0;
  s.oblique = record->obliquingAngle();
  s.flags = record->flagBits();
  record->close();
  return true;
}

}  // namespace

int acedTextBox(const resbuf* args, ads_point pt1, ads_point pt2) {
  try {
    if (!args || !pt1 || !pt2) return RTERROR;
    const TextGroups g = ReadGroups(args);
    const wchar_t* text = IsAttributeDefinition(g.type) ? g.tag : g.text;
    if (!text) return RTERROR;
    static thread_local StyleSettings style;  // kept: its strings keep their room
    if (!ReadStyle(g.style ? std::wstring(g.style) : StringVar(L"TEXTSTYLE", L"Standard"), style)) return RTERROR;

    kelhost::text::TextForm form;
    form.height = g.hasHeight ? g.height : style.fixedHeight > 0 ? style.fixedHeight : RealVar(L"TEXTSIZE", 2.5);
    form.widthFactor = g.hasWidth ? g.width : style.widthFactor;
    form.oblique = g.hasOblique ? g.oblique : style.oblique;
    const int flags = g.hasFlags ? g.flags : style.flags;
    form.backwards = (flags & 2) != 0;
    form.upsideDown = (flags & 4) != 0;

    static thread_local std::u32string shown;
    kelhost::text::DecodeTextString(text, shown);
    kelhost::text::StyleFonts& fonts = kelhost::text::FontsForStyle(style.fontFile, style.bigFontFile);
    const kelhost::text::InkBox box = kelhost::text::MeasureLine(fonts, shown, form);
    pt1[0] = box.minX;
    pt1[1] = box.minY;
    pt1[2] = 0.0;
    pt2[0] = box.maxX;
    pt2[1] = box.maxY;
    pt2[2] = 0.0;
    return RTNORM;
  } catch (...) {
    return RTERROR;
  }
}
