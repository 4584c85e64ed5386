#pragma once

// Whether runners of a one-man relay or butterfly ran the same legs in some order.

#include <map>
#include <utility>
#include <vector>

#include "larkstone/geometry/codes.hpp"

namespace larkstone {

/// The legs of one runner, each of which another runner may take once. A leg from the start that is
/// not there is taken under the codes acting as start, in their order, and last under the code that
/// the template begins with; then likewise at the finish.
///
/// The course type of a category looks for the legs of its first runner in the punches of the
/// others and goes on behind its last hit. Here legs are looked for from the first one on, so a leg
/// that the template runs twice is never found a second time. The cost is that of the legs alone,
/// however many codes act as start and finish.
class TemplateLegs {
 public:
  TemplateLegs(const LRKCodes& course, const LRKCodes& actingAsStart,
               const LRKCodes& actingAsFinish);

  /// Whether the other runner's legs are all of these and no others.
  bool areExactlyThoseOf(const LRKCodes& run);

 private:
  // Codes with the order in which they are tried.
  using Ranks = std::map<Code, int>;
  // Legs that may be taken under another code, in the order in which they are tried.
  struct Choice {
    std::vector<int> legs;
    std::size_t next = 0;
  };
  using Choices = std::map<Code, Choice>;

  static Ranks ranksOf(const LRKCodes& codes);
  bool take(int leg);
  bool takeNext(Choices& choices, Code code);
  bool takeLeg(Code begin, Code end);

  Ranks actingAsStart_;
  Ranks actingAsFinish_;
  bool eachLegOnce_ = true;
  std::map<std::pair<Code, Code>, int> legs_;
  Choices fromStart_;  // by end code
  Choices toFinish_;   // by begin code
  std::vector<bool> taken_;
};

}  // namespace larkstone
