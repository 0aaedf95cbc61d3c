#include "vorn/road/record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "vorn/platform/exceptions.h"
#include "vorn/road/bench_mark.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/ctrl_point.h"
#include "vorn/road/gm_pnts.h"

// What the arrays of records have in common. How they are archived is tested with their records.

namespace {

using testing::ElementsAre;

// --- numbered points -------------------------------------------------------------------------------------------------

template <typename Array>
class NumberedArray : public testing::Test {
 protected:
  static Array Numbered(std::initializer_list<std::uint16_t> numbers, const char* name = "") {
    Array points;
    for (const std::uint16_t number : numbers) {
      points.SetSize(points.GetSize() + 1);
      points[points.GetUpperBound()].SetNumber(number);
      points[points.GetUpperBound()].SetName(name);
    }
    return points;
  }
  static std::vector<int> Numbers(const Array& points) {
    std::vector<int> numbers;
    for (const auto& point : points) numbers.push_back(point.GetNumber());
    return numbers;
  }
};
using NumberedArrays = testing::Types<VornCtrlPosArray, VornBenchMkArray, VornGmPntArray>;
TYPED_TEST_SUITE(NumberedArray, NumberedArrays);

TYPED_TEST(NumberedArray, FindsTheFirstPointOfANumber) {
  const TypeParam points = this->Numbered({4, 65535, 0, 65535});
  EXPECT_EQ(points.Find(4), 0);
  EXPECT_EQ(points.Find(65535), 1);
  EXPECT_EQ(points.Find(0), 2);
  EXPECT_EQ(points.Find(5), -1);
  EXPECT_EQ(TypeParam().Find(0), -1);
}

TYPED_TEST(NumberedArray, MergesOnlyNumbersThatItDoesNotHave) {
  TypeParam points = this->Numbered({1, 2}, "old");
  EXPECT_EQ(points.Composition(this->Numbered({2, 3, 3}, "new")), 3);
  EXPECT_THAT(this->Numbers(points), ElementsAre(1, 2, 3));
  EXPECT_EQ(points[1].GetName(), "old");
  EXPECT_EQ(points[2].GetName(), "new");
}

TYPED_TEST(NumberedArray, MergesTheFirstPointOfANumber) {
  TypeParam other = this->Numbered({9, 9});
  other[0].SetName("first");
  other[1].SetName("second");
  TypeParam points;
  EXPECT_EQ(points.Composition(other), 1);
  EXPECT_EQ(points[0].GetName(), "first");
}

TYPED_TEST(NumberedArray, KeepsTheDoubleNumbersThatItHas) {
  TypeParam points = this->Numbered({7, 7});
  EXPECT_EQ(points.Composition(this->Numbered({8, 7})), 3);
  EXPECT_THAT(this->Numbers(points), ElementsAre(7, 7, 8));
}

TYPED_TEST(NumberedArray, MergesTheLowestAndTheHighestNumber) {
  TypeParam points;
  EXPECT_EQ(points.Composition(this->Numbered({65535, 0, 65535, 0})), 2);
  EXPECT_THAT(this->Numbers(points), ElementsAre(65535, 0));
}

TYPED_TEST(NumberedArray, MergesWithNothingAndWithItself) {
  TypeParam points = this->Numbered({3, 3, 1});
  EXPECT_EQ(points.Composition(TypeParam()), 3);
  EXPECT_EQ(points.Composition(points), 3);
  EXPECT_THAT(this->Numbers(points), ElementsAre(3, 3, 1));
}

TYPED_TEST(NumberedArray, MergesAllNumbersThereAre) {
  constexpr int kNumbers = 65536;
  TypeParam even;
  TypeParam all;
  for (int i = 0; i < kNumbers; ++i) {
    all.SetSize(i + 1);
    all[i].SetNumber(static_cast<std::uint16_t>(i));
  }
  for (int i = 0; i < kNumbers; i += 2) even.Add(all[i]);
  EXPECT_EQ(even.Composition(all), kNumbers);
  EXPECT_EQ(even[kNumbers / 2].GetNumber(), 1);
  EXPECT_EQ(even[kNumbers - 1].GetNumber(), 65535);
}

TYPED_TEST(NumberedArray, ComparesPointByPoint) {
  const TypeParam points = this->Numbered({1, 2}, "a");
  EXPECT_TRUE(points.Compare(this->Numbered({1, 2}, "a")));
  EXPECT_FALSE(points.Compare(this->Numbered({2, 1}, "a")));
  EXPECT_FALSE(points.Compare(this->Numbered({1, 2}, "b")));
  EXPECT_FALSE(points.Compare(this->Numbered({1}, "a")));
  EXPECT_FALSE(this->Numbered({1}, "a").Compare(points));
  EXPECT_TRUE(TypeParam().Compare(TypeParam()));
}

TYPED_TEST(NumberedArray, RefusesAnIndexOutside) {
  TypeParam points = this->Numbered({1});
  EXPECT_THROW(points[1], CInvalidArgException);
  EXPECT_THROW(points[-1], CInvalidArgException);
}

// --- arrays without numbers ------------------------------------------------------------------------------------------

TEST(CrsArray, ComparesSystemBySystem) {
  VornCrsArray a;
  VornCrsArray b;
  EXPECT_TRUE(a.Compare(b));
  a.Add(VornCrsData());
  EXPECT_FALSE(a.Compare(b));
  b.Add(VornCrsData());
  EXPECT_TRUE(a.Compare(b));
  b[0].SetVerticalHeight(1e-7);
  EXPECT_TRUE(a.Compare(b));
  b[0].SetName("b");
  EXPECT_FALSE(a.Compare(b));
}

TEST(GmPntsArray, ComparesGroupByGroup) {
  VornGmPntsArray a;
  a.Add(VornGmPnts());
  VornGmPntsArray b = a;
  EXPECT_TRUE(a.Compare(b));
  b[0].GetPoints().Add(VornGmPnt());
  EXPECT_FALSE(a.Compare(b));
}

}  // namespace
