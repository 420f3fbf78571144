// Compiled shape files made in the tests, in the three layouts the host
// reads, from shapes given as shape bytes.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace shapetest {

inline void U16(std::string& out, unsigned v) {
  out += static_cast<char>(v & 0xFF);
  out += static_cast<char>((v >> 8) & 0xFF);
}
inline void U32(std::string& out, unsigned long v) {
  U16(out, v & 0xFFFF);
  U16(out, (v >> 16) & 0xFFFF);
}

using Shapes = std::map<unsigned, std::string>;  // number -> shape bytes, ending in 0

// "unifont 1.0": characters by Unicode number.
inline std::string Unifont(const std::string& name, int above, int below, const Shapes& shapes) {
  std::string out = "AutoCAD-86 unifont 1.0\r\n\x1a";
  std::string info = name + '\0';
  info += static_cast<char>(above);
  info += static_cast<char>(below);
  info += std::string("\0\0\0\0", 4);  // modes, encoding, type, end
  U32(out, shapes.size() + 1);
  U16(out, info.size());
  out += info;
  for (const auto& [number, code] : shapes) {
    const std::string block = "S" + std::string(1, '\0') + code;
    U16(out, number);
    U16(out, block.size());
    out += block;
  }
  return out;
}

// "shapes 1.0": characters by their code, shape 0 describing the font.
inline std::string ShapesFont(const std::string& name, int above, int below, const Shapes& shapes) {
  std::string out = "AutoCAD-86 shapes 1.0\r\n\x1a";
  std::map<unsigned, std::string> blocks;
  blocks[0] = name + '\0' + static_cast<char>(above) + static_cast<char>(below) + std::string("\0\0", 2);
  for (const auto& [number, code] : shapes) blocks[number] = "S" + std::string(1, '\0') + code;
  U16(out, 0);
  U16(out, blocks.rbegin()->first);
  U16(out, blocks.size());
  for (const auto& [number, block] : blocks) {
    U16(out, number);
    U16(out, block.size());
  }
  for (const auto& [number, block] : blocks) out += block;
  return out;
}

// "bigfont 1.0": double-byte codes, with an index of file offsets.
inline std::string Bigfont(const std::string& name, int height, const Shapes& shapes) {
  std::string out = "AutoCAD-86 bigfont 1.0\r\n\x1a";
  std::map<unsigned, std::string> blocks;
  blocks[0] = name + '\0' + static_cast<char>(height) + std::string("\0\0\0", 3);
  for (const auto& [number, code] : shapes) blocks[number] = std::string(1, '\0') + code;
  U16(out, blocks.size());
  U16(out, 0);
  U16(out, 1);  // one escape range
  U16(out, 0x81);
  U16(out, 0xFE);
  unsigned long offset = out.size() + blocks.size() * 8;
  for (const auto& [number, block] : blocks) {
    U16(out, number);
    U16(out, block.size());
    U32(out, offset);
    offset += block.size();
  }
  for (const auto& [number, block] : blocks) out += block;
  return out;
}

// Shape bytes from a list of values (negative ones as signed bytes).
inline std::string ShapeCode(std::initializer_list<int> bytes) {
  std::string s;
  for (int b : bytes) s += static_cast<char>(b & 0xFF);
  return s;
}

}  // namespace shapetest
