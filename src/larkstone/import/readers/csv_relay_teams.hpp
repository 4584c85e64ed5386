#pragma once

// The classes, teams and members of a relay list, gathered from rows in any order.

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
};

struct RelayTeam {
  std::int32_t number = 0;
  int line = 0;
  std::string name;
  std::string club;
  std::optional<std::int32_t> clubId;
  enmStatus status = estaUnknown;  // unknown: what its members make of it
  std::int32_t place = 0;          // 0: none
  std::vector<RelayMember> members;
};

class RelayClass {
 public:
  explicit RelayClass(std::string_view name) : name_(name) {}

  std::string shortName;
  std::optional<std::int32_t> id;

  /// The team with the number, or with the name where the list has no numbers. A new one is empty.
  RelayTeam& team(std::optional<std::int32_t> number, std::string_view name);
  /// Begins the relay's category and adds its teams with their members. False when the reader has
  /// to stop.
  bool add(ReadJob& job, ReaderRun& run);

 private:
  bool addTeam(RelayTeam& team, ReadJob& job, ReaderRun& run) const;

  std::string name_;
  std::vector<RelayTeam> teams_;
  std::unordered_map<std::string, std::size_t> index_;
};

/// The classes in the order in which the list first names them.
class RelayClasses {
 public:
  RelayClass& named(std::string_view name);
  std::vector<RelayClass>& all() { return classes_; }

 private:
  std::vector<RelayClass> classes_;
  std::unordered_map<std::string, std::size_t> index_;
};

}  // namespace larkstone
