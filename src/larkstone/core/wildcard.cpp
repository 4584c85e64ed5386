#include "larkstone/core/wildcard.hpp"

#include <algorithm>
#include <string>

#include "larkstone/core/text.hpp"

namespace larkstone {

WildcardPattern::WildcardPattern(std::string_view pattern) {
  while (!pattern.empty()) {
    const auto listEnd = pattern.front() == '[' ? pattern.find(']') : std::string_view::npos;
    if (listEnd != std::string_view::npos) {
      const std::string_view list = pattern.substr(1, listEnd - 1);
      if (!list.empty()) elements_.push_back(listOf(list));
      pattern.remove_prefix(listEnd + 1);
      continue;
    }
    const Character character = take(pattern);
    switch (character) {
      case '*':
        if (elements_.empty() || !elements_.back().isRun) elements_.push_back({true, false, {}});
        break;
      case '?':
        elements_.push_back({false, true, {}});
        break;
      case '#':
        elements_.push_back({false, false, {{'0', '9'}}});
        break;
      default:
        elements_.push_back({false, false, {{character, character}}});
    }
  }
}

WildcardPattern::Element WildcardPattern::listOf(std::string_view list) {
  Element element;
  element.excludes = list.front() == '!';
  if (element.excludes) list.remove_prefix(1);
  while (!list.empty()) {
    const Character first = take(list);
    Character last = first;
    if (list.size() >= 2 && list.front() == '-') {
      list.remove_prefix(1);
      last = take(list);
    }
    element.ranges.emplace_back(first, last);
  }
  return element;
}

WildcardPattern::Character WildcardPattern::take(std::string_view& text) {
  Character character = 0;
  for (const char byte : takeCharacter(text)) {
    character = character << 8 | static_cast<std::uint8_t>(byte);
  }
  return character;
}

bool WildcardPattern::Element::accepts(Character character) const {
  const bool listed = std::any_of(ranges.begin(), ranges.end(), [character](const auto& range) {
    return character >= range.first && character <= range.second;
  });
  return listed != excludes;
}

// Where the pattern cannot go on, the last run takes one character more: what stands before it has
// matched as early as it can, and needs no second try.
bool WildcardPattern::matches(std::string_view text) const {
  std::size_t element = 0;
  std::size_t behindRun = 0;       // 0: no run yet
  std::string_view textBehindRun;  // where the text goes on behind that run
  while (!text.empty()) {
    if (isRun(element)) {
      behindRun = ++element;
      textBehindRun = text;
      if (behindRun == elements_.size()) return true;
    }
    std::string_view rest = text;
    if (element < elements_.size() && elements_[element].accepts(take(rest))) {
      ++element;
      text = rest;
    } else if (behindRun > 0) {
      take(textBehindRun);
      text = textBehindRun;
      element = behindRun;
    } else {
      return false;
    }
  }
  if (isRun(element)) ++element;
  return element == elements_.size();
}

}  // namespace larkstone
