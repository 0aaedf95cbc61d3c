#include "vorn/platform/fixed_decimal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string Text(double value, std::int32_t places) { return std::string(FixedDecimal(value, places).View()); }

/// The shortest text that reads back as the value, without its sign and its exponent.
std::string ShortestInFull(double value) {
  std::array<char, 32> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value), std::chars_format::scientific).ptr;
  std::string digits(buffer.data(), end);
  const std::size_t exponentAt = digits.find('e');
  const int exponent = std::stoi(digits.substr(exponentAt + 1));
  digits.resize(exponentAt);
  std::erase(digits, '.');
  std::string text = std::string(400, '0') + digits + std::string(400, '0');
  text.insert(static_cast<std::size_t>(401 + exponent), ".");
  text.erase(0, std::min(text.find_first_not_of('0'), text.find('.') - 1));
  return text;
}

/// What a person does with pencil and paper: writes the shortest text out in full, cuts it, and carries.
std::string RoundByHand(double value, std::int32_t places) {
  std::string text = ShortestInFull(value);
  const std::size_t point = text.find('.');
  const std::size_t keep = point + 1 + static_cast<std::size_t>(places);
  if (text.size() < keep + 1) text.append(keep + 1 - text.size(), '0');
  bool carry = text[keep] >= '5';
  text.resize(keep);
  for (std::size_t i = keep; carry && i-- > 0;) {
    if (text[i] == '.') continue;
    carry = text[i] == '9';
    text[i] = carry ? '0' : static_cast<char>(text[i] + 1);
  }
  if (carry) text.insert(text.begin(), '1');
  if (places == 0) text.pop_back();
  const bool zero = text.find_first_not_of("0.") == std::string::npos;
  return std::signbit(value) && !zero ? "-" + text : text;
}

double ReadBack(const std::string& text) {
  double value = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void ExpectAsByHand(double value, std::int32_t places) {
  const std::string expected = RoundByHand(value, places);
  ASSERT_EQ(Text(value, places), expected) << places;
  const double rounded = FixedDecimal::Round(value, places);
  ASSERT_EQ(rounded, ReadBack(expected)) << expected;
  ASSERT_EQ(std::signbit(rounded), expected.front() == '-') << expected;
}

TEST(FixedDecimal, RoundsRandomValuesAsByHand) {
  std::mt19937_64 random(932);
  std::uniform_real_distribution<double> exponent(-6.0, 15.0);
  std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
  for (int i = 0; i < 200000; ++i) {
    ExpectAsByHand(mantissa(random) * std::pow(10.0, exponent(random)), i % 12);
  }
}

TEST(FixedDecimal, RoundsTiesAndTheirNeighboursAsByHand) {
  std::mt19937_64 random(5);
  for (int i = 0; i < 200000; ++i) {
    const int places = i % 10;
    const double scale = std::pow(10.0, places);
    const auto whole = static_cast<double>(random() % 1000000000000u >> random() % 40);
    double value = (whole + 0.5) / scale;
    const int steps = static_cast<int>(random() % 9) - 4;
    for (int step = 0; step < std::abs(steps); ++step) value = std::nextafter(value, steps < 0 ? 0.0 : kInfinity);
    if (random() % 2 == 0) value = -value;
    ExpectAsByHand(value, places);
  }
}

TEST(FixedDecimal, RoundsAroundTheEdgeOfQuickArithmeticAsByHand) {
  std::mt19937_64 random(12);
  std::uniform_real_distribution<double> near(0.999999, 1.000001);
  for (int i = 0; i < 20000; ++i) {
    const int places = i % 10;
    ExpectAsByHand(1e12 * near(random) / std::pow(10.0, places), places);
  }
}

TEST(FixedDecimal, RoundsAnyBitPatternAsByHand) {
  std::mt19937_64 random(64);
  for (int i = 0; i < 20000; ++i) {
    const std::uint64_t bits = random();
    double value = 0.0;
    static_assert(sizeof value == sizeof bits);
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;
    ExpectAsByHand(value, static_cast<std::int32_t>(random() % 400));
  }
}

TEST(FixedDecimal, WritesWhatAPersonTyped) {
  EXPECT_EQ(Text(1.005, 2), "1.01");
  EXPECT_EQ(Text(2.5999999999999996, 4), "2.6000");
  EXPECT_EQ(Text(0.5, 0), "1");
  EXPECT_EQ(Text(1.5, 0), "2");
  EXPECT_EQ(Text(2.5, 0), "3");
  EXPECT_EQ(Text(-2.5, 0), "-3");
  EXPECT_EQ(Text(0.49999999999999994, 0), "0");
  EXPECT_EQ(Text(9.995, 2), "10.00");
  EXPECT_EQ(Text(0.0005, 3), "0.001");
  EXPECT_EQ(Text(0.00049, 3), "0.000");
  EXPECT_EQ(Text(99.9999, 3), "100.000");
}

TEST(FixedDecimal, WritesNoNegativeZero) {
  EXPECT_EQ(Text(-0.0, 0), "0");
  EXPECT_EQ(Text(-0.0, 3), "0.000");
  EXPECT_EQ(Text(-0.0004, 3), "0.000");
  EXPECT_EQ(Text(-1e-99, 3), "0.000");
  EXPECT_EQ(Text(-1e-99, 20), "0.00000000000000000000");
  EXPECT_FALSE(std::signbit(FixedDecimal::Round(-0.0, 15)));
  EXPECT_FALSE(std::signbit(FixedDecimal::Round(-0.0, 2)));
  EXPECT_FALSE(std::signbit(FixedDecimal::Round(-0.001, 2)));
  EXPECT_FALSE(std::signbit(FixedDecimal::Round(-1e-30, 20)));
}

TEST(FixedDecimal, WritesHugeValuesInFull) {
  EXPECT_EQ(Text(1e300, 2), "1" + std::string(300, '0') + ".00");
  EXPECT_EQ(Text(-1.5e20, 0), "-150000000000000000000");
  EXPECT_EQ(Text(DBL_MAX, 0), "17976931348623157" + std::string(292, '0'));
  EXPECT_EQ(Text(1e15, 1), "1000000000000000.0");
}

TEST(FixedDecimal, WritesTinyValuesInFull) {
  EXPECT_EQ(Text(1e-300, 3), "0.000");
  EXPECT_EQ(Text(1e-300, 300), "0." + std::string(299, '0') + "1");
  EXPECT_EQ(Text(5e-324, 324), "0." + std::string(323, '0') + "5");
  EXPECT_EQ(Text(5e-324, 323), "0." + std::string(322, '0') + "1");
  EXPECT_EQ(FixedDecimal::Round(5e-324, 324), 5e-324);
  EXPECT_EQ(FixedDecimal::Round(1e-300, 3), 0.0);
}

TEST(FixedDecimal, FillsPlacesThatTheValueDoesNotHave) {
  EXPECT_EQ(Text(0.1, 30), "0.1" + std::string(29, '0'));
  EXPECT_EQ(Text(1.0, 1000), "1." + std::string(1000, '0'));
  EXPECT_EQ(FixedDecimal::Round(0.1, std::numeric_limits<std::int32_t>::max()), 0.1);
}

TEST(FixedDecimal, RoundsBeforeThePoint) {
  EXPECT_EQ(Text(1250.0, -2), "1300");
  EXPECT_EQ(Text(-1249.9, -2), "-1200");
  EXPECT_EQ(Text(50.0, -2), "100");
  EXPECT_EQ(Text(49.0, -2), "0");
  EXPECT_EQ(Text(4.0, -2), "0");
  EXPECT_EQ(FixedDecimal::Round(1250.0, -2), 1300.0);
  EXPECT_EQ(FixedDecimal::Round(1e300, std::numeric_limits<std::int32_t>::min()), 0.0);
}

TEST(FixedDecimal, CutsARoundedValueToTheLargestDouble) {
  EXPECT_EQ(FixedDecimal::Round(DBL_MAX, -308), DBL_MAX);
  EXPECT_EQ(FixedDecimal::Round(-DBL_MAX, -308), -DBL_MAX);
  EXPECT_EQ(Text(DBL_MAX, -308), "2" + std::string(308, '0'));
  // To fewer and fewer digits of it: up, where it would become an infinity, or down.
  EXPECT_EQ(FixedDecimal::Round(DBL_MAX, -293), DBL_MAX);
  EXPECT_EQ(FixedDecimal::Round(DBL_MAX, -294), DBL_MAX);
  EXPECT_EQ(FixedDecimal::Round(DBL_MAX, -297), 1.79769313486e308);
}

TEST(FixedDecimal, HasNoTextForInfinitiesAndNan) {
  EXPECT_EQ(Text(kInfinity, 2), "");
  EXPECT_EQ(Text(-kInfinity, 2), "");
  EXPECT_EQ(Text(std::nan(""), 2), "");
  EXPECT_EQ(FixedDecimal::Round(kInfinity, 2), kInfinity);
  EXPECT_EQ(FixedDecimal::Round(-kInfinity, 2), -kInfinity);
  EXPECT_TRUE(std::isnan(FixedDecimal::Round(std::nan(""), 2)));
}

TEST(FixedDecimal, KeepsItsTextWhenCopiedAndMoved) {
  for (const double value : {12.345, 1e300}) {
    FixedDecimal original(value, 2);
    const std::string text(original.View());
    const FixedDecimal copy = original;
    const FixedDecimal moved = std::move(original);
    EXPECT_EQ(copy.View(), text);
    EXPECT_EQ(moved.View(), text);
  }
  EXPECT_EQ(FixedDecimal().View(), "");
}

}  // namespace
