// Lookup by name of the items of a fixed table whose names live as long as
// the program (variables' definitions): a hash of views of those names, so
// that finding one copies nothing.
#pragma once

#include <string_view>
#include <unordered_map>

namespace kelhost::db {

template <class T>
class NameIndex {
 public:
  template <class Items>
  explicit NameIndex(const Items& items) {
    for (const T& item : items) mByName.emplace(item.name, &item);
  }
  const T* find(std::wstring_view name) const {
    auto it = mByName.find(name);
    return it == mByName.end() ? nullptr : it->second;
  }

 private:
  std::unordered_map<std::wstring_view, const T*> mByName;
};

}  // namespace kelhost::db
