#pragma once

// A course as the bare sequence of its control codes.

#include <string>
#include <string_view>
#include <vector>

#include "larkstone/core/index.hpp"
#include "larkstone/core/types.hpp"

namespace larkstone {

class LRKLegs;
class LRKPunches;

inline constexpr Code LRK_SUPER_START_CODE = -2;   ///< frames a sequence in course determination
inline constexpr Code LRK_SUPER_FINISH_CODE = -1;  ///< the other end of the frame

/// The codes of a course or of a runner's race, with a name and the number of runners behind it.
/// At most 32767 codes. Indices count from 0 and must lie below count() (debug builds assert it),
/// offsets of searches may lie beyond.
class LRKCodes {
 public:
  int count() const { return static_cast<int>(codes_.size()); }
  /// Keeps what is there; new codes are 0. 0 or less empties the list.
  void count(int count);

  Code code(int index) const { return codes_[indexWithin(index, codes_.size())]; }
  void code(int index, Code code) { codes_[indexWithin(index, codes_.size())] = code; }

  int runnerCount() const { return runnerCount_; }
  void runnerCount(int runnerCount) { runnerCount_ = runnerCount; }
  const std::string& name() const { return name_; }
  void name(std::string name) { name_ = std::move(name); }

  /// The index of the new code, or -1 when the list is full.
  int add(Code code);

  /// Place by place. A start code also equals any code of codesEqualToStart, both ways.
  bool isEqualTo(const LRKCodes& codesToCompare, const LRKCodes* codesEqualToStart = nullptr) const;
  /// The first index at or behind offset holding the code, or -1.
  int codeIndex(Code code, int offset = 0) const;
  bool startExists() const { return !codes_.empty() && isStartCode(codes_.front()); }
  bool finishExists() const { return !codes_.empty() && isFinishCode(codes_.back()); }

  /// The codes, in this list's order, that can be matched in order in the other list. Between
  /// controls that both visit several times (the centre of a butterfly) only those controls count,
  /// because the loops may have been run in any order. Name and runner count stay empty.
  LRKCodes commonCodes(const LRKCodes& codesToCompare) const;
  /// The earlier rule: a control that this list visits more than once is never passed over.
  LRKCodes commonCodes_old(const LRKCodes& codesToCompare) const;

  LRKPunches toPunches() const;
  LRKLegs toLegs() const;
  bool codeExists(Code code) const { return codeIndex(code) >= 0; }
  int codeCount(Code code) const;

  bool superStartAndFinishExist() const;
  /// A list without room for both codes stays as it is.
  void addSuperStartAndFinish();
  void stripSuperStartAndFinish();

  LRKCodes clone() const { return *this; }
  /// The codes as decimal numbers, without names for start and finish.
  std::string toString(std::string_view delimiter = "-") const;

  const std::vector<Code>& codes() const { return codes_; }

 private:
  std::vector<Code> codes_;
  int runnerCount_ = 0;
  std::string name_;
};

}  // namespace larkstone
