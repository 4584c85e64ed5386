#pragma once

// JSON as a stream. An analysis can be larger than memory would like to hold twice, and its numbers
// have a fixed number of digits.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/output.hpp"

namespace larkstone::cli {

/// Keys and values in the order they are written. The caller keeps objects and arrays in balance.
/// The JSON can stand in a SCRIPT element: "<" is escaped in texts.
class JsonWriter {
 public:
  enum class Form {
    spaced,
    compact,  ///< without blanks and line ends
  };

  explicit JsonWriter(TextSink& output, Form form = Form::spaced) : output_(output), form_(form) {}

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  /// The next element of the innermost array starts on a line of its own.
  void newLine() { lineBreak_ = true; }

  /// Written as it stands: a name of ours, nothing to escape.
  void key(std::string_view name);
  void text(std::string_view utf8);
  void number(std::int64_t value);
  void number(float value);   ///< 9 significant digits; null for what is no number
  void number(double value);  ///< 17 significant digits; null for what is no number
  void boolean(bool value);
  void null();

 private:
  void begin(char bracket);
  void end(char bracket);
  void separate();
  void raw(std::string_view token);
  void decimal(double value, int digits);

  TextSink& output_;
  Form form_;
  std::vector<bool> hasElements_;  // per open bracket
  bool afterKey_ = false;
  bool lineBreak_ = false;
};

}  // namespace larkstone::cli
