// AutoLISP handlers of the object data store: the list-driven entity
// editor, one xdata value by application and code, and the removal of an
// entity's xdata.
#pragma once

namespace KEL {
namespace Lisp {

int KEL_KZSJXZ();           // "kel_kzsjxz"
int KEL_QQ10XX();           // "kel_qq10xx"
int KEL_DelObjectXData();   // "kel_delobjectxdata"

}  // namespace Lisp
}  // namespace KEL
