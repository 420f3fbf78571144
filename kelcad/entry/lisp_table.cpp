// The LISP function table, its registration per drawing and the dispatch
// of calls by function code.
#include "kelcad/entry/lisp_table.h"

#include "kelcad/entry/lisp_handlers.h"
#include "kelcad/entry/not_available.h"
#include "kelcad/lisp/cadvar_handlers.h"
#include "kelcad/lisp/dimension_handlers.h"
#include "kelcad/lisp/entity_handlers.h"
#include "kelcad/lisp/file_handlers.h"
#include "kelcad/lisp/geometry_handlers.h"
#include "kelcad/lisp/ini_handlers.h"
#include "kelcad/lisp/query_handlers.h"
#include "kelcad/lisp/legacy_handlers.h"
#include "kelcad/lisp/xdata_handlers.h"
#include "kelcad/platform.h"

namespace KEL {

namespace {

using namespace Lisp;

// Functions that this build does not have yet answer through one handler.
constexpr LispHandler kNotBuilt = LispNotAvailable;

// Row i carries code i + 1. "mkins"/"kel_mkins" and
// "kel_getsoftpath"/"kel_getinstalldir" share their handlers.
const LispFunctionRow kTable[kLispFunctionCount] = {
    {L"kel_findfile", KEL_FindFile, 0},          // 1
    {L"kel_delfile", KEL_DelFile, 0},            // 2
    {L"kel_entmakeline", KEL_EntMakeLine, 0},    // 3
    {L"kel_help", KEL_Help, 0},                  // 4
    {L"kel_ptpmdist", kNotBuilt, 0},             // 5
    {L"kel_lst2str", kNotBuilt, 0},              // 6
    {L"kel_ssredraw", KEL_SSRedraw, 0},          // 7
    {L"kel_ptbarea", kNotBuilt, 0},              // 8
    {L"kel_str2lst", kNotBuilt, 0},              // 9
    {L"kel_entmakepoint", KEL_EntMakePoint, 0},  // 10
    {L"kel_selsingleent", kNotBuilt, 0},         // 11
    {L"kel_isptinrgn", kNotBuilt, 0},            // 12
    {L"kel_entmakenut", KEL_EntMakeNut, 0},      // 13
    {L"kel_linepmint", kNotBuilt, 0},            // 14
    {L"kel_mcs2wcs", kNotBuilt, 0},              // 15
    {L"kel_getckddw", kNotBuilt, 0},             // 16
    {L"kel_kzsjxz", KEL_KZSJXZ, 0},              // 17
    {L"kel_entmakecircle", KEL_EntMakeCircle, 0}, // 18
    {L"kel_lineplineint", KEL_LinePLineInt, 0},  // 19
    {L"kel_clearundo", KEL_ClearUNDO, 0},        // 20
    {L"kel_waiting", KEL_Waiting, 0},            // 21
    {L"kel_entmaketext", KEL_EntMakeText, 0},    // 22
    {L"kel_set0", KEL_Set0, 0},                  // 23
    {L"kel_set1", KEL_Set1, 0},                  // 24
    {L"kel_atomsort", kNotBuilt, 0},             // 25
    {L"kel_sortpte", kNotBuilt, 0},              // 26
    {L"kel_getscreenlbrt", KEL_GetScreenLBRT, 0}, // 27
    {L"kel_isptinview", KEL_IsPtInView, 0},      // 28
    {L"kel_entmakearc", KEL_EntMakeArc, 0},      // 29
    {L"kel_qq10xx", KEL_QQ10XX, 0},              // 30
    {L"kel_sv", KEL_SV, 0},                      // 31
    {L"kel_rv", KEL_RV, 0},                      // 32
    {L"kel_getplvertex", kNotBuilt, 0},          // 33
    {L"kel_undom", KEL_UndoM, 0},                // 34
    {L"kel_undob", KEL_UndoB, 0},                // 35
    {L"kel_getarcvertex", kNotBuilt, 0},         // 36
    {L"kel_modiline", kNotBuilt, 0},             // 37
    {L"kel_getpickboxwidth", KEL_GetPickBoxWidth, 0}, // 38
    {L"kel_setentcolorindex", KEL_SetEntColorIndex, 0}, // 39
    {L"kel_entistype", KEL_EntIsType, 0},        // 40
    {L"kel_gettextrect", kNotBuilt, 0},          // 41
    {L"kel_measurespline", kNotBuilt, 0},        // 42
    {L"kel_breaktextbkline", kNotBuilt, 0},      // 43
    {L"kel_changetextheight", kNotBuilt, 0},     // 44
    {L"kel_getpointeq", KEL_GetPointEQ, 0},      // 45
    {L"kel_setpointeq", KEL_SetPointEQ, 0},      // 46
    {L"kel_setvectoreq", KEL_SetVectorEQ, 0},    // 47
    {L"kel_getvectoreq", KEL_GetVectorEQ, 0},    // 48
    {L"kel_getdoubleeq", KEL_GetDoubleEQ, 0},    // 49
    {L"kel_setdoubleeq", KEL_SetDoubleEQ, 0},    // 50
    {L"kel_ispointeq", KEL_IsPointEQ, 0},        // 51
    {L"kel_ispoint2deq", KEL_IsPoint2dEQ, 0},    // 52
    {L"kel_isdoubleeq", KEL_IsDoubleEQ, 0},      // 53
    {L"kel_getpmpt", KEL_GetPMPt, 0},            // 54
    {L"kel_getrnxpart", KEL_GetRNXPart, 0},      // 55
    {L"kel_setgcinipath", KEL_SetGCIniPath, 0},  // 56
    {L"kel_writeini", KEL_WriteIni, 0},          // 57
    {L"kel_readini", KEL_ReadIni, 0},            // 58
    {L"kel_deliniitem", KEL_DelIniItem, 0},      // 59
    {L"kel_gettexthigh", KEL_GetTextHigh, 0},    // 60
    {L"kel_settexthigh", KEL_SetTextHigh, 0},    // 61
    {L"kel_setbzxsw", KEL_SetBZXSW, 0},          // 62
    {L"kel_getbzxsw", KEL_GetBZXSW, 0},          // 63
    {L"kel_getssrect", KEL_GetSSRect, 0},        // 64
    {L"zm2pt", Zm2Pt, 0},                        // 65
    {L"set3d", Set3d, 0},                        // 66
    {L"getlbg", GetLbg, 0},                      // 67
    {L"kelhtmlhelp", KelHtmlHelp, 0},            // 68
    {L"pan2v", Pan2V, 0},                        // 69
    {L"del_ln", DelLn, 0},                       // 70
    {L"linecd", LineCd, 0},                      // 71
    {L"if_lay", IfLay, 0},                       // 72
    {L"if_lx", IfLx, 0},                         // 73
    {L"appft", AppFt, 0},                        // 74
    {L"pt_d_px", PtDPx, 0},                      // 75
    {L"mkins", MkIns, 0},                        // 76 (same handler as 89)
    {L"pxft", PxFt, 0},                          // 77
    {L"mklinx", MkLinX, 0},                      // 78
    {L"sm", Sm, 0},                              // 79
    {L"get1pt", Get1Pt, 0},                      // 80
    {L"get_dd", GetDd, 0},                       // 81
    {L"getlay", GetLay, 0},                      // 82
    {L"mk3dm", Mk3dm, 0},                        // 83
    {L"getmid", GetMid, 0},                      // 84
    {L"z_p", ZP, 0},                             // 85
    {L"beep", Beep, 0},                          // 86
    {L"kel_entmakepline", KEL_EntMakePLine, 0},  // 87
    {L"kel_mktop", KEL_MkTop, 0},                // 88
    {L"kel_mkins", MkIns, 0},                    // 89 (same handler as 76)
    {L"kel_softinfo", KEL_SoftInfo, 0},          // 90
    {L"kel_getsoftpath", KEL_GetInstallDir, 0},  // 91 (same handler as 103)
    {L"kel_getsoftuserpath", KEL_GetSoftUserPath, 0}, // 92
    {L"kel_getworkdir", KEL_GetWorkDir, 0},      // 93
    {L"kel_fixlenstr", KEL_FixLenStr, 0},        // 94
    {L"kel_getdate", KEL_GetDate, 0},            // 95
    {L"kel_iszero", KEL_IsZero, 0},              // 96
    {L"kel_setuserini", KEL_SetUserINI, 0},      // 97
    {L"kel_setsysini", KEL_SetSysINI, 0},        // 98
    {L"kel_getuseriniitem", KEL_GetUserINIItem, 0}, // 99
    {L"kel_setuseriniitem", KEL_SetUserINIItem, 0}, // 100
    {L"kel_setsysiniitem", KEL_SetSysINIItem, 0}, // 101
    {L"kel_getsysiniitem", KEL_GetSysINIItem, 0}, // 102
    {L"kel_getinstalldir", KEL_GetInstallDir, 0}, // 103 (same handler as 91)
    {L"kel_getlocaldir", KEL_GetLocalDir, 0},    // 104
    {L"kel_js_f_max", kNotBuilt, 0},             // 105
    {L"kel_getgciniitem", KEL_GetGCINIItem, 0},  // 106
    {L"kel_setgciniitem", KEL_SetGCINIItem, 0},  // 107
    {L"kel_setgcini", KEL_SetGCINI, 0},          // 108
    {L"kel_gcinifilepath", KEL_GCINIFilePath, 0}, // 109
    {L"kel_sysinifilepath", KEL_SysINIFilePath, 0}, // 110
    {L"kel_userinifilepath", KEL_UserINIFilePath, 0}, // 111
    {L"kel_gettextwidthfactor", KEL_GetTextWidthFactor, 0}, // 112
    {L"kel_getlamarkpoint", kNotBuilt, 0},       // 113
    {L"kel_delobjectxdata", KEL_DelObjectXData, 0}, // 114
    {L"kel_gettextwidth", kNotBuilt, 0},         // 115
    {L"kel_deletefiles", KEL_DeleteFiles, 0},    // 116
    {L"kel_deletetree", KEL_DeleteTree, 0},      // 117
    {L"kel_blockinfo", kNotBuilt, 0},            // 118
    {L"kel_getclosestpointto", kNotBuilt, 0},    // 119
    {L"kel_getfirstderiv", kNotBuilt, 0},        // 120
    {L"kel_dividecurve", kNotBuilt, 0},          // 121
    {L"kel_measurecurve", kNotBuilt, 0},         // 122
    {L"kel_entityname", kNotBuilt, 0},           // 123
    {L"kel_intersectwith", kNotBuilt, 0},        // 124
    {L"kel_getbentityrect", kNotBuilt, 0},       // 125
    {L"kel_islinespx", KEL_IsLinesPX, 0},        // 126
    {L"kel_mkmdir", KEL_MkMDir, 0},              // 127
    {L"kel_restorecadmenu", KEL_RestoreCADMenu, 0}, // 128
    {L"kel_getrightpointatdist", KEL_GetRightPointAtDist, 0},  // 129
    {L"kel_bpoly", kNotBuilt, 0},                // 130
    {L"kel_str2strlst", KEL_Str2StrLst, 0},      // 131
    {L"kel_enableeditorreactor", KEL_EnableEditorReactor, 0},  // 132
    {L"kel_clearinvalidgroup", kNotBuilt, 0},    // 133
    {L"kel_createaligneddim", KEL_CreateAlignedDim, 0}, // 134
    {L"kel_createmaligneddim", KEL_CreateMAlignedDim, 0}, // 135
    {L"kel_creatembaligneddim", KEL_CreateMBAlignedDim, 0}, // 136
    {L"kel_createrotateddim", KEL_CreateRotatedDim, 0}, // 137
    {L"kel_createmrotateddim", KEL_CreateMRotatedDim, 0}, // 138
    {L"kel_creatembrotateddim", KEL_CreateMBRotatedDim, 0}, // 139
    {L"kel_setentdimstyle", KEL_SetEntDimStyle, 0}, // 140
    {L"kel_setdimenttxtstyle", KEL_SetDimEntTxtStyle, 0}, // 141
    {L"kel_setdimenttxthigh", KEL_SetDimEntTxtHigh, 0}, // 142
    {L"kel_setentdimtext", KEL_SetEntDimText, 0}, // 143
    {L"kel_manydimenttoone", KEL_ManyDimEntToOne, 0}, // 144
    {L"kel_onedimenttomany", KEL_OneDimEntToMany, 0}, // 145
    {L"kel_setentdimrnd", KEL_SetEntDimRnd, 0},  // 146
    {L"kel_setentdimdec", KEL_SetEntDimDec, 0},  // 147
    {L"kel_setdimentproperty", KEL_SetDimEntProperty, 0}, // 148
    {L"KEL_drag_key", kNotBuilt, 0},             // 149
};

// Calls are accepted for codes 1 to 150, one more than the table holds;
// AutoCAD never sends 150 because no name is registered under it.
constexpr unsigned kHighestAcceptedCode = 150;

}  // namespace

const LispFunctionRow* LispFunctionTable() { return kTable; }

const wchar_t* LispFunctionName(int code) {
  if (code < 1 || code > kLispFunctionCount) return nullptr;
  return kTable[code - 1].name;
}

int RegisterLispFunctions() {
  for (int code = 1; code <= kLispFunctionCount; ++code) {
    const LispFunctionRow& row = kTable[code - 1];
    if (acedDefun(row.name, code) != RTNORM) return RTERROR;
    if (row.registerAsFunction != 0) acedRegFunc(row.handler, code);
  }
  return RTNORM;
}

void UnregisterLispFunctions() {
  for (int code = 1; code <= kLispFunctionCount; ++code) acedUndef(kTable[code - 1].name, code);
}

void DispatchLispFunction() {
  acedRetVoid();
  const int code = acedGetFunCode();
  if (code < 1 || static_cast<unsigned>(code) > kHighestAcceptedCode) return;
  // 150 passes the range test but has no row: refused without reading
  // past the table, as silently as any other unknown code.
  if (code > kLispFunctionCount) return;
  kTable[code - 1].handler();
}

}  // namespace KEL
