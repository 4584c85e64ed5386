// The text by which the categories of an event are sorted for display.

#include <algorithm>
#include <string>
#include <string_view>

#include "larkstone/core/text.hpp"
#include "larkstone/event/event.hpp"

namespace larkstone {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t firstDigit(std::string_view text) {
  return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isDigit) - text.begin());
}

std::string_view leadingDigits(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
  return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

// Numbers have three digits in a key; larger ones stay behind all others.
int numberOf(std::string_view digits) {
  int number = 0;
  for (const char digit : digits) number = std::min(number * 10 + (digit - '0'), 999);
  return number;
}

std::string padded(int number, std::size_t digits) {
  std::string text = std::to_string(std::max(number, 0));
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return text;
}

struct NameParts {
  std::string_view prefix;  // "h", "d", "öppen", "bana"
  std::string_view number;
  std::string_view suffix;  // "e", "kort", "lång"
};

NameParts partsOf(std::string_view name) {
  const std::size_t digit = firstDigit(name);
  NameParts parts;
  parts.prefix = trimmed(name.substr(0, digit));
  parts.number = leadingDigits(name.substr(digit));
  parts.suffix = trimmed(name.substr(digit + parts.number.size()));
  const std::size_t blank = parts.prefix.find(' ');
  if (parts.number.empty() && blank != std::string_view::npos) {
    parts.suffix = trimmed(parts.prefix.substr(blank));
    parts.prefix = parts.prefix.substr(0, blank);
  }
  return parts;
}

// 0 and 1 for the elite, 5 to 8 for beginners and open classes, 9 for all others.
int classGroup(const NameParts& parts) {
  struct Rule {
    std::string_view NameParts::*part;
    std::string_view beginning;
    int group;
  };
  static constexpr Rule rules[] = {
      {&NameParts::suffix, "se", 0},  {&NameParts::suffix, "super", 0},
      {&NameParts::suffix, "e", 1},   {&NameParts::suffix, "m", 3},
      {&NameParts::suffix, "n", 4},   {&NameParts::prefix, "insk", 5},
      {&NameParts::prefix, "u", 6},   {&NameParts::prefix, "ö", 7},
      {&NameParts::prefix, "dir", 8},
  };
  int group = 9;
  for (const Rule& rule : rules) {
    if ((parts.*rule.part).starts_with(rule.beginning)) group = rule.group;
  }
  return group;
}

enum class ClassGender { women, men, neither };

ClassGender genderOf(std::string_view prefix) {
  if (prefix.starts_with('h') || (prefix.starts_with('m') && !prefix.starts_with("mo"))) {
    return ClassGender::men;
  }
  return prefix.starts_with('d') || prefix.starts_with('w') ? ClassGender::women
                                                            : ClassGender::neither;
}

int ageRank(int number, int group, enmCategorySortFlags flags) {
  if (number == 0 || (group >= 6 && group <= 8)) return number;
  if ((flags & ecsfYoungstersBeforeOldboys) == 0) return 999 - number;
  return number <= 21 ? 21 - number : number;
}

int lengthGroup(std::string_view suffix) {
  if (suffix.empty()) return 1;
  if (suffix.starts_with('l')) return 0;
  return suffix.starts_with('k') || suffix.starts_with('s') ? 3 : 2;
}

std::string fields(std::string_view name, enmCategorySortFlags flags) {
  const NameParts parts = partsOf(name);
  int group = 9;
  int gender = 2;
  int rank = numberOf(parts.number);
  if (!parts.prefix.starts_with("bana") && !parts.prefix.starts_with("course")) {
    group = classGroup(parts);
    const ClassGender found = genderOf(parts.prefix);
    if (found != ClassGender::neither) {
      if (group == 9) group = 2;
      gender = found == ClassGender::men && (flags & ecsfTreatGendersAsEqual) == 0 ? 1 : 0;
    }
    rank = ageRank(rank, group, flags);
  }
  const int suffixNumber = numberOf(leadingDigits(parts.suffix.substr(firstDigit(parts.suffix))));
  return padded(group, 1) + padded(gender, 1) + padded(rank, 3) + "0" +
         padded(lengthGroup(parts.suffix), 1) + padded(suffixNumber, 3);
}

}  // namespace

std::string LRKEvent::createCategorySortKey(std::string_view categoryName, int categoryIndex,
                                            enmCategorySortFlags categorySortFlags) {
  std::string key;
  if (categorySortFlags != ecsfUnsorted) {
    key = fields(lowered(categoryName), categorySortFlags) + "_";
  }
  return key + padded(categoryIndex, 5) + "_" + std::string(categoryName);
}

}  // namespace larkstone
