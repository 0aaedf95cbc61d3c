#include "vorn/platform/nur_mrm.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "vorn/platform/exceptions.h"
#include "vorn/platform/nur_real.h"

namespace {

NurMrm Mrm(KelMrmFigure places) { return {NurMrm::kHalfAwayFromZero, 0, places}; }

TEST(NurMrm, RoundsHalfAwayFromZeroOnTheTypedDigits) {
  EXPECT_EQ(Mrm(2).ZMrm(1.005), 1.01);
  EXPECT_EQ(Mrm(2).ZMrm(-1.005), -1.01);
  EXPECT_EQ(Mrm(4).ZMrm(2.5999999999999996), 2.6);
  EXPECT_EQ(Mrm(0).ZMrm(2.5), 3.0);
  EXPECT_EQ(Mrm(0).ZMrm(3.5), 4.0);
  EXPECT_EQ(Mrm(3).ZMrm(0.0005), 0.001);
  EXPECT_EQ(Mrm(3).ZMrm(1.0), 1.0);
  EXPECT_EQ(Mrm(-1).ZMrm(15.0), 20.0);
}

TEST(NurMrm, LeavesUnsetUntouched) {
  for (const KelMrmFigure places : {-2, 0, 3, 98, 99, 120}) {
    EXPECT_TRUE(KelIsShoki(Mrm(places).ZMrm(kNurUnsetReal)));
    EXPECT_EQ(Mrm(places).Text(kNurUnsetReal), "");
    EXPECT_EQ(Mrm(places).Format(kNurUnsetReal).View(), "");
  }
}

TEST(NurMrm, LeavesInfinitiesAndNanUntouched) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Mrm(2).ZMrm(kInfinity), kInfinity);
  EXPECT_EQ(Mrm(2).ZMrm(-kInfinity), -kInfinity);
  EXPECT_TRUE(std::isnan(Mrm(2).ZMrm(std::nan(""))));
}

TEST(NurMrm, RoundsToZeroWithoutSign) {
  EXPECT_FALSE(std::signbit(Mrm(3).ZMrm(-0.0001)));
  EXPECT_FALSE(std::signbit(Mrm(3).ZMrm(-0.0)));
  EXPECT_EQ(Mrm(3).Text(-0.0001), "0.000");
}

TEST(NurMrm, WritesExactlyThePlacesAskedFor) {
  EXPECT_EQ(Mrm(3).Text(12.3), "12.300");
  EXPECT_EQ(Mrm(0).Text(12.3), "12");
  EXPECT_EQ(Mrm(6).Text(-12.3), "-12.300000");
  EXPECT_EQ(Mrm(3).Format(12.3).View(), "12.300");
}

TEST(NurMrm, WritesNothingForAValueThatRoundsToUnset) {
  EXPECT_EQ(Mrm(99).Text(-1.0000001e-99), "");
  EXPECT_EQ(Mrm(99).Text(-0.6e-99), "");
  EXPECT_NE(Mrm(106).Text(-1.0000001e-99), "");
  EXPECT_NE(Mrm(99).Text(1e-99), "");
  EXPECT_EQ(Mrm(98).Text(-1.0000001e-99), "0." + CString(std::string(98, '0')));
}

TEST(NurMrm, KnowsOneModeAndOneUnit) {
  EXPECT_THROW(NurMrm(4, 0, 2), CInvalidArgException);
  EXPECT_THROW(NurMrm(NurMrm::kHalfAwayFromZero, 1, 2), CInvalidArgException);
}

}  // namespace
