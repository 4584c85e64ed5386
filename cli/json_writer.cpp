#include "cli/json_writer.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include <nlohmann/json.hpp>

namespace larkstone::cli {

namespace {

// Quoted and escaped; bytes that are not UTF-8 become the replacement character.
std::string quoted(std::string_view text) {
  using Json = nlohmann::json;
  std::string json = Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
  if (json.find('<') == std::string::npos) return json;
  std::string safe;
  for (const char c : json) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

}  // namespace

void JsonWriter::separate() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!hasElements_.empty()) {
    if (hasElements_.back()) output_.write(form_ == Form::compact ? "," : ", ");
    hasElements_.back() = true;
  }
  if (lineBreak_ && form_ == Form::spaced) output_.write("\n");
  lineBreak_ = false;
}

void JsonWriter::begin(char bracket) {
  separate();
  output_.write({&bracket, 1});
  hasElements_.push_back(false);
}

void JsonWriter::end(char bracket) {
  hasElements_.pop_back();
  output_.write({&bracket, 1});
  if (hasElements_.empty() && form_ == Form::spaced) output_.write("\n");
}

void JsonWriter::key(std::string_view name) {
  separate();
  output_.write("\"");
  output_.write(name);
  output_.write(form_ == Form::compact ? "\":" : "\": ");
  afterKey_ = true;
}

void JsonWriter::raw(std::string_view token) {
  separate();
  output_.write(token);
}

void JsonWriter::decimal(double value, int digits) {
  if (!std::isfinite(value)) return null();
  std::array<char, 40> text;
  const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                     std::chars_format::general, digits);
  raw({text.data(), written.ptr});
}

void JsonWriter::text(std::string_view utf8) { raw(quoted(utf8)); }
void JsonWriter::number(std::int64_t value) { raw(std::to_string(value)); }
void JsonWriter::number(float value) { decimal(static_cast<double>(value), 9); }
void JsonWriter::number(double value) { decimal(value, 17); }
void JsonWriter::boolean(bool value) { raw(value ? "true" : "false"); }
void JsonWriter::null() { raw("null"); }

}  // namespace larkstone::cli
