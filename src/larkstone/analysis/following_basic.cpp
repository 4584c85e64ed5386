#include <algorithm>
#include <utility>

#include "larkstone/analysis/following.hpp"

namespace larkstone {

namespace {

// The group with the largest share; of equals the one that passed the controls first.
const CloseGroup& largest(std::span<const CloseGroup> close, float CloseGroup::*share) {
  return *std::max_element(
      close.begin(), close.end(), [share](const CloseGroup& a, const CloseGroup& b) {
        if (a.*share != b.*share) return a.*share < b.*share;
        return std::pair(a.gapAtBegin, a.gapAtEnd) > std::pair(b.gapAtBegin, b.gapAtEnd);
      });
}

class BasicFollowing : public FollowingMethod {
 public:
  explicit BasicFollowing(Calculation& calculation) : calculation_(calculation) {}

  LegIndices judge(int /*group*/, std::span<const CloseGroup> close) override {
    const CloseGroup& pulled = largest(close, &CloseGroup::pulled);
    const CloseGroup& followed = largest(close, &CloseGroup::followed);
    LegIndices indices{pulled.pulled, followed.followed};
    if (indices.pull > 0 && indices.following > 0 && &pulled != &followed) {
      indices.pull = std::max(indices.pull - indices.following, 0.0F);
    }
    return indices;
  }

  // Partners of an earlier calculation would not go with the new indices.
  void storePartners(int r) override {
    calculation_.runner(r).pulledRunners({});
    calculation_.runner(r).followedRunners({});
  }

 private:
  Calculation& calculation_;
};

}  // namespace

std::unique_ptr<FollowingMethod> basicFollowing(Calculation& calculation) {
  return std::make_unique<BasicFollowing>(calculation);
}

}  // namespace larkstone
