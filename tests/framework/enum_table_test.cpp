#include "vorn/framework/enum_table.h"

#include <gtest/gtest.h>

#include "vorn/types/location.h"

namespace {

enum class Fruit { Unset = -1, Apple = 0, Pear = 1, Quince = 2 };

constexpr std::array kFruits = {
    EnumText<Fruit>{Fruit::Apple, "Apple"},
    EnumText<Fruit>{Fruit::Pear, "Pear"},
    EnumText<Fruit>{Fruit::Pear, "Butter Pear"},
    EnumText<Fruit>{Fruit::Quince, "Pear"},
};

TEST(EnumTable, GivesTheTextOfTheFirstRowWithTheValue) {
  EXPECT_EQ(EnumToText(kFruits, Fruit::Apple), "Apple");
  EXPECT_EQ(EnumToText(kFruits, Fruit::Pear), "Pear");
}

TEST(EnumTable, GivesTheFallbackForAValueOutsideTheTable) {
  EXPECT_EQ(EnumToText(kFruits, Fruit::Unset), "");
  EXPECT_EQ(EnumToText(kFruits, static_cast<Fruit>(7), "none"), "none");
}

TEST(EnumTable, GivesTheValueOfTheFirstRowWithTheText) {
  EXPECT_EQ(TextToEnum(kFruits, "Apple"), Fruit::Apple);
  EXPECT_EQ(TextToEnum(kFruits, "Pear"), Fruit::Pear);
  EXPECT_EQ(TextToEnum(kFruits, "Butter Pear"), Fruit::Pear);
}

TEST(EnumTable, ComparesTheWholeTextAndItsCase) {
  for (const std::string_view text : {"apple", "APPLE", "Appl", "Apples", " Apple", "Apple ", ""}) {
    EXPECT_EQ(TextToEnum(kFruits, text), std::nullopt) << text;
  }
}

TEST(EnumTable, IsLookedUpWhileCompiling) {
  static_assert(EnumToText(kFruits, Fruit::Apple) == "Apple");
  static_assert(TextToEnum(kFruits, "Apple") == Fruit::Apple);
}

TEST(VornLocationTexts, NameTheThreeSides) {
  EXPECT_EQ(static_cast<int>(VornLocation::Unset), -1);
  EXPECT_EQ(EnumToText(kVornLocationTexts, static_cast<VornLocation>(0)), "Center");
  EXPECT_EQ(EnumToText(kVornLocationTexts, static_cast<VornLocation>(1)), "Left");
  EXPECT_EQ(EnumToText(kVornLocationTexts, static_cast<VornLocation>(2)), "Right");
  EXPECT_EQ(kVornLocationTexts.size(), 3u);
}

}  // namespace
