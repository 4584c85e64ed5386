#pragma once

// The captions that come with the program, in all its languages.

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace larkstone {
class clsLarkstoneOnlineTable;
}

namespace larkstone::cli {

struct Caption {
  std::string_view key;
  std::string_view text;
};

struct Language {
  std::string_view code;  ///< "en"
  std::vector<Caption> captions;
};

/// All languages; the first is English.
const std::vector<Language>& languages();

bool isLanguage(std::string_view code);

/// Adds --language for a page that can change its language.
void addLanguageOption(CLI::App& command, std::string& language);

/// Gives a table the captions of a language; false for a code that is not known.
bool setLanguage(clsLarkstoneOnlineTable& table, std::string_view code);

}  // namespace larkstone::cli
