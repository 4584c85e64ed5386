#include "larkstone/event/unheld_values.hpp"

#include "larkstone/event/category_codec.hpp"
#include "larkstone/event/event.hpp"
#include "larkstone/event/event_store.hpp"
#include "larkstone/model/category.hpp"
#include "larkstone/model/derived_course.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

namespace {

template <class Owner>
std::vector<std::string> unheldValues(std::string_view record, const TagRange& range) {
  std::vector<std::string> found;
  ByteReader reader(record);
  while (!reader.atEnd() && found.size() < mostUnheldValues) {
    const enmFileTag tag = readTag(reader);
    if (auto text = unheldValue<Owner>(record.substr(reader.position()), tag)) {
      found.push_back(std::move(*text));
    }
    skipTagValue(reader, range, tag);
  }
  return found;
}

}  // namespace

std::vector<std::string> unheldValuesOfCategory(std::string_view record) {
  std::vector<std::string> found = unheldValues<LRKCategory>(record, categoryTags);
  int number = 0;
  for (const std::string_view block : runnerBlocks(record)) {
    ++number;
    if (found.size() >= mostUnheldValues) break;
    for (const std::string& value : unheldValues<LRKRunner>(block, runnerTags)) {
      found.push_back("runner " + std::to_string(number) + ": " + value);
    }
  }
  return found;
}

std::vector<std::string> unheldValuesOfDerivedCourse(std::string_view record) {
  return unheldValues<LRKDerivedCourse>(record, derivedCourseTags);
}

std::vector<std::string> LRKEvent::warnings() const {
  if (!isOpen()) return {};
  std::vector<std::string> all = store_->unheldInHeader;
  const auto add = [&all](const std::string& of, const std::vector<std::string>& values) {
    for (const std::string& value : values) {
      if (all.size() < mostUnheldValues) all.push_back(of + value);
    }
  };
  for (int i = 0; i < noOfCategories(); ++i) {
    add("category \"" + categoryName(i) + "\": ", unheldValuesOfCategory(categoryRecord(i)));
  }
  for (const Record& course : store_->derivedCourses) {
    std::string record;
    if (!store_->read(course, record)) continue;
    add("derived course \"" + course.name + "\": ", unheldValuesOfDerivedCourse(record));
  }
  return all;
}

}  // namespace larkstone
