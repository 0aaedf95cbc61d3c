#include "vorn/platform/tam_world2.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kTiny = 1e-6;
const double kBeyondTiny = std::nextafter(kTiny, 1.0);

TEST(TamWorld2, StartsAtTheOrigin) {
  EXPECT_EQ(TamWorld2().x, 0.0);
  EXPECT_EQ(TamWorld2().y, 0.0);
}

TEST(TamWorld2, ComparesBothCoordinatesExactly) {
  constexpr TamWorld2 point{1.5, -2.5};
  EXPECT_TRUE((point == TamWorld2{1.5, -2.5}));
  EXPECT_FALSE((point == TamWorld2{1.5, -2.4999999}));
  EXPECT_FALSE((point == TamWorld2{1.4999999, -2.5}));
}

TEST(TamIsTinyLength, TakesAMillionthOfAMetreForNothing) {
  for (const double sign : {1.0, -1.0}) {
    EXPECT_TRUE(TamIsTinyLength(sign * 0.0));
    EXPECT_TRUE(TamIsTinyLength(sign * 0.5e-6));
    EXPECT_TRUE(TamIsTinyLength(sign * kTiny));
    EXPECT_FALSE(TamIsTinyLength(sign * kBeyondTiny));
    EXPECT_FALSE(TamIsTinyLength(sign * 1.1e-6));
    EXPECT_FALSE(TamIsTinyLength(sign * 1.0));
    EXPECT_FALSE(TamIsTinyLength(sign * std::numeric_limits<double>::infinity()));
  }
  EXPECT_FALSE(TamIsTinyLength(std::nan("")));
}

TEST(TamIsTinyDistance, TakesPointsAMillionthOfAMetreApartForOne) {
  constexpr TamWorld2 origin;
  EXPECT_TRUE(TamIsTinyDistance(origin, origin));
  for (const double sign : {1.0, -1.0}) {
    EXPECT_TRUE(TamIsTinyDistance(origin, {sign * kTiny, 0.0}));
    EXPECT_TRUE(TamIsTinyDistance({0.0, sign * kTiny}, origin));
    EXPECT_FALSE(TamIsTinyDistance(origin, {sign * kBeyondTiny, 0.0}));
    EXPECT_FALSE(TamIsTinyDistance({0.0, sign * kBeyondTiny}, origin));
  }
}

TEST(TamIsTinyDistance, MeasuresAlongTheStraightLine) {
  EXPECT_TRUE(TamIsTinyDistance({0.0, 0.0}, {0.59e-6, 0.79e-6}));
  EXPECT_FALSE(TamIsTinyDistance({0.0, 0.0}, {0.61e-6, 0.81e-6}));
  EXPECT_FALSE(TamIsTinyDistance({0.0, 0.0}, {0.9e-6, 0.9e-6}));
  EXPECT_TRUE(TamIsTinyDistance({100.0, -50.0}, {100.0000005, -50.0000005}));
  EXPECT_FALSE(TamIsTinyDistance({100.0, -50.0}, {100.0000009, -50.0000009}));
}

}  // namespace
