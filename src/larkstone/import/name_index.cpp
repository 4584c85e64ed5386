#include "larkstone/import/name_index.hpp"

#include <utility>

namespace larkstone {

NameIndex::NameIndex(std::vector<std::string> names) {
  for (std::string& name : names) rows_.push_back({std::move(name), rows_.size()});
  std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.name < b.name; });
  for (std::size_t i = 1; i < rows_.size(); ++i) {
    auto at = static_cast<std::ptrdiff_t>(i);
    while (at > 0 && !rows_[i].name.starts_with(rows_[static_cast<std::size_t>(at - 1)].name)) {
      at = rows_[static_cast<std::size_t>(at - 1)].shorter;
    }
    rows_[i].shorter = at;
  }
}

}  // namespace larkstone
