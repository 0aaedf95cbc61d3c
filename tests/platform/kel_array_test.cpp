#include "vorn/platform/kel_array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "vorn/platform/cstring.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <typename... Values>
KelArray<int> Array(Values... values) {
  KelArray<int> array;
  (array.Add(values), ...);
  return array;
}

template <typename Type, typename ArgType>
std::vector<Type> Items(const CArray<Type, ArgType>& array) {
  return {array.begin(), array.end()};
}

bool IsOdd(int item) { return item % 2 != 0; }

TEST(KelArrayAddFilled, AppendsAnElementThatIsFilledInItsPlace) {
  KelArray<int> array;
  EXPECT_TRUE(array.AddFilled([](int& item) {
    item = 7;
    return true;
  }));
  EXPECT_THAT(Items(array), ElementsAre(7));
}

TEST(KelArrayAddFilled, TakesTheElementAwayWhenItCannotBeFilled) {
  KelArray<int> array;
  array.Add(1);
  EXPECT_FALSE(array.AddFilled([](int&) { return false; }));
  EXPECT_THAT(Items(array), ElementsAre(1));
  EXPECT_THROW(array.AddFilled([](int&) -> bool { throw std::runtime_error("no more"); }), std::runtime_error);
  EXPECT_THAT(Items(array), ElementsAre(1));
}

TEST(KelArrayRemoveIf, RemovesTheElementsThatThePredicateHoldsForAndKeepsTheOrderOfTheOthers) {
  KelArray<int> array = Array(1, 8, 3, 5, 2, 6, 7, 4);
  EXPECT_EQ(array.RemoveIf(IsOdd), 4);
  EXPECT_THAT(Items(array), ElementsAre(8, 2, 6, 4));
}

TEST(KelArrayRemoveIf, RemovesTheFirstAndTheLast) {
  KelArray<int> array = Array(1, 2, 3);
  EXPECT_EQ(array.RemoveIf(IsOdd), 2);
  EXPECT_THAT(Items(array), ElementsAre(2));
}

TEST(KelArrayRemoveIf, RemovesAllOrNothing) {
  KelArray<int> array = Array(1, 3, 5);
  EXPECT_EQ(array.RemoveIf([](int) { return false; }), 0);
  EXPECT_THAT(Items(array), ElementsAre(1, 3, 5));
  EXPECT_EQ(array.RemoveIf([](int) { return true; }), 3);
  EXPECT_THAT(Items(array), IsEmpty());
  EXPECT_EQ(array.RemoveIf([](int) { return true; }), 0);
}

TEST(KelArrayRemoveIf, AsksOnceForEachElementInOrder) {
  KelArray<int> array = Array(1, 8, 3, 5, 2);
  std::vector<int> asked;
  array.RemoveIf([&](int item) {
    asked.push_back(item);
    return IsOdd(item);
  });
  EXPECT_THAT(asked, ElementsAre(1, 8, 3, 5, 2));
}

TEST(KelArrayRemoveIf, LetsThePredicateCountWithItsOwnState) {
  KelArray<int> array = Array(7, 7, 7, 8, 8);
  EXPECT_EQ(array.RemoveIf([next = 0](int) mutable { return next++ == 1; }), 1);
  EXPECT_THAT(Items(array), ElementsAre(7, 7, 8, 8));
}

TEST(KelArrayRemoveIf, ShowsThePredicateElementsThatHaveNotMoved) {
  KelArray<CString> array;
  for (const char* text : {"a", "x", "b", "x", "c"}) array.Add(CString(std::string(100, 'y') + text));
  EXPECT_EQ(array.RemoveIf([](const CString& text) { return text.Find("x") >= 0; }), 2);
  ASSERT_EQ(array.GetSize(), 3);
  const std::pair<int, const char*> kept[] = {{0, "a"}, {1, "b"}, {2, "c"}};
  for (const auto& [index, text] : kept) EXPECT_EQ(array[index].View(), std::string(100, 'y') + text);
}

TEST(KelArrayRemoveIf, WorksOnAnArrayOfPlainValues) {
  KelArraySerial<int> array;
  for (const int item : {1, 2, 3}) array.Add(item);
  EXPECT_EQ(array.RemoveIf(IsOdd), 2);
  EXPECT_THAT(Items(array), ElementsAre(2));
}

}  // namespace
