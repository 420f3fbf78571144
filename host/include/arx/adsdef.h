// Result-buffer value layer of the platform: base types, result-type and
// status codes, and the resbuf node shared by AutoLISP, xdata and DXF lists.
#pragma once

#include <cstdint>

typedef wchar_t ACHAR;
#ifndef ACRX_T
#define ACRX_T(x) L##x
#endif
#ifndef _T
#define _T(x) L##x
#endif

namespace Adesk {
typedef std::int8_t Int8;
typedef std::int16_t Int16;
typedef std::int32_t Int32;
typedef std::int64_t Int64;
typedef std::uint8_t UInt8;
typedef std::uint16_t UInt16;
typedef std::uint32_t UInt32;
typedef std::uint64_t UInt64;
typedef bool Boolean;
typedef std::intptr_t IntPtr;
typedef std::uintptr_t UIntPtr;
typedef std::int64_t LongPtr;
typedef std::uint64_t ULongPtr;
constexpr bool kFalse = false;
constexpr bool kTrue = true;
}  // namespace Adesk

typedef double ads_real;
typedef ads_real ads_point[3];
typedef std::int64_t ads_name[2];
typedef ads_real ads_matrix[4][4];
typedef ads_real* ads_pointp;
typedef std::int64_t* ads_namep;

enum { X = 0, Y = 1, Z = 2 };
enum { T = 1 };  // kept for code that writes TRUE as T

// Result-type codes.
#define RTNONE 5000
#define RTREAL 5001
#define RTPOINT 5002
#define RTSHORT 5003
#define RTANG 5004
#define RTSTR 5005
#define RTENAME 5006
#define RTPICKS 5007
#define RTORINT 5008
#define RT3DPOINT 5009
#define RTLONG 5010
#define RTVOID 5014
#define RTLB 5016
#define RTLE 5017
#define RTDOTE 5018
#define RTNIL 5019
#define RTDXF0 5020
#define RTT 5021
#define RTRESBUF 5023
#define RTMODELESS 5027
#define RTINT64 5031

// Status codes returned by ADS-style calls.
#define RTNORM 5100
#define RTERROR (-5001)
#define RTCAN (-5002)
#define RTREJ (-5003)
#define RTFAIL (-5004)
#define RTKWORD (-5005)
#define RTINPUTTRUNCATED (-5008)

struct ads_binary {
  short clen;
  char* buf;
};

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  std::int64_t rlname[2];
  Adesk::Int32 rlong;
  Adesk::Int64 mnInt64;
  struct ads_binary rbinary;
  unsigned char ihandle[8];
};

struct resbuf {
  struct resbuf* rbnext;
  short restype;
  union ads_u_val resval;
};

inline void ads_point_set(const ads_point from, ads_point to) {
  to[0] = from[0];
  to[1] = from[1];
  to[2] = from[2];
}
inline void ads_name_set(const ads_name from, ads_name to) {
  to[0] = from[0];
  to[1] = from[1];
}
inline void ads_name_clear(ads_name n) { n[0] = n[1] = 0; }
inline bool ads_name_nil(const ads_name n) { return n[0] == 0 && n[1] == 0; }
inline bool ads_name_equal(const ads_name a, const ads_name b) { return a[0] == b[0] && a[1] == b[1]; }
