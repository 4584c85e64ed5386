// The key by which categories are sorted for display.

#include <gtest/gtest.h>

#include "larkstone/event/event.hpp"

namespace larkstone {
namespace {

// One digit class group, one gender, three age, 0, one length group, three number in the suffix.
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
      {__LINE__, "H21", 12, all, "2000001000_00012_H21"},
      {__LINE__, "H21", 0, ecsfSorted, "2197801000_00000_H21"},
      {__LINE__, "H21", 0, byGender, "2100001000_00000_H21"},
      {__LINE__, "D10", 1, all, "2001101000_00001_D10"},
      {__LINE__, "H35", 1, all, "2003501000_00001_H35"},
      {__LINE__, "D21E", 3, all, "1000002000_00003_D21E"},
      {__LINE__, "H21 Super 2", 3, all, "0000003002_00003_H21 Super 2"},
      {__LINE__, "H21 Motion", 3, all, "3000002000_00003_H21 Motion"},
      {__LINE__, "H16 N", 3, all, "4000502000_00003_H16 N"},
      {__LINE__, "Inskolning", 3, all, "5200001000_00003_Inskolning"},
      {__LINE__, "U1", 3, all, "6200101000_00003_U1"},
      {__LINE__, "ÖPPEN 5 Lång", 3, all, "7200500000_00003_ÖPPEN 5 Lång"},
      {__LINE__, "Direkt 8", 3, all, "8000801000_00003_Direkt 8"},
      {__LINE__, "W40 K2", 3, byGender, "2004003002_00003_W40 K2"},
      {__LINE__, "Mosse 2", 3, all, "9201901000_00003_Mosse 2"},
      {__LINE__, "Men Short", 3, all, "2000003000_00003_Men Short"},
      {__LINE__, "Bana 3", 3, all, "9200301000_00003_Bana 3"},
      {__LINE__, "Course 12e", 3, ecsfSorted, "9201202000_00003_Course 12e"},
      {__LINE__, "", 3, all, "9200001000_00003_"},
      {__LINE__, "99999999999999999999", 3, all, "9299901000_00003_99999999999999999999"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    EXPECT_EQ(LRKEvent::createCategorySortKey(row.name, row.index, row.flags), row.key);
  }
}

}  // namespace
}  // namespace larkstone
