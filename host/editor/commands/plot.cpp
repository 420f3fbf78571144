// PLOT (and -PLOT): the command-line plot, prompt by prompt in the order
// the platform asks, so that scripts written for it work. The devices are
// files: "DWG To PDF.pc3", "PublishToWeb PNG.pc3" and
// "PublishToWeb SVG.pc3". Page setups are not kept: the settings answered
// apply to this plot only.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <cwchar>
#include <string>

#include "arx/acedads.h"
#include "arx/dbapserv.h"
#include "arx/dbdatabase.h"
#include "arx/dbdict.h"
#include "arx/dblayout.h"
#include "db/stub.h"
#include "editor/builtin_commands.h"
#include "kelhost/plot.h"
#include "kelhost/text.h"

namespace kelhost::editor {
namespace {

using plot::Area;
using plot::Format;

struct Device {
  const wchar_t* name;
  Format format;
  const wchar_t* extension;
  const wchar_t* paper;  // the paper a new plot takes
};
constexpr Device kDevices[] = {
    {L"DWG To PDF.pc3", Format::kPdf, L".pdf", L"ISO full bleed A4 (297.00 x 210.00 MM)"},
    {L"PublishToWeb PNG.pc3", Format::kPng, L".png", L"Sun Hi-Res (1600.00 x 1280.00 Pixels)"},
    {L"PublishToWeb SVG.pc3", Format::kSvg, L".svg", L"ISO full bleed A4 (297.00 x 210.00 MM)"},
};
// Images are laid out at this many pixels per inch: their papers are in pixels.
constexpr double kImageDpi = 100.0;
constexpr double kMmPerInch = 25.4;

const wchar_t* const kPapers[] = {
    L"ISO full bleed A0 (1189.00 x 841.00 MM)", L"ISO full bleed A1 (841.00 x 594.00 MM)",
    L"ISO full bleed A2 (594.00 x 420.00 MM)",  L"ISO full bleed A3 (420.00 x 297.00 MM)",
    L"ISO full bleed A4 (297.00 x 210.00 MM)",  L"ISO A0 (1189.00 x 841.00 MM)",
    L"ISO A1 (841.00 x 594.00 MM)",             L"ISO A2 (594.00 x 420.00 MM)",
    L"ISO A3 (420.00 x 297.00 MM)",             L"ISO A4 (297.00 x 210.00 MM)",
};
const wchar_t* const kImagePapers[] = {
    L"VGA (640.00 x 480.00 Pixels)", L"XGA (1024.00 x 768.00 Pixels)", L"Super XGA (1280.00 x 1024.00 Pixels)",
    L"Sun Hi-Res (1600.00 x 1280.00 Pixels)", L"UXGA (1600.00 x 1200.00 Pixels)",
};

std::wstring TextVar(const wchar_t* name) {
  resbuf rb{};
  if (acedGetVar(name, &rb) != RTNORM || rb.restype != RTSTR || !rb.resval.rstring) return L"";
  std::wstring text = rb.resval.rstring;
  std::free(rb.resval.rstring);
  return text;
}

std::wstring Unquoted(std::wstring text) {
  if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"') text = text.substr(1, text.size() - 2);
  return text;
}

const Device* FindDevice(const std::wstring& name) {
  for (const Device& d : kDevices) {
    const std::wstring full = d.name;
    if (EqualNoCase(name, full) || EqualNoCase(name + L".pc3", full)) return &d;
  }
  return nullptr;
}

// Layout names in tab order, "Model" first.
std::vector<std::wstring> LayoutNames(AcDbDatabase* db) {
  std::vector<std::pair<int, std::wstring>> tabs;
  AcDbDictionary* dict = nullptr;
  if (db->getLayoutDictionary(dict, AcDb::kForRead) == Acad::eOk) {
    std::unique_ptr<AcDbDictionaryIterator> it(dict->newIterator());
    for (; it && !it->done(); it->next())
      if (const AcDbLayout* layout = db::PeekAs<AcDbLayout>(it->objectId())) {
        const ACHAR* name = nullptr;
        layout->getLayoutName(name);
        if (name && !EqualNoCase(name, L"Model")) tabs.push_back({layout->getTabOrder(), name});
      }
    dict->close();
  }
  std::sort(tabs.begin(), tabs.end());
  std::vector<std::wstring> names{L"Model"};
  for (auto& t : tabs) names.push_back(t.second);
  return names;
}

// The layout's name as the drawing spells it, or empty.
std::wstring KnownLayout(AcDbDatabase* db, const std::wstring& name) {
  for (const std::wstring& known : LayoutNames(db))
    if (EqualNoCase(known, name)) return known;
  return L"";
}

// A paper in pixels: "Name (W x H Pixels)" or "WxH".
bool PixelPaper(const std::wstring& name, double& w, double& h) {
  const size_t open = name.find(L'(');
  std::wstring sizes = open == std::wstring::npos ? name : name.substr(open + 1);
  wchar_t* end = nullptr;
  w = std::wcstod(sizes.c_str(), &end);
  while (*end == L' ') ++end;
  if (*end != L'x' && *end != L'X') return false;
  h = std::wcstod(end + 1, &end);
  return w >= 1 && h >= 1 && w <= 20000 && h <= 20000;
}

bool AskYes(CommandContext& c, const std::wstring& prompt, bool byDefault) {
  const Answer a = c.askKeyword(prompt, L"Yes No");
  if (a.status == RTNONE) return byDefault;
  return a.text == L"Yes";
}

// "Fit", or plotted units = drawing units as "1:100", "1=100" or a factor.
bool ReadScale(const std::wstring& text, bool& fit, double& scale) {
  if (!text.empty() && EqualNoCase(text, std::wstring(L"Fit").substr(0, text.size()))) {
    fit = true;
    return true;
  }
  const size_t sep = text.find_first_of(L":=");
  wchar_t* end = nullptr;
  const double a = std::wcstod(text.c_str(), &end);
  if (end == text.c_str()) return false;
  double b = 1.0;
  if (sep != std::wstring::npos) {
    if (static_cast<size_t>(end - text.c_str()) != sep) return false;
    const wchar_t* rest = text.c_str() + sep + 1;
    b = std::wcstod(rest, &end);
    if (end == rest) return false;
  }
  if (*end != 0 || !std::isfinite(a) || !std::isfinite(b) || b == 0) return false;
  fit = false;
  scale = a / b;
  return true;
}

struct Job {
  std::wstring layout = L"Model";
  const Device* device = nullptr;
  std::wstring paperName;
  bool inches = false;
  plot::Settings settings;
  std::wstring file;
};

void AskLayout(CommandContext& c, AcDbDatabase* db, Job& job) {
  for (;;) {
    const Answer a = c.askString(L"\nEnter a layout name or [?] <" + job.layout + L">: ", true);
    const std::wstring name = Unquoted(a.text);
    if (name.empty()) return;
    if (name == L"?") {
      for (const std::wstring& n : LayoutNames(db)) c.print(L"\n" + n);
      continue;
    }
    const std::wstring known = KnownLayout(db, name);
    if (!known.empty()) {
      job.layout = known;
      return;
    }
    c.print(L"\nLayout \"" + name + L"\" not found.");
  }
}

void AskDevice(CommandContext& c, Job& job) {
  for (;;) {
    const std::wstring current = job.device ? job.device->name : L"None";
    const Answer a = c.askString(L"\nEnter an output device name or [?] <" + current + L">: ", true);
    const std::wstring name = Unquoted(a.text);
    if (name == L"?") {
      for (const Device& d : kDevices) c.print(std::wstring(L"\n") + d.name);
      continue;
    }
    if (name.empty() && job.device) return;
    if (const Device* d = FindDevice(name)) {
      job.device = d;
      job.paperName = d->paper;
      return;
    }
    c.print(name.empty() ? L"\nNo output device: name one of the devices (? lists them)."
                         : L"\nOutput device \"" + name + L"\" not found.");
  }
}

bool IsImage(const Job& job) { return job.device->format == Format::kPng; }

// The paper's size in millimetres as plot settings take it.
bool SetPaper(Job& job, const std::wstring& name) {
  double w = 0, h = 0;
  if (IsImage(job)) {
    if (!PixelPaper(name, w, h)) return false;
    job.settings.paperWidth = w / kImageDpi * kMmPerInch;
    job.settings.paperHeight = h / kImageDpi * kMmPerInch;
    job.settings.dpi = kImageDpi;
    job.settings.margin = 0;
  } else {
    if (!plot::PaperSize(name, w, h)) return false;
    job.settings.paperWidth = w;
    job.settings.paperHeight = h;
    job.settings.margin = ToUpper(name).find(L"FULL BLEED") != std::wstring::npos ? 0.0 : 5.0;
  }
  job.paperName = name;
  return true;
}

void AskPaper(CommandContext& c, Job& job) {
  for (;;) {
    const Answer a = c.askString(L"\nEnter paper size or [?] <" + job.paperName + L">: ", true);
    std::wstring name = Unquoted(a.text);
    if (name == L"?") {
      if (IsImage(job))
        for (const wchar_t* p : kImagePapers) c.print(std::wstring(L"\n") + p);
      else
        for (const wchar_t* p : kPapers) c.print(std::wstring(L"\n") + p);
      continue;
    }
    if (name.empty()) name = job.paperName;
    if (SetPaper(job, name)) return;
    c.print(L"\nPaper size \"" + name + L"\" not found.");
  }
}

void AskArea(CommandContext& c, Job& job, bool paper) {
  plot::Settings& s = job.settings;
  const Answer a =
      paper ? c.askKeyword(L"\nEnter plot area [Display/Extents/Layout/View/Window] <Layout>: ",
                           L"Display Extents Layout View Window")
            : c.askKeyword(L"\nEnter plot area [Display/Extents/Limits/View/Window] <Display>: ",
                           L"Display Extents Limits View Window");
  const std::wstring k = a.status == RTNONE ? (paper ? L"Layout" : L"Display") : a.text;
  if (k == L"Display") s.area = Area::kDisplay;
  else if (k == L"Extents") s.area = Area::kExtents;
  else if (k == L"Limits") s.area = Area::kLimits;
  else if (k == L"Layout") s.area = Area::kLayout;
  else if (k == L"View") {
    s.area = Area::kView;
    for (;;) {
      const Answer v = c.askString(L"\nEnter view name <>: ", true);
      s.view = Unquoted(v.text);
      if (!s.view.empty()) break;
    }
  } else {
    s.area = Area::kWindow;
    Answer lo = c.askPoint(L"\nEnter lower left corner of window <0.000000,0.000000>: ");
    Answer hi = c.askPoint(L"\nEnter upper right corner of window <0.000000,0.000000>: ");
    s.window[0] = lo.status == RTNORM ? lo.point[0] : 0.0;
    s.window[1] = lo.status == RTNORM ? lo.point[1] : 0.0;
    s.window[2] = hi.status == RTNORM ? hi.point[0] : 0.0;
    s.window[3] = hi.status == RTNORM ? hi.point[1] : 0.0;
  }
}

void AskScale(CommandContext& c, Job& job, bool paper) {
  plot::Settings& s = job.settings;
  const std::wstring units = IsImage(job) ? L"Pixels" : job.inches ? L"Inches" : L"Millimeters";
  for (;;) {
    const Answer a = c.askString(L"\nEnter plot scale (Plotted " + units + L"=Drawing Units) or [Fit] <" +
                                 (paper ? L"1:1" : L"Fit") + L">: ");
    bool fit = !paper;
    double scale = 1.0;
    if (!a.text.empty() && !ReadScale(a.text, fit, scale)) {
      c.print(L"\nRequires a scale (1:100, 1=100 or a number) or Fit.");
      continue;
    }
    if (!fit && !(scale > 0)) {
      c.print(L"\nThe plot scale must be greater than zero.");
      continue;
    }
    s.fit = fit;
    // Settings are in millimetres of paper per drawing unit.
    s.scale = scale * (IsImage(job) ? kMmPerInch / kImageDpi : job.inches ? kMmPerInch : 1.0);
    return;
  }
}

void AskOffset(CommandContext& c, Job& job, bool layoutArea) {
  plot::Settings& s = job.settings;
  for (;;) {
    const Answer a = c.askPoint(L"\nEnter plot offset (x,y) or [Center] <0.00,0.00>: ", L"Center");
    if (a.status == RTKWORD) {
      if (layoutArea) {
        c.print(L"\nA layout plot cannot be centred.");
        continue;
      }
      s.center = true;
      return;
    }
    s.center = false;
    const double unit = IsImage(job) ? kMmPerInch / kImageDpi : job.inches ? kMmPerInch : 1.0;
    s.offset[0] = a.status == RTNORM ? a.point[0] * unit : 0.0;
    s.offset[1] = a.status == RTNORM ? a.point[1] * unit : 0.0;
    return;
  }
}

void AskStyleTable(CommandContext& c, Job& job) {
  for (;;) {
    const Answer a = c.askString(L"\nEnter plot style table name or [?] (enter . for none) <>: ", true);
    const std::wstring name = Unquoted(a.text);
    if (name == L"?") {
      c.print(L"\nacad.ctb\nmonochrome.ctb");
      continue;
    }
    if (name.empty() || name == L"." || EqualNoCase(name, L"acad.ctb") || EqualNoCase(name, L"acad")) {
      job.settings.monochrome = false;
      return;
    }
    if (EqualNoCase(name, L"monochrome.ctb") || EqualNoCase(name, L"monochrome")) {
      job.settings.monochrome = true;
      return;
    }
    c.print(L"\nPlot style table \"" + name + L"\" not found.");
  }
}

std::wstring DefaultFile(const Job& job) {
  std::wstring name = TextVar(L"DWGNAME");
  const size_t dot = name.rfind(L'.');
  if (dot != std::wstring::npos && dot > 0) name.erase(dot);
  return TextVar(L"DWGPREFIX") + name + L"-" + job.layout + job.device->extension;
}

void AskFile(CommandContext& c, Job& job) {
  const std::wstring fallback = DefaultFile(job);
  const Answer a = c.askString(L"\nEnter file name <" + fallback + L">: ", true);
  job.file = Unquoted(a.text);
  if (job.file.empty()) job.file = fallback;
  Format format;
  if (!plot::FormatOfFile(job.file, format)) job.file += job.device->extension;
}

// The paper the layout's page setup names, when the device can use it.
void LayoutPaper(AcDbDatabase* db, Job& job) {
  if (IsImage(job)) return;
  AcDbDictionary* dict = nullptr;
  if (db->getLayoutDictionary(dict, AcDb::kForRead) != Acad::eOk) return;
  AcDbObjectId id;
  const bool has = dict->getAt(job.layout.c_str(), id) == Acad::eOk;
  dict->close();
  const AcDbLayout* layout = has ? db::PeekAs<AcDbLayout>(id) : nullptr;
  if (!layout) return;
  const ACHAR* media = nullptr;
  layout->getCanonicalMediaName(media);
  double w = 0, h = 0;
  if (media && plot::PaperSize(media, w, h)) {
    std::wstring name = media;
    for (wchar_t& ch : name)
      if (ch == L'_') ch = L' ';
    SetPaper(job, name);
  }
}

void RunPlot(CommandContext& c) {
  AcDbDatabase* db = acdbHostApplicationServices()->workingDatabase();
  Job job;
  const bool detailed = AskYes(c, L"\nDetailed plot configuration? [Yes/No] <No>: ", false);
  AskLayout(c, db, job);
  const bool paper = !EqualNoCase(job.layout, L"Model");
  job.settings.layout = job.layout;
  if (!detailed) {
    const Answer setup = c.askString(L"\nEnter a page setup name <>: ", true);
    if (!Unquoted(setup.text).empty()) c.fail(L"\nPage setup \"" + Unquoted(setup.text) + L"\" not found.");
    AskDevice(c, job);
    SetPaper(job, job.paperName);
    if (paper) LayoutPaper(db, job);
    job.settings.area = paper ? Area::kLayout : Area::kExtents;
    job.settings.fit = !paper;
    job.settings.center = !paper;
  } else {
    AskDevice(c, job);
    SetPaper(job, job.paperName);
    if (paper) LayoutPaper(db, job);
    AskPaper(c, job);
    if (!IsImage(job)) {
      const Answer units = c.askKeyword(L"\nEnter paper units [Inches/Millimeters] <Millimeters>: ", L"Inches Millimeters");
      job.inches = units.status == RTKWORD && units.text == L"Inches";
    }
    const Answer way = c.askKeyword(L"\nEnter drawing orientation [Portrait/Landscape] <Landscape>: ", L"Portrait Landscape");
    job.settings.landscape = !(way.status == RTKWORD && way.text == L"Portrait");
    job.settings.upsideDown = AskYes(c, L"\nPlot upside down? [Yes/No] <No>: ", false);
    AskArea(c, job, paper);
    AskScale(c, job, paper);
    AskOffset(c, job, job.settings.area == Area::kLayout);
    if (AskYes(c, L"\nPlot with plot styles? [Yes/No] <Yes>: ", true)) AskStyleTable(c, job);
    job.settings.lineweights = AskYes(c, L"\nPlot with lineweights? [Yes/No] <Yes>: ", true);
    if (paper) {
      AskYes(c, L"\nScale lineweights with plot scale? [Yes/No] <No>: ", false);
      AskYes(c, L"\nPlot paper space first? [Yes/No] <No>: ", false);
      AskYes(c, L"\nHide paperspace objects? [Yes/No] <No>: ", false);
    } else {
      // Plots are wireframe, whatever is asked.
      c.askString(L"\nEnter shade plot setting [As displayed/legacy Wireframe/legacy Hidden/Visual styles/Rendered] "
                  L"<As displayed>: ",
                  true);
    }
  }
  AskFile(c, job);
  AskYes(c, L"\nSave changes to page setup [Yes/No]? <N> ", false);
  if (!AskYes(c, L"\nProceed with plot [Yes/No] <Y>: ", true)) return;
  std::wstring error;
  if (!plot::PlotDrawing(db, job.settings, job.file, error)) c.fail(L"\n" + error);
}

}  // namespace

KELHOST_BUILTIN_COMMAND(Plot, {L"PLOT", RunPlot, /*hasDialog*/ true, /*transparent*/ false});

}  // namespace kelhost::editor
