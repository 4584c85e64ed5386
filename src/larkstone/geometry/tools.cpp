#include "larkstone/geometry/tools.hpp"

#include <algorithm>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace larkstone {

namespace {

// Codes in the order in which they were first added.
class CodeSet {
 public:
  void add(Code code) {
    if (rank_.try_emplace(code, list_.count()).second) list_.add(code);
  }
  /// The place of a code in the set, or -1.
  int rank(Code code) const {
    const auto found = rank_.find(code);
    return found == rank_.end() ? -1 : found->second;
  }
  const LRKCodes& list() const { return list_; }

 private:
  LRKCodes list_;
  std::unordered_map<Code, int> rank_;
};

// The first place of every code of the set that the runner has, in the set's order.
std::vector<int> firstPlaces(const LRKCodes& codes, const CodeSet& set) {
  std::vector<std::pair<int, int>> rankAndPlace;
  for (int p = 0; p < codes.count(); ++p) {
    if (const int rank = set.rank(codes.code(p)); rank >= 0) rankAndPlace.emplace_back(rank, p);
  }
  std::sort(rankAndPlace.begin(), rankAndPlace.end());
  std::vector<int> places;
  for (std::size_t i = 0; i < rankAndPlace.size(); ++i) {
    if (i == 0 || rankAndPlace[i].first != rankAndPlace[i - 1].first) {
      places.push_back(rankAndPlace[i].second);
    }
  }
  return places;
}

LRKCodes codesActingAsStart(std::span<const LRKCodes> runners) {
  CodeSet firstControls;
  for (const LRKCodes& codes : runners) {
    const bool hasStart = std::any_of(codes.codes().begin(), codes.codes().end(), isStartCode);
    if (hasStart && codes.count() > 1 && codes.code(1) > 0) firstControls.add(codes.code(1));
  }
  CodeSet actingAsStart;
  for (const LRKCodes& codes : runners) {
    for (const int p : firstPlaces(codes, firstControls)) {
      if (p > 0 && codes.code(p - 1) < LRK_START_CODE) actingAsStart.add(codes.code(p - 1));
    }
  }
  return actingAsStart.list();
}

LRKCodes codesActingAsFinish(std::span<const LRKCodes> runners) {
  CodeSet lastControls;
  for (const LRKCodes& codes : runners) {
    const bool hasFinish = std::any_of(codes.codes().begin(), codes.codes().end(), isFinishCode);
    if (!hasFinish || codes.count() < 2) continue;
    const Code last = codes.code(codes.count() - 2);
    if (last > 0) lastControls.add(last);
  }
  CodeSet actingAsFinish;
  for (const LRKCodes& codes : runners) {
    for (const int p : firstPlaces(codes, lastControls)) {
      if (p < codes.count() - 1 && codes.code(p + 1) < LRK_FINISH_CODE) {
        actingAsFinish.add(codes.code(p + 1));
      }
    }
  }
  return actingAsFinish.list();
}

// Only the codes of the lists are written, as a host's named list keeps its name.
void replaceCodes(LRKCodes& list, const LRKCodes& codes) {
  list.count(codes.count());
  for (int i = 0; i < codes.count(); ++i) list.code(i, codes.code(i));
}

void findCodes(std::span<const LRKCodes> runners, LRKCodes& startCodes, LRKCodes& finishCodes) {
  replaceCodes(startCodes, codesActingAsStart(runners));
  replaceCodes(finishCodes, codesActingAsFinish(runners));
}

}  // namespace

void getCodesEqualToStartAndFinish(const std::vector<LRKCodes>& codes, LRKCodes& startCodes,
                                   LRKCodes& finishCodes) {
  findCodes(codes, startCodes, finishCodes);
}

void LRKTools::getCodesEqualToStartAndFinish(int noOfRunners, const std::vector<LRKCodes>& codes,
                                             LRKCodes& startCodes, LRKCodes& finishCodes) {
  const auto count = std::min(static_cast<std::size_t>(std::max(noOfRunners, 0)), codes.size());
  findCodes(std::span(codes).first(count), startCodes, finishCodes);
}

}  // namespace larkstone
