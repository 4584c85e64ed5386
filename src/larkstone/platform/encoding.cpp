#include "larkstone/platform/encoding.hpp"

#include <algorithm>
#include <array>
#include <cerrno>

#include <iconv.h>

namespace larkstone {

namespace {

// A name from a file is handed to the system only when it is of a family that keeps ASCII and no
// state: no options behind slashes, no encodings in which "<" hides.
bool isPlain(std::string_view lowerCaseName) {
  constexpr std::array<std::string_view, 7> families = {"windows-", "cp125",  "iso-8859-", "koi8-",
                                                        "gbk",      "gb2312", "gb18030"};
  constexpr std::string_view characters = "abcdefghijklmnopqrstuvwxyz0123456789-";
  return lowerCaseName.find_first_not_of(characters) == std::string_view::npos &&
         std::any_of(families.begin(), families.end(),
                     [&](std::string_view family) { return lowerCaseName.starts_with(family); });
}

// iconv's own handle, closed at the end.
class Converter {
 public:
  explicit Converter(const std::string& encoding)
      : handle_(iconv_open("UTF-8", encoding.c_str())) {}
  ~Converter() {
    if (isOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Appends all bytes as UTF-8; false for bytes that mean nothing.
  bool convert(std::string_view bytes, std::string& text) {
    std::string input(bytes);  // iconv takes no constant bytes, though it leaves them alone
    char* from = input.data();
    std::size_t left = input.size();
    std::array<char, 4096> buffer;
    while (left > 0) {
      char* to = buffer.data();
      std::size_t room = buffer.size();
      const std::size_t result = iconv(handle_, &from, &left, &to, &room);
      text.append(buffer.data(), buffer.size() - room);
      if (result == static_cast<std::size_t>(-1) && errno != E2BIG) return false;
    }
    return true;
  }

 private:
  iconv_t handle_;
};

}  // namespace

std::optional<std::string> utf8From(std::string_view encoding, std::string_view bytes) {
  std::string name(encoding);
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  if (!isPlain(name)) return std::nullopt;
  Converter converter(name);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  if (!converter.isOpen() || !converter.convert(bytes, text)) return std::nullopt;
  return text;
}

}  // namespace larkstone
