// The split table against copying its bytes in pieces of a cell's size.

#include <string>

#include "larkstone/online/table.hpp"

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

constexpr int legs = 30;

using Create = void (clsLarkstoneOnlineTable::*)();
using Text = const std::string& (clsLarkstoneOnlineTable::*)() const;

void createTable(benchmark::State& state, Create create, Text text, std::size_t cellSize) {
  LRKCourse course = courseOf(intervalStart(static_cast<int>(state.range(0)), legs, 6000), legs);
  course.calculate();
  clsLarkstoneOnlineTable table;
  table.course(&course);
  table.sort(esorResultTime);
  table.showPlaces(true);
  table.showTooltips(true);
  table.topPlace(3);
  (table.*create)();
  const std::string bytes = (table.*text)();
  compare(
      state, [] { return 0; }, [&](int) { (table.*create)(); },
      [&] {
        std::string copy;
        for (std::size_t at = 0; at < bytes.size(); at += cellSize) {
          copy.append(bytes, at, cellSize);
        }
        benchmark::DoNotOptimize(copy.data());
      });
  state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
// Cells take 30 bytes of HTML and 5 of text.
BENCHMARK_CAPTURE(createTable, html, &clsLarkstoneOnlineTable::createHTMLTable,
                  &clsLarkstoneOnlineTable::htmlTableString, 30)
    ->Arg(100)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(createTable, text, &clsLarkstoneOnlineTable::createTextTable,
                  &clsLarkstoneOnlineTable::textTableString, 5)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
