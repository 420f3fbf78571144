// AcGiDrawable: what the graphics system draws. A drawable gives its
// properties through setAttributes and its geometry through worldDraw;
// classes override the protected sub* functions, the public ones call them.
#pragma once

#include "acrx.h"
#include "dbid.h"

class AcGiDrawableTraits;
class AcGiWorldDraw;
class AcGiViewportDraw;

class AcGiDrawable : public AcRxObject {
 public:
  // What setAttributes reports about the drawable.
  enum SetAttributesFlags {
    kDrawableNone = 0,
    kDrawableIsAnEntity = 1,
    kDrawableUsesNesting = 2,
    kDrawableIsCompoundObject = 4,
    kDrawableViewIndependentViewportDraw = 8,
    kDrawableIsInvisible = 16,
    kDrawableHasAttributes = 32,
    kDrawableRegenTypeDependantGeometry = 64,
  };

  Adesk::UInt32 setAttributes(AcGiDrawableTraits* traits);
  // True when the drawing is complete; false asks for viewportDraw.
  Adesk::Boolean worldDraw(AcGiWorldDraw* wd);
  void viewportDraw(AcGiViewportDraw* vd);

  virtual Adesk::Boolean isPersistent() const = 0;
  virtual AcDbObjectId id() const = 0;

 protected:
  virtual Adesk::UInt32 subSetAttributes(AcGiDrawableTraits* traits) = 0;
  virtual Adesk::Boolean subWorldDraw(AcGiWorldDraw* wd) = 0;
  virtual void subViewportDraw(AcGiViewportDraw* vd) = 0;
};
