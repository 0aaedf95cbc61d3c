#include "vorn/platform/careful_difference.h"

#include <gtest/gtest.h>

#include <cmath>

#include "vorn/platform/nur_real.h"

namespace {

// The expectations are exact: EXPECT_EQ, not EXPECT_DOUBLE_EQ.

TEST(NurCarefulDifference, BringsBackWhatBinaryRoundingTookOff) {
  ASSERT_NE(2.3 - 0.1, 2.2);
  EXPECT_EQ(NurCarefulDifference(2.3, 0.1), 2.2);
  EXPECT_EQ(NurCarefulDifference(0.1, 2.3), -2.2);
  EXPECT_EQ(NurCarefulDifference(-2.3, -0.1), -2.2);
  EXPECT_EQ(NurCarefulDifference(-0.1, -2.3), 2.2);
}

TEST(NurCarefulDifference, GivesEachOperandItsOwnSign) {
  EXPECT_EQ(NurCarefulDifference(6.8, -7.6), 14.4);
  EXPECT_EQ(NurCarefulDifference(0.1, -9.7), 9.8);
  EXPECT_EQ(NurCarefulDifference(-9.7, 0.1), -9.8);
}

TEST(NurCarefulDifference, IsPlainForWholeNumbersAndBinaryFractions) {
  EXPECT_EQ(NurCarefulDifference(0.0, 0.0), 0.0);
  EXPECT_EQ(NurCarefulDifference(100.0, 3.0), 97.0);
  EXPECT_EQ(NurCarefulDifference(3.0, 100.0), -97.0);
  EXPECT_EQ(NurCarefulDifference(100.25, 0.5), 99.75);
  EXPECT_EQ(NurCarefulDifference(-0.5, 0.25), -0.75);
}

TEST(NurCarefulDifference, LiftsAFractionFromSixtyFiveHundredthsOfTheTenthPlaceOn) {
  EXPECT_EQ(NurCarefulDifference(6.652e-10, 0.0), 7e-10);
  EXPECT_EQ(NurCarefulDifference(0.0, 6.652e-10), -7e-10);
  EXPECT_EQ(NurCarefulDifference(-6.652e-10, 0.0), -7e-10);
  EXPECT_EQ(NurCarefulDifference(0.0, -6.652e-10), 7e-10);
}

TEST(NurCarefulDifference, StaysPlainWhereTheCutTookMoreOff) {
  EXPECT_EQ(NurCarefulDifference(6.648e-10, 0.0), 6.648e-10);
  EXPECT_EQ(NurCarefulDifference(0.0, 6.648e-10), -6.648e-10);
  EXPECT_EQ(NurCarefulDifference(1.0, 6.652e-10), 1.0 - 6.652e-10);
  EXPECT_EQ(NurCarefulDifference(3.00000000066, 0.0), 3.00000000066);
}

TEST(NurCarefulDifference, TakesTheLargerMagnitudeEvenWhereThePlainOneIsOff) {
  ASSERT_NE(2.2 - -0.1, 2.3);
  EXPECT_EQ(NurCarefulDifference(2.2, -0.1), 2.2 - -0.1);
  EXPECT_EQ(NurCarefulDifference(-0.1, 2.2), -0.1 - 2.2);
}

TEST(NurCarefulDifference, TakesTheUnsetValueForNothing) {
  EXPECT_EQ(NurCarefulDifference(5.2, kNurUnsetReal), 5.2);
  EXPECT_EQ(NurCarefulDifference(kNurUnsetReal, 5.2), -5.2);
  EXPECT_EQ(NurCarefulDifference(kNurUnsetReal, kNurUnsetReal), 0.0);
}

TEST(NurCarefulDifference, NeverFallsShortOfThePlainDifference) {
  for (int minuend = -99; minuend <= 99; ++minuend) {
    for (int subtrahend = -99; subtrahend <= 99; ++subtrahend) {
      const double a = minuend / 10.0;
      const double b = subtrahend / 10.0;
      const double difference = NurCarefulDifference(a, b);
      EXPECT_GE(std::abs(difference), std::abs(a - b)) << a << " - " << b;
      EXPECT_NEAR(difference, (minuend - subtrahend) / 10.0, 1e-14) << a << " - " << b;
    }
  }
}

}  // namespace
