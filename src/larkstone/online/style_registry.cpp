#include "larkstone/online/style_registry.hpp"

namespace larkstone {

std::string StyleRegistry::registerCellFormat(const CellFormat& format,
                                              const CellBorders& borders) {
  const std::string key = cellFormatKey(format, borders);
  if (const StyleClass* known = classes_.find(key)) return known->name;
  std::string name = "C" + std::to_string(classes_.size());
  classes_.insert(key, {name, format, borders});
  const Color highlighted = mixedColor(format.backColor, highlightColor_, highlightPercentage_);
  highlightList_ += "'" + colorToHexColor(highlighted) + "',";
  return name;
}

}  // namespace larkstone
