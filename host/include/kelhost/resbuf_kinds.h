// Which member of a result buffer's value union a type code uses: the one
// table behind acutNewRb, acutRelRb, acutBuildList and every host part that
// copies or converts result buffers (AutoLISP bridge, entity lists, DXF).
#pragma once

namespace kelhost {
enum class RbKind {
  kNone,     // no value: RTLB, RTLE, RTDOTE, RTNIL, RTT, RTVOID, RTNONE, -3, -5
  kReal,     // rreal
  kPoint,    // rpoint[3]
  kShort,    // rint
  kLong,     // rlong (32-bit)
  kInt64,    // mnInt64
  kString,   // rstring, owned by the node (malloc/free)
  kName,     // rlname (entity, selection set or object name)
  kBinary,   // rbinary, buf owned by the node (malloc/free)
  kUnknown,  // not a type code the platform knows
};
RbKind ResbufKind(int restype);
}  // namespace kelhost
