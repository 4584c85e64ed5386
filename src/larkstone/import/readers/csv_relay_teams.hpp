#pragma once

// The teams of a relay list with their members, gathered from rows in any order.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "larkstone/core/types.hpp"
#include "larkstone/import/reader_run.hpp"

namespace larkstone {

struct RelaySplit {
  Code code = 0;
  Time time = LRK_NO_TIME;  // from the start of the team
};

struct RelayMember {
  LRKRunner runner;  // start and finish by the clock; its leg from 1
  int line = 0;
  bool startKnown = false;
  std::vector<RelaySplit> splits;
  RelayStanding standing;  // of the team after the leg
};

struct RelayTeam {
  std::int32_t number = 0;
  int line = 0;
  std::string name;
  std::string club;
  std::optional<std::int32_t> clubId;
  Time start = LRK_NO_TIME;  // by the clock, where the list tells of the team as such
  RelayStanding standing;    // in the end
  std::vector<RelayMember> members;
};

/// The teams of one class.
class RelayClass {
 public:
  /// The team with the number, or with the name where the list has no numbers. A new one is empty.
  RelayTeam& team(std::optional<std::int32_t> number, std::string_view name);
  void add(RelayMember member, RelayTeam& team);
  /// Whether the category can hold no more.
  bool isFull() const { return noOfMembers_ + static_cast<int>(teams_.size()) >= LRK_MAX_LIST; }
  /// Adds the teams with their members to the open category. False when the reader has to stop.
  bool addTo(ReaderRun& run, ImportSession& session);

 private:
  std::vector<RelayTeam> teams_;
  std::unordered_map<std::string, std::size_t> index_;
  int noOfMembers_ = 0;
};

}  // namespace larkstone
