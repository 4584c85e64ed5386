#pragma once

// Short forms for building lists and runners in tests.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/core/code_text.hpp"
#include "larkstone/geometry/codes.hpp"
#include "larkstone/geometry/legs.hpp"
#include "larkstone/geometry/punches.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone::test {

/// "S-31-32-F" as codes.
inline LRKCodes codes(std::string_view text) {
  LRKCodes list;
  while (!text.empty()) {
    const auto dash = text.find('-');
    list.add(stringToCode(text.substr(0, dash), "S", "F"));
    text = dash == std::string_view::npos ? "" : text.substr(dash + 1);
  }
  return list;
}

/// "S-31-32-F" as legs.
inline LRKLegs legs(std::string_view text) { return codes(text).toLegs(); }

/// "S-31-32-F" as punches at 0, 1, 2 ... minutes, or at the given times in seconds (-1: no time).
inline LRKPunches punches(std::string_view text, const std::vector<int>& seconds = {}) {
  const LRKCodes list = codes(text);
  LRKPunches punches;
  for (int i = 0; i < list.count(); ++i) {
    const bool given = static_cast<std::size_t>(i) < seconds.size();
    const int time = given ? seconds[static_cast<std::size_t>(i)] : i * 60;
    punches.add(time < 0 ? LRK_NO_TIME : time * 100, list.code(i));
  }
  return punches;
}

/// A runner with status OK and these punches.
inline LRKRunner runner(std::string_view text, const std::vector<int>& seconds = {},
                        std::string name = "") {
  LRKRunner result;
  result.status(estaOK);
  if (!name.empty()) result.name(std::move(name));
  result.punches(punches(text, seconds));
  return result;
}

/// A runner with these punches just as they stand, one minute apart.
inline LRKRunner runnerAsWritten(std::string_view text) {
  const LRKCodes list = codes(text);
  LRKRunner result;
  result.punches().count(list.count());
  for (int i = 0; i < list.count(); ++i) result.punches().edit(i, i * 6000, list.code(i));
  return result;
}

inline LRKRunner withStatus(LRKRunner runner, enmStatus status) {
  runner.status(status);
  return runner;
}

/// A category of such runners, a "!" in front of one who mispunched.
inline LRKCategory categoryOf(std::initializer_list<const char*> courses) {
  LRKCategory category;
  for (const char* course : courses) {
    const bool failed = *course == '!';
    category.addRunner(
        withStatus(runner(failed ? course + 1 : course), failed ? estaMisPunch : estaOK));
  }
  return category;
}

/// The codes of a list as "S-31-32-F".
inline std::string textOf(const LRKPunches& list) { return list.codesToString(); }
inline std::string textOf(const LRKCodes& list) { return list.toPunches().codesToString(); }
inline std::string textOf(const LRKLegs& list) { return list.codesToString("S", "F"); }

/// The times of a list in hundredths.
inline std::vector<Time> timesOf(const LRKPunches& list) {
  std::vector<Time> times;
  for (int i = 0; i < list.count(); ++i) times.push_back(list.time(i));
  return times;
}

}  // namespace larkstone::test
