// Multiline text (MTEXT): formatted contents placed in a plane by its
// location, direction and attachment point.
#pragma once

#include <string>

#include "dbents.h"

namespace AcDb {
enum LineSpacingStyle { kAtLeast = 1, kExactly = 2 };
}  // namespace AcDb

class AcDbMText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMText);
  enum AttachmentPoint {
    kTopLeft = 1, kTopCenter = 2, kTopRight = 3,
    kMiddleLeft = 4, kMiddleCenter = 5, kMiddleRight = 6,
    kBottomLeft = 7, kBottomCenter = 8, kBottomRight = 9,
  };
  enum FlowDirection { kLtoR = 1, kRtoL = 2, kTtoB = 3, kBtoT = 4, kByStyle = 5 };

  AcDbMText();
  ~AcDbMText() override;

  AcGePoint3d location() const { return mLocation; }
  Acad::ErrorStatus setLocation(const AcGePoint3d& point);
  AcGeVector3d normal() const { return mNormal; }
  // The direction keeps its angle in the new plane.
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  // The text's X axis in WCS. A new one is projected into the plane of the
  // normal (eInvalidInput when it is zero or along the normal).
  AcGeVector3d direction() const { return mDirection; }
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  // The direction as an angle in the plane, from the X axis of the
  // entity's coordinate system.
  double rotation() const;
  Acad::ErrorStatus setRotation(double angle);

  // The reference rectangle's width: 0 for no wrapping.
  double width() const;
  Acad::ErrorStatus setWidth(double width);
  // The rectangle's defined height (0 when not set).
  double height() const;
  Acad::ErrorStatus setHeight(double height);
  // The text height: the drawing's TEXTSIZE until one is set.
  double textHeight() const;
  Acad::ErrorStatus setTextHeight(double height);
  AttachmentPoint attachment() const { return static_cast<AttachmentPoint>(mAttachment); }
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
  FlowDirection flowDirection() const { return static_cast<FlowDirection>(mFlow); }
  Acad::ErrorStatus setFlowDirection(FlowDirection direction);
  AcDbObjectId textStyle() const { return mStyle; }
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  AcDb::LineSpacingStyle lineSpacingStyle() const { return static_cast<AcDb::LineSpacingStyle>(mSpacingStyle); }
  Acad::ErrorStatus setLineSpacingStyle(AcDb::LineSpacingStyle style);
  // A factor of the standard spacing, from 0.25 to 4.
  double lineSpacingFactor() const { return mSpacingFactor; }
  Acad::ErrorStatus setLineSpacingFactor(double factor);

  // The contents with their formatting codes, as a new string the caller
  // releases (acutDelString / free).
  ACHAR* contents() const;
  // Sets the contents; the number of characters taken (0 when the text is
  // not open for write or contents is null).
  int setContents(const ACHAR* contents);
  // The contents as plain text: formatting codes removed, paragraph
  // breaks as newlines, %%c %%d %%p as their symbols. A new string the
  // caller releases.
  ACHAR* text() const;

  // Estimates of the size the plain text takes (the host has no fonts): a
  // wide (East Asian) character is as wide as the text height, another 0.7
  // of it, times the style's width factor; lines lie 5/3 of the height
  // apart times the spacing factor, and wrap to the width when it is set.
  double actualHeight() const;
  double actualWidth() const;
  // The corners of the text's box: top left, top right, bottom left,
  // bottom right (WCS).
  Acad::ErrorStatus getBoundingPoints(AcGePoint3dArray& points) const;

  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
  // Moves, rotates and scales the text (uniform scaling only). A mirrored
  // text stays readable: its location is mirrored and its direction is
  // turned round when the mirrored one would run backwards (right to left
  // in its plane), as the platform keeps multiline text unmirrored.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform) override;
  // One single-line text per line of the plain text, placed and aligned as
  // the line is (inline formatting is not carried over).
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entitySet) const override;

 protected:
  void dxfFields(kelhost::dxf::GroupFiler& filer) override;

 private:
  // Drops the measured sizes (42, 43) a list or file gave once they no
  // longer hold.
  void forgetMeasuredSize();

  AcGePoint3d mLocation;
  AcGeVector3d mNormal = AcGeVector3d::kZAxis;
  AcGeVector3d mDirection = AcGeVector3d::kXAxis;
  std::wstring mContents;
  AcDbObjectId mStyle;
  // NaN marks a group a list or file did not give (it is then not written).
  double mTextHeight = 0.0, mWidth = 0.0, mDefinedHeight;
  double mSpacingFactor = 1.0;
  short mAttachment = kTopLeft, mFlow = kLtoR, mSpacingStyle = AcDb::kAtLeast;
  bool mAngleForm = false;  // the direction came as a rotation angle (50), and is written so
  // Groups of the subclass the host does not model (background fill and
  // its colours, measured sizes...), kept as they came.
  resbuf* mExtras = nullptr;
};
