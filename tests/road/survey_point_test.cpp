#include "vorn/road/survey_point.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

#include "vorn/platform/code_page_932.h"
#include "vorn/road/bench_mark.h"
#include "vorn/road/ctrl_point.h"

namespace {

struct ClassRow {
  int value;
  std::string_view text;
};

struct ControlPoints {
  using Point = VornCtrlPoint;
  static constexpr std::array kRows = {
      ClassRow{0, u8"電子基準点"_cp932}, ClassRow{1, u8"一等三角点"_cp932}, ClassRow{2, u8"二等三角点"_cp932},
      ClassRow{3, u8"三等三角点"_cp932}, ClassRow{4, u8"四等三角点"_cp932}, ClassRow{5, u8"1級基準点"_cp932},
      ClassRow{6, u8"2級基準点"_cp932},  ClassRow{7, u8"3級基準点"_cp932},  ClassRow{8, u8"4級基準点"_cp932},
  };
  static int ClassOf(const Point& point) { return static_cast<int>(point.GetCtrlClass()); }
  static void SetClass(Point& point, int value) { point.SetCtrlClass(static_cast<Point::CtrlClass>(value)); }
};

struct BenchMarks {
  using Point = VornBenchMark;
  static constexpr std::array kRows = {
      ClassRow{0, u8"一等水準点"_cp932}, ClassRow{1, u8"二等水準点"_cp932}, ClassRow{2, u8"三等水準点"_cp932},
      ClassRow{3, u8"1級水準点"_cp932},  ClassRow{4, u8"2級水準点"_cp932},  ClassRow{5, u8"3級水準点"_cp932},
      ClassRow{6, u8"4級水準点"_cp932},  ClassRow{7, u8"簡易水準点"_cp932},
  };
  static int ClassOf(const Point& point) { return static_cast<int>(point.GetBMClass()); }
  static void SetClass(Point& point, int value) { point.SetBMClass(static_cast<Point::BMClass>(value)); }
};

template <typename Kind>
class SurveyPoint : public testing::Test {
 protected:
  using Point = typename Kind::Point;

  static Point Full() {
    Point point;
    point.SetNumber(65535);
    Kind::SetClass(point, 3);
    point.SetName("name");
    return point;
  }
  static CString TextOf(int value) {
    Point point;
    Kind::SetClass(point, value);
    return point.Class();
  }
};
using Kinds = testing::Types<ControlPoints, BenchMarks>;
TYPED_TEST_SUITE(SurveyPoint, Kinds);

TYPED_TEST(SurveyPoint, StartsUnset) {
  const typename TypeParam::Point point;
  EXPECT_EQ(point.GetNumber(), 0);
  EXPECT_EQ(TypeParam::ClassOf(point), -1);
  EXPECT_EQ(point.GetName(), "");
  EXPECT_EQ(point.Class(), "");
}

TYPED_TEST(SurveyPoint, KeepsAndCopiesAllItsMembers) {
  using Point = typename TypeParam::Point;
  static_assert(std::has_virtual_destructor_v<Point> && std::is_nothrow_move_constructible_v<Point>);
  Point copy;
  copy = this->Full();
  const Point moved = std::move(copy);
  EXPECT_EQ(moved.GetNumber(), 65535);
  EXPECT_EQ(TypeParam::ClassOf(moved), 3);
  EXPECT_EQ(moved.GetName(), "name");
}

TYPED_TEST(SurveyPoint, GivesEachClassItsText) {
  for (const ClassRow& row : TypeParam::kRows) EXPECT_EQ(this->TextOf(row.value), row.text) << row.value;
}

TYPED_TEST(SurveyPoint, GivesAnUnknownClassNoText) {
  for (const int value : {-1, static_cast<int>(TypeParam::kRows.size()), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(this->TextOf(value), "") << value;
  }
}

TYPED_TEST(SurveyPoint, TakesEachClassByItsText) {
  for (const ClassRow& row : TypeParam::kRows) {
    typename TypeParam::Point point;
    EXPECT_TRUE(point.SetClass(row.text));
    EXPECT_EQ(TypeParam::ClassOf(point), row.value);
  }
}

TYPED_TEST(SurveyPoint, LosesItsClassToTheEmptyTextAndToAnUnknownOne) {
  for (const std::string_view text : {std::string_view(""), std::string_view("1"), u8"5級基準点"_cp932}) {
    auto point = this->Full();
    EXPECT_FALSE(point.SetClass(text));
    EXPECT_EQ(TypeParam::ClassOf(point), -1);
  }
}

TYPED_TEST(SurveyPoint, ComparesNumberClassAndName) {
  const auto point = this->Full();
  EXPECT_TRUE(point.Compare(this->Full()));
  auto other = this->Full();
  other.SetNumber(1);
  EXPECT_FALSE(point.Compare(other));
  other = this->Full();
  TypeParam::SetClass(other, 4);
  EXPECT_FALSE(point.Compare(other));
  other = this->Full();
  other.SetName("NAME");
  EXPECT_FALSE(point.Compare(other));
}

TEST(ControlPoint, GivesTheTextOfAClassWithoutAPoint) {
  EXPECT_EQ(VornCtrlPoint::GetClass(VornCtrlPoint::CtrlClass::Grade4), u8"4級基準点"_cp932);
}

TEST(BenchMark, GivesTheTextOfAClassWithoutAPoint) {
  EXPECT_EQ(VornBenchMark::GetClass(VornBenchMark::BMClass::Simple), u8"簡易水準点"_cp932);
}

}  // namespace
