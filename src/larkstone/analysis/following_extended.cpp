#include <algorithm>
#include <cstdint>
#include <vector>

#include "larkstone/analysis/following.hpp"
#include "larkstone/analysis/pack_integral.hpp"
#include "larkstone/analysis/partner_log.hpp"

namespace larkstone {

namespace {

// How many partners a course stores before lists are cut to the strongest: only fields of thousands
// within seconds of each other, leg after leg, come near.
constexpr std::int64_t partnersStoredInFull = std::int64_t{1} << 26;
constexpr std::int64_t shortestCut = 16;

class ExtendedFollowing : public FollowingMethod {
 public:
  ExtendedFollowing(Calculation& calculation, const GapWeight& weight)
      : calculation_(calculation),
        integral_(weight),
        pulled_(calculation.noOfLegs, calculation.noOfRunners),
        followed_(calculation.noOfLegs, calculation.noOfRunners) {}

  void beginLeg(int legNo, const LegPassings& passings) override {
    legNo_ = legNo;
    passings_ = &passings;
    const std::int64_t left = partnersStoredInFull - pulled_.count() - followed_.count();
    limit_ = std::max(left / (2 * std::int64_t{calculation_.noOfRunners}), shortestCut);
  }

  LegIndices judge(int group, std::span<const CloseGroup> close) override {
    pulled_.record(legNo_, *passings_, group, close, &CloseGroup::pulled, limit_);
    followed_.record(legNo_, *passings_, group, close, &CloseGroup::followed, limit_);
    if (isOnePartner(group, close)) return {close.front().pulled, close.front().followed};
    lines_.clear();
    for (const CloseGroup& partner : close) {
      lines_.push_back({partner.gapAtBegin, partner.gapAtEnd - partner.gapAtBegin});
    }
    const LegShares shares = integral_.shares(lines_);
    return {static_cast<float>(shares.pulling), static_cast<float>(shares.following)};
  }

  void storePartners(int r) override {
    LRKRunner& runner = calculation_.runner(r);
    runner.pulledRunners(pulled_.listsOf(r));
    runner.followedRunners(followed_.listsOf(r));
  }

 private:
  bool isOnePartner(int group, std::span<const CloseGroup> close) const {
    const std::size_t runners = passings_->group(close.front().group).runners.size();
    return close.size() == 1 && runners == (close.front().group == group ? 2 : 1);
  }

  Calculation& calculation_;
  PackIntegral integral_;
  PartnerLog pulled_;
  PartnerLog followed_;
  std::vector<GapLine> lines_;
  const LegPassings* passings_ = nullptr;
  int legNo_ = 0;
  std::int64_t limit_ = 0;  // of a runner's list on this leg
};

}  // namespace

std::unique_ptr<FollowingMethod> extendedFollowing(Calculation& calculation,
                                                   const GapWeight& weight) {
  return std::make_unique<ExtendedFollowing>(calculation, weight);
}

}  // namespace larkstone
