#include "larkstone/import/common_controls.hpp"

#include <algorithm>
#include <functional>
#include <queue>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "larkstone/geometry/codes.hpp"

namespace larkstone {

namespace {

using Codes = std::vector<Code>;

// The punches of the controls, without a start before and a finish behind them.
struct Controls {
  explicit Controls(const LRKPunches& punches)
      : begin(punches.startExists() ? 1 : 0),
        end(punches.count() - (punches.count() > begin && punches.finishExists() ? 1 : 0)) {}
  int begin;
  int end;
};

Codes controlCodes(const LRKPunches& punches) {
  const Controls controls(punches);
  Codes codes;
  for (int i = controls.begin; i < controls.end; ++i) codes.push_back(punches.code(i));
  return codes;
}

LRKCodes codeList(const Codes& codes) {
  LRKCodes list;
  for (const Code code : codes) list.add(code);
  return list;
}

// Controls in an order, and where other courses pass them.
class ControlOrder {
 public:
  explicit ControlOrder(const Codes& codes) {
    for (std::size_t i = 0; i < codes.size(); ++i) visits_[codes[i]].push_back(i);
  }

  // Where the controls stand in a course one behind the other; those that are not there are passed
  // over. It takes the time that the course is long, however many controls there are.
  std::vector<std::size_t> placesIn(const Codes& course) const {
    std::unordered_map<Code, std::size_t> last;
    for (std::size_t i = 0; i < course.size(); ++i) last[course[i]] = i;
    // When the next visit of a control is due, the control, and the number of the visit there.
    using Visit = std::tuple<std::size_t, Code, std::size_t>;
    std::priority_queue<Visit, std::vector<Visit>, std::greater<>> due;
    const auto expect = [&](Code code, std::size_t number) {
      const auto found = visits_.find(code);
      if (found == visits_.end() || number >= found->second.size()) return;
      due.emplace(found->second[number], code, number);
    };
    for (const auto& [code, place] : last) expect(code, 0);
    std::vector<std::size_t> places;
    for (std::size_t position = 0; !due.empty();) {
      const auto [when, code, number] = due.top();
      due.pop();
      if (last.at(code) < position) continue;
      while (course[position] != code) ++position;
      places.push_back(position++);
      expect(code, number + 1);
    }
    return places;
  }

 private:
  std::unordered_map<Code, std::vector<std::size_t>> visits_;
};

bool hasValidResult(const LRKRunner& runner) {
  return runner.status() == estaOK && !isDisq(runner.finishTime());
}

// The forkings that were run, each once, in order of appearance: those of runners with a valid
// result, or of all when there is none. Who has no controls says nothing about the course.
std::vector<Codes> forkingsOf(const LRKCategory& category) {
  std::vector<Codes> forkings[2];
  std::set<Codes> seen[2];
  for (int i = 0; i < category.noOfRunners(); ++i) {
    const LRKRunner& runner = category.runner(i);
    const Codes codes = controlCodes(runner.punches());
    if (codes.empty()) continue;
    const std::size_t kind = hasValidResult(runner) ? 0 : 1;
    if (seen[kind].insert(codes).second) forkings[kind].push_back(codes);
  }
  return forkings[0].empty() ? forkings[1] : forkings[0];
}

// The controls of the first forking that can be passed in this order on every other one.
Codes controlsInOrder(const std::vector<Codes>& forkings) {
  std::unordered_map<Code, std::size_t> visitedBy;
  for (const Codes& forking : forkings) {
    for (const Code code : std::set<Code>(forking.begin(), forking.end())) ++visitedBy[code];
  }
  Codes common = forkings.front();
  std::erase_if(common, [&](Code code) { return visitedBy.at(code) < forkings.size(); });
  for (const Codes& forking : forkings) {
    Codes passed;
    for (const std::size_t place : ControlOrder(common).placesIn(forking)) {
      passed.push_back(forking[place]);
    }
    common = std::move(passed);
  }
  return common;
}

// Loops run in any order leave only their centre in common (LRKCodes::commonCodes). Where loops are
// no forking, though, all their controls are; the rule that finds more is right.
Codes commonControls(const std::vector<Codes>& forkings) {
  if (forkings.empty()) return {};
  if (forkings.size() == 1) return forkings.front();
  LRKCodes common = codeList(forkings.front());
  for (std::size_t i = 1; i < forkings.size() && common.count() > 0; ++i) {
    common = common.commonCodes(codeList(forkings[i]));
  }
  Codes inOrder = controlsInOrder(forkings);
  return inOrder.size() > common.codes().size() ? inOrder : common.codes();
}

void append(const LRKPunches& from, int index, LRKPunches& to) {
  const int place = to.count();
  if (place >= LRK_MAX_LIST) return;
  to.count(place + 1);
  to.edit(place, from.time(index), from.code(index));
  to.isEstimated(place, from.isEstimated(index));
}

void reduce(LRKRunner& runner, const ControlOrder& common) {
  const LRKPunches all = std::exchange(runner.punches(), {});
  const Controls controls(all);
  std::vector<bool> stays(static_cast<std::size_t>(all.count()), true);
  std::fill(stays.begin() + controls.begin, stays.begin() + controls.end, false);
  for (const std::size_t place : common.placesIn(controlCodes(all))) {
    stays[place + static_cast<std::size_t>(controls.begin)] = true;
  }
  for (int i = 0; i < all.count(); ++i) {
    append(all, i, stays[static_cast<std::size_t>(i)] ? runner.punches() : runner.extraPunches());
  }
}

}  // namespace

void reduceToCommonControls(LRKCategory& category) {
  const ControlOrder common(commonControls(forkingsOf(category)));
  for (int i = 0; i < category.noOfRunners(); ++i) reduce(category.runner(i), common);
}

}  // namespace larkstone
