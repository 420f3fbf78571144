// Which member of a result buffer's value union a type code uses: the one
// table behind acutNewRb, acutRelRb, acutBuildList and every host part that
// copies or converts result buffers (AutoLISP bridge, entity lists, DXF).
#pragma once

struct resbuf;

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

namespace kelhost {
// The first node of the chain whose real or point holds an infinity or a
// NaN; null when every number is finite. Nothing reads such values back
// from a drawing, so the database never takes them.
const resbuf* FirstNonFinite(const resbuf* chain);
}  // namespace kelhost
