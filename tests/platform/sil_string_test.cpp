#include "vorn/platform/sil_string.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>

namespace {

TEST(SilString, ReadsTheLongestLeadingNumber) {
  EXPECT_EQ(SilString::ToDouble("12.5"), 12.5);
  EXPECT_EQ(SilString::ToDouble(" \t\n\v\f\r12.5 m"), 12.5);
  EXPECT_EQ(SilString::ToDouble("+12.5"), 12.5);
  EXPECT_EQ(SilString::ToDouble("-12.5"), -12.5);
  EXPECT_EQ(SilString::ToDouble(".5"), 0.5);
  EXPECT_EQ(SilString::ToDouble("5."), 5.0);
  EXPECT_EQ(SilString::ToDouble("-.5e1x"), -5.0);
  EXPECT_EQ(SilString::ToDouble("1.5E+2"), 150.0);
  EXPECT_EQ(SilString::ToDouble("1.5e-2"), 0.015);
  EXPECT_EQ(SilString::ToDouble("1.2.3"), 1.2);
  EXPECT_EQ(SilString::ToDouble("1,5"), 1.0);
  EXPECT_EQ(SilString::ToDouble("007"), 7.0);
  EXPECT_EQ(SilString::ToDouble("0.1"), 0.1);
  EXPECT_EQ(SilString::ToDouble("-1e-99"), -1e-99);
}

TEST(SilString, LeavesAnExponentWithoutDigitsBehind) {
  EXPECT_EQ(SilString::ToDouble("1e"), 1.0);
  EXPECT_EQ(SilString::ToDouble("1e+"), 1.0);
  EXPECT_EQ(SilString::ToDouble("1e-x"), 1.0);
  EXPECT_EQ(SilString::ToDouble("1e 5"), 1.0);
}

TEST(SilString, ReadsNothingNumericAsZero) {
  for (const char* text : {"", " ", "x", ".", "-", "+", "-.", "+-1", "--1", "e5", ".e5", "- 1", "inf", "-inf",
                           "infinity", "nan", "-nan(1)",
                           "\xA0"
                           "1"}) {
    EXPECT_EQ(SilString::ToDouble(text), 0.0) << text;
    EXPECT_FALSE(std::signbit(SilString::ToDouble(text))) << text;
  }
  EXPECT_EQ(SilString::ToDouble("0x1F"), 0.0);
  EXPECT_EQ(SilString::ToDouble("1x1F"), 1.0);
}

TEST(SilString, CutsNumbersThatADoubleCannotHold) {
  EXPECT_EQ(SilString::ToDouble("1e309"), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("-1e309"), -DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("1e99999999999999999999"), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble(std::string(400, '9')), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("0." + std::string(400, '0') + "1e800"), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("1e-400"), 0.0);
  EXPECT_EQ(SilString::ToDouble("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(SilString::ToDouble("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(SilString::ToDouble(std::string(300, '9') + "e-700"), 0.0);
  EXPECT_EQ(SilString::ToDouble(std::string(500, '0') + "1e-400"), 0.0);
  EXPECT_EQ(SilString::ToDouble("0e999999"), 0.0);
  EXPECT_FALSE(std::signbit(SilString::ToDouble("-1e-400")));
  EXPECT_FALSE(std::signbit(SilString::ToDouble("-0")));
}

TEST(SilString, ReadsTheWholeRangeOfDoubles) {
  EXPECT_EQ(SilString::ToDouble("1.7976931348623157e308"), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("1.7976931348623158e308"), DBL_MAX);
  EXPECT_EQ(SilString::ToDouble("1.7976931348623159e308"), DBL_MAX) << "would be rounded to an infinity";
  EXPECT_EQ(SilString::ToDouble("2.5e-324"), 5e-324);
  EXPECT_EQ(SilString::ToDouble("2.4e-324"), 0.0);
  EXPECT_EQ(SilString::ToDouble("2.2250738585072014e-308"), DBL_MIN);
  EXPECT_EQ(SilString::ToDouble("5e-324"), 5e-324);
  EXPECT_EQ(SilString::ToDouble("1" + std::string(400, '0') + "e-400"), 1.0);
  EXPECT_EQ(SilString::ToDouble("0." + std::string(400, '0') + "1e401"), 1.0);
}

TEST(SilString, ReadsAViewThatEndsAnywhere) {
  constexpr std::string_view kText = "12.345e1";
  EXPECT_EQ(SilString::ToDouble(kText.substr(0, 1)), 1.0);
  EXPECT_EQ(SilString::ToDouble(kText.substr(0, 3)), 12.0);
  EXPECT_EQ(SilString::ToDouble(kText.substr(0, 7)), 12.345);
  EXPECT_EQ(SilString::ToInteger(kText.substr(0, 1)), 1);
}

TEST(SilString, ReadsIntegers) {
  EXPECT_EQ(SilString::ToInteger("42"), 42);
  EXPECT_EQ(SilString::ToInteger(" \n+42x"), 42);
  EXPECT_EQ(SilString::ToInteger("-42.9"), -42);
  EXPECT_EQ(SilString::ToInteger("1e3"), 1);
  EXPECT_EQ(SilString::ToInteger("0x10"), 0);
  EXPECT_EQ(SilString::ToInteger(""), 0);
  EXPECT_EQ(SilString::ToInteger("x1"), 0);
  EXPECT_EQ(SilString::ToInteger("-"), 0);
  EXPECT_EQ(SilString::ToInteger("00000000000000000000000000000012"), 12);
}

TEST(SilString, CutsIntegersToTheirRange) {
  EXPECT_EQ(SilString::ToInteger("2147483647"), INT32_MAX);
  EXPECT_EQ(SilString::ToInteger("2147483648"), INT32_MAX);
  EXPECT_EQ(SilString::ToInteger("-2147483648"), INT32_MIN);
  EXPECT_EQ(SilString::ToInteger("-2147483649"), INT32_MIN);
  EXPECT_EQ(SilString::ToInteger(std::string(100, '9')), INT32_MAX);
  EXPECT_EQ(SilString::ToInteger("-" + std::string(100, '9')), INT32_MIN);
}

TEST(SilString, WritesRealsInFixedPoint) {
  EXPECT_EQ(SilString::StrDouble(12.3, 3), "12.300");
  EXPECT_EQ(SilString::StrDouble(2.0, 0), "2");
  EXPECT_EQ(SilString::StrDouble(1.005, 2), "1.01");
  EXPECT_EQ(SilString::StrDouble(-0.0001, 3), "0.000");
  EXPECT_EQ(SilString::StrDouble(1e21, 1), "1000000000000000000000.0");
}

TEST(SilString, WritesIntegers) {
  EXPECT_EQ(SilString::StrSignedInteger(0), "0");
  EXPECT_EQ(SilString::StrSignedInteger(-7), "-7");
  EXPECT_EQ(SilString::StrSignedInteger(INT32_MAX), "2147483647");
  EXPECT_EQ(SilString::StrSignedInteger(INT32_MIN), "-2147483648");
}

}  // namespace
