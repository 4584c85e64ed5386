// Questions to all runners of an event, answered from the stored bytes.

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/event/runner_block.hpp"
#include "larkstone/event/runner_criterion.hpp"
#include "larkstone/model/runner_origin.hpp"

namespace larkstone {

namespace {

template <class... Lists>
void clearAll(Lists&... lists) {
  (lists.clear(), ...);
}

LRKCodes codesOf(std::string_view block) { return RunnerBlock(block).codes(); }

Length courseLengthOf(std::string_view record) {
  return fromTagValue<Length>(findTagValue(record, categoryTags, etagCategoryCourseLength))
      .value_or(0);
}

// A start and a finish at one moment, or none at all, is no race.
bool isResult(Time time) { return time > 0 && !isDisq(time); }

Time timePerKilometre(Time resultTime, Length courseLength) {
  constexpr double centimetresPerKilometre = 100000;
  if (!isResult(resultTime) || courseLength <= 0) return LRK_NO_TIME;
  return clampedTime(roundHalfEven(resultTime * centimetresPerKilometre / courseLength));
}

struct BestTimes {
  Time best = LRK_NO_TIME;
  Time secondBest = LRK_NO_TIME;

  void add(Time time) {
    if (!isResult(time)) return;
    secondBest = std::min(secondBest, std::max(best, time));
    best = std::min(best, time);
  }
};

}  // namespace

std::string LRKEvent::categoryRecord(int displayIndex) const {
  std::string record;
  const auto fileIndex = static_cast<std::size_t>(categoryFileIndex(displayIndex));
  if (!store_->read(store_->categories[fileIndex], record)) record.clear();
  return record;
}

int LRKEvent::getAllRunnerCategoriesNamesAndClubs(std::vector<std::string>& runnerCategories,
                                                  std::vector<std::string>& runnerNames,
                                                  std::vector<std::string>& runnerClubs) const {
  clearAll(runnerCategories, runnerNames, runnerClubs);
  for (int i = 0; i < noOfCategories(); ++i) {
    const std::string record = categoryRecord(i);
    for (const std::string_view block : runnerBlocks(record)) {
      const RunnerBlock runner(block);
      runnerCategories.push_back(categoryName(i));
      runnerNames.push_back(runner.name());
      runnerClubs.push_back(runner.text(etagRunnerClub));
    }
  }
  return static_cast<int>(runnerNames.size());
}

void LRKEvent::getAllCategoryAndRunnerCodes(std::vector<LRKCodes>& categoryCodes, int& noOfRunners,
                                            std::vector<LRKCodes>& runnerCodes) const {
  clearAll(categoryCodes, runnerCodes);
  std::vector<LRKCodes> codes;
  for (int i = 0; i < noOfCategories(); ++i) {
    LRKCodes ofCategory;
    const int runners = getCategoryRunnerCodes(i, codes);
    if (runners > 0) ofCategory = codes.front();
    ofCategory.name(categoryName(i));
    ofCategory.runnerCount(runners);
    categoryCodes.push_back(std::move(ofCategory));
    std::move(codes.begin(), codes.end(), std::back_inserter(runnerCodes));
  }
  noOfRunners = static_cast<int>(runnerCodes.size());
}

int LRKEvent::getCategoryRunnerCodes(int categoryIndex, std::vector<LRKCodes>& codes) const {
  codes.clear();
  if (!isCategory(categoryIndex)) return 0;
  const std::string record = categoryRecord(categoryIndex);
  for (const std::string_view block : runnerBlocks(record)) codes.push_back(codesOf(block));
  return static_cast<int>(codes.size());
}

int LRKEvent::getAllRunnerTagValues(enmFileTag tag, std::vector<TagValue>& values,
                                    std::vector<bool>& valueExists) const {
  clearAll(values, valueExists);
  for (int i = 0; i < noOfCategories(); ++i) {
    const std::string record = categoryRecord(i);
    for (const std::string_view block : runnerBlocks(record)) {
      const RunnerBlock runner(block);
      values.push_back(runner.value(tag));
      valueExists.push_back(runner.has(tag));
    }
  }
  return static_cast<int>(values.size());
}

int LRKEvent::getAllResults(std::vector<int>& categoryIndices, std::vector<std::string>& names,
                            std::vector<std::string>& clubs, std::vector<std::string>& countries,
                            std::vector<int>& resultPlaces, std::vector<Time>& resultTimes,
                            std::vector<enmStatus>& statuses, std::vector<Length>& courseLengths,
                            std::vector<Time>& kmTimes, std::vector<Date>& birthDates,
                            std::vector<std::string>& birthDateFormats,
                            std::vector<int>& categoryNoOfRunners,
                            std::vector<Time>& bestResultTimes,
                            std::vector<Time>& secondBestResultTimes,
                            std::vector<Time>& bestKmTimes,
                            std::vector<Time>& secondBestKmTimes) const {
  clearAll(categoryIndices, names, clubs, countries, resultPlaces, resultTimes, statuses,
           courseLengths, kmTimes, birthDates, birthDateFormats, categoryNoOfRunners,
           bestResultTimes, secondBestResultTimes, bestKmTimes, secondBestKmTimes);
  for (int i = 0; i < noOfCategories(); ++i) {
    const std::string record = categoryRecord(i);
    const std::vector<std::string_view> blocks = runnerBlocks(record);
    const Length ofCategory = courseLengthOf(record);
    BestTimes results;
    BestTimes perKilometre;
    for (const std::string_view block : blocks) {
      const RunnerBlock runner(block);
      const Length own = runner.number(etagRunnerCourseLength);
      categoryIndices.push_back(i);
      names.push_back(runner.name());
      clubs.push_back(runner.text(etagRunnerClub));
      countries.push_back(runner.text(etagRunnerClubCountry));
      resultPlaces.push_back(runner.number(etagRunnerResultPlace));
      resultTimes.push_back(runner.resultTime());
      statuses.push_back(runner.status());
      courseLengths.push_back(own > 0 ? own : ofCategory);
      kmTimes.push_back(timePerKilometre(resultTimes.back(), courseLengths.back()));
      birthDates.push_back(fromTagValue<Date>(runner.value(etagRunnerBirthDate)).value_or(Date()));
      birthDateFormats.push_back(runner.text(etagRunnerBirthDateFormat));
      results.add(resultTimes.back());
      perKilometre.add(kmTimes.back());
    }
    categoryNoOfRunners.push_back(static_cast<int>(blocks.size()));
    bestResultTimes.push_back(results.best);
    secondBestResultTimes.push_back(results.secondBest);
    bestKmTimes.push_back(perKilometre.best);
    secondBestKmTimes.push_back(perKilometre.secondBest);
  }
  return static_cast<int>(names.size());
}

void LRKEvent::getAllCategoryForkings(int categoryIndex, int& noOfForkings,
                                      std::vector<LRKCodes>& forkings) const {
  forkings.clear();
  if (isCategory(categoryIndex)) {
    std::map<std::vector<Code>, std::size_t> known;
    const std::string record = categoryRecord(categoryIndex);
    for (const std::string_view block : runnerBlocks(record)) {
      const RunnerBlock runner(block);
      LRKCodes codes = runner.codes();
      const auto [found, isNew] = known.try_emplace(codes.codes(), forkings.size());
      if (isNew) forkings.push_back(std::move(codes));
      LRKCodes& forking = forkings[found->second];
      forking.runnerCount(forking.runnerCount() + 1);
      if (forking.name().empty()) forking.name(runner.text(etagRunnerCourseName));
    }
  }
  noOfForkings = static_cast<int>(forkings.size());
}

int LRKEvent::searchRunners(std::vector<LRKRunner>& runners,
                            const std::map<enmFileTag, TagValue>& find,
                            const std::map<enmFileTag, enmComparisonOperator>& comparisonOperator,
                            bool oneMatchIsEnough) const {
  runners.clear();
  std::vector<RunnerCriterion> criteria;
  for (const auto& [tag, sought] : find) {
    const auto given = comparisonOperator.find(tag);
    criteria.emplace_back(tag, given == comparisonOperator.end() ? ecopEqual : given->second,
                          sought);
  }
  const auto isFound = [&criteria, oneMatchIsEnough](const RunnerBlock& runner) {
    const auto holds = [&runner](const RunnerCriterion& criterion) {
      return criterion.holds(runner);
    };
    return oneMatchIsEnough ? std::any_of(criteria.begin(), criteria.end(), holds)
                            : std::all_of(criteria.begin(), criteria.end(), holds);
  };
  for (int i = 0; i < noOfCategories(); ++i) {
    const std::string record = categoryRecord(i);
    int runnerIndex = 0;
    for (const std::string_view block : runnerBlocks(record)) {
      if (isFound(RunnerBlock(block))) {
        LRKRunner& runner = runners.emplace_back();
        decodeRunner(block, runner);
        RunnerOrigin::set(runner, i, categoryName(i), runnerIndex);
      }
      ++runnerIndex;
    }
  }
  return static_cast<int>(runners.size());
}

}  // namespace larkstone
