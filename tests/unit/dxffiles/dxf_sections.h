// Whole DXF files built section by section, and the groups of one item
// (entity or object) of a file as written.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dxf_fixture.h"

using Groups = std::vector<std::pair<int, std::string>>;

inline Groups Section(const char* name, const Groups& body) {
  Groups g = {{0, "SECTION"}, {2, name}};
  g.insert(g.end(), body.begin(), body.end());
  g.push_back({0, "ENDSEC"});
  return g;
}

// A 2013 file: a header, then the sections given, then EOF.
inline std::string DxfFile(const std::vector<Groups>& sections) {
  Groups all = Section("HEADER", {{9, "$ACADVER"}, {1, "AC1027"}});
  for (const Groups& s : sections) all.insert(all.end(), s.begin(), s.end());
  all.push_back({0, "EOF"});
  return Dxf(all);
}

// The groups of a file's text (codes without their padding).
inline Groups ParseGroups(const std::string& text) {
  Groups out;
  std::istringstream in(text);
  std::string code, value;
  while (std::getline(in, code) && std::getline(in, value)) out.push_back({std::stoi(code), value});
  return out;
}

// The items of a file (sections, entities, objects...): each from its 0
// group to the next.
inline std::vector<Groups> Items(const Groups& file) {
  std::vector<Groups> items;
  for (const auto& g : file) {
    if (g.first == 0) items.emplace_back();
    if (!items.empty()) items.back().push_back(g);
  }
  return items;
}

// The groups of the item with that handle (5, or 105 for a dimension style).
inline Groups ItemOf(const Groups& file, const std::string& handle) {
  for (const Groups& item : Items(file))
    if (item.size() > 1 && (item[1].first == 5 || item[1].first == 105) && item[1].second == handle) return item;
  return {};
}

// The value of the first group of that code in groups ("" when none).
inline std::string ValueOf(const Groups& groups, int code) {
  for (const auto& g : groups)
    if (g.first == code) return g.second;
  return "";
}
