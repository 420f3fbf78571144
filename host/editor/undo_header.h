// The drawing's header variables as an undo step keeps them: the whole
// header from before the step's first header change while the step
// records, then only the variables the step changed.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "db/database_state.h"

namespace kelhost::editor::undo {

class HeaderRecord {
 public:
  // Everything the header holds now.
  explicit HeaderRecord(const db::DatabaseState& state);

  // Keeps only what differs from the header now; false when nothing does.
  bool keepChanges(const db::DatabaseState& now);
  // Puts the kept values back; returns the values they replaced, so that
  // putting that back undoes this.
  HeaderRecord putBack(db::DatabaseState& state) const;

 private:
  HeaderRecord() = default;

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

  std::optional<Fields> mFields;
  // The store's variables: a value, or none for one the store did not hold.
  std::vector<std::pair<std::wstring, std::optional<db::HeaderValue>>> mVars;
};

}  // namespace kelhost::editor::undo
