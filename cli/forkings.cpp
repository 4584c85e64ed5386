#include "cli/forkings.hpp"

#include <map>
#include <utility>

namespace larkstone::cli {

std::vector<Sequence> sequencesOf(const LRKCategory& category, bool onlyOK) {
  std::vector<Sequence> sequences;
  std::map<std::vector<Code>, std::size_t> index;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    if (onlyOK && runner.status() != estaOK) continue;
    std::vector<Code> codes = runner.punches().codeArray();
    const auto [found, isNew] = index.try_emplace(codes, sequences.size());
    if (isNew) sequences.push_back({std::move(codes), 0, i});
    ++sequences[found->second].runners;
  }
  return sequences;
}

const char* nameOf(enmCourseType type) {
  constexpr const char* names[] = {"normal", "relay", "one-man relay", "common legs", "rogaining"};
  return type >= ectyNormal && type <= ectyRogaining ? names[type] : "unknown";
}

}  // namespace larkstone::cli
