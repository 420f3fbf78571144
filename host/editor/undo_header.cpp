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

HeaderRecord::StoreValue HeaderRecord::StoreValueOf(const db::DatabaseState& s, const std::wstring& name) {
  auto it = s.headerVars.find(name);
  return {name, it == s.headerVars.end() ? std::nullopt : std::optional<db::HeaderValue>(it->second)};
}

void HeaderRecord::save(const db::DatabaseState& state, const wchar_t* name) {
  // The store holds the variables with a definition; the others are the
  // database's fields.
  if (!name || !db::FindHeaderVarDef(name)) {
    if (!mFields) mFields = FieldsOf(state);
    return;
  }
  for (const StoreValue& held : mVars)
    if (held.first == name) return;
  mVars.push_back(StoreValueOf(state, name));
}

bool HeaderRecord::keepChanges(const db::DatabaseState& now) {
  if (mFields && *mFields == FieldsOf(now)) mFields.reset();
  std::size_t kept = 0;
  for (std::size_t i = 0; i < mVars.size(); ++i) {
    const StoreValue current = StoreValueOf(now, mVars[i].first);
    const bool same = current.second.has_value() == mVars[i].second.has_value() &&
                      (!current.second || Same(*current.second, *mVars[i].second));
    if (same) continue;
    if (kept != i) mVars[kept] = std::move(mVars[i]);
    ++kept;
  }
  mVars.resize(kept);
  mVars.shrink_to_fit();
  return mFields || !mVars.empty();
}

HeaderRecord HeaderRecord::putBack(AcDbDatabase* database) const {
  HeaderRecord replaced;
  db::DatabaseState& state = database->state();
  if (mFields) {
    for (const wchar_t* name : {L"CLAYER", L"CELTYPE", L"TEXTSTYLE", L"DIMSTYLE", L"CECOLOR", L"CELTSCALE",
                                L"TEXTSIZE", L"LTSCALE", L"CELWEIGHT", L"TILEMODE"})
      db::NotifyBeforeHeaderWrite(database, name);
    replaced.mFields = FieldsOf(state);
    PutFields(state, *mFields);
  }
  for (const auto& [name, value] : mVars) {
    db::NotifyBeforeHeaderWrite(database, name.c_str());
    replaced.mVars.push_back(StoreValueOf(state, name));
    if (value) state.headerVars[name] = *value;
    else state.headerVars.erase(name);
  }
  return replaced;
}

void HeaderRecord::absorb(HeaderRecord&& later) {
  if (!mFields) mFields = later.mFields;
  const std::size_t mine = mVars.size();
  for (StoreValue& value : later.mVars) {
    bool held = false;
    for (std::size_t i = 0; i < mine && !held; ++i) held = mVars[i].first == value.first;
    if (!held) mVars.push_back(std::move(value));
  }
}

}  // namespace kelhost::editor::undo
