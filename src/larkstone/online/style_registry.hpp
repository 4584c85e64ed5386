#pragma once

// The classes of one rendering: every distinct look of a cell has one.

#include <string>
#include <vector>

#include "larkstone/core/ordered_map.hpp"
#include "larkstone/online/cell_format.hpp"

namespace larkstone {

/// A look with the name of its class.
struct StyleClass {
  std::string name;
  CellFormat format;
  CellBorders borders;
};

/// Names classes "C0", "C1" and so on in the order in which their looks are first met. The
/// highlight script finds the colour of a cell by that number.
class StyleRegistry {
 public:
  StyleRegistry(Color highlightColor, float highlightPercentage)
      : highlightColor_(highlightColor), highlightPercentage_(highlightPercentage) {}

  /// The name of the look's class, which is made when the look is new.
  std::string registerCellFormat(const CellFormat& format, const CellBorders& borders);

  /// The classes in order of creation, by their canonical keys.
  const OrderedMap<std::string, StyleClass>& classes() const { return classes_; }
  /// The highlighted background of each class in the same order: 'colour', with a comma behind
  /// each.
  const std::string& highlightList() const { return highlightList_; }

 private:
  Color highlightColor_;
  float highlightPercentage_;
  OrderedMap<std::string, StyleClass> classes_;
  std::string highlightList_;
};

}  // namespace larkstone
