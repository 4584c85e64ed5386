#pragma once

// The words by which lists tell how a run ended.

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"
#include "larkstone/core/text.hpp"

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

/// Whether a place says that somebody runs outside of the competition: "nc", "AK", "a.K.".
inline bool isNotCompetingWord(std::string_view place) {
  std::string word = lowered(trimmed(place));
  word.erase(std::remove(word.begin(), word.end(), '.'), word.end());
  return word == "nc" || word == "ak";
}

/// The status of a run with its place in mind. A run that failed stays one that failed.
inline enmStatus statusByPlace(std::string_view place, enmStatus status) {
  const bool failed = status != estaOK && status != estaUnknown;
  return !failed && isNotCompetingWord(place) ? estaNotCompeting : status;
}

}  // namespace larkstone
