#include "editor/undo_header.h"

namespace kelhost::editor::undo {
namespace {

bool Same(const db::HeaderValue& a, const db::HeaderValue& b) {
  return a.type == b.type && a.code == b.code && a.integer == b.integer && a.real == b.real &&
         a.point[0] == b.point[0] && a.point[1] == b.point[1] && a.point[2] == b.point[2] && a.text == b.text;
}

}  // namespace

bool HeaderRecord::Fields::operator==(const Fields& o) const {
  return clayer == o.clayer && celtype == o.celtype && textstyle == o.textstyle && dimstyle == o.dimstyle &&
         cecolor == o.cecolor && celtscale == o.celtscale && textsize == o.textsize && ltscale == o.ltscale &&
         celweight == o.celweight && tilemode == o.tilemode;
}

HeaderRecord::Fields HeaderRecord::FieldsOf(const db::DatabaseState& s) {
  Fields f;
  f.clayer = s.clayer;
  f.celtype = s.celtype;
  f.textstyle = s.textstyle;
  f.dimstyle = s.dimstyle;
  f.cecolor = s.cecolor;
  f.celtscale = s.celtscale;
  f.textsize = s.textsize;
  f.ltscale = s.ltscale;
  f.celweight = s.celweight;
  f.tilemode = s.tilemode;
  return f;
}

void HeaderRecord::PutFields(db::DatabaseState& s, const Fields& f) {
  s.clayer = f.clayer;
  s.celtype = f.celtype;
  s.textstyle = f.textstyle;
  s.dimstyle = f.dimstyle;
  s.cecolor = f.cecolor;
  s.celtscale = f.celtscale;
  s.textsize = f.textsize;
  s.ltscale = f.ltscale;
  s.celweight = f.celweight;
  s.tilemode = f.tilemode;
}

HeaderRecord::HeaderRecord(const db::DatabaseState& state) : mFields(FieldsOf(state)) {
  mVars.reserve(state.headerVars.size());
  for (const auto& [name, value] : state.headerVars) mVars.emplace_back(name, value);
}

bool HeaderRecord::keepChanges(const db::DatabaseState& now) {
  if (mFields && *mFields == FieldsOf(now)) mFields.reset();
  // Both lists are in name order (the store is a sorted map): one pass
  // finds the changed values and the variables the store gained, which
  // putting the header back removes.
  std::vector<std::pair<std::wstring, std::optional<db::HeaderValue>>> changed;
  auto it = now.headerVars.begin();
  const auto end = now.headerVars.end();
  for (auto& [name, value] : mVars) {
    for (; it != end && it->first < name; ++it) changed.emplace_back(it->first, std::nullopt);
    if (it != end && it->first == name) {
      if (!Same(it->second, *value)) changed.emplace_back(std::move(name), std::move(value));
      ++it;
    } else {
      changed.emplace_back(std::move(name), std::move(value));
    }
  }
  for (; it != end; ++it) changed.emplace_back(it->first, std::nullopt);
  mVars = std::move(changed);
  mVars.shrink_to_fit();
  return mFields || !mVars.empty();
}

HeaderRecord HeaderRecord::putBack(db::DatabaseState& state) const {
  HeaderRecord replaced;
  if (mFields) {
    replaced.mFields = FieldsOf(state);
    PutFields(state, *mFields);
  }
  for (const auto& [name, value] : mVars) {
    auto it = state.headerVars.find(name);
    replaced.mVars.emplace_back(name, it == state.headerVars.end() ? std::nullopt
                                                                   : std::optional<db::HeaderValue>(it->second));
    if (value) state.headerVars[name] = *value;
    else if (it != state.headerVars.end()) state.headerVars.erase(it);
  }
  return replaced;
}

}  // namespace kelhost::editor::undo
