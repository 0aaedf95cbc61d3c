#include "vorn/road/gm_pnts.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

VornGmPnt Point(std::uint16_t number, const char* name) {
  VornGmPnt point;
  point.SetNumber(number);
  point.SetName(name);
  return point;
}

VornGmPnts Group() {
  VornGmPnts group;
  group.SetName("first");
  group.SetName2("second");
  group.GetPoints().Add(Point(5, "p"));
  return group;
}

static_assert(std::has_virtual_destructor_v<VornGmPnt> && std::is_nothrow_move_constructible_v<VornGmPnt>);
static_assert(std::has_virtual_destructor_v<VornGmPnts> && std::is_nothrow_move_constructible_v<VornGmPnts>);

TEST(GmPnt, StartsEmpty) {
  const VornGmPnt point;
  EXPECT_EQ(point.GetNumber(), 0);
  EXPECT_EQ(point.GetName(), "");
}

TEST(GmPnt, ComparesNumberAndName) {
  EXPECT_TRUE(Point(5, "p").Compare(Point(5, "p")));
  EXPECT_FALSE(Point(5, "p").Compare(Point(6, "p")));
  EXPECT_FALSE(Point(5, "p").Compare(Point(5, "P")));
}

TEST(GmPnts, StartsEmpty) {
  const VornGmPnts group;
  EXPECT_EQ(group.GetName(), "");
  EXPECT_EQ(group.GetName2(), "");
  EXPECT_TRUE(group.GetPoints().IsEmpty());
}

TEST(GmPnts, CopiesAllItsMembers) {
  const VornGmPnts group = Group();
  VornGmPnts copy;
  copy = group;
  copy.GetPoints()[0].SetNumber(9);
  EXPECT_EQ(group.GetPoints()[0].GetNumber(), 5);
  EXPECT_EQ(copy.GetName(), "first");
  EXPECT_EQ(copy.GetName2(), "second");
  copy.SetPoints(VornGmPntArray());
  EXPECT_TRUE(copy.GetPoints().IsEmpty());
}

TEST(GmPnts, ComparesBothNamesAndThePoints) {
  EXPECT_TRUE(Group().Compare(Group()));
  VornGmPnts other = Group();
  other.SetName("First");
  EXPECT_FALSE(Group().Compare(other));
  other = Group();
  other.SetName2("first");
  EXPECT_FALSE(Group().Compare(other));
  other = Group();
  other.GetPoints()[0].SetName("q");
  EXPECT_FALSE(Group().Compare(other));
}

}  // namespace
