#pragma once

// The words by which lists tell how a run ended.

#include <optional>
#include <span>
#include <string_view>

#include "larkstone/core/enums.hpp"

namespace larkstone {

struct StatusWord {
  std::string_view word;
  enmStatus status;
};

/// The status of a word, nothing for one that is not known. Words and table are in lower case.
inline std::optional<enmStatus> statusOf(std::string_view word, std::span<const StatusWord> words) {
  for (const StatusWord& known : words) {
    if (known.word == word) return known.status;
  }
  return std::nullopt;
}

}  // namespace larkstone
