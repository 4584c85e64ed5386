// Start lists of Pekka Pirilä's programs: a heading and a preformatted block for each class.
//
//     <h3>H21 (25)</h3>
//     <pre>
//        12 Matti Malli           Rajamäen Malli          10.02.00    11.31.00
//        13 ________
//        14 vacant                                        10.04.00
//     </pre>
//
// The first words are the name, those behind two blanks or a number the club. Times of day belong
// to the stages of the event in their order. Other numbers (start, card) are passed over.

#include <algorithm>
#include <vector>

#include "larkstone/core/text.hpp"
#include "larkstone/import/detection.hpp"
#include "larkstone/import/readers.hpp"
#include "larkstone/import/scan/fields.hpp"
#include "larkstone/import/scan/html_page.hpp"
#include "larkstone/import/scan/text_lines.hpp"
#include "larkstone/import/startlist.hpp"

namespace larkstone {

namespace {

struct ListLine {
  std::vector<std::string> texts;
  std::vector<std::string_view> times;
};

ListLine listLineOf(std::string_view line) {
  ListLine result;
  std::size_t lastText = std::string_view::npos;  // where the last word of a text ended
  for (std::size_t start = line.find_first_not_of(' '); start < line.size();) {
    const std::size_t end = std::min(line.find(' ', start), line.size());
    const std::string_view word = line.substr(start, end - start);
    if (isClockText(word)) {
      result.times.push_back(word);
    } else if (word.find_first_not_of("0123456789.,:-") != std::string_view::npos) {
      if (lastText != std::string_view::npos && start == lastText + 1) {
        result.texts.back().append(" ").append(word);
      } else {
        result.texts.emplace_back(word);
      }
      lastText = end;
    }
    start = line.find_first_not_of(' ', end);
  }
  return result;
}

bool isVacant(std::string_view line) {
  return lowered1252(line).find(" vacant") != std::string::npos ||
         line.find("__") != std::string_view::npos;
}

void readBlock(const std::vector<PageLine>& lines, std::size_t stage, Startlist& list) {
  for (const auto& [number, line] : lines) {
    const ListLine read = listLineOf(line);
    const bool hasStart = stage < read.times.size();
    if (isVacant(line) || read.texts.empty() || (!hasStart && !beginsWithNumber(line))) continue;
    const std::string club = read.texts.size() > 1 ? utf8FromWindows1252(read.texts[1]) : "";
    list.add(utf8FromWindows1252(read.texts[0]), club, hasStart ? read.times[stage] : "", number);
  }
}

void readClasses(std::string_view html, std::size_t stage, Startlist& list) {
  HtmlPage page(html);
  page.readThrough({"h3"});
  while (!page.tag().empty()) {
    const std::string heading = lineText(page.readThrough({"/h3", "h3", "pre"}));
    list.beginClass(std::string(trimmed(textBefore(heading, "("))));
    if (page.tag() == "/h3") page.readThrough({"pre", "h3"});
    if (page.tag() == "pre") {
      const int line = page.line();
      readBlock(linesOf(page.readThrough({"/pre", "h3"}), line), stage, list);
    }
    if (page.tag() == "/pre") page.readThrough({"h3"});
  }
}

}  // namespace

std::int32_t readPekkaPirilaStartlist(ReadJob& job) {
  TextLines lines;
  if (!lines.read(job.fileName, TextLines::Form::windows1252)) return LRK_IMPORT_STARTLIST_UNKNOWN;
  Startlist list(job);
  const std::size_t stage = job.stageIndex > 0 ? static_cast<std::size_t>(job.stageIndex) : 0;
  readClasses(lines.text(), stage, list);
  if (!list.hasEntries() && detectPekkaPirilaStartlist({job.fileName}) == 0) {
    return LRK_IMPORT_STARTLIST_UNKNOWN;
  }
  return list.complete();
}

}  // namespace larkstone
