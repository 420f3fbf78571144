#include "kelcad/api/interactive_drawing.h"

#include "kelcad/api/sysvar_access.h"

namespace KEL {

bool InsertBlock(CString name, int regenMode) {
  SetCADVar(L"regenmode", regenMode);
  const CString drawing = name + L".dwg";
  double scale = 1.0;
  ads_point point;
  while (acedGetPoint(nullptr, L"\n回车返回 / <请选取块插入点>:", point) == RTNORM) {
    CString prompt;
    prompt.Format(L"\n输入块比例<%.2f>:", scale);
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    double given = 0.0;
    const int answer = acedGetReal(prompt, &given);
    if (answer == RTNORM)
      scale = given;
    else if (answer != RTNONE)
      break;  // cancelled, or the input ended
    acutPrintf(L"\n输入块旋转角度<0.0>:");
    acedCommandS(RTSTR, L".insert", RTSTR, drawing.GetString(), RT3DPOINT, point, RTREAL, scale, RTSTR, L"", RTSTR,
                 L"\\", RTNONE);
  }
  SetCADVar(L"regenmode", 1);
  return true;
}

}  // namespace KEL
