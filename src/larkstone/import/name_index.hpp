#pragma once

// Finding the names of a list that agree with another name.

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace larkstone {

/// Two names agree when the shorter one begins the longer one.
inline bool namesAgree(std::string_view a, std::string_view b) {
  return a.size() < b.size() ? b.starts_with(a) : a.starts_with(b);
}

/// A list of names in their order: those that begin with a name stand side by side, and every name
/// knows the longest other one before it that begins it.
class NameIndex {
 public:
  explicit NameIndex(std::vector<std::string> names);

  /// Visits the places (in the list that was given) of all names that agree with a name.
  template <class Visit>
  void forEachAgreeing(std::string_view name, Visit visit) const {
    const auto first = std::lower_bound(
        rows_.begin(), rows_.end(), name,
        [](const Row& row, std::string_view wanted) { return row.name.compare(wanted) < 0; });
    for (auto row = first; row != rows_.end() && row->name.starts_with(name); ++row) {
      visit(row->place);
    }
    // What begins the name also begins the last one before it.
    for (auto at = first - rows_.begin(); at > 0;) {
      const Row& row = rows_[static_cast<std::size_t>(at - 1)];
      if (name.starts_with(row.name)) visit(row.place);
      at = row.shorter;
    }
  }

 private:
  struct Row {
    std::string name;
    std::size_t place;
    std::ptrdiff_t shorter = 0;  // one more than the row of the name that begins this one; or none
  };
  std::vector<Row> rows_;
};

}  // namespace larkstone
