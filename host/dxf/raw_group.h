// One DXF group as a file holds it: the code and the value's text (UTF-8),
// and the conversions between groups and result-buffer chains that the
// file reader and writer share.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
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
// The same for codes 0 to kFileCodes - 1 as a table (for loops over
// millions of groups).
constexpr int kFileCodes = 1072;
const FileKind* FileKinds();

// The shortest text that reads back as the same double: printf's "%.15g",
// or "%.16g" or "%.17g" when fewer digits do not read back, with ".0"
// added to a whole number.
std::string FormatReal(double v);
// The group code of the first infinite or NaN value formatted since the
// last call (-1 when formatted without a code), or 0 for none; clears it.
int TakeNonFiniteGroup();
void AppendReal(double v, std::string& out);
// Strict number parsing of a file value (surrounding blanks allowed), as
// strtod and strtoll (base 10) accept numbers; out of range fails.
bool ParseReal(std::string_view text, double& out);
bool ParseInteger(std::string_view text, long long& out);
// Hexadecimal handle text; false for empty, non-hex or 0 when nonzero is required.
bool ParseHandle(std::string_view text, std::uint64_t& out);
std::string HandleText(std::uint64_t handle);
void AppendHandle(std::uint64_t handle, std::string& out);

// Groups as a file's lines: the code right-aligned in three columns, then
// the value, each on its own line.
void AppendGroupLines(const RawGroup* begin, const RawGroup* end, std::string& out);
// One group the same way, straight from its value.
void AppendGroupLine(int code, std::string_view value, std::string& out);
void AppendRealGroup(int code, double v, std::string& out);
void AppendHandleGroup(int code, std::uint64_t handle, std::string& out);

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
