#include "cli/forkings.hpp"

#include <algorithm>

namespace larkstone::cli {

namespace {

bool isControl(Code code) { return !isStartCode(code) && !isFinishCode(code); }

}  // namespace

bool hasControls(const LRKRunner& runner) {
  const std::vector<Code> codes = runner.punches().codeArray();
  return std::any_of(codes.begin(), codes.end(), isControl);
}

bool hasControls(const LRKLegs& legs) {
  bool found = false;
  for (int i = 0; i < legs.count() && !found; ++i) {
    found = isControl(legs.beginCode(i)) || isControl(legs.endCode(i));
  }
  return found;
}

const char* nameOf(enmCourseType type) {
  constexpr const char* names[] = {"normal", "relay", "one-man relay", "common legs", "rogaining"};
  return type >= ectyNormal && type <= ectyRogaining ? names[type] : "unknown";
}

}  // namespace larkstone::cli
