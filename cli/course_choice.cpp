#include "cli/course_choice.hpp"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/code_text.hpp"
#include "larkstone/core/text.hpp"

#include "cli/forkings.hpp"

namespace larkstone::cli {

namespace {

LRKCodes codesOf(const std::vector<Code>& codes) {
  LRKCodes list;
  for (const Code code : codes) list.add(code);
  return list;
}

std::vector<std::pair<Code, Code>> sortedLegs(const std::vector<Code>& codes) {
  std::vector<std::pair<Code, Code>> legs;
  for (std::size_t i = 1; i < codes.size(); ++i) legs.emplace_back(codes[i - 1], codes[i]);
  std::sort(legs.begin(), legs.end());
  return legs;
}

// The sequences that are no slip of a single runner.
std::vector<Sequence> forkings(const std::vector<Sequence>& sequences) {
  int runners = 0;
  for (const Sequence& sequence : sequences) runners += sequence.runners;
  std::vector<Sequence> kept;
  std::copy_if(sequences.begin(), sequences.end(), std::back_inserter(kept),
               [runners](const Sequence& sequence) {
                 return sequence.runners >= 2 || sequence.runners * 10 >= runners;
               });
  return kept;
}

bool isFinisher(const LRKRunner& runner) {
  const Time time = runner.resultTime();
  return runner.status() == estaOK && time >= 1 && !isDisq(time);
}

template <class Is>
bool anybody(const LRKCategory& category, Is is) {
  bool found = false;
  for (int i = 0; i < category.noOfRunners() && !found; ++i) found = is(category.runner(i));
  return found;
}

template <class Is>
LRKCategory only(LRKCategory category, Is is) {
  int kept = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (!is(category.runner(i))) continue;
    if (kept != i) category.runner(kept, std::move(category.runner(i)));
    ++kept;
  }
  category.noOfRunners(kept);
  return category;
}

std::vector<std::string_view> partsOf(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const auto dash = text.find('-');
    parts.push_back(trimmed(text.substr(0, dash)));
    if (dash == std::string_view::npos) return parts;
    text.remove_prefix(dash + 1);
  }
}

// A control is a number, a start "S" or a finish "F", each with a number or without.
bool isControlText(std::string_view text) {
  const bool isEnd =
      !text.empty() && std::string_view("SsFf").find(text.front()) != std::string_view::npos;
  if (isEnd) text.remove_prefix(1);
  return (isEnd || !text.empty()) && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

CourseChoice chooseCourse(const LRKCategory& category) {
  using Wanted = bool (*)(const LRKRunner&);
  constexpr Wanted wanted[] = {
      [](const LRKRunner& runner) { return isFinisher(runner) && hasControls(runner); },
      [](const LRKRunner& runner) { return hasControls(runner); },
      [](const LRKRunner&) { return true; },
  };
  std::vector<Sequence> sequences;
  bool ofFinishers = true;
  for (const Wanted isWanted : wanted) {
    sequences = sequencesOf(category, isWanted);
    if (!sequences.empty()) break;
    ofFinishers = false;
  }
  if (sequences.empty()) return {};
  const auto most =
      std::max_element(sequences.begin(), sequences.end(),
                       [](const Sequence& a, const Sequence& b) { return a.runners < b.runners; });
  LRKCodes course = codesOf(most->codes);
  CourseChoice choice;
  const std::vector<Sequence> forked = ofFinishers ? forkings(sequences) : std::vector<Sequence>();
  if (forked.size() > 1) {
    const auto legs = sortedLegs(most->codes);
    choice.allowRearrangement = std::all_of(
        forked.begin(), forked.end(),
        [&legs](const Sequence& sequence) { return sortedLegs(sequence.codes) == legs; });
    choice.allowMerging = !choice.allowRearrangement;
    if (choice.allowMerging) {
      for (const Sequence& sequence : forked) course = course.commonCodes(codesOf(sequence.codes));
    }
  }
  choice.legs = course.toLegs();
  return choice;
}

LRKCourse toCourse(const LRKCategory& category, enmRequiredLegs requiredLegs, CourseChoice choice) {
  const auto course = [&](const LRKCategory& entries) {
    return entries.toCourse(requiredLegs, choice.allowRearrangement, choice.allowMerging,
                            choice.legs);
  };
  if (requiredLegs == erqlNone || !choice.legs ||
      !anybody(category, [](const LRKRunner& runner) { return hasControls(runner); })) {
    return course(category);
  }
  const bool resultIsEnough = !hasControls(*choice.legs);
  const auto isEmpty = [resultIsEnough](const LRKRunner& runner) {
    return !hasControls(runner) && !(resultIsEnough && isFinisher(runner));
  };
  if (!anybody(category, isEmpty)) return course(category);
  return course(only(category, [&](const LRKRunner& runner) { return !isEmpty(runner); }));
}

bool isCourseText(const std::string& text) {
  if (text == "auto" || text == "first") return true;
  const std::vector<std::string_view> parts = partsOf(text);
  return parts.size() >= 2 && std::all_of(parts.begin(), parts.end(), isControlText);
}

std::optional<CourseChoice> courseFromText(const std::string& text, const LRKCategory& category) {
  if (!isCourseText(text)) return std::nullopt;
  if (text == "auto") return chooseCourse(category);
  if (text == "first") return CourseChoice{};
  LRKCodes codes;
  for (const std::string_view part : partsOf(text)) codes.add(stringToCode(part, "S", "F"));
  return CourseChoice{codes.toLegs(), false, false};
}

}  // namespace larkstone::cli
