#include "vorn/model/cross_point_info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/archive/full_records.h"
#include "tests/model/items.h"

namespace archive_test {

using model_test::Items;
using testing::ElementsAre;
using testing::IsEmpty;

VornCrossPointInfo FullCrossing(int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  VornCrossPointInfo crossing;
  crossing.SetDist(n + 0.5);
  crossing.SetID(k + 51);
  crossing.SetDekiPairID(k + 52);
  crossing.ThDPairIDs().Add(k + 53);
  crossing.ThDPairIDs().Add(k + 54);
  crossing.ThDPairIDs().Add(k + 55);
  crossing.SetConnectionAutoLinePrev(100 * n + 56);
  crossing.SetConnectionAutoLineNext(100 * n + 57);
  return crossing;
}

ExpectedBytes CrossingBytes(int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  return {
      {"extension table", EmptyTable()},
      {"distance", Real(n + 0.5)},
      {"ID", U32(k + 51)},
      {"as-built pair", U32(k + 52)},
      {"3D pairs", ExpectedBytes{{"count", U32(3)}, {"0", U32(k + 53)}, {"1", U32(k + 54)}, {"2", U32(k + 55)}}},
      {"previous line", I32(100 * n + 56)},
      {"next line", I32(100 * n + 57)},
  };
}

void ExpectCrossing(const VornCrossPointInfo& crossing, int n) {
  const auto k = static_cast<std::uint32_t>(100 * n);
  EXPECT_EQ(crossing.GetDist(), n + 0.5);
  EXPECT_EQ(crossing.GetID(), k + 51);
  EXPECT_EQ(crossing.GetDekiPairID(), k + 52);
  EXPECT_THAT(Items(crossing.ThDPairIDs()), ElementsAre(k + 53, k + 54, k + 55));
  EXPECT_EQ(crossing.IsConnectionAutoLinePrev(), 100 * n + 56);
  EXPECT_EQ(crossing.IsConnectionAutoLineNext(), 100 * n + 57);
}

void ExpectNoCrossing(const VornCrossPointInfo& crossing) {
  EXPECT_FALSE(crossing.GetDist().IsSet());
  EXPECT_EQ(crossing.GetID(), 0u);
  EXPECT_EQ(crossing.GetDekiPairID(), 0xFFFFFFFF);
  EXPECT_THAT(Items(crossing.ThDPairIDs()), IsEmpty());
  EXPECT_EQ(crossing.IsConnectionAutoLinePrev(), 1);
  EXPECT_EQ(crossing.IsConnectionAutoLineNext(), 1);
}

namespace {

class CrossPointInfoArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(CrossPointInfoArchive);

TEST_P(CrossPointInfoArchive, WritesItsFields) {
  EXPECT_TRUE(HasBytes(StoredAs(FullCrossing(2), GetParam()), CrossingBytes(2)));
}

TEST_P(CrossPointInfoArchive, ReadsItsFieldsInPlaceOfWhatItHeld) {
  VornCrossPointInfo crossing = FullCrossing(7);
  ReadInto(crossing, CrossingBytes(2).All(), GetParam());
  ExpectCrossing(crossing, 2);
}

TEST_P(CrossPointInfoArchive, KeepsAMissingCrossing) {
  ExpectNoCrossing(ReadBack<VornCrossPointInfo>(StoredAs(VornCrossPointInfo(), GetParam()), GetParam()));
}

}  // namespace
}  // namespace archive_test
