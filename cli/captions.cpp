#include "cli/captions.hpp"

#include <algorithm>
#include <string>

#include <CLI/CLI.hpp>

#include "larkstone/online/table.hpp"

#include "cli/web_files.hpp"

namespace larkstone::cli {

namespace {

std::string_view takeField(std::string_view& text, char delimiter) {
  const std::size_t end = std::min(text.find(delimiter), text.size());
  const std::string_view field = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return field;
}

// The first line of the table names the languages by their codes.
std::vector<Language> readLanguages() {
  std::vector<Language> read;
  std::string_view table = captionTable;
  while (!table.empty()) {
    std::string_view line = takeField(table, '\n');
    const std::string_view key = takeField(line, '\t');
    for (std::size_t column = 0; !line.empty(); ++column) {
      const std::string_view text = takeField(line, '\t');
      if (key == "language") read.push_back({text, {}});
      if (column < read.size()) read[column].captions.push_back({key, text});
    }
  }
  return read;
}

auto languageOf(std::string_view code) {
  return std::find_if(languages().begin(), languages().end(),
                      [code](const Language& language) { return language.code == code; });
}

}  // namespace

const std::vector<Language>& languages() {
  static const std::vector<Language> all = readLanguages();
  return all;
}

bool isLanguage(std::string_view code) { return languageOf(code) != languages().end(); }

void addLanguageOption(CLI::App& command, std::string& language) {
  std::string codes;
  for (const Language& known : languages()) {
    codes += (codes.empty() ? "" : "|") + std::string(known.code);
  }
  command
      .add_option("--language", language, "The language that the page opens in; its reader's else")
      ->type_name(codes)
      ->check([](const std::string& code) {
        return isLanguage(code) ? std::string() : "no language '" + code + "'";
      });
}

bool setLanguage(clsLarkstoneOnlineTable& table, std::string_view code) {
  const auto found = languageOf(code);
  if (found == languages().end()) return false;
  for (const Caption& caption : found->captions) {
    table.caption(caption.key, std::string(caption.text));
  }
  return true;
}

}  // namespace larkstone::cli
