#pragma once

// Runners whom a runner met, leg by leg.

#include <cstdint>
#include <vector>

#include "larkstone/core/index.hpp"

namespace larkstone {

/// A list per leg, all in one piece of memory. Changing a list moves those
/// of later legs.
class PartnerLists {
 public:
  struct Partner {
    std::int16_t runner = 0;  ///< position in the course
    float value = 0;
  };

  /// 0 also for a leg that is not there.
  int count(int legNo) const {
    const bool isThere = legNo >= 0 && legNo < static_cast<int>(end_.size());
    return isThere ? static_cast<int>(end(legNo) - begin(legNo)) : 0;
  }
  /// Keeps the partners that are there; new ones are 0.
  void count(int legNo, int count);
  /// Makes room for that many partners on that many legs.
  void reserve(std::size_t partners, int legs) {
    partners_.reserve(partners);
    end_.reserve(static_cast<std::size_t>(legs));
  }
  /// Adds a partner to the list of the last leg that has one, or of a later leg.
  void append(int legNo, Partner partner) {
    const auto leg = static_cast<std::size_t>(legNo);
    if (leg >= end_.size()) end_.resize(leg + 1, static_cast<std::uint32_t>(partners_.size()));
    partners_.push_back(partner);
    ++end_[leg];
  }

  Partner& at(int legNo, int k) {
    return partners_[begin(legNo) + indexWithin(k, static_cast<std::size_t>(count(legNo)))];
  }
  /// Runner -1 for a partner that is not there.
  Partner at(int legNo, int k) const {
    if (k < 0 || k >= count(legNo)) return {-1, 0};
    return partners_[begin(legNo) + static_cast<std::size_t>(k)];
  }

 private:
  std::size_t begin(int legNo) const { return legNo == 0 ? 0 : end(legNo - 1); }
  std::size_t end(int legNo) const { return end_[static_cast<std::size_t>(legNo)]; }

  std::vector<Partner> partners_;
  std::vector<std::uint32_t> end_;  // up to the last leg that ever had a partner
};

}  // namespace larkstone
