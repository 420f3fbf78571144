// "kel_readini", "kel_writeini", "kel_deliniitem": settings files through
// the argument list as it stands.
#include "kelcad/api/inifile.h"
#include "kelcad/lisp/ini_handlers.h"
#include "kelcad/lisp/usage_lines.h"

namespace KEL {
namespace Lisp {

namespace {
bool IsText(const resbuf* rb) { return rb != nullptr && rb->restype == RTSTR; }

// ((key value) ...) as RTLB key value RTLE per pair; null when out of memory.
resbuf* PairList(const CStringArray& keys, const CStringArray& values) {
  resbuf* head = nullptr;
  resbuf** tail = &head;
  for (int i = 0; i < keys.GetSize() && i < values.GetSize(); ++i) {
    resbuf* pair = acutBuildList(RTLB, RTSTR, keys[i].GetString(), RTSTR, values[i].GetString(), RTLE, RTNONE);
    if (pair == nullptr) {
      acutRelRb(head);
      return nullptr;
    }
    *tail = pair;
    while (*tail != nullptr) tail = &(*tail)->rbnext;
  }
  return head;
}
}  // namespace

int KEL_ReadIni() {
  acedRetNil();
  resbuf* args = acedGetArgs();
  if (!IsText(args) || !IsText(args->rbnext)) {
    PrintUsageLines({L"\n KEL_ReadIni 参数错", L"\n 功能：读INI文件中的一节或者其中的若干键值",
                     L"\n 用法：KEL_ReadIni 文件名 节名 [键名 …]", L"\n 返回：((键 值) …) 或者 nil"});
    return RTNORM;
  }
  CStringArray keys, values;
  if (!ReadIni(args, keys, values)) return RTNORM;
  resbuf* pairs = PairList(keys, values);
  if (pairs != nullptr) {
    acedRetList(pairs);
    acutRelRb(pairs);
  }
  return RTNORM;
}

int KEL_WriteIni() {
  ReturnBool(WriteIni(acedGetArgs()));
  return RTNORM;
}

int KEL_DelIniItem() {
  ReturnBool(DelIniItem(acedGetArgs()));
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
