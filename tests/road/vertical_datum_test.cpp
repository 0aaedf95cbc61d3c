#include "vorn/road/vertical_datum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

struct Row {
  std::string_view name;
  std::string_view designation;
  double height;
};

constexpr std::array kRows = {
    Row{u8"東京湾中等潮位"_cp932, "T.P", 0.0},
    Row{u8"北上川"_cp932, "K.P", -0.8745},
    Row{u8"鳴瀬川"_cp932, "S.P", -0.0873},
    Row{u8"利根川"_cp932, "Y.P", -0.8402},
    Row{u8"荒川・中川・多摩川"_cp932, "A.P", -1.1344},
    Row{u8"淀川"_cp932, "O.P", -1.3},
    Row{u8"吉野川"_cp932, "A.P", -0.8333},
    Row{u8"渡川"_cp932, "T.P.W", 0.113},
    Row{u8"琵琶湖"_cp932, "B.S.L", 84.371},
};

/// The first datum of a designation.
const VornVerticalDatum* Find(std::string_view designation) {
  const auto found = std::find_if(kVornVerticalDatums.begin(), kVornVerticalDatums.end(),
                                  [&](const VornVerticalDatum& datum) { return datum.designation == designation; });
  return found == kVornVerticalDatums.end() ? nullptr : &*found;
}

TEST(VerticalDatums, AreNineInTheirOrder) {
  ASSERT_EQ(kVornVerticalDatums.size(), 9u);
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    EXPECT_EQ(kVornVerticalDatums[i].name, kRows[i].name) << i;
    EXPECT_EQ(kVornVerticalDatums[i].designation, kRows[i].designation) << i;
    EXPECT_EQ(kVornVerticalDatums[i].height, kRows[i].height) << i;
  }
}

TEST(VerticalDatums, AreKnownBeforeTheProgramRuns) {
  static_assert(kVornVerticalDatums.size() == 9);
  static_assert(kVornVerticalDatums[8].height == 84.371);
}

TEST(VerticalDatums, HaveTextsThatEndWithANul) {
  for (const VornVerticalDatum& datum : kVornVerticalDatums) {
    EXPECT_EQ(datum.name.data()[datum.name.size()], '\0');
    EXPECT_EQ(datum.designation.data()[datum.designation.size()], '\0');
  }
}

TEST(VerticalDatums, AreFoundByTheirDesignations) {
  ASSERT_NE(Find("T.P"), nullptr);
  EXPECT_EQ(Find("T.P")->height, 0.0);
  ASSERT_NE(Find("B.S.L"), nullptr);
  EXPECT_EQ(Find("B.S.L")->height, 84.371);
  EXPECT_EQ(Find("t.p"), nullptr);
}

TEST(VerticalDatums, ShareADesignationOfWhichTheFirstIsFound) {
  const auto isShared = [](const VornVerticalDatum& datum) { return datum.designation == "A.P"; };
  EXPECT_EQ(std::count_if(kVornVerticalDatums.begin(), kVornVerticalDatums.end(), isShared), 2);
  EXPECT_EQ(Find("A.P")->height, -1.1344);
}

}  // namespace
