#pragma once

#include <algorithm>
#include <vector>

namespace larkstone {

/// Takes an entry out of a list and puts it in again at another index.
template <class T>
void moveEntry(std::vector<T>& list, int from, int to) {
  const auto begin = list.begin();
  if (from < to) {
    std::rotate(begin + from, begin + from + 1, begin + to + 1);
  } else {
    std::rotate(begin + to, begin + from, begin + from + 1);
  }
}

}  // namespace larkstone
