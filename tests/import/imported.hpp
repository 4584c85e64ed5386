#pragma once

// Importing small lists that a test writes itself.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "larkstone/event/event.hpp"
#include "larkstone/import/import.hpp"

#include "import/lists.hpp"
#include "support/temp_folder.hpp"

namespace larkstone::test {

using testing::ElementsAre;

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

/// A line for an event, for each of its categories and for each of their runners:
/// "name|properties" of the former, "properties|punches|additional ones|status" of the runners.
inline std::string described(LRKEvent& event) {
  std::string text = event.name() + '|' + setProperties(event) + '\n';
  for (int i = 0; i < event.noOfCategories(); ++i) {
    const auto category = event.category(i);
    text += category->name() + '|' + setProperties(*category) + '\n';
    for (int k = 0; k < category->noOfRunners(); ++k) {
      const LRKRunner& runner = category->runner(k);
      text += setProperties(runner) + '|' + textOf(runner.punches()) + '|' +
              textOf(runner.extraPunches()) + '|' + std::to_string(runner.status()) + '\n';
    }
  }
  return text;
}

inline std::string utf16(std::u16string_view units, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : units) {
    const std::string pair = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    bytes += bigEndian ? std::string(pair.rbegin(), pair.rend()) : pair;
  }
  return bytes;
}

/// What a result gives: the punches of its runner (empty: no runner) and the status.
struct ResultRow {
  std::string result;
  std::string_view punches;
  enmStatus status = estaUnknown;
};

/// An importer and an open event in a folder of their own.
class ImportTest : public testing::Test {
 protected:
  ImportTest() {
    event.tempFilePath(folder.path() + "\\");
    importer.tempFilePath(folder.path() + "\\");
    newEvent();
    importer.onNote([this](const ImportNote& note) {
      notes.push_back(note);
      told.push_back(note.what);
    });
  }

  void newEvent() {
    event.closeEvent();
    EXPECT_EQ(event.createNewEvent(folder / "event.lrk4", true), 0);
  }
  std::int32_t importXml(std::string_view bytes) {
    return importer.importIOFXML(event, folder.write("list.xml", bytes));
  }
  std::int32_t importAny(std::string_view bytes) {
    return importer.import(LRK_IMPORT_AUTO, event, folder.write("list", bytes));
  }
  std::shared_ptr<LRKCategory> lastCategory() { return event.category(event.noOfCategories() - 1); }
  const LRKRunner& runner(int category, int index) {
    return event.category(category)->runner(index);
  }

  template <std::size_t n, class ListOf>
  void checkResults(const ResultRow (&rows)[n], ListOf listOf) {
    for (const ResultRow& row : rows) {
      SCOPED_TRACE(row.result);
      const int index = event.noOfCategories();
      EXPECT_EQ(importAny(listOf(row.result)), 0);
      ASSERT_EQ(event.noOfCategories(), index + (row.punches.empty() ? 0 : 1));
      if (row.punches.empty()) continue;
      EXPECT_EQ(textOf(runner(index, 0).punches()), row.punches);
      EXPECT_EQ(runner(index, 0).status(), row.status);
    }
  }

  TempFolder folder;
  LRKEvent event;
  LRKImport importer;
  std::vector<ImportNote> notes;
  std::vector<std::string> told;  // what the notes say
};

}  // namespace larkstone::test
