#pragma once

// What the program says on standard error: errors, warnings, and how far the work is.

#include <chrono>
#include <string>
#include <string_view>

#include "cli/program.hpp"

namespace larkstone::cli {

/// One line: the file, what is wrong, the code's name.
void sayError(std::string_view file, std::string_view what, std::string_view code = {});
/// The same for what did not stop the work.
void sayWarning(const CommonOptions& options, std::string_view file, std::string_view what,
                std::string_view code = {});

/// A progress bar on a terminal, from the first second on; nothing elsewhere.
class Progress {
 public:
  Progress(const CommonOptions& options, std::string label);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void show(double fraction);
  void clear();

 private:
  std::string label_;
  bool onTerminal_;
  int shown_ = -1;  // per cent on the screen
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace larkstone::cli
