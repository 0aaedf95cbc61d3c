#include "vorn/model/measure_info.h"

#include <gtest/gtest.h>

#include "tests/archive/full_records.h"

namespace archive_test {

VornMeasureInfos FullMeasures(int n) {
  VornMeasureInfos measures;
  measures.Add({100 * n + 61, 100 * n + 62});
  measures.Add({100 * n + 63, -100 * n - 64});
  return measures;
}

ExpectedBytes MeasuresBytes(int n) {
  return {
      {"extension table", EmptyTable()},   {"count", U32(2)},
      {"0.extension table", EmptyTable()}, {"0.first", I32(100 * n + 61)},
      {"0.second", I32(100 * n + 62)},     {"1.extension table", EmptyTable()},
      {"1.first", I32(100 * n + 63)},      {"1.second", I32(-100 * n - 64)},
  };
}

void ExpectMeasures(const VornMeasureInfos& measures, int n) { EXPECT_TRUE(measures == FullMeasures(n)); }

namespace {

class MeasureInfoArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(MeasureInfoArchive);

TEST_P(MeasureInfoArchive, WritesATableAndTwoIntegers) {
  VornMeasureInfo info{0x01020304, -2};
  EXPECT_EQ(StoredAs(info, GetParam()), (Bytes{0, 0, 0, 0, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST_P(MeasureInfoArchive, ReadsWhatFollowsTheTable) {
  const auto info = ReadBack<VornMeasureInfo>({0, 0, 0, 0, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF}, GetParam());
  EXPECT_EQ(info.first, 0x01020304);
  EXPECT_EQ(info.second, -2);
}

TEST_P(MeasureInfoArchive, WritesASetAsATableACountAndTheMeasurements) {
  EXPECT_TRUE(HasBytes(StoredAs(FullMeasures(1), GetParam()), MeasuresBytes(1)));
}

TEST_P(MeasureInfoArchive, ReadsASetInPlaceOfWhatWasThere) {
  VornMeasureInfos measures = FullMeasures(5);
  measures.Add({1, 2});
  ReadInto(measures, MeasuresBytes(1).All(), GetParam());
  ExpectMeasures(measures, 1);
}

TEST_P(MeasureInfoArchive, WritesAnEmptySet) {
  EXPECT_TRUE(HasBytes(StoredAs(VornMeasureInfos(), GetParam()), {{"table", EmptyTable()}, {"count", U32(0)}}));
}

TEST_P(MeasureInfoArchive, ForgetsWhatLaterVersionsPutIntoItsTables) {
  const ExpectedBytes bytes = {{"table", TableOf(1, 2)},
                               {"count", U32(1)},
                               {"0.table", TableOf(3, 4)},
                               {"0.first", I32(5)},
                               {"0.second", I32(6)}};
  const auto measures = ReadBack<VornMeasureInfos>(bytes.All(), GetParam());
  ASSERT_EQ(measures.GetSize(), 1);
  EXPECT_TRUE((measures[0] == VornMeasureInfo{5, 6}));
}

}  // namespace
}  // namespace archive_test
