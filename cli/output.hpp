#pragma once

// Where a command's result goes: standard output, or a file that appears whole or not at all.

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace larkstone {
class WholeFile;
}

namespace larkstone::cli {

/// A text from a file that keeps to its place in a line of output: control characters, line ends
/// and tabs among them, become blanks.
std::string oneLine(std::string text);
/// A category's name in a line of output; "(no name)" when it has none.
std::string displayName(const std::string& categoryName);

/// Takes texts one after the other.
class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void write(std::string_view text) = 0;
};

/// Keeps them.
class TextBuffer : public TextSink {
 public:
  void write(std::string_view text) override { text_ += text; }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

class Output : public TextSink {
 public:
  /// "-" is standard output. Nothing of a file is seen under its name before close().
  explicit Output(std::string path);
  ~Output() override;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void write(std::string_view text) override;
  /// Completes the output; false (after saying why on standard error) when not all of it could be
  /// written.
  bool close();

 private:
  bool flush();

  std::string path_;
  std::unique_ptr<WholeFile> file_;  // nothing for standard output
  std::string pending_;
  bool failed_ = false;
};

}  // namespace larkstone::cli
