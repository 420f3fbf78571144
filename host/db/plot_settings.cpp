// Page setups (PLOTSETTINGS), the plot settings part of every layout.
#include "arx/dblayout.h"
#include "db/rx_define.h"
#include "db/setters.h"
#include "dxf/group_filer.h"

using kelhost::dxf::Presence;

KELHOST_RX_DEFINE(AcDbPlotSettings, AcDbObject, L"PLOTSETTINGS")

AcDbPlotSettings::AcDbPlotSettings(bool modelType) {
  if (modelType) {
    mPlotFlags = static_cast<short>(mPlotFlags | 1024);
    mPlotType = kExtents;
  }
}

Acad::ErrorStatus AcDbPlotSettings::getPlotSettingsName(const ACHAR*& name) const {
  name = mPageSetup.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPlotSettings::setPlotSettingsName(const ACHAR* name) {
  if (!name) return Acad::eInvalidInput;
  KELHOST_SET(mPageSetup, name);
}
Acad::ErrorStatus AcDbPlotSettings::getPlotCfgName(const ACHAR*& name) const {
  name = mPlotCfg.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPlotSettings::getCanonicalMediaName(const ACHAR*& name) const {
  name = mPaper.c_str();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbPlotSettings::getCurrentStyleSheet(const ACHAR*& name) const {
  name = mStyleSheet.c_str();
  return Acad::eOk;
}
void AcDbPlotSettings::getPlotPaperSize(double& width, double& height) const {
  width = mPaperWidth;
  height = mPaperHeight;
}
void AcDbPlotSettings::getPlotPaperMargins(double& left, double& bottom, double& right, double& top) const {
  left = mMargins[0];
  bottom = mMargins[1];
  right = mMargins[2];
  top = mMargins[3];
}
void AcDbPlotSettings::getPlotOrigin(double& x, double& y) const {
  x = mOrigin.x;
  y = mOrigin.y;
}
void AcDbPlotSettings::getCustomPrintScale(double& numerator, double& denominator) const {
  numerator = mScaleNumerator;
  denominator = mScaleDenominator;
}

// The groups in the order the DXF reference lists them. Pairs of reals
// that files hold under two codes (46/47, 48/49, 140/141, 148/149) are
// read and written one code at a time.
void AcDbPlotSettings::dxfFields(kelhost::dxf::GroupFiler& f) {
  f.subclass(L"AcDbPlotSettings");
  f.text(1, mPageSetup, L"", Presence::kAlways);
  f.text(2, mPlotCfg, L"none_device", Presence::kAlways);
  f.text(4, mPaper, L"", Presence::kAlways);
  f.text(6, mPlotView, L"", Presence::kAlways);
  for (int i = 0; i < 4; ++i) f.real(40 + i, mMargins[i], 0.0, Presence::kAlways);
  f.real(44, mPaperWidth, 0.0, Presence::kAlways);
  f.real(45, mPaperHeight, 0.0, Presence::kAlways);
  f.real(46, mOrigin.x, 0.0, Presence::kAlways);
  f.real(47, mOrigin.y, 0.0, Presence::kAlways);
  f.real(48, mWindowMin.x, 0.0, Presence::kAlways);
  f.real(49, mWindowMin.y, 0.0, Presence::kAlways);
  f.real(140, mWindowMax.x, 0.0, Presence::kAlways);
  f.real(141, mWindowMax.y, 0.0, Presence::kAlways);
  f.real(142, mScaleNumerator, 1.0, Presence::kAlways);
  f.real(143, mScaleDenominator, 1.0, Presence::kAlways);
  f.int16(70, mPlotFlags, 688, Presence::kAlways);
  f.int16(72, mPaperUnits, kMillimeters, Presence::kAlways);
  f.int16(73, mRotation, k0degrees, Presence::kAlways);
  f.int16(74, mPlotType, kLayout, Presence::kAlways);
  f.text(7, mStyleSheet, L"", Presence::kAlways);
  f.int16(75, mStdScale, 16, Presence::kAlways);
  f.int16(76, mShadeMode, 0, Presence::kAlways);
  f.int16(77, mShadeResolution, 2, Presence::kAlways);
  f.int16(78, mShadeDpi, 300, Presence::kAlways);
  f.real(147, mStdScaleFactor, 1.0, Presence::kAlways);
  f.real(148, mImageOrigin.x, 0.0, Presence::kAlways);
  f.real(149, mImageOrigin.y, 0.0, Presence::kAlways);
  f.id(333, mShadePlot, Presence::kUnlessDefault);
  if (f.reading()) {
    if (mPaperUnits < kInches || mPaperUnits > kPixels) f.fail(L"bad plot paper units in group 72");
    if (mRotation < k0degrees || mRotation > k270degrees) f.fail(L"bad plot rotation in group 73");
    if (mPlotType < kDisplay || mPlotType > kLayout) f.fail(L"bad plot type in group 74");
  }
}
