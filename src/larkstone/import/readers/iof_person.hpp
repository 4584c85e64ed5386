#pragma once

// What both versions of IOF XML say about a runner in the same way.

#include <string_view>

#include "larkstone/import/readers/iof_list.hpp"
#include "larkstone/import/readers/iof_values.hpp"
#include "larkstone/model/runner.hpp"

namespace larkstone {

/// A year alone is its first of January; the format tells that it is no more than a year.
void readBirthDate(std::string_view text, std::string_view format, LRKRunner& runner,
                   const IofNotes& notes);
void readNationality(XmlNode element, LRKRunner& runner);
void readClubCountry(Country country, LRKRunner& runner);
enmStatus readStatus(std::string_view text, const IofNotes& notes);
/// An empty or unreadable number leaves the card unknown.
void readCardNumber(std::string_view text, LRKRunner& runner, const IofNotes& notes);

/// A visit of a control, its time counted from the start.
struct IofSplit {
  Code code = 0;
  Time time = LRK_NO_TIME;
  bool additional = false;  ///< no part of the course
};
Code readControlCode(std::string_view text, const IofNotes& notes);
/// Adds the punch of a split.
void addSplit(const IofSplit& split, Time start, LRKRunner& runner, const IofNotes& notes);

}  // namespace larkstone
