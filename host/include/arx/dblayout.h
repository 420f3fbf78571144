// Page setups and layouts. A layout (the "Model" tab, "Layout1", ...) is
// an entry of the ACAD_LAYOUT dictionary that holds one block (model space,
// a paper space); the block points back to it. Both carry plot settings.
#pragma once

#include <string>

#include "dbmain.h"

class AcDbPlotSettings : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlotSettings);
  enum PlotPaperUnits { kInches = 0, kMillimeters = 1, kPixels = 2 };
  enum PlotRotation { k0degrees = 0, k90degrees = 1, k180degrees = 2, k270degrees = 3 };
  enum PlotType { kDisplay = 0, kExtents = 1, kLimits = 2, kView = 3, kWindow = 4, kLayout = 5 };

  AcDbPlotSettings() = default;
  // The settings of the model tab (true) or of a paper space layout.
  explicit AcDbPlotSettings(bool modelType);

  // The page setup's name.
  Acad::ErrorStatus getPlotSettingsName(const ACHAR*& name) const;
  Acad::ErrorStatus setPlotSettingsName(const ACHAR* name);
  // The printer or plot configuration file, the paper (media) name and
  // the plot style table.
  Acad::ErrorStatus getPlotCfgName(const ACHAR*& name) const;
  Acad::ErrorStatus getCanonicalMediaName(const ACHAR*& name) const;
  Acad::ErrorStatus getCurrentStyleSheet(const ACHAR*& name) const;
  // Paper size, unprintable margins and plot origin, in millimetres.
  void getPlotPaperSize(double& width, double& height) const;
  void getPlotPaperMargins(double& left, double& bottom, double& right, double& top) const;
  void getPlotOrigin(double& x, double& y) const;
  void getCustomPrintScale(double& numerator, double& denominator) const;
  PlotPaperUnits plotPaperUnits() const { return static_cast<PlotPaperUnits>(mPaperUnits); }
  PlotRotation plotRotation() const { return static_cast<PlotRotation>(mRotation); }
  PlotType plotType() const { return static_cast<PlotType>(mPlotType); }
  bool plotCentered() const { return (mPlotFlags & 4) != 0; }
  bool useStandardScale() const { return (mPlotFlags & 16) != 0; }
  bool modelType() const { return (mPlotFlags & 1024) != 0; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mPageSetup, mPlotCfg = L"none_device", mPaper = L"ISO_A3_(420.00_x_297.00_MM)", mPlotView,
                           mStyleSheet;
  double mMargins[4] = {7.5, 20.0, 7.5, 20.0};  // left, bottom, right, top
  double mPaperWidth = 420.0, mPaperHeight = 297.0;
  AcGePoint2d mOrigin, mWindowMin, mWindowMax, mImageOrigin;
  double mScaleNumerator = 1.0, mScaleDenominator = 1.0, mStdScaleFactor = 1.0;
  // 70: viewport borders 1, show styles 2, centred 4, hidden 8, standard
  // scale 16, plot styles 32, scale lineweights 64, print lineweights 128,
  // viewports first 512, model 1024, ...
  short mPlotFlags = 688;
  short mPaperUnits = kMillimeters, mRotation = k0degrees, mPlotType = kLayout, mStdScale = 16;
  short mShadeMode = 0, mShadeResolution = 2, mShadeDpi = 300;
  AcDbObjectId mShadePlot;
};

class AcDbLayout : public AcDbPlotSettings {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayout);
  AcDbLayout() = default;

  Acad::ErrorStatus getLayoutName(const ACHAR*& name) const;
  // A new string the caller releases.
  Acad::ErrorStatus getLayoutName(ACHAR*& name) const;
  // eInvalidInput for an empty name. The ACAD_LAYOUT entry keeps its key.
  Acad::ErrorStatus setLayoutName(const ACHAR* name);
  // The block the layout holds (model space, a paper space).
  AcDbObjectId getBlockTableRecordId() const { return mBlock; }
  // eInvalidInput for an id that is not a block table record.
  Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId id);
  // Position among the tabs; "Model" comes first whatever its number.
  int getTabOrder() const { return mTabOrder; }
  void setTabOrder(int order);
  void getLimits(AcGePoint2d& min, AcGePoint2d& max) const;
  void getExtents(AcGePoint3d& min, AcGePoint3d& max) const;
  AcGePoint3d insertionBase() const { return mInsertionBase; }

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  std::wstring mName = L"Layout1";
  short mFlags = 1;  // PSLTSCALE 1, LIMCHECK 2
  short mTabOrder = 1;
  AcGePoint2d mLimMin{0.0, 0.0}, mLimMax{420.0, 297.0};
  AcGePoint3d mInsertionBase, mExtMin{1e20, 1e20, 1e20}, mExtMax{-1e20, -1e20, -1e20};
  double mElevation = 0.0;
  AcGePoint3d mUcsOrigin;
  AcGeVector3d mUcsX = AcGeVector3d::kXAxis, mUcsY = AcGeVector3d::kYAxis;
  short mUcsType = 1;  // orthographic: top
  AcDbObjectId mBlock, mViewport, mUcs, mBaseUcs;
};
