#pragma once

// The files under cli/web and share that are part of the program.

#include <string_view>

namespace larkstone::cli {

extern const std::string_view reportBody;    ///< HTML of the report page, without data
extern const std::string_view reportStyle;   ///< its style sheet
extern const std::string_view reportScript;  ///< its scripts
extern const std::string_view captionTable;  ///< share/captions.txt

}  // namespace larkstone::cli
