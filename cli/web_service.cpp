#include "cli/web_service.hpp"

#include <algorithm>
#include <initializer_list>
#include <numeric>
#include <vector>

#include "larkstone/core/number.hpp"

#include "cli/analysis_json.hpp"
#include "cli/captions.hpp"
#include "cli/event_json.hpp"
#include "cli/html_page.hpp"
#include "cli/report_page.hpp"

namespace larkstone::cli {

namespace {

constexpr auto html = "text/html; charset=utf-8";
constexpr auto jsonType = "application/json";

Answer refusal(int status, std::string_view why) {
  return {status, "text/plain; charset=utf-8", std::string(why) + "\n"};
}

bool onlyHas(const Parameters& parameters, std::initializer_list<std::string_view> known) {
  return std::all_of(parameters.begin(), parameters.end(), [&known](const auto& parameter) {
    return std::find(known.begin(), known.end(), parameter.first) != known.end();
  });
}

std::string valueOf(const Parameters& parameters, const std::string& name) {
  const auto found = parameters.find(name);
  return found == parameters.end() ? std::string() : found->second;
}

// A whole number of a few digits, of nothing else.
std::optional<int> numberOf(std::string_view text) {
  const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
  const bool isNumber = !digits.empty() && digits.size() <= 5 &&
                        digits.find_first_not_of("0123456789") == std::string_view::npos;
  return isNumber ? std::optional(leadingInteger(text)) : std::nullopt;
}

std::optional<enmSort> sortKeyOf(const std::string& text) {
  const std::optional<int> number = text.empty() ? esorResultTime : numberOf(text);
  if (!number) return std::nullopt;
  switch (*number) {
#define LRK_SORT_KEY(number, name) case name:
#include "larkstone/core/sort_keys.def"
    return static_cast<enmSort>(*number);
    default:
      return std::nullopt;
  }
}

// A text as the value of a parameter in a link.
std::string encoded(std::string_view text) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) {
      result += c;
    } else {
      result += '%';
      result += digits[byte >> 4];
      result += digits[byte & 15];
    }
  }
  return result;
}

}  // namespace

Answer WebService::answer(std::string_view path, const Parameters& parameters) {
  const std::lock_guard lock(mutex_);
  const auto check = [&](std::initializer_list<std::string_view> known, auto give) {
    return onlyHas(parameters, known) ? give() : refusal(400, "no such parameter");
  };
  if (path == "/") return check({}, [&] { return report(); });
  if (path == "/table") {
    return check({"category", "sortBy", "legNo", "language"}, [&] { return table(parameters); });
  }
  if (path == "/api/event") return check({}, [&] { return eventJson(); });
  if (path == "/api/analysis") return check({"category"}, [&] { return analysis(parameters); });
  return refusal(404, "nothing here");
}

std::optional<int> WebService::categoryNamed(const std::string& name) const {
  for (int i = 0; i < event_.noOfCategories(); ++i) {
    if (event_.categoryName(i) == name) return i;
  }
  return std::nullopt;
}

// The event does not change, so the page is made once.
Answer WebService::report() {
  if (report_.empty()) {
    std::vector<int> all(static_cast<std::size_t>(event_.noOfCategories()));
    std::iota(all.begin(), all.end(), 0);
    TextBuffer page;
    if (writeReport(page, event_, all, options_, common_, language_) == exitInterrupted) {
      return refusal(503, "the program is being stopped");
    }
    report_ = page.take();
  }
  return {200, html, report_};
}

Answer WebService::table(const Parameters& parameters) {
  const std::optional<enmSort> key = sortKeyOf(valueOf(parameters, "sortBy"));
  const std::string leg = valueOf(parameters, "legNo");
  const std::optional<int> legNo = leg.empty() ? std::optional(-1) : numberOf(leg);
  const std::string given = valueOf(parameters, "language");
  const std::string language = !given.empty() ? given : language_.empty() ? "en" : language_;
  if (!key) return refusal(400, "sortBy is no sort key");
  if (!isLanguage(language)) return refusal(400, "language is none of this program");
  const std::string name = valueOf(parameters, "category");
  const std::optional<int> index = categoryNamed(name);
  if (!index) return refusal(404, "no such category");
  const auto category = event_.category(*index);
  if (!category) return refusal(500, "the category could not be read");

  const auto course = calculatedCourse(*category, options_, common_);
  if (!legNo || *legNo < -1 || *legNo >= std::max(course->noOfLegs(), 1)) {
    return refusal(400, "legNo is no leg of the course");
  }
  clsLarkstoneOnlineTable table;
  table.course(course.get());
  TableView view;
  view.places = view.startTimes = view.finishTimes = view.tooltips = true;
  view.top = 3;
  view.baseURL = "/table?category=" + encoded(name) + "&language=" + language;
  setView(table, view);
  setLanguage(table, language);
  table.sort(*key, *legNo);
  table.createHTMLTable();
  return {200, html, pageOf(table, event_.name(), category->name())};
}

Answer WebService::eventJson() {
  TextBuffer buffer;
  writeEventJson(buffer, event_, false);
  return {200, jsonType, buffer.take()};
}

Answer WebService::analysis(const Parameters& parameters) {
  std::vector<int> chosen;
  if (parameters.contains("category")) {
    const std::optional<int> index = categoryNamed(valueOf(parameters, "category"));
    if (!index) return refusal(404, "no such category");
    chosen.push_back(*index);
  } else {
    chosen.resize(static_cast<std::size_t>(event_.noOfCategories()));
    std::iota(chosen.begin(), chosen.end(), 0);
  }
  TextBuffer buffer;
  JsonWriter json(buffer);
  if (writeAnalysis(json, event_, chosen, options_, common_) == exitInterrupted) {
    return refusal(503, "the program is being stopped");
  }
  return {200, jsonType, buffer.take()};
}

}  // namespace larkstone::cli
