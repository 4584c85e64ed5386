// The texts of a leg list: by place on the course, by codes, by punch indices.

#include "larkstone/core/code_text.hpp"
#include "larkstone/geometry/legs.hpp"

namespace larkstone {

namespace {

std::string pointName(Code code, int number, std::string_view startName,
                      std::string_view finishName, std::string_view prefix) {
  if (isStartCode(code)) return std::string(startName);
  if (isFinishCode(code)) return std::string(finishName);
  return std::string(prefix) + std::to_string(number);
}

std::string joined(std::string a, std::string_view delimiter, const std::string& b) {
  a += delimiter;
  return a += b;
}

}  // namespace

std::string LRKLegs::beginOrdinalString(int index, std::string_view startName,
                                        std::string_view finishName,
                                        std::string_view legPrefix) const {
  return pointName(beginCode(index), index, startName, finishName, legPrefix);
}

std::string LRKLegs::endOrdinalString(int index, std::string_view startName,
                                      std::string_view finishName,
                                      std::string_view legPrefix) const {
  return pointName(endCode(index), index + 1, startName, finishName, legPrefix);
}

std::string LRKLegs::ordinalString(int index, std::string_view startName,
                                   std::string_view finishName, std::string_view legPrefix,
                                   std::string_view /*delimiter*/) const {
  return joined(beginOrdinalString(index, startName, finishName, legPrefix), "-",
                endOrdinalString(index, startName, finishName, legPrefix));
}

std::string LRKLegs::beginCodeString(int index, std::string_view startName,
                                     std::string_view finishName, std::string_view codePrefix,
                                     enmCodeStringConversion codeStringConversion) const {
  return codeToString(beginCode(index), startName, finishName, codePrefix, codeStringConversion);
}

std::string LRKLegs::endCodeString(int index, std::string_view startName,
                                   std::string_view finishName, std::string_view codePrefix,
                                   enmCodeStringConversion codeStringConversion) const {
  return codeToString(endCode(index), startName, finishName, codePrefix, codeStringConversion);
}

std::string LRKLegs::beginAndEndCodeString(int index, std::string_view startName,
                                           std::string_view finishName, std::string_view codePrefix,
                                           enmCodeStringConversion /*codeStringConversion*/,
                                           std::string_view delimiter) const {
  return joined(beginCodeString(index, startName, finishName, codePrefix, ecscForceHideIndex),
                delimiter,
                endCodeString(index, startName, finishName, codePrefix, ecscForceHideIndex));
}

std::string LRKLegs::beginPunchIndexString(int index, std::string_view startName,
                                           std::string_view finishName,
                                           std::string_view controlPrefix) const {
  return pointName(beginCode(index), beginPunchIndex(index), startName, finishName, controlPrefix);
}

std::string LRKLegs::endPunchIndexString(int index, std::string_view startName,
                                         std::string_view finishName,
                                         std::string_view controlPrefix) const {
  return pointName(endCode(index), endPunchIndex(index), startName, finishName, controlPrefix);
}

std::string LRKLegs::beginAndEndPunchIndexString(int index, std::string_view startName,
                                                 std::string_view finishName,
                                                 std::string_view controlPrefix,
                                                 std::string_view delimiter) const {
  return joined(beginPunchIndexString(index, startName, finishName, controlPrefix), delimiter,
                endPunchIndexString(index, startName, finishName, controlPrefix));
}

std::string LRKLegs::codesToString(std::string_view startName, std::string_view finishName,
                                   std::string_view codePrefix,
                                   enmCodeStringConversion codeStringConversion,
                                   std::string_view delimiter1, std::string_view delimiter2,
                                   bool showSubCodes, std::string_view subCodeStartDelimiter,
                                   std::string_view subCodeEndDelimiter) const {
  const auto codeText = [&](Code code) {
    return codeToString(code, startName, finishName, codePrefix, codeStringConversion);
  };
  std::string text;
  for (int i = 0; i < count(); ++i) {
    if (newCourseFragmentStarts(i)) {
      if (i > 0) text += delimiter2;
      text += codeText(beginCode(i));
    }
    if (showSubCodes && noOfSubCodes(i) > 0) {
      text += subCodeStartDelimiter;
      for (int k = 0; k < noOfSubCodes(i); ++k) {
        if (k > 0) text += delimiter1;
        text += codeText(subCode(i, k));
      }
      text += subCodeEndDelimiter;
    } else {
      text += delimiter1;
    }
    text += codeText(endCode(i));
  }
  return text;
}

}  // namespace larkstone
