#include "vorn/model/pres_point.h"

#include <gtest/gtest.h>

#include "tests/archive/full_records.h"

namespace archive_test {

ExpectedBytes PresentationBytes(int n) {
  return {
      {"count", U32(2)},
      {"0.extension table", EmptyTable()},
      {"0.first", Real(n + 0.125)},
      {"0.second", Real(n + 0.25)},
      {"1.extension table", EmptyTable()},
      {"1.first", Real(n + 0.375)},
      {"1.second", Real(n + 0.5)},
  };
}

namespace {

class PresPointArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(PresPointArchive);

const Bytes kPoint = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0};  // 1.5, -2

TEST_P(PresPointArchive, WritesATableAndTwoReals) {
  VornPresPoint point;
  point.GetFirst() = 1.5;
  point.GetSecond() = -2.0;
  EXPECT_EQ(StoredAs(point, GetParam()), kPoint);
}

TEST_P(PresPointArchive, ReadsWhatFollowsTheTable) {
  const auto point = ReadBack<VornPresPoint>(kPoint, GetParam());
  EXPECT_EQ(point.GetFirst(), 1.5);
  EXPECT_EQ(point.GetSecond(), -2.0);
}

TEST_P(PresPointArchive, CollectionsAreACountAndThePoints) {
  Vorn_Array<VornPresPoint> points;
  ReadInto(points, PresentationBytes(3).All(), GetParam());
  ASSERT_EQ(points.GetSize(), 2);
  EXPECT_EQ(points[0].GetFirst(), 3.125);
  EXPECT_EQ(points[0].GetSecond(), 3.25);
  EXPECT_EQ(points[1].GetFirst(), 3.375);
  EXPECT_EQ(points[1].GetSecond(), 3.5);
  EXPECT_TRUE(HasBytes(StoredAs(points, GetParam()), PresentationBytes(3)));
}

}  // namespace
}  // namespace archive_test
