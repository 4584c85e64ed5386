#include "larkstone/online/html_table.hpp"

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

#include "larkstone/core/growing_text.hpp"
#include "larkstone/core/text.hpp"
#include "larkstone/online/style_registry.hpp"
#include "larkstone/online/style_sheet.hpp"
#include "larkstone/online/table.hpp"
#include "larkstone/online/table_content.hpp"

namespace larkstone {

namespace {

constexpr std::string_view blank = "&nbsp;";

// Markup of the host's own, for an attribute.
std::string quoted(std::string_view text) {
  std::string html;
  for (const char c : text) {
    if (c == '"') {
      html += "&quot;";
    } else {
      html += c;
    }
  }
  return html;
}

std::string_view orBlank(std::string_view html) { return html.empty() ? blank : html; }

// What a border separates; each has its colour.
enum class Edge { none, outer, inner, fixed, unfixed };
constexpr int edges = 5;

struct Look {
  CellFamily family;
  CellKind kind = CellKind::plain;
  Edge top = Edge::none;
  Edge left = Edge::none;
};

struct Span {
  int rows = 1;
  int columns = 1;
};

class HtmlTableWriter {
 public:
  HtmlTableWriter(const clsLarkstoneOnlineTable& table, const LRKCourse& course)
      : table_(table),
        content_(table, course),
        registry_(table.highlightColor(), table.highlightPercentage()),
        legSpan_(table.showPlaces() ? 2 : 1) {
    for (int family = 0; family < LRK_CELL_FAMILIES; ++family) {
      for (int kind = 0; kind < LRK_CELL_KINDS; ++kind) {
        formatAt(static_cast<CellFamily>(family), static_cast<CellKind>(kind)) = effectiveFormat(
            table.cellFormat(static_cast<CellFamily>(family), static_cast<CellKind>(kind)));
      }
    }
  }

  HtmlTable write() {
    constexpr int cellSize = 26;  // a class, and a time or a place
    const int cellsOfRunner = 2 * legSpan_ * content_.noOfLegs() + 7;
    html_.reserve(static_cast<std::size_t>(content_.noOfRunners()) *
                  static_cast<std::size_t>(cellsOfRunner * cellSize));
    html_.add(
        "<TABLE border=\"0\" cellspacing=\"0\" cellpadding=\"0\" "
        "style=\"border:2px solid #000000\">\r\n");
    writeHeader();
    for (int runner = 0; runner < content_.noOfRunners(); ++runner) writeRunner(runner);
    html_.add("</TABLE>\r\n");
    return {html_.take(), styleSheet(table_, registry_),
            highlightScript(registry_.highlightList())};
  }

 private:
  CellFormat& formatAt(CellFamily family, CellKind kind) {
    return formats_[static_cast<std::size_t>(family)][static_cast<std::size_t>(kind)];
  }

  CellFormat effectiveFormat(const std::string& text) const {
    CellFormat format = parseCellFormat(text);
    if (table_.textSize() > 0) format.size = table_.textSize();
    return format;
  }

  std::optional<Color> colorOf(Edge edge) const {
    switch (edge) {
      case Edge::none:
        return std::nullopt;
      case Edge::outer:
        return table_.outerBorderColor();
      case Edge::inner:
        return table_.innerBorderColor();
      case Edge::fixed:
        return table_.fixedBorderColor();
      case Edge::unfixed:
        return table_.unfixedBorderColor();
    }
    return std::nullopt;
  }

  // Looks repeat from runner to runner, so each is registered once and remembered.
  struct KnownLook {
    std::string className;
    std::string startTag;  // of a cell in one row and one column
  };

  const KnownLook& known(const Look& look) {
    const auto at =
        ((static_cast<std::size_t>(look.family) * edges + static_cast<std::size_t>(look.top)) *
             edges +
         static_cast<std::size_t>(look.left)) *
            LRK_CELL_KINDS +
        static_cast<std::size_t>(look.kind);
    if (looks_[at].className.empty()) looks_[at] = registered(look);
    return looks_[at];
  }

  [[gnu::cold]] KnownLook registered(const Look& look) {
    const std::string name = registry_.registerCellFormat(formatAt(look.family, look.kind),
                                                          {colorOf(look.top), colorOf(look.left)});
    return {name, "<TD class=\"" + name + "\">"};
  }

  void cell(const Look& look, std::string_view content, Span span) {
    html_.add("<TD class=\"");
    html_.add(known(look).className);
    html_.add('"');
    if (span.rows != 1) html_.add(" rowspan=\"" + std::to_string(span.rows) + '"');
    if (span.columns != 1) html_.add(" colspan=\"" + std::to_string(span.columns) + '"');
    html_.add('>');
    html_.add(orBlank(content));
    html_.add("</TD>");
  }

  void cell(const Look& look, std::string_view content) {
    html_.add(known(look).startTag);
    html_.add(orBlank(content));
    html_.add("</TD>");
  }

  void timeCell(const Look& look, const LegCell& leg) {
    const std::string tooltip =
        table_.showTooltips() && leg.isMarked() ? content_.tooltip(leg) : std::string();
    if (tooltip.empty()) {
      shortCell(look, [&](char* to) { return content_.writeTime(leg, to); });
    } else {
      std::array<char, shortContent> time;
      const std::string_view text(time.data(), content_.writeTime(leg, time.data()));
      cell(look, "<A title=\"" + quoted(tooltip) + "\">" + std::string(text) + "</A>");
    }
  }

  void placeCell(const Look& look, const LegCell& leg) {
    shortCell(look, [&](char* to) {
      return leg.place == 0 ? to : std::to_chars(to, to + shortContent, leg.place).ptr;
    });
  }

  // With what writeContent(to) writes: most cells of a table.
  template <class WriteContent>
  void shortCell(const Look& look, WriteContent writeContent) {
    constexpr std::string_view endTag = "</TD>";
    const std::string_view start = known(look).startTag;
    html_.addWritten(start.size() + shortContent + endTag.size(), [&](char* to) {
      char* const content = GrowingText::copied(start, to);
      char* const end = writeContent(content);
      return GrowingText::copied(endTag, end == content ? GrowingText::copied(blank, end) : end);
    });
  }
  static constexpr std::size_t shortContent = TimeFormat::room;

  // A column heading that sorts the table; legNo -1 for a column that belongs to no leg.
  std::string sortLink(std::string_view captionKey, const std::string& tooltip, enmSort sortBy,
                       int legNo = -1) const {
    std::string caption(orBlank(table_.caption(captionKey)));
    if (table_.baseURL().empty()) return caption;
    std::string link =
        "<A href=\"" + quoted(table_.baseURL()) + "&sortBy=" + std::to_string(sortBy);
    if (legNo != -1) link += "&legNo=" + std::to_string(legNo);
    link += "\" class=\"sort\"";
    if (!tooltip.empty()) link += " title=\"" + quoted(tooltip) + '"';
    link += '>' + caption + "</A>";
    const int sortedLeg =
        table_.sortedByLegNo() == -1 ? content_.noOfLegs() - 1 : table_.sortedByLegNo();
    const bool sorted = table_.sortedBy() == sortBy && (legNo == -1 || sortedLeg == legNo);
    return sorted ? "<SPAN class=\"sortedBy\">&nbsp;" + link + "&nbsp;</SPAN>" : link;
  }

  std::string legSortLinks(int legNo) const {
    const std::string place = content_.isLastLeg(legNo)
                                  ? table_.caption("finish")
                                  : table_.caption("control") + ' ' + std::to_string(legNo + 1);
    const auto tooltip = [&](std::string_view key) { return table_.caption(key) + ' ' + place; };
    std::string links =
        sortLink("legTimeSortCaption", tooltip("sortByLegTime"), esorLegTime, legNo);
    links += blank;
    links +=
        table_.passingEndTimes()
            ? sortLink("passingEndTimeSortCaption", tooltip("sortByPassingEndTime"),
                       esorPassingEndTime, legNo)
            : sortLink("totalTimeSortCaption", tooltip("sortByTotalTime"), esorTotalTime, legNo);
    return links;
  }

  void writeHeader() {
    const Look left{CellFamily::fixedTopLeftAligned, CellKind::plain, Edge::none, Edge::fixed};
    const Look center{CellFamily::fixedTopCenterAligned, CellKind::plain, Edge::none, Edge::fixed};
    const Look repeated{left.family, CellKind::plain, Edge::none, Edge::unfixed};
    const Look leg{center.family, CellKind::plain, Edge::none, Edge::unfixed};
    const Span twoRows{2, 1};
    const std::string name = sortLink("name", table_.caption("sortByName"), esorName);
    const std::string club = sortLink("club", table_.caption("sortByClub"), esorClub);
    const std::string& byFinish = table_.caption("sortByFinishTime");

    html_.add("<TR>");
    cell({CellFamily::fixedTopCenterAligned}, table_.caption("place"), twoRows);
    cell(left, name);
    if (table_.showStartTimes()) {
      cell(center, sortLink("startTime", table_.caption("sortByStartTime"), esorStartTime),
           twoRows);
    }
    if (table_.showFinishTimes())
      cell(center, sortLink("finishTime", byFinish, esorCustom), twoRows);
    cell(center, sortLink("finishTimeDifference", byFinish, esorCustom), twoRows);
    for (int i = 0; i < content_.noOfLegs(); ++i) cell(leg, legSortLinks(i), {1, legSpan_});
    cell(repeated, name);
    html_.add("</TR>\r\n<TR>");
    cell(left, club);
    for (int i = 0; i < content_.noOfLegs(); ++i) {
      cell(leg, content_.legDescription(i), {1, legSpan_});
    }
    cell(repeated, club);
    html_.add("</TR>\r\n");
  }

  void beginRow(int number, int row) {
    const std::string k = std::to_string(number);
    html_.add("<TR id=\"" + k + '_' + std::to_string(row) + "\" onMouseOver=\"highlight(" + k +
              ",true)\" onMouseOut=\"highlight(" + k + ",false)\">");
  }

  void legCells(int runner, enmLegStyle style, CellFamily time, CellFamily place, Edge top) {
    for (int i = 0; i < content_.noOfLegs(); ++i) {
      const LegCell leg = content_.legCell(runner, i, style);
      timeCell({time, leg.kind, top, Edge::unfixed}, leg);
      if (table_.showPlaces()) placeCell({place, leg.kind, top}, leg);
    }
  }

  void writeRunner(int runner) {
    const Edge top = runner == 0 ? Edge::outer : Edge::inner;
    const std::string name = escapedMarkup(content_.name(runner));
    const std::string club = escapedMarkup(content_.club(runner));
    const auto fixedCell = [&](CellFamily family, const std::string& content) {
      cell({family, CellKind::plain, top, Edge::fixed}, content, {2, 1});
    };

    beginRow(runner + 1, 0);
    cell({CellFamily::place, CellKind::plain, top}, content_.place(runner), {2, 1});
    cell({CellFamily::name, CellKind::plain, top, Edge::fixed}, name);
    if (table_.showStartTimes()) fixedCell(CellFamily::startTime, content_.startTime(runner));
    if (table_.showFinishTimes()) fixedCell(CellFamily::finishTime, content_.finishTime(runner));
    fixedCell(CellFamily::finishTimeDifference, content_.finishTimeDifference(runner));
    legCells(runner, elstLeg, CellFamily::legTime, CellFamily::legPlace, top);
    cell({CellFamily::name, CellKind::plain, top, Edge::unfixed}, name);
    html_.add("</TR>\r\n");

    beginRow(runner + 1, 1);
    cell({CellFamily::club, CellKind::plain, Edge::none, Edge::fixed}, club);
    const bool passing = table_.passingEndTimes();
    legCells(runner, content_.secondRowStyle(),
             passing ? CellFamily::passingEndTime : CellFamily::totalTime,
             passing ? CellFamily::passingEndPlace : CellFamily::totalPlace, Edge::none);
    cell({CellFamily::club, CellKind::plain, Edge::none, Edge::unfixed}, club);
    html_.add("</TR>\r\n");
  }

  const clsLarkstoneOnlineTable& table_;
  TableContent content_;
  StyleRegistry registry_;
  int legSpan_;
  std::array<std::array<CellFormat, LRK_CELL_KINDS>, LRK_CELL_FAMILIES> formats_;
  std::array<KnownLook, std::size_t{LRK_CELL_FAMILIES} * LRK_CELL_KINDS * edges * edges> looks_;
  GrowingText html_;
};

}  // namespace

HtmlTable writeHtmlTable(const clsLarkstoneOnlineTable& table, const LRKCourse& course) {
  return HtmlTableWriter(table, course).write();
}

}  // namespace larkstone
