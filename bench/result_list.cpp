// Writes a large IOF XML 3.0 result list to standard output: result_list RUNNERS CONTROLS CLASSES.

#include <cstdio>
#include <cstdlib>

#include "bench/fields.hpp"

namespace larkstone::bench {
namespace {

void writeClock(const char* element, Time time) {
  const int seconds = time / 100;
  std::printf("        <%s>2026-05-03T%02d:%02d:%02d+02:00</%s>\n", element, 10 + seconds / 3600,
              seconds / 60 % 60, seconds % 60, element);
}

void writeRunner(const LRKRunner& runner, int id) {
  const LRKPunches& punches = runner.punches();
  const int last = punches.count() - 1;
  std::printf(
      "    <PersonResult>\n      <Person>\n        <Id type=\"club\">%d</Id>\n        <Name>\n"
      "          <Family>Runner</Family>\n          <Given>No. %d</Given>\n        </Name>\n"
      "      </Person>\n      <Organisation>\n        <Name>%s</Name>\n"
      "        <Country code=\"SWE\">Sweden</Country>\n      </Organisation>\n      <Result>\n"
      "        <BibNumber>%d</BibNumber>\n",
      id, id, runner.club().c_str(), id);
  writeClock("StartTime", punches.time(0));
  writeClock("FinishTime", punches.time(last));
  std::printf("        <Time>%d</Time>\n        <Status>OK</Status>\n",
              (punches.time(last) - punches.time(0)) / 100);
  for (int k = 1; k < last; ++k) {
    std::printf(
        "        <SplitTime>\n          <ControlCode>%d</ControlCode>\n"
        "          <Time>%d</Time>\n        </SplitTime>\n",
        punches.code(k), (punches.time(k) - punches.time(0)) / 100);
  }
  std::printf("        <ControlCard>%d</ControlCard>\n      </Result>\n    </PersonResult>\n",
              500000 + id);
}

void writeList(int runners, int controls, int classes) {
  std::printf(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<ResultList xmlns=\"http://www.orienteering.org/datastandard/3.0\" iofVersion=\"3.0\" "
      "creator=\"larkstone\">\n  <Event>\n    <Name>Large event</Name>\n  </Event>\n");
  const int size = runners / classes;
  for (int c = 0; c < classes; ++c) {
    std::printf(
        "  <ClassResult>\n    <Class>\n      <Id>%d</Id>\n      <Name>Class %d</Name>\n"
        "    </Class>\n    <Course>\n      <Length>5140</Length>\n    </Course>\n",
        c, c);
    int id = c * size;
    for (const LRKRunner& runner : intervalStart(size, controls + 1, 6000)) {
      writeRunner(runner, ++id);
    }
    std::printf("  </ClassResult>\n");
  }
  std::printf("</ResultList>\n");
}

}  // namespace
}  // namespace larkstone::bench

int main(int argc, char** argv) {
  const auto argument = [&](int index, int otherwise) {
    return argc > index ? std::atoi(argv[index]) : otherwise;
  };
  larkstone::bench::writeList(argument(1, 20000), argument(2, 25), argument(3, 100));
}
