#pragma once

// Importing small lists that a test writes itself.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "larkstone/event/event.hpp"
#include "larkstone/import/import.hpp"

#include "support/temp_folder.hpp"

namespace larkstone::test {

/// An importer and an open event in a folder of their own.
class ImportTest : public testing::Test {
 protected:
  ImportTest() {
    event.tempFilePath(folder.path() + "\\");
    importer.tempFilePath(folder.path() + "\\");
    EXPECT_EQ(event.createNewEvent(folder / "event.lrk4"), 0);
    importer.onNote([this](const ImportNote& note) { notes.push_back(note); });
  }

  std::int32_t importXml(std::string_view bytes) {
    return importer.importIOFXML(event, folder.write("list.xml", bytes));
  }
  const LRKRunner& runner(int category, int index) {
    return event.category(category)->runner(index);
  }

  TempFolder folder;
  std::vector<std::string> told() const {
    std::vector<std::string> texts;
    for (const ImportNote& note : notes) texts.push_back(note.what);
    return texts;
  }

  LRKEvent event;
  LRKImport importer;
  std::vector<ImportNote> notes;
};

/// "S 3600000, 31 3606000, F -" with times in hundredths.
inline std::string textOf(const LRKPunches& punches) {
  std::string text;
  for (int i = 0; i < punches.count(); ++i) {
    if (i > 0) text += ", ";
    text += punches.codeName(i, "S", "F") + ' ';
    text += isDisq(punches.time(i)) ? "-" : std::to_string(punches.time(i));
  }
  return text;
}

/// "firstName=Åsa ID=7 ...": the properties that are set, in the order of their table.
template <class Owner>
std::string setProperties(const Owner& owner) {
  std::string text;
  Owner::forEachRow([&](const auto& row) {
    if constexpr (isPropertyRow<std::decay_t<decltype(row)>>) {
      bool isSet = false;
      const TagValue value = propertyByTag(owner, row.tag, isSet);
      const bool derived = row.name == "resultPlace" || !row.stored;
      if (isSet && !derived) text += std::string(row.name) + '=' + *textOf(value) + ' ';
    }
  });
  return text;
}

inline std::vector<std::string> categoryNames(const LRKEvent& event) {
  std::vector<std::string> names;
  for (int i = 0; i < event.noOfCategories(); ++i) names.push_back(event.categoryName(i));
  return names;
}

}  // namespace larkstone::test
