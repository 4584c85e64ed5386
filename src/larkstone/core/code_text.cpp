#include "larkstone/core/code_text.hpp"

#include <algorithm>

#include "larkstone/core/number.hpp"
#include "larkstone/core/text.hpp"

namespace larkstone {

namespace {

std::string indexedName(std::string_view name, int index, enmCodeStringConversion conversion) {
  std::string text(name);
  switch (conversion) {
    case ecscDefault:
      return index == 1 ? text : text + std::to_string(index);
    case ecscForceShowIndex:
      return text + std::to_string(index);
    case ecscForceHideIndex:
      return text;
  }
  return {};
}

int indexBehind(std::string_view text) {
  return static_cast<int>(std::clamp(leadingNumber(text), 1.0, 16.0));
}

}  // namespace

std::string codeToString(Code code, std::string_view startName, std::string_view finishName,
                         std::string_view codePrefix,
                         enmCodeStringConversion codeStringConversion) {
  if (isStartCode(code) && !startName.empty()) {
    return indexedName(startName, code - LRK_START_CODE + 1, codeStringConversion);
  }
  if (isFinishCode(code) && !finishName.empty()) {
    return indexedName(finishName, code - LRK_FINISH_CODE + 1, codeStringConversion);
  }
  return std::string(codePrefix) + std::to_string(code);
}

Code stringToCode(std::string_view text, std::string_view startName, std::string_view finishName,
                  std::string_view codePrefix, enmCodeStringConversion /*codeStringConversion*/) {
  const std::string lower = lowered(text);
  const auto beginsWith = [&lower](const std::string& name) {
    return !name.empty() && lower.compare(0, name.size(), name) == 0;
  };
  if (const std::string name = lowered(startName); beginsWith(name)) {
    return static_cast<Code>(LRK_START_CODE - 1 + indexBehind(lower.substr(name.size())));
  }
  if (const std::string name = lowered(finishName); beginsWith(name)) {
    return static_cast<Code>(LRK_FINISH_CODE - 1 + indexBehind(lower.substr(name.size())));
  }
  std::string_view number = lower;
  const std::string prefix = lowered(trimmed(codePrefix));
  if (beginsWith(prefix)) number = trimmed(number.substr(prefix.size()));
  return static_cast<Code>(roundHalfEven(std::clamp(leadingNumber(number), 0.0, 32767.0)));
}

}  // namespace larkstone
