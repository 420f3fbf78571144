// One DXF group as a file holds it: the code and the value's text (UTF-8),
// and the conversions between groups and result-buffer chains that the
// file reader and writer share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "arx/adsdef.h"
#include "arx/dbid.h"

namespace kelhost::dxf {

struct RawGroup {
  int code = 0;
  std::string value;
};
using RawGroups = std::vector<RawGroup>;

// What a group code's value is in a file.
enum class FileKind { kText, kReal, kInt16, kInt32, kInt64, kBool, kHandle, kBinary, kInvalid };
FileKind FileKindOf(int code);

// The shortest text that reads back as the same double.
std::string FormatReal(double v);
// Strict number parsing of a file value (surrounding blanks allowed).
bool ParseReal(const std::string& text, double& out);
bool ParseInteger(const std::string& text, long long& out);
// Hexadecimal handle text; false for empty, non-hex or 0 when nonzero is required.
bool ParseHandle(const std::string& text, std::uint64_t& out);
std::string HandleText(std::uint64_t handle);

// The coordinate group that carries X for a Y/Z group (20 -> 10, 1031 ->
// 1011), or 0 when the code is not a Y or Z of a point.
int PointLeadOf(int code);

// Groups to a result-buffer chain: points joined from their X/Y/Z groups,
// references turned into object names by resolve (null id when unknown).
// Null and false when out of memory.
using ResolveHandle = std::function<AcDbObjectId(std::uint64_t)>;
bool GroupsToChain(const RawGroup* begin, const RawGroup* end, const ResolveHandle& resolve, resbuf*& chain);

// A chain back to groups: points split (Z omitted when twoD), object
// names as handles ("0" for none).
void ChainToGroups(const resbuf* chain, RawGroups& out);
void AppendNode(const resbuf* rb, RawGroups& out);

}  // namespace kelhost::dxf
