// Text lists into an event against reading their bytes and cutting them into lines.

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "larkstone/core/time.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/import/import.hpp"
#include "larkstone/platform/file.hpp"

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

constexpr int legs = 25;
constexpr int classes = 100;
constexpr int runnersEach = 200;

// m:ss, as lists have it also beyond an hour.
std::string runningTime(Time time) {
  const int seconds = time / 100;
  const std::string rest = std::to_string(100 + seconds % 60).substr(1);
  return std::to_string(seconds / 60) + ":" + rest;
}

std::string clockTime(Time time) {
  return timeToString(time + 3600000, etstClockTime, etacSeconds);
}

// SportSoftware OE, with a pair of fields for every control.
std::string csvList() {
  std::string list =
      "Stno;Chip;Database Id;Surname;First name;YB;S;Block;nc;Start;Finish;Time;Classifier;"
      "Club no.;Cl.name;City;Nat;Cl. no.;Short;Long;Course;km;m;Course controls;Pl;Start punch;"
      "Finish punch;Control1;Punch1;\r\n";
  const std::vector<LRKRunner> runners = intervalStart(runnersEach, legs, 6000);
  for (int i = 0; i < classes; ++i) {
    const std::string name = "Class " + std::to_string(i);
    for (const LRKRunner& runner : runners) {
      const LRKPunches& punches = runner.punches();
      const Time start = punches.time(0);
      const Time time = punches.time(legs) - start;
      list += "1;12345;;" + runner.name() + ";No;80;M;;0;" + clockTime(start) + ";" +
              clockTime(start + time) + ";" + runningTime(time) + ";0;7;;" + runner.club() +
              ";SWE;" + std::to_string(i) + ";C" + std::to_string(i) + ";" + name +
              ";A;5.2;120;24;1;;;";
      for (int k = 1; k < legs; ++k) {
        list += std::to_string(punches.code(k)) + ";" + runningTime(punches.time(k) - start) + ";";
      }
      list += "\r\n";
    }
  }
  return list;
}

std::string standardText() {
  std::string list = "Larkstone Standard Text Format\r\nSpring\r\n2026-05-03\r\n\r\n";
  const std::vector<LRKRunner> runners = intervalStart(runnersEach, legs, 6000);
  for (int i = 0; i < classes; ++i) {
    list += "Class " + std::to_string(i) + "\r\n";
    for (int k = 0; k < legs; ++k)
      list += std::to_string(100 + 10 * k) + (k + 1 < legs ? "\t" : "");
    list += "\r\n";
    for (const LRKRunner& runner : runners) {
      const LRKPunches& punches = runner.punches();
      list += runner.name() + "\t" + runner.club() + "\t" + clockTime(punches.time(0));
      for (int k = 1; k <= legs; ++k) {
        list += "\t" + runningTime(punches.time(k) - punches.time(k - 1));
      }
      list += "\r\n";
    }
    list += "\r\n";
  }
  return list;
}

std::size_t splitLines(const std::string& path) {
  std::string bytes;
  readFile(path, bytes);
  std::vector<std::string_view> lines;
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const auto* end = static_cast<const char*>(std::memchr(rest.data(), '\n', rest.size()));
    const std::size_t length =
        end == nullptr ? rest.size() : static_cast<std::size_t>(end - rest.data());
    lines.push_back(rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  benchmark::DoNotOptimize(lines.data());
  return lines.size();
}

// 20,000 runners with 24 controls in 100 classes. "MB_per_second" is of the list.
void importList(benchmark::State& state, std::string (*list)()) {
  const std::string folder = std::filesystem::temp_directory_path() / "";
  const std::string path = freshFileName(folder);
  const std::string text = list();
  std::ofstream(path, std::ios::binary) << text;
  Times imports;
  Times floors;
  for (auto _ : state) {
    floors.add(secondsOf([&] { splitLines(path); }));
    LRKEvent event;
    event.tempFilePath(folder);
    event.createNewEvent(folder + "never.lrk4", true);
    LRKImport importer;
    const double seconds = secondsOf([&] { importer.import(LRK_IMPORT_AUTO, event, path); });
    imports.add(seconds);
    state.SetIterationTime(seconds);
  }
  removeFile(path);
  state.counters["ratio"] = imports.median() / floors.median();
  state.counters["MB_per_second"] = static_cast<double>(text.size()) / 1e6 / imports.median();
}
BENCHMARK_CAPTURE(importList, csv, csvList)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(importList, standardText, standardText)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
