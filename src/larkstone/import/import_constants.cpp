#include "larkstone/import/import_constants.hpp"

#include "larkstone/event/error_constants.hpp"

namespace larkstone {

namespace {

struct Row {
  std::int32_t code;
  std::string_view name;
  std::string_view text;
};

constexpr Row rows[] = {
#define LRK_IMPORT_CONSTANT(number, name, text) {number, #name, text},
#include "larkstone/import/import_constants.def"
};

const Row* rowOf(std::int32_t code) {
  for (const Row& row : rows) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

}  // namespace

std::string_view importName(std::int32_t code) {
  if (code >= LRK_IMPORT_EVENT_FILE_ERROR) return errorName(code - LRK_IMPORT_EVENT_FILE_ERROR);
  const Row* row = rowOf(code);
  return row == nullptr ? std::string_view() : row->name;
}

std::string_view importText(std::int32_t code) {
  if (code >= LRK_IMPORT_EVENT_FILE_ERROR) return errorText(code - LRK_IMPORT_EVENT_FILE_ERROR);
  const Row* row = rowOf(code);
  return row == nullptr ? std::string_view() : row->text;
}

}  // namespace larkstone
