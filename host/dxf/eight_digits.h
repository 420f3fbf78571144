// Eight decimal digits at a time: numbers in drawings are mostly long runs
// of digits, and reading them a word at a time takes a fraction of the
// steps that reading them a character at a time does.
#pragma once

#include <cstdint>
#include <cstring>

namespace kelhost::dxf {

// The eight bytes at p (which must all be readable) as a word in memory
// order (this little-endian target's).
inline std::uint64_t EightBytes(const char* p) {
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

// Whether all eight bytes of a word are the digits 0-9.
inline bool AllDigits(std::uint64_t word) {
  // A digit is 0x30-0x39: its high half is 3, and adding 6 keeps it so.
  return ((word & 0xF0F0F0F0F0F0F0F0ULL) | (((word + 0x0606060606060606ULL) & 0xF0F0F0F0F0F0F0F0ULL) >> 4)) ==
         0x3333333333333333ULL;
}

// The value of eight digits, the first the most significant: pairs, then
// fours, then the eight, each step one multiplication.
inline std::uint32_t EightDigitsValue(std::uint64_t word) {
  word = (word & 0x0F0F0F0F0F0F0F0FULL) * 2561 >> 8;
  word = (word & 0x00FF00FF00FF00FFULL) * 6553601 >> 16;
  return static_cast<std::uint32_t>((word & 0x0000FFFF0000FFFFULL) * 42949672960001ULL >> 32);
}

}  // namespace kelhost::dxf
