#include "vorn/model/uint_array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

#include "tests/model/items.h"
#include "vorn/platform/exceptions.h"

namespace {

using model_test::Items;
using testing::ElementsAre;
using testing::IsEmpty;

VornUIntArray ArrayOf(std::initializer_list<std::uint32_t> values) {
  VornUIntArray array;
  for (const std::uint32_t value : values) array.Add(value);
  return array;
}

TEST(UIntArray, FindsTheFirstEqualElement) {
  const VornUIntArray array = ArrayOf({5, 7, 5, 0xFFFFFFFF});
  EXPECT_EQ(array.Find(5), 0);
  EXPECT_EQ(array.Find(7), 1);
  EXPECT_EQ(array.Find(0xFFFFFFFF), 3);
}

TEST(UIntArray, FindsNothingThatIsNotThere) {
  EXPECT_EQ(ArrayOf({5, 7}).Find(6), -1);
  EXPECT_EQ(VornUIntArray().Find(0), -1);
}

TEST(UIntArray, RemovesEveryEqualElement) {
  VornUIntArray array = ArrayOf({5, 7, 5, 8, 5});
  array.Remove(5);
  EXPECT_THAT(Items(array), ElementsAre(7u, 8u));
}

TEST(UIntArray, RemovingWhatIsNotThereChangesNothing) {
  VornUIntArray array = ArrayOf({5, 7});
  array.Remove(6);
  EXPECT_THAT(Items(array), ElementsAre(5u, 7u));
}

TEST(UIntArray, DropsRepeatedValuesAndKeepsTheFirstOfEach) {
  VornUIntArray array = ArrayOf({9, 3, 9, 7, 3, 3, 1});
  array.RemoveDup();
  EXPECT_THAT(Items(array), ElementsAre(9u, 3u, 7u, 1u));
}

TEST(UIntArray, WithoutRepeatsStaysAsItIs) {
  VornUIntArray array = ArrayOf({3, 1, 2});
  array.RemoveDup();
  EXPECT_THAT(Items(array), ElementsAre(3u, 1u, 2u));
  VornUIntArray empty;
  empty.RemoveDup();
  EXPECT_THAT(Items(empty), IsEmpty());
}

TEST(UIntArray, CopiesAreIndependent) {
  const VornUIntArray array = ArrayOf({1, 2});
  VornUIntArray copy = array;
  copy.Remove(1);
  EXPECT_THAT(Items(array), ElementsAre(1u, 2u));
  EXPECT_THAT(Items(copy), ElementsAre(2u));
}

}  // namespace
