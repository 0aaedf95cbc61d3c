#include "vorn/platform/clist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <typename Type>
std::vector<Type> Items(const CList<Type>& list) {
  return {list.begin(), list.end()};
}

TEST(CList, StartsEmpty) {
  const CList<int> list;
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_THAT(Items(list), IsEmpty());
}

TEST(CList, TakesABlockSizeThatChangesNothing) {
  CList<int> list(1);
  for (int i = 0; i < 3; ++i) list.AddTail(i);
  EXPECT_THAT(Items(list), ElementsAre(0, 1, 2));
}

TEST(CList, AddsAtTheEnd) {
  CList<std::string> list;
  const std::string first = "first";
  list.AddTail(first);
  list.AddTail(std::string("second"));
  EXPECT_THAT(Items(list), ElementsAre("first", "second"));
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetSize(), 2);
  EXPECT_FALSE(list.IsEmpty());
}

TEST(CList, MovesWhatItIsGiven) {
  CList<std::unique_ptr<int>> list;
  list.AddTail(std::make_unique<int>(7));
  EXPECT_EQ(**list.begin(), 7);
}

TEST(CList, HandsItsItemsOutToBeChanged) {
  CList<int> list;
  list.AddTail(1);
  *list.begin() = 5;
  EXPECT_THAT(Items(list), ElementsAre(5));
}

TEST(CList, KeepsTheAddressesOfItsItems) {
  CList<int> list;
  list.AddTail(0);
  const int* first = &*list.begin();
  for (int i = 1; i < 1000; ++i) list.AddTail(i);
  EXPECT_EQ(&*list.begin(), first);
  EXPECT_EQ(*first, 0);
}

TEST(CList, CopiesItsItems) {
  CList<int> list;
  list.AddTail(1);
  CList<int> copy = list;
  copy.AddTail(2);
  EXPECT_THAT(Items(list), ElementsAre(1));
  list = copy;
  EXPECT_THAT(Items(list), ElementsAre(1, 2));
}

TEST(CList, IsItsOwnCopy) {
  CList<int> list;
  list.AddTail(1);
  const CList<int>& same = list;
  list = same;
  list.AddTail(2);
  EXPECT_THAT(Items(list), ElementsAre(1, 2));
}

TEST(CList, KeepsItsItemsWhenItIsMovedOntoItself) {
  CList<int> list;
  list.AddTail(1);
  CList<int>& same = list;
  list = std::move(same);
  list.AddTail(2);
  EXPECT_THAT(Items(list), ElementsAre(1, 2));
}

TEST(CList, GoesOnWhereItWasWhenItIsMoved) {
  CList<int> list;
  list.AddTail(1);
  const int* first = &*list.begin();
  CList<int> moved = std::move(list);
  moved.AddTail(2);
  EXPECT_THAT(Items(moved), ElementsAre(1, 2));
  EXPECT_EQ(&*moved.begin(), first);
  EXPECT_EQ(moved.GetCount(), 2);
  CList<int> other;
  other.AddTail(7);
  other = std::move(moved);
  other.AddTail(3);
  EXPECT_THAT(Items(other), ElementsAre(1, 2, 3));
  EXPECT_EQ(&*other.begin(), first);
}

TEST(CList, IsEmptyAndUsableAfterItWasMovedFrom) {
  CList<int> list;
  list.AddTail(1);
  const CList<int> moved = std::move(list);
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetCount(), 0);
  list.AddTail(2);
  EXPECT_THAT(Items(list), ElementsAre(2));
  EXPECT_THAT(Items(moved), ElementsAre(1));
}

TEST(CList, TakesAnEmptyList) {
  CList<int> list;
  list.AddTail(1);
  list = CList<int>();
  EXPECT_TRUE(list.IsEmpty());
  list.AddTail(2);
  CList<int> moved = CList<int>();
  moved.AddTail(3);
  EXPECT_THAT(Items(list), ElementsAre(2));
  EXPECT_THAT(Items(moved), ElementsAre(3));
}

TEST(CList, RemovesAll) {
  CList<int> list;
  list.AddTail(1);
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetCount(), 0);
  list.AddTail(2);
  EXPECT_THAT(Items(list), ElementsAre(2));
}

}  // namespace
