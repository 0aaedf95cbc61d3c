#include "vorn/model/cross_point_info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "tests/model/items.h"

namespace {

using model_test::Items;
using testing::ElementsAre;
using testing::IsEmpty;

VornCrossPointInfo Filled() {
  VornCrossPointInfo info;
  info.SetDist(-4.5);
  info.SetID(11);
  info.SetDekiPairID(12);
  info.ThDPairIDs().Add(13);
  info.ThDPairIDs().Add(14);
  info.SetConnectionAutoLinePrev(15);
  info.SetConnectionAutoLineNext(16);
  return info;
}

void ExpectFilled(const VornCrossPointInfo& info) {
  EXPECT_EQ(info.GetDist(), -4.5);
  EXPECT_EQ(info.GetID(), 11u);
  EXPECT_EQ(info.GetDekiPairID(), 12u);
  EXPECT_THAT(Items(info.ThDPairIDs()), ElementsAre(13u, 14u));
  EXPECT_EQ(info.IsConnectionAutoLinePrev(), 15);
  EXPECT_EQ(info.IsConnectionAutoLineNext(), 16);
}

TEST(CrossPointInfo, IsNoCrossingWhenNew) {
  const VornCrossPointInfo info;
  EXPECT_FALSE(info.GetDist().IsSet());
  EXPECT_EQ(info.GetID(), 0u);
  EXPECT_EQ(info.GetDekiPairID(), 0xFFFFFFFFu);
  EXPECT_THAT(Items(info.ThDPairIDs()), IsEmpty());
  EXPECT_EQ(info.IsConnectionAutoLinePrev(), 1);
  EXPECT_EQ(info.IsConnectionAutoLineNext(), 1);
}

TEST(CrossPointInfo, KeepsWhatItIsGiven) { ExpectFilled(Filled()); }

TEST(CrossPointInfo, CopiesEveryField) {
  const VornCrossPointInfo original = Filled();
  VornCrossPointInfo assigned;
  assigned = original;
  ExpectFilled(assigned);
  ExpectFilled(VornCrossPointInfo(original));
  assigned.ThDPairIDs().RemoveAll();
  ExpectFilled(original);
}

TEST(CrossPointInfo, ForgettingTheConnectionsTurnsTheAutomaticLinesOff) {
  VornCrossPointInfo info = Filled();
  info.ClearConnectInfo();
  EXPECT_EQ(info.GetDekiPairID(), 0xFFFFFFFFu);
  EXPECT_THAT(Items(info.ThDPairIDs()), IsEmpty());
  // Off, and not back to the 1 of a new crossing.
  EXPECT_EQ(info.IsConnectionAutoLinePrev(), 0);
  EXPECT_EQ(info.IsConnectionAutoLineNext(), 0);
}

TEST(CrossPointInfo, ForgettingTheConnectionsKeepsTheCrossing) {
  VornCrossPointInfo info = Filled();
  info.ClearConnectInfo();
  EXPECT_EQ(info.GetDist(), -4.5);
  EXPECT_EQ(info.GetID(), 11u);
}

TEST(CrossPointInfo, MayBeDerivedFrom) { EXPECT_TRUE(std::has_virtual_destructor_v<VornCrossPointInfo>); }

}  // namespace
