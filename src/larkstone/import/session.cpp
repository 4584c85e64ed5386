#include "larkstone/import/session.hpp"

#include "larkstone/event/event.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

namespace {

constexpr std::size_t mostWarnings = 10000;

// A text of a file may be of any length.
void shorten(std::string& text) {
  if (text.size() <= longestNoteText) return;
  text.resize(beginningOf(text, longestNoteText).size());
  text += "...";
}

}  // namespace

std::int32_t ImportSession::run(Reader reader, ReadJob job) {
  if (importingNow_ || reader == nullptr) return LRK_IMPORT_UNKNOWN;
  // Also when a notification throws: the importer is free again and no request to cancel is left.
  struct Running {
    explicit Running(ImportSession& running) : session(running) {
      session.importingNow_ = true;
      session.fractionCompleted_ = 0;
      session.warnings_.clear();
      session.noOfWarnings_ = 0;
      session.noOfStartTimesSet_ = 0;
    }
    ~Running() {
      session.importingNow_ = false;
      session.cancelRequested_ = false;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ImportSession& session;
  } const running(*this);
  if (!fileExists(job.fileName)) return LRK_IMPORT_FILE_DOES_NOT_EXIST;
  // The event would be saved over what it is read from.
  if (isSameFile(job.event.filename(), job.fileName)) {
    return LRK_IMPORT_EVENT_FILE_ERROR + LRK_FILE_ALREADY_EXISTS;
  }
  return reader(job);
}

void ImportSession::progress(float fraction) {
  fractionCompleted_ = fraction;
  if (onWorkProgress) onWorkProgress(fraction);
}

bool ImportSession::notesWanted() const { return onNote || warnings_.size() < mostWarnings; }

void ImportSession::keep(std::string_view what, std::string_view text, std::string where) {
  ImportNote note{std::string(what), std::move(where)};
  if (!text.empty())
    note.what.append(" \"").append(text.substr(0, longestNoteText + 4)).append("\"");
  shorten(note.what);
  shorten(note.where);
  if (onNote) onNote(note);
  if (warnings_.size() < mostWarnings) warnings_.push_back(std::move(note));
}

void ImportSession::complete(LRKEvent& event, const std::string& importedFrom) const {
  event.importedFrom(importedFrom);
  if (master.empty()) return;
  if (!event.createdBySet()) event.createdBy(master);
  event.lastModifiedBy(master);
}

}  // namespace larkstone
