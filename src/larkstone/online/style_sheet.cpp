#include "larkstone/online/style_sheet.hpp"

#include "larkstone/online/style_registry.hpp"
#include "larkstone/online/table.hpp"

namespace larkstone {

namespace {

constexpr std::string_view lineEnd = "\r\n";

constexpr std::string_view highlightFunction =
    "function highlight(row, on) { var i=0; var j; var r; var c; while (1) { if(!(r = "
    "document.getElementById('' + row + '_' + i))) break; for(j=0; j<r.cells.length; j++) { c = "
    "r.cells.item(j).className.substring(1); if(on) r.cells.item(j).style.backgroundColor = hc[c]; "
    "else r.cells.item(j).style.backgroundColor = ''; } i++; } }";

std::string_view alignmentName(enmHAlign align) {
  switch (align) {
    case ehalLeft:
      return "left";
    case ehalCenter:
      return "center";
    case ehalRight:
      return "right";
  }
  return "";
}

std::string_view alignmentName(enmVAlign align) {
  switch (align) {
    case evalTop:
      return "top";
    case evalCenter:
      return "center";
    case evalBottom:
      return "bottom";
  }
  return "";
}

void appendPixels(std::string& css, int pixels, std::string_view behind) {
  css += std::to_string(pixels);
  css += "px";
  css += behind;
}

void appendBorder(std::string& css, std::string_view side, const std::optional<Color>& color) {
  if (!color) return;
  css += "border-";
  css += side;
  css += ": 1px solid " + colorToHexColor(*color) + ";";
}

void appendClass(std::string& css, const StyleClass& style) {
  const CellFormat& format = style.format;
  css += "." + style.name + " {color:" + colorToHexColor(format.textColor);
  css += ";background-color:" + colorToHexColor(format.backColor);
  css += ";font-size:" + fontSizeText(format.size);
  css += "pt;font-weight:";
  css += format.bold ? "bold" : "normal";
  css += ";font-style:";
  css += format.italic ? "italic" : "normal";
  css += ";font-family:" + format.font + ",Verdana,Arial,sans-serif;text-align:";
  css += alignmentName(format.hAlign);
  css += ";vertical-align:";
  css += alignmentName(format.vAlign);
  css += ";padding:";
  appendPixels(css, format.topPadding, " ");
  appendPixels(css, format.rightPadding, " ");
  appendPixels(css, format.bottomPadding, " ");
  appendPixels(css, format.leftPadding, ";");
  appendBorder(css, "top", style.borders.top);
  appendBorder(css, "left", style.borders.left);
  css += "}";
}

}  // namespace

std::string styleSheet(const clsLarkstoneOnlineTable& table, const StyleRegistry& registry) {
  std::string css = "TD {white-space:nowrap;}";
  css += lineEnd;
  css +=
      "SPAN.sortedBy {background-color: " + colorToHexColor(table.selectedLinkBackColor()) + ";}";
  css += lineEnd;
  css += "A.sort {color:" + colorToHexColor(table.linkForeColor()) + "; text-decoration:none;}";
  css += lineEnd;
  css += "A.sort:hover {color:" + colorToHexColor(table.linkHoverForeColor()) +
         ";text-decoration:underline;}";
  for (const auto& [key, style] : registry.classes()) {
    css += lineEnd;
    appendClass(css, style);
  }
  return css;
}

std::string highlightScript(std::string_view highlightList) {
  std::string script = "<SCRIPT type=\"text/javascript\"><!--";
  script += lineEnd;
  if (!highlightList.empty()) {
    script += "var hc = new Array(";
    script += highlightList.substr(0, highlightList.size() - 1);
    script += ");";
  }
  script += lineEnd;
  script += highlightFunction;
  script += lineEnd;
  script += "--></SCRIPT>";
  return script;
}

}  // namespace larkstone
