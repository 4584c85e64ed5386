#pragma once

// The records of an open event: categories and derived courses as bytes in the working file, and
// the tables over them.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "larkstone/event/record_codec.hpp"
#include "larkstone/event/working_file.hpp"

namespace larkstone {

struct Record {
  std::int64_t offset = 0;  ///< in the working file
  std::int32_t length = 0;
  int place = 0;  ///< among its kind, in the order of bytes in the event file
  std::string name;
  /// The categories that a derived course refers to, by file index, ascending. Nothing until it is
  /// asked for, and after the bytes changed.
  std::optional<std::vector<int>> categoriesReferredTo;
};

/// What a record is to hold.
struct RecordBytes {
  Record* record;
  std::string bytes;
};

/// A changed record is written behind the others, so that a change costs that record's size. What
/// is no longer in use is left out when the event is saved, and cleared out of the working file
/// when there is more of it than of records.
///
/// In the event file the categories' bytes stand in the order of their places, the derived courses'
/// behind them. The places of the categories are their file indices, unless categories were moved
/// in the file: then the bytes stay where they are until a category is stored or deleted.
class EventStore {
 public:
  /// The event file can name so many records.
  static constexpr std::size_t mostRecords = 4095;

  /// The folder in native form, with a separator at its end.
  explicit EventStore(std::string folder) : folder_(std::move(folder)), file_(folder_) {}

  bool isOpen() const { return file_.isOpen(); }

  std::vector<Record> categories;  ///< by file index
  std::vector<Record> derivedCourses;
  std::vector<std::string> unheldInHeader;  ///< see unheld_values.hpp

  bool isFull() const { return categories.size() + derivedCourses.size() >= mostRecords; }
  /// Gives the categories their file indices as places.
  void straighten();

  /// The bytes of all records together, as in the event file.
  std::int64_t dataLength() const;
  bool transferData(const ByteSink& sink) const;
  /// The position of every record in the event file's data area.
  std::vector<std::int64_t> categoryPositions() const;
  std::vector<std::int64_t> derivedCoursePositions() const;

  /// Fills the working file of a newly opened event.
  bool append(std::string_view bytes) { return file_.append(bytes); }

  bool read(const Record& record, std::string& bytes) const {
    return file_.read(record.offset, record.length, bytes);
  }
  /// Writes new bytes for records, in the tables or about to be. An error constant, and nothing
  /// changed, when that fails.
  std::int32_t write(std::span<const RecordBytes> changes);
  std::int32_t write(Record& record, std::string bytes) {
    const RecordBytes change{&record, std::move(bytes)};
    return write({&change, 1});
  }

  /// Keeps the whole working file in memory for find() until a record changes.
  bool hold();
  void release() { held_.reset(); }
  /// The first value with that tag in a record.
  TagValue find(const Record& record, const TagRange& range, enmFileTag tag) const;

 private:
  // Nothing happens where there is no room for a second file.
  void clearUnused();

  std::string folder_;
  WorkingFile file_;
  std::optional<std::string> held_;
};

}  // namespace larkstone
