#pragma once

// Cutting lines into fields. Texts are bytes of windows-1252, as result lists hold them.

#include <array>
#include <string>
#include <string_view>

namespace larkstone {

/// What stands before the first delimiter; all of the text when it does not occur. An empty
/// delimiter occurs nowhere.
std::string_view textBefore(std::string_view text, std::string_view delimiter);
/// Cuts the text behind the first delimiter; nothing is left when it does not occur.
void removeThrough(std::string_view& text, std::string_view delimiter);
/// Takes the first field and its delimiter off; the last field leaves an empty text.
std::string_view popField(std::string_view& text, std::string_view delimiter);
/// How often removeThrough() can consume the delimiter.
int countOccurrences(std::string_view text, std::string_view delimiter);

/// The same without regard to the case of the text. The delimiter is passed in lower case.
std::string_view textBeforeNoCase(std::string_view text, std::string_view delimiter);
void removeThroughNoCase(std::string_view& text, std::string_view delimiter);
std::string_view popFieldNoCase(std::string_view& text, std::string_view delimiter);
int countOccurrencesNoCase(std::string_view text, std::string_view delimiter);
/// Takes n fields off and returns the last of them; n counts from 1.
std::string_view nthFieldNoCase(std::string_view& text, std::string_view delimiter, int n);

/// Whether a text occurs in another one, in any case. It is passed in lower case.
bool containsNoCase(std::string_view text, std::string_view lowerCase);

/// What follows the last delimiter within the first endPos bytes; all of them without one.
std::string_view lastFieldBefore(std::string_view text, std::string_view delimiter, int endPos);

/// Whether the shorter text is the start of the longer one, whatever the case.
bool isPrefixNoCase(std::string_view a, std::string_view b);

/// The fields of one CSV line. A field in quotes or apostrophes ends at the closing one: delimiters
/// within are kept, the quotes are removed and doubled ones become single. A quote that nothing
/// closes, and a single one within a field, is a character like any other.
class CsvFields {
 public:
  /// Both must outlive the object.
  CsvFields(std::string_view line, std::string_view delimiter)
      : rest_(line), delimiter_(delimiter) {}

  bool atEnd() const { return rest_.empty(); }
  /// The next field; empty at the end. Valid as long as the object.
  std::string_view next();

 private:
  std::string_view unquoted(std::string_view field);

  std::string_view rest_;
  std::string_view delimiter_;
  std::array<bool, 2> closes_ = {true, true};  // quotes, apostrophes
  std::string texts_;  // of fields with doubled quotes, one behind the other; never moved
};

}  // namespace larkstone
