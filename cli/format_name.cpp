#include "cli/format_name.hpp"

#include <CLI/CLI.hpp>

#include "larkstone/core/text.hpp"
#include "larkstone/import/import.hpp"

namespace larkstone::cli {

std::int32_t formatNamed(const std::string& text, std::int32_t first, std::int32_t last) {
  std::string wanted = lowered(text);
  for (char& c : wanted) c = c == '-' ? '_' : c;
  for (std::int32_t code = first; code <= last; ++code) {
    const std::string name = lowered(importName(code));
    if (name.empty()) continue;
    if (wanted == std::to_string(code) || wanted == name || "lrk_import_" + wanted == name ||
        "lrk_import_startlist_" + wanted == name) {
      return code;
    }
  }
  throw CLI::ValidationError("--format", "no format '" + text + "'");
}

}  // namespace larkstone::cli
