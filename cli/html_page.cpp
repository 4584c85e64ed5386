#include "cli/html_page.hpp"

#include "larkstone/core/text.hpp"
#include "larkstone/online/cell_format.hpp"

namespace larkstone::cli {

namespace {

// Fields of a cell format: font, size, bold, italic, four paddings, two alignments, two colours.
constexpr auto header = "Verdana;8;1;0;6;3;6;3;0;1;#FFFFFF;#2F4858";
constexpr auto headerCentred = "Verdana;8;1;0;6;3;6;3;1;1;#FFFFFF;#2F4858";
constexpr auto placeCell = "Verdana;9;1;0;6;3;6;3;1;0;#1F2933;#FFFFFF";
constexpr auto nameCell = "Verdana;9;1;0;6;3;10;1;0;0;#1F2933;#FFFFFF";
constexpr auto clubCell = "Verdana;8;0;0;6;1;10;3;0;0;#66727F;#FFFFFF";
constexpr auto clockCell = "Verdana;8;0;0;6;3;6;1;2;0;#66727F;#FFFFFF";
constexpr auto resultCell = "Verdana;9;1;0;6;3;6;1;2;0;#1F2933;#FFFFFF";

// A look for the times and the places of one kind: the leg's own, and the smaller total below it.
struct Look {
  const char* leg;
  const char* total;
};
constexpr Look plain = {"Verdana;8;0;0;6;3;4;1;2;0;#1F2933;#FFFFFF",
                        "Verdana;8;0;0;6;1;4;3;2;0;#66727F;#FFFFFF"};
constexpr Look best = {"Verdana;8;1;0;6;3;4;1;2;0;#14532D;#CFEFD3",
                       "Verdana;8;1;0;6;1;4;3;2;0;#14532D;#CFEFD3"};
constexpr Look top = {"Verdana;8;0;0;6;3;4;1;2;0;#14532D;#EAF7EC",
                      "Verdana;8;0;0;6;1;4;3;2;0;#14532D;#EAF7EC"};
constexpr Look loss = {"Verdana;8;0;0;6;3;4;1;2;0;#9B1C1C;#FBDEDA", nullptr};
constexpr Look estimated = {"Verdana;8;0;1;6;3;4;1;2;0;#8A94A0;#FFFFFF",
                            "Verdana;8;0;1;6;1;4;3;2;0;#8A94A0;#FFFFFF"};

constexpr std::string_view pageStyle =
    "body {margin: 1.5em; font-family: Verdana, Arial, sans-serif; color: #1f2933; "
    "background: #f4f6f8;}\n"
    "h1 {margin: 0; font-size: 1.2em;}\n"
    "h2 {margin: 0.2em 0 0.8em; font-size: 1em; color: #66727f;}\n"
    "main {overflow-x: auto;}\n";

void setLooks(clsLarkstoneOnlineTable& table) {
  table.fixedTopLeftAlignedCellFormat(header);
  table.fixedTopCenterAlignedCellFormat(headerCentred);
  table.placeCellFormat(placeCell);
  table.nameCellFormat(nameCell);
  table.clubCellFormat(clubCell);
  table.startTimeCellFormat(clockCell);
  table.finishTimeCellFormat(resultCell);
  table.finishTimeDifferenceCellFormat(resultCell);

  table.legTimeFormat(plain.leg);
  table.legPlaceFormat(plain.leg);
  table.bestLegTimeFormat(best.leg);
  table.bestLegPlaceFormat(best.leg);
  table.topLegTimeFormat(top.leg);
  table.topLegPlaceFormat(top.leg);
  table.timeLossLegTimeFormat(loss.leg);
  table.timeLossLegPlaceFormat(loss.leg);
  table.isEstimatedLegTimeFormat(estimated.leg);
  table.isEstimatedLegPlaceFormat(estimated.leg);

  table.totalTimeFormat(plain.total);
  table.totalPlaceFormat(plain.total);
  table.bestTotalTimeFormat(best.total);
  table.bestTotalPlaceFormat(best.total);
  table.topTotalTimeFormat(top.total);
  table.topTotalPlaceFormat(top.total);
  table.isEstimatedTotalTimeFormat(estimated.total);
  table.isEstimatedTotalPlaceFormat(estimated.total);

  table.linkForeColor(hexColorToColor("#FFFFFF"));
  table.linkHoverForeColor(hexColorToColor("#CFEFD3"));
  table.selectedLinkBackColor(hexColorToColor("#486579"));
  table.outerBorderColor(hexColorToColor("#2F4858"));
  table.innerBorderColor(hexColorToColor("#D5DBE1"));
  table.fixedBorderColor(hexColorToColor("#D5DBE1"));
  table.unfixedBorderColor(hexColorToColor("#E6EAEE"));
  table.highlightColor(hexColorToColor("#F5C451"));
  table.highlightPercentage(0.25F);
}

// The table adds its parameters to those of a query.
std::string withQuery(const std::string& url) {
  return url.empty() || url.find('?') != std::string::npos ? url : url + "?";
}

}  // namespace

void setView(clsLarkstoneOnlineTable& table, const TableView& view) {
  setLooks(table);
  table.showPlaces(view.places);
  table.showStartTimes(view.startTimes);
  table.showFinishTimes(view.finishTimes);
  table.relativeLegTimes(view.relative);
  table.relativeTotalTimes(view.relative);
  table.showTooltips(view.tooltips);
  table.topPlace(static_cast<std::int16_t>(view.top));
  table.baseURL(withQuery(view.baseURL));
}

std::string pageOf(const clsLarkstoneOnlineTable& table, std::string_view eventName,
                   std::string_view categoryName) {
  const std::string event = escapedMarkup(eventName);
  const std::string category = escapedMarkup(categoryName);
  std::string page =
      "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<link rel=\"icon\" href=\"data:,\">\n<title>";
  page += event.empty() ? category : event + " - " + category;
  page += "</title>\n<style>\n";
  page += pageStyle;
  page += table.styleString();
  page += "\n</style>\n";
  page += table.scriptString();
  page += "\n</head>\n<body>\n";
  if (!event.empty()) page += "<h1>" + event + "</h1>\n";
  page += "<h2>" + category + "</h2>\n<main>\n";
  page += table.htmlTableString();
  page += "</main>\n</body>\n</html>\n";
  return page;
}

}  // namespace larkstone::cli
