// Classification of group codes into the value kinds their nodes hold.
#include "kelcad/resbuf/rbchain.h"

namespace KEL {

namespace {
bool In(int code, int low, int high) { return code >= low && code <= high; }
}  // namespace

// The ranges are tested in this order and the first match wins. Codes that
// no range names (18-37, 80-89, 103-104, 106-109, 113-139, ...) have no
// kind, deliberately; 310-369 are read as entity names.
int GetDXFCodeDataType(int code) {
  if (code == -1) return RTENAME;
  if (In(code, 0, 9)) return RTSTR;
  if (In(code, 10, 17)) return RT3DPOINT;
  if (In(code, 38, 59)) return RTREAL;
  if (In(code, 60, 79)) return RTSHORT;
  if (In(code, 90, 99)) return RTLONG;
  if (In(code, 100, 102) || code == 105 || In(code, 110, 112)) return RTSTR;
  if (In(code, 140, 149)) return RTREAL;
  if (In(code, 170, 179)) return RTSHORT;
  if (In(code, 210, 219)) return RT3DPOINT;
  if (In(code, 270, 299)) return RTSHORT;
  if (In(code, 300, 309)) return RTSTR;
  if (In(code, 310, 369)) return RTENAME;
  if (In(code, 370, 389)) return RTSHORT;
  if (In(code, 390, 399)) return RTENAME;
  if (In(code, 400, 409)) return RTSHORT;
  if (In(code, 410, 419)) return RTSTR;
  if (code == 1004) return 1004;
  if (In(code, 999, 1009)) return RTSTR;
  if (In(code, 1010, 1013)) return RT3DPOINT;
  if (In(code, 1038, 1059)) return RTREAL;
  if (In(code, 1060, 1070)) return RTSHORT;
  if (code == 1071) return RTLONG;
  // Result types and negative sentinels (-2, -3, -4, ...) are their own
  // kind: read as unsigned they are all above 4999.
  if (static_cast<unsigned>(code) > 4999u) return code;
  return RTNONE;
}

}  // namespace KEL
