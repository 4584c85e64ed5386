#include "larkstone/import/session.hpp"

#include "larkstone/event/event.hpp"
#include "larkstone/platform/file.hpp"

namespace larkstone {

std::int32_t ImportSession::run(Reader reader, ReadJob job) {
  if (importingNow_ || reader == nullptr) return LRK_IMPORT_UNKNOWN;
  // Also when a notification throws: the importer is free again and no request to cancel is left.
  struct Running {
    explicit Running(ImportSession& running) : session(running) {
      session.importingNow_ = true;
      session.fractionCompleted_ = 0;
    }
    ~Running() {
      session.importingNow_ = false;
      session.cancelRequested_ = false;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ImportSession& session;
  } const running(*this);
  return fileExists(job.fileName) ? reader(job) : LRK_IMPORT_FILE_DOES_NOT_EXIST;
}

bool ImportSession::progress(float fraction) {
  fractionCompleted_ = fraction;
  if (onWorkProgress) onWorkProgress(fraction);
  return !cancelled();
}

std::int32_t ImportSession::addCategory(LRKEvent& event, LRKCategory category) {
  const std::int32_t error = event.addCategory(category);
  return error == 0 ? 0 : LRK_IMPORT_EVENT_FILE_ERROR + error;
}

void ImportSession::complete(LRKEvent& event, const std::string& importedFrom) const {
  event.importedFrom(importedFrom);
  if (master.empty()) return;
  if (!event.createdBySet()) event.createdBy(master);
  event.lastModifiedBy(master);
}

void setCourseLengthFromRunners(LRKCategory& category) {
  std::int64_t sum = 0;
  std::int64_t count = 0;
  for (int i = 0; i < category.noOfRunners(); ++i) {
    if (!category.runner(i).courseLengthSet()) continue;
    sum += category.runner(i).courseLength();
    ++count;
  }
  if (count > 0) category.courseLength(static_cast<Length>(sum / (count * 1000) * 1000));
}

}  // namespace larkstone
