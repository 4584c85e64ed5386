#include "cli/report.hpp"

#include <algorithm>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace larkstone::cli {

namespace {

void say(std::string_view file, std::string_view what, std::string_view code) {
  std::cerr << file << ": " << what;
  if (!code.empty()) std::cerr << " (" << code << ')';
  std::cerr << '\n';
}

}  // namespace

void sayError(std::string_view file, std::string_view what, std::string_view code) {
  say(file, what, code);
}

void sayWarning(const CommonOptions& options, std::string_view file, std::string_view what,
                std::string_view code) {
  if (!options.quiet) say(file, what, code);
}

Progress::Progress(const CommonOptions& options, std::string label)
    : label_(std::move(label)), onTerminal_(!options.quiet && ::isatty(STDERR_FILENO) != 0) {}

void Progress::show(double fraction) {
  if (!onTerminal_) return;
  const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100);
  if (percent == shown_ || std::chrono::steady_clock::now() - start_ < std::chrono::seconds(1)) {
    return;
  }
  shown_ = percent;
  std::string bar(20, ' ');
  std::fill_n(bar.begin(), percent / 5, '#');
  std::cerr << '\r' << label_ << " [" << bar << "] " << percent << " %" << std::flush;
}

void Progress::clear() {
  if (shown_ >= 0) std::cerr << '\r' << std::string(label_.size() + 32, ' ') << '\r' << std::flush;
  shown_ = -1;
}

}  // namespace larkstone::cli
