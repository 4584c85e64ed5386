// Questions to all runners of an event: the lists over them and the search.

#include <tuple>

#include "larkstone/core/text.hpp"

#include "support.hpp"

namespace larkstone::test {
namespace {

using Texts = std::vector<std::string>;
using Times = std::vector<Time>;

// Two categories whose display order is not that of the file: D21 with Åsa and Bo, then H21 with
// Cid, Dan, Eva (who have 2, 3 and 2 minutes) and Finn, who did not finish.
class EventQueries : public EventTest {
 protected:
  EventQueries() {
    EXPECT_EQ(event_.createNewEvent(path_), 0);
    LRKCategory men = categoryNamed("H21", 0);
    men.courseLength(300000);
    men.addRunner(named("Cid", {31}));
    men.addRunner(named("Dan", {31, 32}, {{etagRunnerClub, "OK Öst"}, {etagRunnerID, 7}}));
    men.runner(1).courseLength(640000);
    men.addRunner(named("Eva", {31}));
    men.addRunner(named("Finn", {31}, {{etagRunnerStatus, estaDidNotFinish}}));
    men.runner(3).punches().erase(2);
    LRKCategory women = categoryNamed("D21", 0);
    women.addRunner(named("", {},
                          {{etagRunnerFirstName, "Åsa"},
                           {etagRunnerLastName, "Öberg-Ek"},
                           {etagRunnerClub, "IF Syd [2]"},
                           {etagRunnerRankingValue, 0.1F},
                           {etagRunnerBirthDate, birth_}}));
    women.addRunner(named("Bo", {31}, {{etagRunnerStatus, estaMoved}, {etagRunnerID, 300}}));
    event_.addCategory(men);
    event_.addCategory(women);
    EXPECT_EQ(event_.saveEvent(), 0);
    event_.categorySortFlags(ecsfSorted | ecsfYoungstersBeforeOldboys);
    EXPECT_EQ(event_.openEvent(path_), 0);
  }
  static LRKRunner named(const std::string& name, const std::vector<Code>& codes,
                         const Properties& properties = {}) {
    LRKRunner made = runnerOn(codes);
    made.name(name);
    set(made, properties);
    return made;
  }
  static Texts textsOf(const std::vector<LRKCodes>& lists) {
    Texts texts;
    for (const LRKCodes& codes : lists) {
      texts.push_back(codes.name() + "/" + std::to_string(codes.runnerCount()) + "/" +
                      codes.toString());
    }
    return texts;
  }

  const Date birth_ = dateOf({1990, 5, 17});
};

TEST_F(EventQueries, NamesAndValuesStandInDisplayOrder) {
  Texts categories, names, clubs;
  EXPECT_EQ(event_.getAllRunnerCategoriesNamesAndClubs(categories, names, clubs), 6);
  EXPECT_EQ(categories, (Texts{"D21", "D21", "H21", "H21", "H21", "H21"}));
  EXPECT_EQ(names, (Texts{"Åsa Öberg-Ek", "Bo", "Cid", "Dan", "Eva", "Finn"}));
  EXPECT_EQ(clubs, (Texts{"IF Syd [2]", "", "", "OK Öst", "", ""}));
  std::vector<TagValue> values;
  std::vector<bool> exists;
  EXPECT_EQ(event_.getAllRunnerTagValues(etagRunnerID, values, exists), 6);
  EXPECT_EQ(values, (std::vector<TagValue>{{}, 300, {}, 7, {}, {}}));
  EXPECT_EQ(exists, (std::vector<bool>{false, true, false, true, false, false}));
  event_.closeEvent();
  EXPECT_EQ(event_.getAllRunnerTagValues(etagRunnerID, values, exists), 0);
  EXPECT_TRUE(values.empty());
}

TEST_F(EventQueries, CodesAreThoseOfThePunches) {
  std::vector<LRKCodes> categories, runners;
  int count = 0;
  event_.getAllCategoryAndRunnerCodes(categories, count, runners);
  EXPECT_EQ(count, 6);
  EXPECT_EQ(textsOf(categories), (Texts{"D21/2/32736-32752", "H21/4/32736-31-32752"}));
  EXPECT_EQ(textsOf(runners), (Texts{"/0/32736-32752", "/0/32736-31-32752", "/0/32736-31-32752",
                                     "/0/32736-31-32-32752", "/0/32736-31-32752", "/0/32736-31"}));
  EXPECT_EQ(event_.getCategoryRunnerCodes(0, runners), 2);
  EXPECT_EQ(event_.getCategoryRunnerCodes(2, runners), 0);
  // Storing numbered the courses of the runners.
  event_.getAllCategoryForkings(1, count, runners);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(textsOf(runners),
            (Texts{"1/2/32736-31-32752", "2/1/32736-31-32-32752", "3/1/32736-31"}));
}

TEST_F(EventQueries, ResultsHaveTimesPerKilometreAndBestTimes) {
  std::vector<int> categories, places, runners;
  Texts names, clubs, countries, formats;
  Times results, perKm, best, second, bestPerKm, secondPerKm;
  std::vector<enmStatus> statuses;
  std::vector<Length> lengths;
  std::vector<Date> births;
  EXPECT_EQ(
      event_.getAllResults(categories, names, clubs, countries, places, results, statuses, lengths,
                           perKm, births, formats, runners, best, second, bestPerKm, secondPerKm),
      6);
  constexpr Time none = LRK_NO_TIME;
  EXPECT_EQ(categories, (std::vector<int>{0, 0, 1, 1, 1, 1}));
  EXPECT_EQ(results, (Times{6000, none, 12000, 18000, 12000, 0}));
  EXPECT_EQ(places, (std::vector<int>{1, 0, 2, 4, 2, 1}));  // storing ranks Finn's 0 too
  EXPECT_EQ(lengths, (std::vector<Length>{0, 0, 300000, 640000, 300000, 300000}));
  // 18000 over 6.4 km is 2812.5.
  EXPECT_EQ(perKm, (Times{none, none, 4000, 2812, 4000, none}));
  EXPECT_EQ(births[0], birth_);
  EXPECT_EQ(runners, (std::vector<int>{2, 4}));
  EXPECT_EQ(best, (Times{6000, 12000}));
  EXPECT_EQ(second, (Times{none, 12000}));
  EXPECT_EQ(bestPerKm, (Times{none, 2812}));
  EXPECT_EQ(secondPerKm, (Times{none, 4000}));
}

TEST_F(EventQueries, ASearchComparesByTheTypeOfTheValue) {
  // The runners found are told by their initials.
  const std::tuple<enmFileTag, enmComparisonOperator, TagValue, const char*> rows[] = {
      {etagRunnerName, ecopEqual, "åSA*", "Å"},
      {etagRunnerLastName, ecopEqual, "ö*-[E]k", "Å"},
      {etagRunnerName, ecopNotEqual, "?[!o]*", "B"},
      {etagRunnerName, ecopLessThan, "DAN", "BC"},
      {etagRunnerName, ecopMoreThanOrEqual, "DAN", "ÅDEF"},
      {etagRunnerClub, ecopNotEqual, "ok öst", "Å"},
      {etagRunnerClub, ecopEqual, "* [[]#]", "Å"},
      {etagRunnerID, ecopMoreThan, "7", "B"},
      {etagRunnerID, ecopLessThanOrEqual, 7.5F, "D"},
      {etagRunnerID, ecopNotEqual, "seven", ""},
      {etagRunnerStatus, ecopLessThan, 256, "ÅBCDEF"},
      {etagRunnerResultPlace, ecopEqual, 2, "CE"},
      {etagRunnerRankingValue, ecopEqual, "0.1", "Å"},
      {etagRunnerBirthDate, ecopLessThan, dateOf({1990, 5, 18}), "Å"},
      {etagRunnerPunches, ecopMoreThan, 3, "D"},
      {etagEventName, ecopNotEqual, "x", ""},
  };
  for (const auto& [tag, comparison, sought, expected] : rows) {
    std::vector<LRKRunner> runners;
    const int count = event_.searchRunners(runners, {{tag, sought}}, {{tag, comparison}});
    std::string found;
    for (const LRKRunner& runner : runners) {
      const std::string name = runner.name();
      std::string_view rest = name;
      found += takeCharacter(rest);
    }
    EXPECT_EQ(found, expected) << tag << testing::PrintToString(sought);
    EXPECT_EQ(count, static_cast<int>(runners.size()));
  }
}

TEST_F(EventQueries, OneConditionOrAllAreMet) {
  std::vector<LRKRunner> runners;
  EXPECT_EQ(event_.searchRunners(runners, {{etagRunnerClub, "*"}, {etagRunnerID, 7}}, {}), 1);
  EXPECT_EQ(runners[0].name(), "Dan");
  EXPECT_EQ(runners[0].categoryIndex(), 1);
  EXPECT_EQ(runners[0].categoryName(), "H21");
  EXPECT_EQ(runners[0].runnerIndex(), 1);
  EXPECT_EQ(event_.searchRunners(runners, {{etagRunnerClub, "*"}, {etagRunnerID, 300}}, {}, true),
            3);
  EXPECT_EQ(event_.searchRunners(runners, {}, {}), 6);
  EXPECT_EQ(event_.searchRunners(runners, {}, {}, true), 0);
}

}  // namespace
}  // namespace larkstone::test
