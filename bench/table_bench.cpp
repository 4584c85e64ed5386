// The split table against copying its bytes in pieces of a cell's size.

#include <string>
#include <string_view>

#include <malloc.h>

#include "larkstone/online/table.hpp"

#include "bench/fields.hpp"
#include "bench/measure.hpp"

namespace larkstone::bench {
namespace {

constexpr int legs = 30;

using Create = void (clsLarkstoneOnlineTable::*)();
using Text = const std::string& (clsLarkstoneOnlineTable::*)() const;

std::size_t noOfCells(std::string_view table, std::string_view separator) {
  std::size_t cells = 0;
  for (std::size_t at = table.find(separator); at != std::string_view::npos;
       at = table.find(separator, at + 1)) {
    ++cells;
  }
  return cells;
}

void createTable(benchmark::State& state, Create create, Text text, std::string_view separator) {
  // Else now the table, now its copy would pay for fresh pages.
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
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
  const std::size_t cellSize = bytes.size() / noOfCells(bytes, separator);
  compare(
      state, [] { return 0; }, [&](int) { (table.*create)(); },
      [&] {
        std::string copy;
        for (std::size_t at = 0; at < bytes.size(); at += cellSize) {
          copy.append(bytes, at, cellSize);
        }
        benchmark::DoNotOptimize(copy.data());
      });
  state.counters["cell"] = static_cast<double>(cellSize);
  state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK_CAPTURE(createTable, html, &clsLarkstoneOnlineTable::createHTMLTable,
                  &clsLarkstoneOnlineTable::htmlTableString, "<TD")
    ->Arg(100)
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(createTable, text, &clsLarkstoneOnlineTable::createTextTable,
                  &clsLarkstoneOnlineTable::textTableString, "\t")
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace larkstone::bench
