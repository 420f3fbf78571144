// Xdata from AutoLISP: editing an entity from a list, reading one xdata
// value, removing an entity's xdata.
#include "kelcad/lisp/usage_lines.h"
#include "kelcad/lisp/xdata_handlers.h"
#include "kelcad/oxdata/entity_xdata.h"
#include "kelcad/oxdata/oxdata.h"

namespace KEL {
namespace Lisp {

namespace {

// The value of the first group of code after the list's -3 marker, as
// AutoLISP gets it; nil for codes without a value form here.
void ReturnXDataValue(const resbuf* list, int code) {
  const resbuf* rb = list;
  while (rb != nullptr && rb->restype != -3) rb = rb->rbnext;
  while (rb != nullptr && rb->restype != code) rb = rb->rbnext;
  if (rb == nullptr) return;
  if (code == 1000 || code == 1003 || code == 1005)
    acedRetStr(rb->resval.rstring != nullptr ? rb->resval.rstring : L"");
  else if (code >= 1010 && code <= 1013)
    acedRetPoint(rb->resval.rpoint);
  else if (code >= 1040 && code <= 1042)
    acedRetReal(rb->resval.rreal);
  else if (code == 1070)
    acedRetInt(rb->resval.rint);
}

}  // namespace

int KEL_KZSJXZ() {
  acedRetNil();
  resbuf* args = acedGetArgs();
  if (KZSJXZ(args) == 0) return RTNORM;
  resbuf* list = acdbEntGet(args->resval.rlname);
  if (list != nullptr) {
    acedRetList(list);
    acutRelRb(list);
  }
  return RTNORM;
}

int KEL_QQ10XX() {
  acedRetNil();
  const resbuf* args = acedGetArgs();
  const wchar_t* problem = nullptr;
  if (args == nullptr)
    problem = L"\nError:qq10xx取XDATA时没输入参数.";
  else if (args->restype != RTENAME)
    problem = L"\nError:qq10xx给定第一个参数不是ent_name.";
  else if (args->rbnext == nullptr)
    problem = L"\nError:qq10xx没有给定第二个参数.";
  else if (args->rbnext->restype != RTSTR)
    problem = L"\nError:qq10xx给定的第二个参数不是string.";
  else if (args->rbnext->rbnext == nullptr)
    problem = L"\nError:qq10xx没有给定第三个参数.";
  else if (args->rbnext->rbnext->restype != RTSHORT)
    problem = L"\nError:qq10xx给定的第三个参数不是int.";
  if (problem != nullptr) {
    acutPrintf(L"%s", problem);
    return RTNORM;
  }
  CString app = args->rbnext->resval.rstring;
  app.MakeUpper();
  resbuf query{};
  query.restype = RTSTR;
  query.resval.rstring = const_cast<ACHAR*>(app.GetString());
  resbuf* list = acdbEntGetX(args->resval.rlname, &query);
  if (list == nullptr) {
    acutPrintf(L"%s", L"\nError:qq10xx当前图形中没有给定Entity.");
    return RTNORM;
  }
  ReturnXDataValue(list, args->rbnext->rbnext->resval.rint);
  acutRelRb(list);
  return RTNORM;
}

int KEL_DelObjectXData() {
  const resbuf* args = acedGetArgs();
  const bool oneName = args != nullptr && args->restype == RTENAME;
  const resbuf* pattern = oneName ? args->rbnext : nullptr;
  if (!oneName || (pattern != nullptr && (pattern->restype != RTSTR || pattern->rbnext != nullptr))) {
    PrintUsageLines({L"\n KEL_DelObjectXData", L"\n 功能:删除实体的所有(也可是指定)的扩展数据",
                     L"\n 用法:KEL_DelObjectXData  实体名 [应用程序名]",
                     L"\n 返回: T 表明删除成功(也可能本来没有),如果返回 nil 表明失败", L"\n 注意：可以用通配符."});
    acedRetVoid();
    return RTNORM;
  }
  ads_name ent;
  ads_name_set(args->resval.rlname, ent);
  OxData data(ent);
  CStringArray removed;
  ReturnBool(data.DeleteXData(pattern != nullptr ? pattern->resval.rstring : L"", removed));
  return RTNORM;
}

}  // namespace Lisp
}  // namespace KEL
