// The key by which categories are sorted for display.

#include <gtest/gtest.h>

#include "larkstone/event/event.hpp"

namespace larkstone {
namespace {

// Fields: class group, gender, age, 0, length group, number in the suffix.
TEST(CategorySortKey, FollowsTheName) {
  constexpr auto all = ecsfSorted | ecsfYoungstersBeforeOldboys | ecsfTreatGendersAsEqual;
  constexpr auto byGender = ecsfSorted | ecsfYoungstersBeforeOldboys;
  struct Row {
    int line;
    const char* name;
    int index;
    enmCategorySortFlags flags;
    const char* key;
  };
  const Row rows[] = {
      {__LINE__, "H21", 12, ecsfUnsorted, "00012_H21"},
      {__LINE__, "H21", 12, all,
       "20"
       "000"
       "0"
       "1"
       "000"
       "_00012_H21"},
      {__LINE__, "H21", 0, ecsfSorted,
       "21"
       "978"
       "0"
       "1"
       "000"
       "_00000_H21"},
      {__LINE__, "H21", 0, byGender,
       "21"
       "000"
       "0"
       "1"
       "000"
       "_00000_H21"},
      {__LINE__, "D10", 1, all,
       "20"
       "011"
       "0"
       "1"
       "000"
       "_00001_D10"},
      {__LINE__, "H35", 1, all,
       "20"
       "035"
       "0"
       "1"
       "000"
       "_00001_H35"},
      {__LINE__, "D21E", 3, all,
       "10"
       "000"
       "0"
       "2"
       "000"
       "_00003_D21E"},
      {__LINE__, "H21 Super 2", 3, all,
       "00"
       "000"
       "0"
       "3"
       "002"
       "_00003_H21 Super 2"},
      {__LINE__, "H21 Motion", 3, all,
       "30"
       "000"
       "0"
       "2"
       "000"
       "_00003_H21 Motion"},
      {__LINE__, "H16 N", 3, all,
       "40"
       "005"
       "0"
       "2"
       "000"
       "_00003_H16 N"},
      {__LINE__, "Inskolning", 3, all,
       "52"
       "000"
       "0"
       "1"
       "000"
       "_00003_Inskolning"},
      {__LINE__, "U1", 3, all,
       "62"
       "001"
       "0"
       "1"
       "000"
       "_00003_U1"},
      {__LINE__, "ÖPPEN 5 Lång", 3, all,
       "72"
       "005"
       "0"
       "0"
       "000"
       "_00003_ÖPPEN 5 Lång"},
      {__LINE__, "Direkt 8", 3, all,
       "80"
       "008"
       "0"
       "1"
       "000"
       "_00003_Direkt 8"},
      {__LINE__, "W40 K2", 3, byGender,
       "20"
       "040"
       "0"
       "3"
       "002"
       "_00003_W40 K2"},
      {__LINE__, "Mosse 2", 3, all,
       "92"
       "019"
       "0"
       "1"
       "000"
       "_00003_Mosse 2"},
      {__LINE__, "Men Short", 3, all,
       "20"
       "000"
       "0"
       "3"
       "000"
       "_00003_Men Short"},
      {__LINE__, "Bana 3", 3, all,
       "92"
       "003"
       "0"
       "1"
       "000"
       "_00003_Bana 3"},
      {__LINE__, "Course 12e", 3, ecsfSorted,
       "92"
       "012"
       "0"
       "2"
       "000"
       "_00003_Course 12e"},
      {__LINE__, "", 3, all,
       "92"
       "000"
       "0"
       "1"
       "000"
       "_00003_"},
      {__LINE__, "99999999999999999999", 3, all,
       "92"
       "999"
       "0"
       "1"
       "000"
       "_00003_99999999999999999999"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(LRKEvent::createCategorySortKey(row.name, row.index, row.flags), row.key);
  }
}

}  // namespace
}  // namespace larkstone
