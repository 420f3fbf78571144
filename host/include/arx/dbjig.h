// AcEdJig: an entity dragged into shape. drag() asks for a point, distance
// or angle through the derived class's sampler(), lets update() bring the
// entity up to date with it and shows the entity (its worldDraw); append()
// then adds the entity to the current space.
//
// In the headless host every answer the user gives at the drag prompt (a
// line of the input, a script's item, a value of a command call) is one
// sample and the final one: a point, distance or angle ends the drag with
// kNormal (kNormal too when the sampler says kNoChange); Enter gives kNull
// when kNullResponseAccepted is set and is refused otherwise; a keyword of
// the list gives kKW1 and on; other text kOther with kAcceptOtherInputString;
// cancel, or the end of the input, kCancel.
#pragma once

#include "acge.h"
#include "acrx.h"
#include "dbid.h"

class AcDbEntity;

// How the original and the dragged images of an entity look while
// dragging (the headless host shows neither).
class AcEdDragStyle {
 public:
  enum StyleType { kNone = 0, kHide, kTransparent25, kTransparent75, kDeletedEffect, kHighlight, kNotSet };
  AcEdDragStyle() = default;
  AcEdDragStyle(StyleType styleTypeForOriginal, StyleType styleTypeForDragged)
      : mOriginal(styleTypeForOriginal), mDragged(styleTypeForDragged) {}
  StyleType styleTypeForOriginal() const { return mOriginal; }
  StyleType styleTypeForDragged() const { return mDragged; }
  Acad::ErrorStatus setStyleTypeForOriginal(StyleType t) {
    mOriginal = t;
    return Acad::eOk;
  }
  Acad::ErrorStatus setStyleTypeForDragged(StyleType t) {
    mDragged = t;
    return Acad::eOk;
  }

 private:
  StyleType mOriginal = kNone;
  StyleType mDragged = kNone;
};

class AcEdJig : public AcRxObject {
 public:
  enum UserInputControls {
    kGovernedByOrthoMode = 0x000001,
    kNullResponseAccepted = 0x000002,
    kDontEchoCancelForCtrlC = 0x000004,
    kDontUpdateLastPoint = 0x000008,
    kNoDwgLimitsChecking = 0x000010,
    kNoZeroResponseAccepted = 0x000020,
    kNoNegativeResponseAccepted = 0x000040,
    kAccept3dCoordinates = 0x000080,
    kAcceptMouseUpAsPoint = 0x000100,
    kAnyBlankTerminatesInput = 0x000200,
    kInitialBlankTerminatesInput = 0x000400,
    kAcceptOtherInputString = 0x000800,
    kGovernedByUCSDetect = 0x001000,
    kNoZDirectionOrtho = 0x002000,
    kImpliedFaceForUCSChange = 0x004000,
    kUseBasePointElevation = 0x008000,
    kDisableDirectDistanceInput = 0x010000,
  };

  enum DragStatus {
    kModeless = -17,
    kNoChange = -6,
    kCancel = -4,
    kOther = -3,
    kNull = -1,
    kNormal = 0,
    kKW1,
    kKW2,
    kKW3,
    kKW4,
    kKW5,
    kKW6,
    kKW7,
    kKW8,
    kKW9,
  };

  enum CursorType {
    kNoSpecialCursor = -1,
    kCrosshair = 0,
    kRectCursor,
    kRubberBand,
    kNotRotated,
    kTargetBox,
    kRotatedCrosshair,
    kCrosshairNoRotate,
    kInvisible,
    kEntitySelect,
    kParallelogram,
    kEntitySelectNoPersp,
    kPkfirstOrGrips,
    kCrosshairDashed,
  };

  AcEdJig();
  ~AcEdJig() override;
  AcEdJig(const AcEdJig&) = delete;
  AcEdJig& operator=(const AcEdJig&) = delete;

  DragStatus drag();
  DragStatus drag(const AcEdDragStyle& style);
  virtual DragStatus sampler();
  virtual Adesk::Boolean update();
  // Adds entity() to the current space of the working database and closes
  // it; the database owns it then. The null id when it could not.
  AcDbObjectId append();

  const ACHAR* keywordList();
  void setKeywordList(const ACHAR* keywords);
  const ACHAR* dispPrompt();
  // A printf-style format (%s takes a wide string).
  void setDispPrompt(const ACHAR* format, ...);

  // Called from sampler(): the value the user gives, in WCS. The base
  // point draws the rubber band and is where a distance or an angle is
  // measured from.
  DragStatus acquireAngle(double& angle);
  DragStatus acquireAngle(double& angle, const AcGePoint3d& basePoint);
  DragStatus acquireDist(double& distance);
  DragStatus acquireDist(double& distance, const AcGePoint3d& basePoint);
  DragStatus acquirePoint(AcGePoint3d& point);
  DragStatus acquirePoint(AcGePoint3d& point, const AcGePoint3d& basePoint);

  CursorType specialCursorType();
  void setSpecialCursorType(CursorType type);
  UserInputControls userInputControls();
  void setUserInputControls(UserInputControls controls);

  // The entity being dragged (the derived class's); none by default.
  virtual AcDbEntity* entity() const;

 private:
  struct Impl;
  Impl* mImpl;
};
