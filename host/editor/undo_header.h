// The drawing's header variables as an undo step keeps them: each
// variable as it was before the step first changed it (the database's
// own fields, current layer, colour, linetype, styles and scales, as one),
// and at the step's end only those the step left changed.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/database_state.h"

namespace kelhost::editor::undo {

class HeaderRecord {
 public:
  // Before the variable name (upper case) of state changes.
  void save(const db::DatabaseState& state, const wchar_t* name);
  // Keeps only what differs from the header now; false when nothing does.
  bool keepChanges(const db::DatabaseState& now);
  // Puts the kept values back into the database's header (observers are told of
  // each variable as of any write); returns the values they replaced, so
  // that putting that back undoes this.
  HeaderRecord putBack(AcDbDatabase* database) const;
  // Merging steps: this (the earlier record) keeps its values and takes
  // the later one's for the variables it does not hold.
  void absorb(HeaderRecord&& later);

 private:
  // The variables the database holds in fields of its own.
  struct Fields {
    AcDbObjectId clayer, celtype, textstyle, dimstyle;
    Adesk::UInt16 cecolor = 256;
    double celtscale = 1.0, textsize = 2.5, ltscale = 1.0;
    Adesk::Int16 celweight = 0;
    bool tilemode = true;
    bool operator==(const Fields& o) const;
  };
  static Fields FieldsOf(const db::DatabaseState& s);
  static void PutFields(db::DatabaseState& s, const Fields& f);
  // A variable of the header store: its value, or none when the store did
  // not hold it.
  using StoreValue = std::pair<std::wstring, std::optional<db::HeaderValue>>;
  static StoreValue StoreValueOf(const db::DatabaseState& s, const std::wstring& name);

  std::optional<Fields> mFields;
  std::vector<StoreValue> mVars;
};

}  // namespace kelhost::editor::undo
