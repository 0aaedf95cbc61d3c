#include "vorn/platform/cmap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Map = CMap<int, std::string>;

std::vector<std::pair<int, std::string>> Items(const Map& map) { return {map.begin(), map.end()}; }

TEST(CMap, StartsEmpty) {
  const Map map;
  EXPECT_TRUE(map.IsEmpty());
  EXPECT_EQ(map.GetCount(), 0);
  EXPECT_THAT(Items(map), IsEmpty());
}

TEST(CMap, KeepsOneValueOfAKey) {
  Map map;
  const std::string one = "one";
  map.SetAt(1, one);
  map.SetAt(2, std::string("two"));
  map.SetAt(1, "uno");
  EXPECT_THAT(Items(map), ElementsAre(Pair(1, "uno"), Pair(2, "two")));
  EXPECT_EQ(map.GetCount(), 2);
  EXPECT_FALSE(map.IsEmpty());
}

TEST(CMap, GoesThroughItsKeysInTheirOrder) {
  Map map;
  for (const int key : {3, -1, 2}) map.SetAt(key, "");
  EXPECT_THAT(Items(map), ElementsAre(Pair(-1, ""), Pair(2, ""), Pair(3, "")));
}

TEST(CMap, LooksUpACopy) {
  Map map;
  map.SetAt(1, "one");
  std::string value;
  EXPECT_TRUE(map.Lookup(1, value));
  EXPECT_EQ(value, "one");
}

TEST(CMap, LookingUpAMissingKeyLeavesTheOutput) {
  Map map;
  map.SetAt(1, "one");
  std::string value = "kept";
  EXPECT_FALSE(map.Lookup(2, value));
  EXPECT_EQ(value, "kept");
}

TEST(CMap, FindsTheValueItself) {
  Map map;
  map.SetAt(1, "one");
  ASSERT_NE(map.Find(1), nullptr);
  *map.Find(1) = "uno";
  EXPECT_EQ(*std::as_const(map).Find(1), "uno");
  EXPECT_EQ(map.Find(2), nullptr);
  EXPECT_EQ(std::as_const(map).Find(2), nullptr);
  EXPECT_EQ(map.GetCount(), 1);
}

TEST(CMap, KeepsTheAddressesOfItsValues) {
  Map map;
  map.SetAt(500, "kept");
  const std::string* found = map.Find(500);
  for (int key = 0; key < 1000; ++key) {
    if (key != 500) map.SetAt(key, "");
  }
  EXPECT_EQ(map.Find(500), found);
}

TEST(CMap, MakesAValueForAKeyThatHasNone) {
  Map map;
  map[1] += "a";
  map[1] += "b";
  EXPECT_THAT(Items(map), ElementsAre(Pair(1, "ab")));
}

TEST(CMap, RemovesAKey) {
  Map map;
  map.SetAt(1, "one");
  map.SetAt(2, "two");
  EXPECT_TRUE(map.RemoveKey(1));
  EXPECT_FALSE(map.RemoveKey(1));
  EXPECT_THAT(Items(map), ElementsAre(Pair(2, "two")));
  map.RemoveAll();
  EXPECT_TRUE(map.IsEmpty());
}

TEST(CMap, CopiesItsValues) {
  Map map;
  map.SetAt(1, "one");
  Map copy = map;
  copy.SetAt(1, "uno");
  EXPECT_THAT(Items(map), ElementsAre(Pair(1, "one")));
}

}  // namespace
