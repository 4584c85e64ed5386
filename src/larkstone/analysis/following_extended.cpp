#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

#include "larkstone/analysis/following.hpp"
#include "larkstone/analysis/pack_integral.hpp"

namespace larkstone {

namespace {

// How many partners a course stores before its lists are cut to the strongest: only fields of
// thousands within seconds of each other, leg after leg, come near.
constexpr std::int64_t partnersStoredInFull = std::int64_t{1} << 26;
constexpr std::int64_t shortestCut = 16;

// Partners of one runner by their share, the strongest first, equal ones by runner.
class PartnerList {
 public:
  void collect(const LegPassings& passings, int group, std::span<const CloseGroup> close,
               float CloseGroup::*share) {
    entries_.clear();
    holdsGroup_ = false;
    for (const CloseGroup& partner : close) {
      const float value = partner.*share;
      if (value <= 0) continue;
      if (partner.group == group) holdsGroup_ = true;
      const std::uint64_t weakness = ~std::bit_cast<std::uint32_t>(value);
      for (const int runner : passings.group(partner.group).runners) {
        entries_.push_back(weakness << 32 | static_cast<std::uint32_t>(runner));
      }
    }
    std::sort(entries_.begin(), entries_.end());
  }

  /// Stores the first `limit` partners of a runner of the group; how many they are.
  template <class SetCount, class Put>
  std::int64_t store(int runner, std::size_t limit, SetCount setCount, Put put) const {
    const std::size_t partners = entries_.size() - (holdsGroup_ ? 1 : 0);
    const int count = static_cast<int>(std::min(partners, limit));
    setCount(count);
    int k = 0;
    for (auto entry = entries_.begin(); k < count; ++entry) {
      const int partner = runnerOf(*entry);
      if (partner == runner) continue;
      put(k++, partner, std::bit_cast<float>(~static_cast<std::uint32_t>(*entry >> 32)));
    }
    return count;
  }

 private:
  static int runnerOf(std::uint64_t entry) {
    return static_cast<int>(static_cast<std::uint32_t>(entry));
  }

  std::vector<std::uint64_t> entries_;  // the share upside down above, the runner below
  bool holdsGroup_ = false;             // the runners of the group are partners of each other
};

class ExtendedFollowing : public FollowingMethod {
 public:
  ExtendedFollowing(Calculation& calculation, const GapWeight& weight)
      : calculation_(calculation), integral_(weight) {}

  void beginLeg(int legNo, const LegPassings& passings) override {
    legNo_ = legNo;
    passings_ = &passings;
    const std::int64_t lists = 2 * std::int64_t{calculation_.noOfRunners};
    limit_ =
        static_cast<std::size_t>(std::max((partnersStoredInFull - stored_) / lists, shortestCut));
  }

  LegIndices judge(int group, std::span<const CloseGroup> close) override {
    storePartners(group, close);
    if (noOfPartners(group, close) == 1) return {close.front().pulled, close.front().followed};
    lines_.clear();
    for (const CloseGroup& partner : close) {
      lines_.push_back({partner.gapAtBegin, partner.gapAtEnd - partner.gapAtBegin});
    }
    const LegShares shares = integral_.shares(lines_);
    return {static_cast<float>(shares.pulling), static_cast<float>(shares.following)};
  }

 private:
  std::size_t noOfPartners(int group, std::span<const CloseGroup> close) const {
    std::size_t partners = 0;
    for (const CloseGroup& partner : close) {
      const std::size_t runners = passings_->group(partner.group).runners.size();
      partners += partner.group == group ? runners - 1 : runners;
    }
    return partners;
  }

  void storePartners(int group, std::span<const CloseGroup> close) {
    pulled_.collect(*passings_, group, close, &CloseGroup::pulled);
    followed_.collect(*passings_, group, close, &CloseGroup::followed);
    for (const int r : passings_->group(group).runners) {
      LRKRunner& runner = calculation_.runner(r);
      stored_ += pulled_.store(
          r, limit_, [&](int count) { runner.noOfPulledRunners(legNo_, count); },
          [&](int k, int partner, float value) {
            runner.pulledRunnerIndex(legNo_, k, partner);
            runner.pulledRunnerIndexValue(legNo_, k, value);
          });
      stored_ += followed_.store(
          r, limit_, [&](int count) { runner.noOfFollowedRunners(legNo_, count); },
          [&](int k, int partner, float value) {
            runner.followedRunnerIndex(legNo_, k, partner);
            runner.followedRunnerIndexValue(legNo_, k, value);
          });
    }
  }

  Calculation& calculation_;
  PackIntegral integral_;
  PartnerList pulled_;
  PartnerList followed_;
  std::vector<GapLine> lines_;
  const LegPassings* passings_ = nullptr;
  int legNo_ = 0;
  std::size_t limit_ = 0;    // of a list on this leg
  std::int64_t stored_ = 0;  // partners in all lists
};

}  // namespace

std::unique_ptr<FollowingMethod> extendedFollowing(Calculation& calculation,
                                                   const GapWeight& weight) {
  return std::make_unique<ExtendedFollowing>(calculation, weight);
}

}  // namespace larkstone
