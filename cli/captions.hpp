#pragma once

// The English captions of the split table, for a page without a language file.

#include <span>
#include <string_view>

namespace larkstone::cli {

struct Caption {
  std::string_view key;
  std::string_view text;
};

std::span<const Caption> englishCaptions();

}  // namespace larkstone::cli
