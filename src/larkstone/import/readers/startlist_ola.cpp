// Start lists of OLA: classes between rules, each with a bold name and a table.
//
//     <hr><b>H21</b>
//     <table>
//     <tr><td>12</td><td>Eva Berg</td><td>OK Syd</td><td>712345</td><td>10:02:00</td></tr>
//     </table>
//
// The name is the first cell with a letter, the club the one behind it, and the start the last time
// of day behind them; a row with neither that nor a start number is a header.

#include <algorithm>

#include "larkstone/core/text.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/startlist.hpp"

namespace larkstone {

namespace {

bool hasLetter(std::string_view text) {
  return text.find_first_not_of("0123456789.:,-/ ") != std::string_view::npos;
}

void readRow(std::string_view row, int line, Startlist& list) {
  std::vector<std::string> cells;
  for (const std::string_view cell : cellsOf(row)) cells.push_back(lineText(cell));
  const auto name = std::find_if(cells.begin(), cells.end(), hasLetter);
  if (name == cells.end()) return;
  const auto last = std::find_if(cells.rbegin(), std::make_reverse_iterator(name), isClockText);
  const bool hasStart = last != std::make_reverse_iterator(name);
  if (!hasStart && !beginsWithNumber(cells.front())) return;
  const auto start = hasStart ? last.base() - 1 : cells.end();
  list.add(*name, name + 1 == start ? std::string() : *(name + 1), hasStart ? *start : "", line);
}

void readClasses(std::string_view html, Startlist& list) {
  HtmlPage page(html);
  bool nameIsNext = true;
  page.readThrough({"hr", "b", "tr"});
  while (!page.tag().empty()) {
    if (page.tag() == "hr") {
      nameIsNext = true;
    } else if (page.tag() == "tr") {
      const int line = page.line();
      const std::string_view row = page.readThrough({"/tr", "tr", "hr"});
      HtmlPage bold(row);
      bold.readThrough({"b"});
      if (nameIsNext && !bold.tag().empty()) {
        list.beginClass(lineText(bold.readThrough({"/b"})));
        nameIsNext = false;
      } else {
        readRow(row, line, list);
      }
      if (page.tag() != "/tr") continue;
    } else if (nameIsNext) {
      list.beginClass(lineText(page.readThrough({"/b"})));
      nameIsNext = false;
    }
    page.readThrough({"hr", "b", "tr"});
  }
}

}  // namespace

std::int32_t readOlaStartlist(ReadJob& job) {
  TextLines lines;
  if (!lines.read(job.fileName, TextLines::Form::windows1252)) return LRK_IMPORT_STARTLIST_UNKNOWN;
  Startlist list(job);
  readClasses(lines.text(), list);
  if (!list.hasEntries() && detectOla({job.fileName}) == 0) return LRK_IMPORT_STARTLIST_UNKNOWN;
  return list.complete();
}

}  // namespace larkstone
