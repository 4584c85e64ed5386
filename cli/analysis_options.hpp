#pragma once

// The options that analyse and table share, and the course they lead to.

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "larkstone/analysis/course.hpp"
#include "larkstone/event/event.hpp"

#include "cli/program.hpp"

namespace CLI {
class App;
}

namespace larkstone::cli {

/// KEY[:LEG][:desc], the leg counted from 1.
struct SortOption {
  enmSort key = esorResultTime;
  int legNo = -1;  ///< from 0; -1 is the last leg
  bool ascending = true;
};

struct AnalysisOptions {
  std::vector<std::string> categories;
  enmRequiredLegs requiredLegs = erqlAtLeastOne;
  bool rearrange = false;
  bool merge = false;
  int accuracy = -1;  ///< -1: the category's
  enmTimeLossCalculationMethod timeLossMethod = etlcCompareToTopTime;
  double timeLossSeconds = 20;
  float timeLossPercent = 0.2F;
  bool timeLossEither = false;
  double timeLossPercentile = 0.5;
  float topPercentile = 0.25F;
  bool withoutTimeLoss = false;
  bool noTimeCorrection = false;
  enmPFIndexCalculationMethod followingMethod = elfiExtended;
  std::array<Time, 2> breakpoints = {700, 2000};
  std::optional<int> flags;  ///< all stages, unless the command needs fewer
  SortOption sort;
  std::string courseLegs = "auto";
};

/// Adds --category.
void addCategoryOption(CLI::App& command, std::vector<std::string>& names);
void addAnalysisOptions(CLI::App& command, AnalysisOptions& options);

/// The display indices of the categories with these names, of all without a name. False, after
/// saying so, when one of them is not there.
bool findCategories(const LRKEvent& event, const std::string& file,
                    const std::vector<std::string>& names, std::vector<int>& indices);

/// The category's course, calculated but not yet sorted.
std::unique_ptr<LRKCourse> calculatedCourse(const LRKCategory& category,
                                            const AnalysisOptions& options,
                                            const CommonOptions& common);

/// The leg to sort by. When the course has not got it, tells so, makes the exit code a warning and
/// takes -1, the last one.
int legToSortBy(const LRKCourse& course, const SortOption& sort, const CommonOptions& common,
                int& exitCode);
/// Sorts as the option says. exitDone, or exitWarning of legToSortBy().
int sortRunners(LRKCourse& course, const SortOption& sort, const CommonOptions& common);
/// exitDone; exitWarning, after telling so, when none of the category's runners fits the course.
int checkRunners(const LRKCourse& course, const LRKCategory& category,
                 const AnalysisOptions& options, const CommonOptions& common);

/// The runners of the category who did not fit its course, in their order.
std::vector<const LRKRunner*> refusedRunners(const LRKCategory& category, const LRKCourse& course);

/// Hands every category's course, calculated but not yet sorted, to use(), which gives an exit
/// code. The worst of these and of checkRunners(); exitInterrupted when the user stopped it.
int forEachCourse(LRKEvent& event, const std::vector<int>& categories,
                  const AnalysisOptions& options, const CommonOptions& common,
                  const std::function<int(LRKCourse&, const LRKCategory&)>& use);

}  // namespace larkstone::cli
