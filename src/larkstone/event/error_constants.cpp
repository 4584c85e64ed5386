#include "larkstone/event/error_constants.hpp"

namespace larkstone {

namespace {

struct Row {
  std::int32_t code;
  std::string_view name;
  std::string_view text;
};

#define LRK_ERROR(name, text) \
  { name, #name, text }
constexpr Row rows[] = {
    LRK_ERROR(LRK_NOT_A_LRK_FILE, "not an event file"),
    LRK_ERROR(LRK_INVALID_FILE_FORMAT, "the event file is damaged"),
    LRK_ERROR(LRK_FILE_DOES_NOT_EXIST, "the file does not exist"),
    LRK_ERROR(LRK_FILE_READONLY, "the file is read-only"),
    LRK_ERROR(LRK_FILE_ALREADY_EXISTS, "the file exists already"),
    LRK_ERROR(LRK_COULD_NOT_CREATE_FILE, "a working file could not be created"),
    LRK_ERROR(LRK_UNKNOWN_FILE_VERSION, "the file was written by a newer version"),
    LRK_ERROR(LRK_COULD_NOT_OPEN_TEMPORARY_FILE,
              "a working file could not be read or written, or the event is closed or full (4095 "
              "categories and derived courses)"),
    LRK_ERROR(LRK_COULD_NOT_DELETE_TEMPORARY_FILE, "a working file could not be deleted"),
    LRK_ERROR(LRK_COULD_NOT_COPY_TEMPORARY_FILE, "a working file could not be replaced"),
    LRK_ERROR(LRK_COULD_NOT_OPEN_FILE, "the file could not be opened or written"),
};
#undef LRK_ERROR

constexpr const Row* find(std::int32_t code) {
  for (const Row& row : rows) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

}  // namespace

std::string_view errorName(std::int32_t code) {
  const Row* row = find(code);
  return row == nullptr ? std::string_view() : row->name;
}

std::string_view errorText(std::int32_t code) {
  const Row* row = find(code);
  return row == nullptr ? std::string_view() : row->text;
}

}  // namespace larkstone
