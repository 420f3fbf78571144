// The legacy short-name AutoLISP functions kept for the family's older
// programs. Most report a wrong call through acdbFail and answer the
// dispatcher kLegacyFailed instead of RTNORM.
#pragma once

namespace KEL {
namespace Lisp {

constexpr int kLegacyFailed = 3;

int Get1Pt();        // "get1pt"
int GetMid();        // "getmid"
int ZP();            // "z_p"
int PtDPx();         // "pt_d_px"

int GetLay();        // "getlay"
int IfLay();         // "if_lay"
int IfLx();          // "if_lx"
int LineCd();        // "linecd"
int GetLbg();        // "getlbg"
int AppFt();         // "appft"
int DelLn();         // "del_ln"
int PxFt();          // "pxft"
int KEL_IsLinesPX(); // "kel_islinespx"

int Set3d();         // "set3d"
int GetDd();         // "get_dd"
int Zm2Pt();         // "zm2pt"
int Pan2V();         // "pan2v"
int Sm();            // "sm"
int Beep();          // "beep"

int MkLinX();        // "mklinx"
int Mk3dm();         // "mk3dm"

}  // namespace Lisp
}  // namespace KEL
