// Event files against the bytes they are made of.

#include <filesystem>
#include <string>

#include <unistd.h>

#include "larkstone/event/event.hpp"
#include "larkstone/platform/file.hpp"

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

constexpr int legs = 25;

/// A folder for event files and their working files, gone with this object.
class Folder {
 public:
  Folder()
      : path_(std::filesystem::temp_directory_path() /
              ("larkstone-bench-" + std::to_string(::getpid()))) {
    std::filesystem::create_directories(path_);
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string file(const char* name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

LRKCategory categoryOf(const std::vector<LRKRunner>& runners, int number) {
  LRKCategory category;
  category.name("Class " + std::to_string(number));
  for (const LRKRunner& runner : runners) category.addRunner(runner);
  return category;
}

// An open event, new, with as many categories of as many runners.
void fill(LRKEvent& event, const Folder& folder, int categories, int runnersEach) {
  event.tempFilePath(folder.file(""));
  event.createNewEvent(folder.file("event.lrk4"), true);
  const std::vector<LRKRunner> runners = intervalStart(runnersEach, legs, 6000);
  for (int i = 0; i < categories; ++i) event.addCategory(categoryOf(runners, i));
}

std::string bytesOf(const std::string& path) {
  std::string bytes;
  readFile(path, bytes);
  return bytes;
}

// Arguments: categories, runners in each. Floor: writing the same bytes to a new file and flushing
// them to the disk. On the wall, as both wait for it.
void saveEvent(benchmark::State& state) {
  const Folder folder;
  LRKEvent event;
  fill(event, folder, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  event.saveEvent();
  const std::string bytes = bytesOf(folder.file("event.lrk4"));
  compare(
      state, [] { return 0; }, [&](int) { event.saveEvent(); },
      [&] {
        const std::string copy = folder.file("copy");
        removeFile(copy);
        File file(copy, File::Mode::create);
        file.writeAt(0, bytes);
        file.flush();
      },
      wallSeconds);
  state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK(saveEvent)
    ->Args({100, 10})
    ->Args({100, 200})
    ->Args({300, 1000})
    ->MinTime(2)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// Arguments as above. Opening an event and decoding all its categories; floor: reading the bytes.
// "open" is the ratio of opening alone.
void openAndDecode(benchmark::State& state) {
  const Folder folder;
  {
    LRKEvent event;
    fill(event, folder, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    event.saveEvent();
  }
  const std::string path = folder.file("event.lrk4");
  LRKEvent event;
  event.tempFilePath(folder.file(""));
  Times opening;
  Times floors;
  Times all;
  for (auto _ : state) {
    floors.add(secondsOf([&] { benchmark::DoNotOptimize(bytesOf(path)); }));
    const double open = secondsOf([&] { event.openEvent(path); });
    const double decode = secondsOf([&] {
      for (int i = 0; i < event.noOfCategories(); ++i) benchmark::DoNotOptimize(event.category(i));
    });
    event.closeEvent();
    opening.add(open);
    all.add(open + decode);
    state.SetIterationTime(open + decode);
  }
  state.counters["open"] = opening.median() / floors.median();
  state.counters["ratio"] = all.median() / floors.median();
}
BENCHMARK(openAndDecode)
    ->Args({100, 10})
    ->Args({100, 200})
    ->Args({300, 1000})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// 30,000 runners in 100 categories, one condition that few meet; floor: reading the bytes.
void searchRunners(benchmark::State& state, enmFileTag tag, const TagValue& sought) {
  const Folder folder;
  LRKEvent event;
  fill(event, folder, 100, 300);
  event.saveEvent();
  const std::string path = folder.file("event.lrk4");
  compare(
      state, [] { return std::vector<LRKRunner>(); },
      [&](std::vector<LRKRunner>& found) {
        event.searchRunners(found, {{tag, sought}}, {});
      },
      [&] { benchmark::DoNotOptimize(bytesOf(path)); });
}
BENCHMARK_CAPTURE(searchRunners, club, etagRunnerClub, TagValue("*ub 7"))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchRunners, place, etagRunnerResultPlace, TagValue(7))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

// One among 4,000 categories is changed, each of 2 runners or of 40: the file is 20 times as large,
// what is changed is the same. The ratio is that of the times. What a change takes away, an added
// category makes up for.
template <class Change>
void changeCategory(benchmark::State& state, Change change) {
  const Folder folder;
  LRKEvent small;
  fill(small, folder, 4000, 2);
  LRKEvent large;
  fill(large, folder, 4000, 40);
  LRKCategory category = categoryOf(intervalStart(20, legs, 6000), 0);
  const auto changeIn = [&](LRKEvent& event) {
    event.addCategory(category);
    change(event, category);
    event.deleteCategory(2000);
  };
  compare(
      state, [] { return 0; }, [&](int) { changeIn(large); }, [&] { changeIn(small); });
}
BENCHMARK_CAPTURE(changeCategory, addAndDelete, [](LRKEvent&, LRKCategory&) {})
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(changeCategory, store,
                  [](LRKEvent& event, LRKCategory& category) { event.category(1000, category); })
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(changeCategory, move,
                  [](LRKEvent& event, LRKCategory&) { event.moveCategory(1, 3990); })
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

// The same with one among 4,000 derived courses, each of 10 runners or of 200.
void changeDerivedCourse(benchmark::State& state) {
  const Folder folder;
  const auto derivedCourseOf = [](int runners) {
    LRKDerivedCourse course;
    course.legs(courseCodes(legs).toLegs());
    course.noOfRunners(runners);
    for (int i = 0; i < runners; ++i) {
      course.runnerCategoryIndex(i, i % 2);
      course.runnerIndex(i, i / 2);
    }
    return course;
  };
  const auto prepare = [&](LRKEvent& event, int runners) {
    fill(event, folder, 2, 100);
    for (int i = 0; i < 4000; ++i) event.addDerivedCourse(derivedCourseOf(runners));
  };
  LRKEvent small;
  prepare(small, 10);
  LRKEvent large;
  prepare(large, 200);
  const LRKDerivedCourse course = derivedCourseOf(20);
  const auto changeIn = [&](LRKEvent& event) {
    event.addDerivedCourse(course);
    event.derivedCourse(1000, course);
    event.moveDerivedCourse(1, 3990);
    event.deleteDerivedCourse(2000);
  };
  compare(
      state, [] { return 0; }, [&](int) { changeIn(large); }, [&] { changeIn(small); });
}
BENCHMARK(changeDerivedCourse)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace larkstone::bench
