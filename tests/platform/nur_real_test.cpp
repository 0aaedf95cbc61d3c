#include "vorn/platform/nur_real.h"

#include <gtest/gtest.h>

namespace {

TEST(NurReal, StartsUnset) {
  EXPECT_FALSE(NurReal().IsSet());
  EXPECT_TRUE(KelIsShoki(NurReal()));
  EXPECT_EQ(NurReal().Value(), -1e-99);
}

TEST(NurReal, IsSetByAnyOtherValue) {
  NurReal value = 0.0;
  EXPECT_TRUE(value.IsSet());
  EXPECT_EQ(value, NurReal(0.0));
  value.Unset();
  EXPECT_FALSE(value.IsSet());
  EXPECT_TRUE(NurReal(1e-99).IsSet());
  EXPECT_FALSE(NurReal(kNurUnsetReal).IsSet());
}

TEST(NurLong, StartsUnset) {
  EXPECT_FALSE(NurLong().IsSet());
  EXPECT_TRUE(KelIsShokiL(NurLong()));
  EXPECT_EQ(NurLong().Value(), INT32_MIN);
}

TEST(NurLong, IsSetByAnyOtherValue) {
  NurLong value = 0;
  EXPECT_TRUE(value.IsSet());
  value.Unset();
  EXPECT_FALSE(value.IsSet());
  EXPECT_TRUE(NurLong(INT32_MAX).IsSet());
}

}  // namespace
