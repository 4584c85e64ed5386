#pragma once

// The words of a split table in the host's language.

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace larkstone {

/// Texts by key. A key that is not there reads as empty text.
class Captions {
 public:
  const std::string& text(std::string_view key) const;
  void text(std::string_view key, std::string text);

  /// Replaces all captions by one language of a file with a line for each caption: the key, then
  /// its text in every language, apart by tabs. languageIndex counts the languages from 0. In a
  /// text "\n" stands for a line end (CR LF) and "\t" for a tab; a later line with the same key
  /// wins. The file is UTF-8 when it begins with a byte-order mark or is well-formed as such, else
  /// windows-1252. False when it cannot be read; the captions stay then.
  bool load(const std::string& fileName, int languageIndex);

 private:
  std::map<std::string, std::string, std::less<>> texts_;
};

}  // namespace larkstone
