#include "vorn/platform/carray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "vorn/platform/kel_array.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using IntArray = CArray<int>;

constexpr int kLargestInt = std::numeric_limits<int>::max();
constexpr int kSmallestInt = std::numeric_limits<int>::min();
/// Too long to lie inside a string, so that a text that has moved away shows.
const std::string kLong(100, 'x');

template <typename... Values>
IntArray Array(Values... values) {
  IntArray array;
  (array.Add(values), ...);
  return array;
}

template <typename Type, typename ArgType>
std::vector<Type> Items(const CArray<Type, ArgType>& array) {
  return {array.begin(), array.end()};
}
std::vector<std::string> Items(const CStringArray& array) { return {array.begin(), array.end()}; }

/// A full array, whose next growth has to move the elements.
CStringArray FullTexts() {
  CStringArray array;
  array.Add(CString(kLong));
  array.Add("b");
  return CStringArray(array);
}

// --- sizes -----------------------------------------------------------------------------------------------------------

TEST(CArray, StartsEmpty) {
  const IntArray array;
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetCount(), 0);
  EXPECT_EQ(array.GetUpperBound(), -1);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(CArray, CountsItsElements) {
  const IntArray array = Array(7, 8, 9);
  EXPECT_EQ(array.GetSize(), 3);
  EXPECT_EQ(array.GetCount(), 3);
  EXPECT_EQ(array.GetUpperBound(), 2);
  EXPECT_FALSE(array.IsEmpty());
}

TEST(CArray, SetSizeCutsOrFillsUpWithDefaults) {
  IntArray array = Array(7, 8, 9);
  array.SetSize(5);
  EXPECT_THAT(Items(array), ElementsAre(7, 8, 9, 0, 0));
  array.SetSize(2);
  EXPECT_THAT(Items(array), ElementsAre(7, 8));
  array.SetSize(0);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(CArray, RefusesANegativeSize) {
  IntArray array = Array(7, 8);
  EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
  EXPECT_THROW(array.SetSize(kSmallestInt), CInvalidArgException);
  EXPECT_THAT(Items(array), ElementsAre(7, 8));
}

TEST(CArray, ReserveAddsNothingAndKeepsTheElementsInPlace) {
  IntArray array = Array(7);
  array.Reserve(100);
  EXPECT_THAT(Items(array), ElementsAre(7));
  const int* const data = array.GetData();
  while (array.GetSize() < 100) array.Add(8);
  EXPECT_EQ(array.GetData(), data);
}

TEST(CArray, ReserveOfNothingOrLessChangesNothing) {
  IntArray array = Array(7, 8);
  for (const int size : {1, 0, -1, kSmallestInt}) {
    EXPECT_NO_THROW(array.Reserve(size));
    EXPECT_THAT(Items(array), ElementsAre(7, 8));
  }
}

TEST(CArray, RemoveAllEmptiesIt) {
  IntArray array = Array(7, 8);
  array.RemoveAll();
  EXPECT_TRUE(array.IsEmpty());
}

// --- access ----------------------------------------------------------------------------------------------------------

TEST(CArray, ReadsAndWritesElements) {
  IntArray array = Array(7, 8, 9);
  array[0] = 1;
  array.GetAt(1) = 2;
  array.SetAt(2, 3);
  const IntArray& constant = array;
  EXPECT_EQ(constant[0], 1);
  EXPECT_EQ(constant.GetAt(1), 2);
  EXPECT_EQ(constant.GetData()[2], 3);
}

TEST(CArray, RefusesAnIndexItDoesNotHave) {
  for (const int index : {-1, 2, kLargestInt, kSmallestInt}) {
    IntArray array = Array(7, 8);
    EXPECT_THROW((void)array[index], CInvalidArgException) << index;
    EXPECT_THROW((void)array.GetAt(index), CInvalidArgException) << index;
    EXPECT_THROW((void)std::as_const(array)[index], CInvalidArgException) << index;
    EXPECT_THROW((void)std::as_const(array).GetAt(index), CInvalidArgException) << index;
    EXPECT_THROW(array.SetAt(index, 1), CInvalidArgException) << index;
    EXPECT_THAT(Items(array), ElementsAre(7, 8)) << index;
  }
  EXPECT_THROW((void)IntArray()[0], CInvalidArgException);
}

// --- growing ---------------------------------------------------------------------------------------------------------

TEST(CArray, AddGivesTheIndexOfTheNewElement) {
  IntArray array;
  EXPECT_EQ(array.Add(7), 0);
  EXPECT_EQ(array.Add(8), 1);
  const int nine = 9;
  EXPECT_EQ(array.Add(nine), 2);
  EXPECT_THAT(Items(array), ElementsAre(7, 8, 9));
}

TEST(CArray, SetAtGrowReplacesAnElementOrGrowsToIt) {
  IntArray array = Array(7, 8);
  array.SetAtGrow(1, 1);
  EXPECT_THAT(Items(array), ElementsAre(7, 1));
  array.SetAtGrow(2, 2);
  EXPECT_THAT(Items(array), ElementsAre(7, 1, 2));
  array.SetAtGrow(5, 5);
  EXPECT_THAT(Items(array), ElementsAre(7, 1, 2, 0, 0, 5));
}

TEST(CArray, GrowsToNoIndexThatIsNegativeOrLeavesNoRoomForACount) {
  for (const int index : {-1, kSmallestInt, kLargestInt}) {
    IntArray array = Array(7, 8);
    EXPECT_THROW(array.SetAtGrow(index, 1), CInvalidArgException) << index;
    EXPECT_THROW(array.InsertAt(index, 1), CInvalidArgException) << index;
    EXPECT_THAT(Items(array), ElementsAre(7, 8)) << index;
  }
}

TEST(CArray, InsertsBeforeTheIndex) {
  IntArray array = Array(7, 8);
  array.InsertAt(0, 1);
  array.InsertAt(2, 2);
  array.InsertAt(4, 3);
  EXPECT_THAT(Items(array), ElementsAre(1, 7, 2, 8, 3));
}

TEST(CArray, InsertsSeveralAtOnce) {
  IntArray array = Array(7, 8);
  array.InsertAt(1, 5, 3);
  EXPECT_THAT(Items(array), ElementsAre(7, 5, 5, 5, 8));
  array.InsertAt(1, 9, 0);
  EXPECT_THAT(Items(array), ElementsAre(7, 5, 5, 5, 8));
  array.InsertAt(7, 6, 2);
  EXPECT_THAT(Items(array), ElementsAre(7, 5, 5, 5, 8, 0, 0, 6, 6));
}

TEST(CArray, RefusesToInsertANegativeNumber) {
  IntArray array = Array(7, 8);
  EXPECT_THROW(array.InsertAt(0, 1, -1), CInvalidArgException);
  EXPECT_THROW(array.InsertAt(5, 1, kSmallestInt), CInvalidArgException);
  EXPECT_THAT(Items(array), ElementsAre(7, 8));
}

TEST(CArray, AppendGivesTheIndexOfTheFirstNewElement) {
  IntArray array = Array(7, 8);
  EXPECT_EQ(array.Append(Array(1, 2)), 2);
  EXPECT_EQ(array.Append(IntArray()), 4);
  EXPECT_THAT(Items(array), ElementsAre(7, 8, 1, 2));
}

TEST(CArray, AppendsItself) {
  CStringArray array = FullTexts();
  EXPECT_EQ(array.Append(array), 2);
  EXPECT_THAT(Items(array), ElementsAre(kLong, "b", kLong, "b"));
}

TEST(CArray, CopyReplacesTheElements) {
  IntArray array = Array(7, 8);
  array.Copy(Array(1, 2, 3));
  EXPECT_THAT(Items(array), ElementsAre(1, 2, 3));
  array.Copy(array);
  EXPECT_THAT(Items(array), ElementsAre(1, 2, 3));
  array.Copy(IntArray());
  EXPECT_THAT(Items(array), IsEmpty());
}

// The element that is handed in may lie in the array itself, which moves its elements on the way.

TEST(CArray, AddsAnElementOfItsOwn) {
  CStringArray array = FullTexts();
  EXPECT_EQ(array.Add(array[0]), 2);
  EXPECT_THAT(Items(array), ElementsAre(kLong, "b", kLong));
}

TEST(CArray, SetsAnElementOfItsOwn) {
  CStringArray array = FullTexts();
  array.SetAt(1, array[0]);
  array.SetAt(0, array[0]);
  EXPECT_THAT(Items(array), ElementsAre(kLong, kLong));
}

TEST(CArray, GrowsWithAnElementOfItsOwn) {
  for (const int index : {2, 3, 50}) {
    CStringArray array = FullTexts();
    array.SetAtGrow(index, array[0]);
    EXPECT_EQ(array.GetSize(), index + 1);
    EXPECT_EQ(array[0].View(), kLong);
    EXPECT_EQ(array[index].View(), kLong);
  }
  CStringArray array = FullTexts();
  array.SetAtGrow(1, array[0]);
  EXPECT_THAT(Items(array), ElementsAre(kLong, kLong));
}

TEST(CArray, InsertsAnElementOfItsOwn) {
  CStringArray front = FullTexts();
  front.InsertAt(0, front[1]);
  EXPECT_THAT(Items(front), ElementsAre("b", kLong, "b"));
  CStringArray middle = FullTexts();
  middle.InsertAt(1, middle[0], 3);
  EXPECT_THAT(Items(middle), ElementsAre(kLong, kLong, kLong, kLong, "b"));
  CStringArray end = FullTexts();
  end.InsertAt(2, end[0]);
  EXPECT_THAT(Items(end), ElementsAre(kLong, "b", kLong));
}

TEST(CArray, InsertsAnElementOfItsOwnWhereThereIsRoom) {
  CStringArray array = FullTexts();
  array.Reserve(10);
  array.InsertAt(0, array[1]);
  array.InsertAt(0, array[1]);
  EXPECT_THAT(Items(array), ElementsAre(kLong, "b", kLong, "b"));
}

TEST(CArray, InsertsAnElementOfItsOwnBehindTheEnd) {
  for (const int index : {3, 50}) {
    CStringArray array = FullTexts();
    array.InsertAt(index, array[0], 2);
    EXPECT_EQ(array.GetSize(), index + 2);
    EXPECT_EQ(array[index - 1], "");
    EXPECT_EQ(array[index].View(), kLong);
    EXPECT_EQ(array[index + 1].View(), kLong);
  }
}

// --- removing --------------------------------------------------------------------------------------------------------

TEST(CArray, RemovesARangeAndClosesUp) {
  IntArray array = Array(0, 1, 2, 3, 4, 5);
  array.RemoveAt(0);
  EXPECT_THAT(Items(array), ElementsAre(1, 2, 3, 4, 5));
  array.RemoveAt(4);
  EXPECT_THAT(Items(array), ElementsAre(1, 2, 3, 4));
  array.RemoveAt(1, 2);
  EXPECT_THAT(Items(array), ElementsAre(1, 4));
  array.RemoveAt(0, 2);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(CArray, RemovesNothingAnywhereUpToTheEnd) {
  IntArray array = Array(7, 8);
  for (const int index : {0, 1, 2}) array.RemoveAt(index, 0);
  EXPECT_THAT(Items(array), ElementsAre(7, 8));
}

TEST(CArray, RefusesToRemoveWhatItDoesNotHave) {
  const std::pair<int, int> ranges[] = {{-1, 1},
                                        {-1, 0},
                                        {2, 1},
                                        {3, 0},
                                        {0, 3},
                                        {1, 2},
                                        {0, -1},
                                        {1, kLargestInt},
                                        {kLargestInt, 1},
                                        {kLargestInt, kLargestInt},
                                        {kSmallestInt, kLargestInt},
                                        {0, kSmallestInt}};
  for (const auto& [index, count] : ranges) {
    IntArray array = Array(7, 8);
    EXPECT_THROW(array.RemoveAt(index, count), CInvalidArgException) << index << ", " << count;
    EXPECT_THAT(Items(array), ElementsAre(7, 8)) << index << ", " << count;
  }
  EXPECT_THROW(IntArray().RemoveAt(0), CInvalidArgException);
}

// --- as a whole ------------------------------------------------------------------------------------------------------

TEST(CArray, IsEqualWithEqualElementsInOrder) {
  EXPECT_TRUE(IntArray() == IntArray());
  EXPECT_TRUE(Array(7, 8) == Array(7, 8));
  EXPECT_FALSE(Array(7, 8) == Array(8, 7));
  EXPECT_FALSE(Array(7, 8) == Array(7));
  EXPECT_TRUE(Array(7, 8) != Array(7, 8, 9));
  IntArray roomy = Array(7, 8);
  roomy.Reserve(100);
  EXPECT_TRUE(roomy == Array(7, 8));
}

TEST(CArray, CopiesByValueAndMoves) {
  CStringArray array = FullTexts();
  CStringArray copy(array);
  copy[1] = "changed";
  EXPECT_THAT(Items(array), ElementsAre(kLong, "b"));
  const CStringArray moved(std::move(copy));
  EXPECT_THAT(Items(moved), ElementsAre(kLong, "changed"));
  copy = moved;
  array = std::move(copy);
  EXPECT_THAT(Items(array), ElementsAre(kLong, "changed"));
}

TEST(CArray, LetsItsElementsBeWalkedAndChanged) {
  IntArray array = Array(3, 1, 2);
  for (int& item : array) item *= 10;
  std::sort(array.begin(), array.end());
  EXPECT_THAT(Items(array), ElementsAre(10, 20, 30));
}

TEST(KelArray, KnowsWhichIndicesItHas) {
  KelArray<int> array;
  EXPECT_FALSE(array.IsRange(0));
  array.SetSize(2);
  EXPECT_TRUE(array.IsRange(0));
  EXPECT_TRUE(array.IsRange(1));
  for (const int index : {-1, 2, kLargestInt, kSmallestInt}) EXPECT_FALSE(array.IsRange(index)) << index;
}

TEST(KelArraySerial, KeepsValues) {
  KelArraySerial<int> array;
  EXPECT_EQ(array.Add(7), 0);
  EXPECT_EQ(array.Add(array[0]), 1);
  array.SetAtGrow(3, array[0]);
  array.InsertAt(0, array[3]);
  EXPECT_THAT(Items(array), ElementsAre(7, 7, 7, 0, 7));
  array.RemoveAt(1, 3);
  EXPECT_THAT(Items(array), ElementsAre(7, 7));
  EXPECT_TRUE(array.IsRange(1));
  EXPECT_FALSE(array.IsRange(2));
  EXPECT_THROW((void)array[2], CInvalidArgException);
  const KelArraySerial<int> copy(array);
  EXPECT_TRUE(copy == array);
}

// --- without elements ------------------------------------------------------------------------------------------------

// Nearly all arrays of a model are empty, most of them for as long as they live. That they then take no memory is
// tested where allocations are counted.

static_assert(sizeof(IntArray) == 2 * sizeof(void*), "the elements' pointer beside that of the virtual functions");

/// Arrays without elements that came about in every way: never used, used and emptied, moved away.
std::vector<CStringArray> ArraysWithoutElements() {
  std::vector<CStringArray> arrays(4);
  arrays[1].Reserve(10);
  arrays[2] = FullTexts();
  arrays[2].RemoveAll();
  arrays[3] = FullTexts();
  const CStringArray taken = std::move(arrays[3]);
  return arrays;
}

TEST(CArrayWithoutElements, RefusesEveryIndex) {
  for (CStringArray& array : ArraysWithoutElements()) {
    for (const int index : {-1, 0, 1, kLargestInt, kSmallestInt}) {
      EXPECT_THROW((void)array[index], CInvalidArgException) << index;
      EXPECT_THROW((void)array.GetAt(index), CInvalidArgException) << index;
      EXPECT_THROW((void)std::as_const(array)[index], CInvalidArgException) << index;
      EXPECT_THROW((void)std::as_const(array).GetAt(index), CInvalidArgException) << index;
      EXPECT_THROW(array.SetAt(index, "a"), CInvalidArgException) << index;
      EXPECT_THROW(array.RemoveAt(index), CInvalidArgException) << index;
    }
    EXPECT_THROW(array.RemoveAt(1, 0), CInvalidArgException);
    EXPECT_TRUE(array.IsEmpty());
  }
}

TEST(CArrayWithoutElements, StaysSoWhenNothingIsDone) {
  for (CStringArray& array : ArraysWithoutElements()) {
    const CString* const data = array.GetData();
    array.RemoveAt(0, 0);
    array.RemoveAll();
    array.SetSize(0);
    array.Reserve(0);
    array.InsertAt(0, "a", 0);
    array.Copy(array);
    EXPECT_EQ(array.Append(array), 0);
    array.Copy(CStringArray());
    EXPECT_EQ(array.Append(CStringArray()), 0);
    EXPECT_THROW(array.SetSize(-1), CInvalidArgException);
    EXPECT_THROW(array.InsertAt(-1, "a", 0), CInvalidArgException);
    EXPECT_EQ(array.GetData(), data);
    EXPECT_EQ(array.GetSize(), 0);
    EXPECT_EQ(array.GetUpperBound(), -1);
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.begin(), array.end());
  }
}

TEST(CArrayWithoutElements, HasNoMemoryUntilItHoldsSomething) {
  CStringArray array;
  EXPECT_EQ(array.GetData(), nullptr);
  array.InsertAt(0, "a", 0);
  array.SetSize(0);
  array.RemoveAt(0, 0);
  EXPECT_EQ(array.GetData(), nullptr);
  EXPECT_EQ(CStringArray(array).GetData(), nullptr);
  array.Add("a");
  EXPECT_NE(array.GetData(), nullptr);
}

TEST(CArrayWithoutElements, TakesElementsInEveryWay) {
  for (std::size_t i = 0; i < ArraysWithoutElements().size(); ++i) {
    const auto after = [&](auto action) {
      CStringArray array = std::move(ArraysWithoutElements()[i]);
      action(array);
      return Items(array);
    };
    EXPECT_THAT(after([](CStringArray& a) { a.Add("a"); }), ElementsAre("a"));
    EXPECT_THAT(after([](CStringArray& a) { a.AddDefault(); }), ElementsAre(""));
    EXPECT_THAT(after([](CStringArray& a) { a.SetSize(2); }), ElementsAre("", ""));
    EXPECT_THAT(after([](CStringArray& a) { a.SetAtGrow(0, "a"); }), ElementsAre("a"));
    EXPECT_THAT(after([](CStringArray& a) { a.SetAtGrow(2, "a"); }), ElementsAre("", "", "a"));
    EXPECT_THAT(after([](CStringArray& a) { a.InsertAt(0, "a"); }), ElementsAre("a"));
    EXPECT_THAT(after([](CStringArray& a) { a.InsertAt(1, "a", 2); }), ElementsAre("", "a", "a"));
    EXPECT_THAT(after([](CStringArray& a) { a.InsertAt(2, "a", 0); }), ElementsAre("", ""));
    EXPECT_THAT(after([](CStringArray& a) { a.Append(FullTexts()); }), ElementsAre(kLong, "b"));
    EXPECT_THAT(after([](CStringArray& a) { a.Copy(FullTexts()); }), ElementsAre(kLong, "b"));
    EXPECT_THAT(after([](CStringArray& a) { a = FullTexts(); }), ElementsAre(kLong, "b"));
  }
}

TEST(CArrayWithoutElements, IsEqualToAnyOtherWithout) {
  for (const CStringArray& a : ArraysWithoutElements()) {
    for (const CStringArray& b : ArraysWithoutElements()) EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == FullTexts());
    EXPECT_FALSE(FullTexts() == a);
  }
}

TEST(CArray, KeepsItsElementsWhenMovedToItself) {
  CStringArray array = FullTexts();
  CStringArray& same = array;
  array = std::move(same);
  EXPECT_THAT(Items(array), ElementsAre(kLong, "b"));
  CStringArray empty;
  CStringArray& sameEmpty = empty;
  empty = std::move(sameEmpty);
  EXPECT_TRUE(empty.IsEmpty());
}

}  // namespace
