#include "cli/output.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "larkstone/platform/file.hpp"

#include "cli/report.hpp"

namespace larkstone::cli {

namespace {

constexpr std::size_t flushSize = 1 << 16;

}  // namespace

std::string oneLine(std::string text) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; };
  std::replace_if(text.begin(), text.end(), isControl, ' ');
  return text;
}

std::string displayName(const std::string& categoryName) {
  return categoryName.empty() ? "(no name)" : oneLine(categoryName);
}

Output::Output(std::string path) : path_(std::move(path)) {
  if (path_ != "-") {
    file_ = std::make_unique<WholeFile>(path_);
    failed_ = isReadOnlyFile(path_) || !file_->isOpen();
  }
}

Output::~Output() = default;

void Output::write(std::string_view text) {
  pending_ += text;
  if (pending_.size() >= flushSize) flush();
}

bool Output::flush() {
  if (!failed_ && file_) failed_ = !file_->write(pending_);
  if (!failed_ && !file_) {
    failed_ = std::fwrite(pending_.data(), 1, pending_.size(), stdout) != pending_.size();
  }
  pending_.clear();
  return !failed_;
}

bool Output::close() {
  const bool written = flush() && (file_ ? file_->commit() : std::fflush(stdout) == 0);
  if (!written) {
    const bool readOnly = file_ && isReadOnlyFile(path_);
    sayError(file_ ? path_ : "standard output",
             readOnly ? "the file is read-only" : "the output could not be written");
  }
  return written;
}

}  // namespace larkstone::cli
