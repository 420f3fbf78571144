// The library's own help: the fixed listing printed by "kel_help" and the
// message box of "kelhtmlhelp".
#include "kelcad/entry/lisp_handlers.h"
#include "kelcad/platform.h"

namespace KEL {
namespace Lisp {

namespace {

// The listing is fixed text the family's users know; it is not derived
// from the function table and does not match it name for name.
const wchar_t* const kListedFunctions[] = {
    L"KEL_AtomSort();", L"KEL_BreakTextBKLine();", L"KEL_ChangeTextHeight();",
    L"KEL_ClearUNDO();", L"KEL_DelIniItem();", L"KEL_EntIsType();", L"KEL_EntMakeARC();",
    L"KEL_EntMakeCircle();", L"KEL_EntMakeLine();", L"KEL_EntMakeNUT();",
    L"KEL_EntMakePLine();", L"KEL_EntMakePoint();", L"KEL_EntMakeText();", L"KEL_FixLenStr();",
    L"KEL_GCINIFilePath();", L"KEL_GetARCVertex();", L"KEL_GetBZXSW();", L"KEL_GetCKDDW();",
    L"KEL_GetDate();", L"KEL_GetDoubleEQ();", L"KEL_GetEntLastSS();", L"KEL_GetGCINIItem();",
    L"KEL_GetRNXPart();", L"KEL_GetInstallDir();", L"KEL_GetLocalDir();", L"KEL_GetPLVertex();",
    L"KEL_GetPMPt();", L"KEL_GetPickBoxWidth();", L"KEL_GetPointEQ();", L"KEL_GetSSRect();",
    L"KEL_GetScreenLBRT();", L"KEL_GetSoftPath();", L"KEL_GetSoftUserPath();",
    L"KEL_GetSysINIItem();", L"KEL_GetTextHigh();", L"KEL_GetTextRect();",
    L"KEL_GetTextWidthFactor();", L"KEL_GetUserINIItem();", L"KEL_GetVectorEQ();",
    L"KEL_GetWorkDir();", L"KEL_HELP();", L"KEL_IsDoubleEQ();", L"KEL_IsPoint2dEQ();",
    L"KEL_IsPointEQ();", L"KEL_IsPtInRgn();", L"KEL_IsPtInView();", L"KEL_IsZero();",
    L"KEL_KZSJXZ();", L"KEL_LinePLineInt();", L"KEL_LinePMInt();", L"KEL_Lst2Str();",
    L"KEL_MCS2WCS();", L"KEL_MeasureSPLine();", L"KEL_ModiLine();", L"KEL_PTBArea();",
    L"KEL_PtPMDist();", L"KEL_QQ10xx();", L"KEL_RV();", L"KEL_ReadIni();", L"KEL_SSRedraw();",
    L"KEL_SV();", L"KEL_SelSingleEnt();", L"KEL_Set0();", L"KEL_Set1();", L"KEL_SetBZXSW();",
    L"KEL_SetDoubleEQ();", L"KEL_SetEntColorIndex();", L"KEL_SetGCINI();",
    L"KEL_SetGCINIItem();", L"KEL_SetGCIniPath();", L"KEL_SetPointEQ();", L"KEL_SetSysINI();",
    L"KEL_SetSysINIItem();", L"KEL_SetTextHigh();", L"KEL_SetUserINI();",
    L"KEL_SetUserINIItem();", L"KEL_SetVectorEQ();", L"KEL_SoftInfo();", L"KEL_SortPtE();",
    L"KEL_Str2Lst();", L"KEL_SysINIFilePath();", L"KEL_UndoB();", L"KEL_UndoM();",
    L"KEL_UserINIFilePath();", L"KEL_Waiting();", L"KEL_WriteIni();", L"KEL_delfile();",
    L"KEL_js_f_max();", L"KEL_mkins();", L"KEL_mktop();", L"KEL_GetLAMarkPoint",
    L"KEL_GetTextWidthHigh", L"GET1PT();", L"GETLAY();", L"GETMID();", L"GET_DD();",
    L"MK3DM();", L"ZM2PT();", L"Z_P();", L"appft();", L"beep();", L"del_ln();", L"getlbg();",
    L"if_lay();", L"if_lx();", L"linecd();", L"mkins();", L"mklinx();", L"pan2v();",
    L"pt_d_px();", L"pxft();", L"set3d();", L"sm();", L"KEL_CreateAlignedDim();",
    L"KEL_CreateMAlignedDim();", L"KEL_CreateMBAlignedDim();", L"KEL_CreateRotatedDim();",
    L"KEL_CreateMRotatedDim();", L"KEL_CreateMBRotatedDim();", L"KEL_SetEntDimStyle();",
    L"KEL_SetEntDimText();", L"KEL_SetDimEntTxtStyle();", L"KEL_SetDimEntTxtHigh();",
    L"KEL_ManyDimEntToOne();", L"KEL_OneDimEntToMany();",
};

}  // namespace

int KEL_Help() {
  acedRetVoid();
  acutPrintf(L"\n KELCAD LSP 函数列表");
  acutPrintf(L"\n  命令:");
  acutPrintf(L"\n\t\t%-11s", L"ZZ");
  acutPrintf(L"\n\t\t%-11s", L"KEL_BPOLY");
  acutPrintf(L"\n\t\t%s", L"KELPKelHtmlHelp");
  acutPrintf(L"\n  函数：");
  for (const wchar_t* entry : kListedFunctions) acutPrintf(L"\n          %-28s", entry);
  acutPrintf(L"\n");
  acutPrintf(L"\n  ========== 完了 ==========");
  acutPrintf(L"\n ");
  return RTNORM;
}

int KelHtmlHelp() {
  acedGetArgs();  // arguments are accepted and ignored
  AfxMessageBox(L"KELPKelHtmlHelp");
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
