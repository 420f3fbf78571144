// CCadView: the current view of the drawing editor changed for the length
// of one operation (to show a region while the user picks in it, say) and
// put back when the object goes out of scope. The object is itself a view
// record: the view captured at construction. Static operations read the
// current view into a record and set it from a record, a box or two
// corners.
#pragma once

#include "kelcad/platform.h"

class CCadView : public AcDbViewTableRecord {
 public:
  // Each constructor captures the current view, then shows the new one as
  // SetCurrentView does with mode and vp.
  CCadView(AcDbViewTableRecord& view, int mode, AcDbViewport* vp);
  CCadView(const AcDbExtents& extents, int mode, AcDbViewport* vp);
  CCadView(const AcGePoint3d& corner1, const AcGePoint3d& corner2, int mode, AcDbViewport* vp);
  // Copies the captured view, the mode and the viewport; captures nothing.
  CCadView(const CCadView& other);
  CCadView& operator=(const CCadView& other);
  // Shows the captured view again, whatever happened meanwhile.
  ~CCadView() override;

  // The current view from the view variables: centre (VIEWCTR) and screen
  // corners (VSMIN, VSMAX) in display coordinates, target (TARGET) and
  // direction (VIEWDIR) in world coordinates, height (VIEWSIZE), width
  // from the screen's aspect ratio, lens, clipping and view mode.
  static void GetCurrentView(AcDbViewTableRecord& view);
  // Shows view (acedSetCurrentView with vp). With mode 0 a view that lies
  // wholly inside the current one changes nothing. 1 when shown or not
  // needed, 0 when the editor refused it.
  static int SetCurrentView(AcDbViewTableRecord& view, int mode, AcDbViewport* vp);
  // The extents' box seen from above.
  static int SetCurrentView(const AcDbExtents& extents, int mode, AcDbViewport* vp);
  // The box of two corners: centred between them, as wide and high as
  // they are apart (a view of no size is handed on as it is).
  static int SetCurrentView(const AcGePoint2d& corner1, const AcGePoint2d& corner2, int mode, AcDbViewport* vp);
  static int SetCurrentView(const AcGePoint3d& corner1, const AcGePoint3d& corner2, int mode, AcDbViewport* vp);

 protected:
  int m_mode;                  // handed to every SetCurrentView
  AcDbViewport* m_pViewport;  // the viewport shown in; not owned
};
