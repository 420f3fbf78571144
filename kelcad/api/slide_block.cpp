#include "kelcad/api/interactive_drawing.h"
#include "kelcad/api/undo_groups.h"

namespace KEL {

bool CreateSlide(CString base) {
  ads_point basePoint, first, second;
  if (acedGetPoint(nullptr, L"\n选块插入点 / 回车不做:", basePoint) != RTNORM) return false;
  acutPrintf(L"\n请窗选要做块的实体(整体在内):");
  if (acedGetPoint(nullptr, L"\n窗口第一点 / 回车不做:", first) != RTNORM) return false;
  if (acedGetCorner(first, L"\n窗口第二点 / 回车不做:", second) != RTNORM) return false;
  ads_name selection;
  if (acedSSGet(L"W", first, second, nullptr, selection) != RTNORM) return false;

  UndoMGS();
  acedCommandS(RTSTR, L"zoom", RTSTR, L"w", RT3DPOINT, first, RT3DPOINT, second, RTNONE);
  const CString slide = base + L".sld";
  acedCommandS(RTSTR, L"mslide", RTSTR, slide.GetString(), RTNONE);
  acedCommandS(RTSTR, L"zoom", RTSTR, L"p", RTNONE);

  const CString drawing = base + L".dwg";
  ACHAR found[260];
  if (acedFindFile(drawing, found, 260) == RTNORM)
    acedCommandS(RTSTR, L"wblock", RTSTR, drawing.GetString(), RTSTR, L"Y", RTSTR, L"", RT3DPOINT, basePoint, RTPICKS,
                 selection, RTSTR, L"", RTNONE);
  else
    acedCommandS(RTSTR, L"wblock", RTSTR, drawing.GetString(), RTSTR, L"", RT3DPOINT, basePoint, RTPICKS, selection,
                 RTSTR, L"", RTNONE);
  UndoMGE();
  acedSSFree(selection);
  return true;
}

}  // namespace KEL
