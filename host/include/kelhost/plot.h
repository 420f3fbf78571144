// Plotting a drawing to a PDF, SVG or PNG file: model space (its extents,
// limits, the current display, a window or a named view) or a paper space
// layout with its viewports, on a sheet of paper at a scale that fits or a
// given one, in colour or monochrome.
#pragma once

#include <string>

class AcDbDatabase;

namespace kelhost::plot {

enum class Format { kPdf, kSvg, kPng };
enum class Area { kDisplay, kExtents, kLimits, kLayout, kView, kWindow };

struct Settings {
  std::wstring layout = L"Model";  // "Model" or a paper space layout's name
  Area area = Area::kExtents;      // kLayout only for a paper space layout
  double window[4] = {0, 0, 0, 0};  // kWindow: two corners x1, y1, x2, y2
  std::wstring view;                // kView: a named view

  // The sheet in millimetres as the paper is named (long side first for
  // ISO sizes); landscape puts the long side across.
  double paperWidth = 297.0, paperHeight = 210.0;
  bool landscape = true;
  bool upsideDown = false;
  double margin = 5.0;  // unprintable border on each side, millimetres

  bool fit = true;
  double scale = 1.0;  // plotted millimetres per drawing unit when not fit
  bool center = true;
  double offset[2] = {0, 0};  // of the area's lower left from the printable area's, mm

  bool monochrome = false;  // every colour plots black (monochrome.ctb)
  bool lineweights = true;
  double dpi = 150.0;  // PNG only
};

// The sizes a paper name stands for: "A0" to "A4", "ISO A3", the platform's
// media names ("ISO full bleed A3 (420.00 x 297.00 MM)",
// "ISO_A3_(420.00_x_297.00_MM)") and custom "WIDTHxHEIGHT" in millimetres.
// The width is the first number named. False for an unknown name.
bool PaperSize(const std::wstring& name, double& width, double& height);

// The output format a file name's extension asks for; false for another.
bool FormatOfFile(const std::wstring& path, Format& format);

// Plots the drawing to path (written through a temporary file and a
// rename: nothing is left behind on failure). False with the reason in
// error. Entities the plotter cannot draw (kept as read) are skipped with
// one note on standard error.
bool PlotDrawing(AcDbDatabase* db, const Settings& settings, const std::wstring& path, std::wstring& error);

}  // namespace kelhost::plot
