// How a run of file groups becomes result-buffer values: points joined
// from their X/Y/Z groups, numbers parsed, references resolved, text
// decoded. One definition for the chains of GroupsToChain and the nodes a
// FileReader reads an object from.
#pragma once

#include <string_view>

#include "dxf/raw_group.h"
#include "kelhost/resbuf_kinds.h"

namespace kelhost::dxf {

// Whether a code carries the X of a point whose Y and Z follow (10-18,
// 110-112, 210, 1010-1013).
inline bool IsPointLead(int code) {
  return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 || (code >= 1010 && code <= 1013);
}

// ResbufKind, from a table for the codes files hold (0 to kFileCodes - 1).
RbKind FileResbufKind(int code);
const RbKind* FileResbufKinds();

// Hexadecimal text as a binary chunk (rbinary, malloc'd); false when the
// text is not whole bytes of hex, longer than 32767 bytes, or memory ran out.
bool HexToBinary(std::string_view hex, resbuf* rb);

// Converts [begin, end) into nodes. Group has code and value (text
// convertible to std::string_view); Nodes supplies
//   resbuf* newNode(int code)                        a zeroed node, or null
//   bool setText(resbuf* rb, std::string_view utf8)  sets rstring
//   bool setBinary(resbuf* rb, std::string_view hex) sets rbinary
// False when one of them fails.
template <class Group, class Nodes>
bool ConvertGroups(const Group* begin, const Group* end, const ResolveHandle& resolve, Nodes& nodes) {
  const RbKind* kinds = FileResbufKinds();
  for (const Group* g = begin; g != end; ++g) {
    resbuf* rb = nodes.newNode(g->code);
    if (!rb) return false;
    double d = 0;
    long long n = 0;
    if (IsPointLead(g->code)) {
      ParseReal(g->value, rb->resval.rpoint[0]);
      const int lead = g->code;
      // Y and Z follow as their own groups in a file.
      for (int axis = 1; axis <= 2; ++axis) {
        const int code = lead + axis * 10;
        if (g + 1 != end && g[1].code == code) {
          ++g;
          ParseReal(g->value, rb->resval.rpoint[axis]);
        }
      }
      continue;
    }
    switch (g->code >= 0 && g->code < kFileCodes ? kinds[g->code] : ResbufKind(g->code)) {
      case RbKind::kReal:
        ParseReal(g->value, d);
        rb->resval.rreal = d;
        break;
      case RbKind::kShort:
        ParseInteger(g->value, n);
        rb->resval.rint = static_cast<short>(n);
        break;
      case RbKind::kLong:
        ParseInteger(g->value, n);
        rb->resval.rlong = static_cast<std::int32_t>(n);
        break;
      case RbKind::kInt64:
        ParseInteger(g->value, n);
        rb->resval.mnInt64 = n;
        break;
      case RbKind::kName: {
        std::uint64_t h = 0;
        AcDbObjectId id;
        if (ParseHandle(g->value, h) && h != 0) id = resolve(h);
        rb->resval.rlname[0] = id.asOldId();
        rb->resval.rlname[1] = 0;
        break;
      }
      case RbKind::kBinary:
        if (!nodes.setBinary(rb, g->value)) return false;
        break;
      case RbKind::kString:
        if (!nodes.setText(rb, g->value)) return false;
        break;
      default:
        break;
    }
  }
  return true;
}

}  // namespace kelhost::dxf
