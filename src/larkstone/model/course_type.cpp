// What kind of course the runners of a category ran.

#include <algorithm>
#include <vector>

#include "larkstone/geometry/tools.hpp"
#include "larkstone/model/category.hpp"

namespace larkstone {

namespace {

// Looks for the legs of one punch list in another, each leg of which may be used once.
class LegsOfRunner {
 public:
  LegsOfRunner(const LRKPunches& wanted, LRKPunches& searched, const LRKCodes& actingAsStart,
               const LRKCodes& actingAsFinish)
      : wanted_(wanted),
        searched_(searched),
        actingAsStart_(actingAsStart),
        actingAsFinish_(actingAsFinish) {}

  /// Whether the two runners ran the same legs, in any order.
  bool areAll() {
    searched_.unmarkLegs();
    for (int j = 0; j + 1 < wanted_.count(); ++j) {
      if (!findLeg(wanted_.code(j), wanted_.code(j + 1))) return false;
    }
    return searched_.allLegsMarked();
  }

 private:
  bool findLeg(Code begin, Code end) {
    if (found(searched_.legExistsAndMark(begin, end))) return true;
    if (isStartCode(begin) || actingAsStart_.codeExists(begin)) {
      const auto search = [&](Code code, int offset) {
        return found(searched_.legExistsAndMark(code, end, offset));
      };
      if (inTwoPasses(actingAsStart_, wanted_.code(0), search)) return true;
    }
    if (isFinishCode(end) || actingAsFinish_.codeExists(end)) {
      return inTwoPasses(actingAsFinish_, wanted_.code(wanted_.count() - 1),
                         [&](Code code, int offset) {
                           return found(searched_.legExistsAndMark(begin, code, offset));
                         });
    }
    return false;
  }

  template <class Search>
  bool inTwoPasses(const LRKCodes& codes, Code last, Search search) {
    for (const int offset : {lastHit_, 0}) {
      for (const Code code : codes.codes()) {
        if (search(code, offset)) return true;
      }
      if (search(last, offset)) return true;
    }
    return false;
  }

  bool found(int leg) {
    if (leg >= 0) lastHit_ = leg;
    return leg >= 0;
  }

  const LRKPunches& wanted_;
  LRKPunches& searched_;
  const LRKCodes& actingAsStart_;
  const LRKCodes& actingAsFinish_;
  int lastHit_ = 0;
};

}  // namespace

enmCourseType LRKCategory::determineCourseType() const {
  if (runners_.empty()) return ectyNormal;
  std::vector<LRKCodes> codes;
  codes.reserve(runners_.size());
  for (const LRKRunner& runner : runners_) codes.push_back(runner.punches().toCodes());
  const bool allEqual = std::all_of(codes.begin(), codes.end(), [&codes](const LRKCodes& c) {
    return c.codes() == codes.front().codes();
  });
  if (allEqual) return ectyNormal;

  LRKCodes actingAsStart;
  LRKCodes actingAsFinish;
  getCodesEqualToStartAndFinish(codes, actingAsStart, actingAsFinish);
  const LRKPunches& reference = runners_.front().punches();
  const auto ranTheSameLegs = [&](const LRKRunner& runner) {
    LRKPunches punches = runner.punches();
    return LegsOfRunner(reference, punches, actingAsStart, actingAsFinish).areAll();
  };
  if (std::all_of(runners_.begin() + 1, runners_.end(), ranTheSameLegs)) return ectyOneManRelay;

  LRKPunches common = reference;
  for (std::size_t i = 1; i < runners_.size() && common.count() > 0; ++i) {
    common = common.commonControlPunches(runners_[i].punches());
  }
  return common.count() < 2 ? ectyRogaining : ectyRelay;
}

}  // namespace larkstone
