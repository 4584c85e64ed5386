#pragma once

// The look of a cell: colours, and the compact text by which a host describes it.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "larkstone/core/enums.hpp"

namespace larkstone {

/// Red in the low byte, then green, then blue: 255 is red, 16777215 white.
using Color = std::int32_t;

/// "#" and red, green and blue as two upper-case hexadecimal digits each.
std::string colorToHexColor(Color color);

/// The inverse: "#" and six hexadecimal digits in either case. 0 for any other text.
Color hexColorToColor(std::string_view hexColor);

/// The colour a share of the way from one colour to another, channel by channel, halves to the
/// even neighbour: 0 is the first, 1 the second.
Color mixedColor(Color from, Color to, float share);

/// What a cell of the split table shows.
enum class CellFamily {
  fixedTopLeftAligned,    // captions of the name and the club
  fixedTopCenterAligned,  // all other captions
  place,
  name,
  club,
  startTime,
  finishTime,
  finishTimeDifference,
  legTime,
  totalTime,
  passingEndTime,
  legPlace,
  totalPlace,
  passingEndPlace,
};
inline constexpr int LRK_CELL_FAMILIES = 14;

/// What is special about it.
enum class CellKind { plain, best, top, timeLoss, estimated };
inline constexpr int LRK_CELL_KINDS = 5;

/// A cell format as its text describes it: twelve fields apart by ";" in the order of the members.
/// A missing field is empty, an empty field or one that is no number counts as 0. Colours are
/// numbers or "#RRGGBB".
struct CellFormat {
  std::string font;
  float size = 0;       ///< points, with a decimal point
  bool bold = false;    ///< any number but 0
  bool italic = false;  ///< likewise
  int leftPadding = 0;  ///< pixels
  int topPadding = 0;
  int rightPadding = 0;
  int bottomPadding = 0;
  enmHAlign hAlign = ehalLeft;  ///< other numbers than those of the enumeration are kept
  enmVAlign vAlign = evalTop;
  Color textColor = 0;
  Color backColor = 0;
};

/// The text that a cell format of the kind begins with: a plain one for all but estimated times,
/// whose format is empty (black on black, without a size) until the host sets one.
constexpr std::string_view initialCellFormat(CellKind kind) {
  return kind == CellKind::estimated ? "" : "Verdana;8;0;0;2;2;1;1;0;0;0;16777215";
}

CellFormat parseCellFormat(std::string_view text);

/// The lines at the edges of a cell, one pixel wide, in their colours.
struct CellBorders {
  std::optional<Color> top;
  std::optional<Color> left;
};

/// The sixteen fields that make two cells look alike: the format's, then for the top and the left
/// border whether there is one, then their colours.
std::string cellFormatKey(const CellFormat& format, const CellBorders& borders);

/// A font size as style sheets write it.
std::string fontSizeText(float points);

}  // namespace larkstone
