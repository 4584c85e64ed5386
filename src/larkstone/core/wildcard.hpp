#pragma once

// Texts sought by a pattern.

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace larkstone {

/// A pattern over the characters of a UTF-8 text:
///
///     *         any run of characters, also none
///     ?         one character
///     #         one digit
///     [abc]     one character of the list; [a-c] is a range, "-" first or last is itself
///     [!abc]    one character that is not in the list
///
/// In a list *, ? and # stand for themselves, so "[*]" finds an asterisk; "[]" is nothing, "[!]" is
/// any one character, and a range that runs backwards holds no character. A "[" that is not closed,
/// and "]" or "!" outside a list, stand for themselves. Letter case counts: lower both sides
/// where it shall not.
///
/// The time is at most the product of both lengths, whatever the pattern.
class WildcardPattern {
 public:
  explicit WildcardPattern(std::string_view pattern);

  /// Whether the text as a whole is like the pattern.
  bool matches(std::string_view text) const;

 private:
  // A character as its UTF-8 bytes, the first one highest: in the order of the code points.
  using Character = std::uint32_t;

  // A run, or one character within some ranges or outside them.
  struct Element {
    bool isRun = false;
    bool excludes = false;
    std::vector<std::pair<Character, Character>> ranges;

    bool accepts(Character character) const;
  };

  static Character take(std::string_view& text);
  static Element listOf(std::string_view list);
  bool isRun(std::size_t element) const {
    return element < elements_.size() && elements_[element].isRun;
  }

  std::vector<Element> elements_;
};

}  // namespace larkstone
