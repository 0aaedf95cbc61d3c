#include "vorn/platform/fixed_decimal.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr std::array kPowersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr std::array<std::int64_t, kPowersOfTen.size()> kIntegerPowersOfTen = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000};

/// |value| * 10^places as a rounded integer, where plain arithmetic is certain to find it: below 1e12 the product and
/// the shortest text differ by less than 3e-4, so only a product that near to a tie needs the digits themselves.
std::optional<std::int64_t> RoundScaled(double value, std::int32_t places) {
  constexpr double kLargest = 1e12;
  constexpr double kTieMargin = 1e-3;
  if (places < 0 || places >= static_cast<std::int32_t>(kPowersOfTen.size())) return std::nullopt;
  const double scaled = std::fabs(value) * kPowersOfTen[static_cast<std::size_t>(places)];
  if (!(scaled < kLargest)) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(scaled);
  const double fraction = scaled - static_cast<double>(whole);
  if (std::fabs(fraction - 0.5) < kTieMargin) return std::nullopt;
  return whole + static_cast<std::int64_t>(fraction > 0.5);
}

/// The digits of a finite real's shortest text, rounded: 0.d1d2d3... * 10^point.
class RoundedDigits {
 public:
  RoundedDigits(double value, std::int32_t places) : m_places(std::max(places, 0)) {
    if (value == 0.0) return;
    ReadShortest(value);
    Cut(m_point + std::int64_t{places});
    if (m_count > 0) return;
    m_point = 0;
    m_negative = false;
  }

  [[nodiscard]] std::string Text() const {
    std::string text(m_negative ? "-" : "");
    const auto whole = static_cast<std::size_t>(std::max(m_point, 1));
    const auto places = static_cast<std::size_t>(m_places);
    text.reserve(text.size() + whole + 1 + places);
    if (m_point <= 0) {
      text += '0';
    } else {
      AppendDigits(text, 0, whole);
    }
    if (places == 0) return text;
    text += '.';
    const std::size_t zeros = std::min(places, static_cast<std::size_t>(std::max(-m_point, 0)));
    text.append(zeros, '0');
    AppendDigits(text, static_cast<std::size_t>(std::max(m_point, 0)), places - zeros);
    return text;
  }

  [[nodiscard]] double Value() const {
    if (m_count == 0) return 0.0;
    std::array<char, 40> text{};
    char* end = std::copy_n(m_digits.data(), m_count, text.data());
    *end++ = 'e';
    end = std::to_chars(end, text.data() + text.size(), m_point - static_cast<int>(m_count)).ptr;
    double value = 0.0;
    const std::errc error = std::from_chars(text.data(), end, value).ec;
    if (error == std::errc::result_out_of_range || std::isinf(value)) value = std::numeric_limits<double>::max();
    return m_negative ? -value : value;
  }

 private:
  void ReadShortest(double value) {
    std::array<char, 32> text{};
    const char* const end =
        std::to_chars(text.data(), text.data() + text.size(), std::fabs(value), std::chars_format::scientific).ptr;
    const char* at = text.data();
    for (; at != end && *at != 'e'; ++at) {
      if (*at != '.') m_digits[m_count++] = *at;
    }
    ++at;
    if (*at == '+') ++at;
    std::from_chars(at, end, m_point);
    ++m_point;
    m_negative = std::signbit(value);
  }

  /// Keeps so many leading digits, rounding half away from zero.
  void Cut(std::int64_t keep) {
    if (keep >= static_cast<std::int64_t>(m_count)) return;
    const bool away = keep >= 0 && m_digits[static_cast<std::size_t>(keep)] >= '5';
    m_count = static_cast<std::size_t>(std::max<std::int64_t>(keep, 0));
    if (!away) return;
    while (m_count > 0 && m_digits[m_count - 1] == '9') --m_count;
    if (m_count > 0) {
      ++m_digits[m_count - 1];
      return;
    }
    m_digits[m_count++] = '1';
    ++m_point;
  }

  /// So many digits from a position on; behind the last one there are only zeros.
  void AppendDigits(std::string& text, std::size_t first, std::size_t count) const {
    const std::string_view rest = std::string_view(m_digits.data(), m_count).substr(std::min(first, m_count));
    const std::string_view present = rest.substr(0, count);
    text.append(present).append(count - present.size(), '0');
  }

  std::array<char, 20> m_digits{};
  std::size_t m_count = 0;
  int m_point = 0;
  std::int32_t m_places;
  bool m_negative = false;
};

}  // namespace

FixedDecimal::FixedDecimal(double value, std::int32_t places) {
  if (!std::isfinite(value)) return;
  if (const auto scaled = RoundScaled(value, places)) {
    WriteScaled(*scaled, places, std::signbit(value) && *scaled != 0);
    return;
  }
  m_long = RoundedDigits(value, places).Text();
}

void FixedDecimal::WriteScaled(std::int64_t scaled, std::int32_t places, bool negative) {
  const std::int64_t one = kIntegerPowersOfTen[static_cast<std::size_t>(places)];
  char* at = m_short.data();
  *at = '-';
  at = std::to_chars(at + (negative ? 1 : 0), m_short.data() + kShort, scaled / one).ptr;
  if (places > 0) {
    *at++ = '.';
    std::int64_t fraction = scaled % one;
    for (char* digit = at + places; digit != at; fraction /= 10) *--digit = static_cast<char>('0' + fraction % 10);
    at += places;
  }
  m_length = static_cast<std::size_t>(at - m_short.data());
}

double FixedDecimal::Round(double value, std::int32_t places) {
  if (!std::isfinite(value)) return value;
  // A quotient of two exact numbers is the double nearest to the text, unless the processor rounds it twice.
  if constexpr (FLT_EVAL_METHOD == 0) {
    if (const auto scaled = RoundScaled(value, places)) {
      const double rounded = static_cast<double>(*scaled) / kPowersOfTen[static_cast<std::size_t>(places)];
      return *scaled != 0 ? std::copysign(rounded, value) : 0.0;
    }
  }
  return RoundedDigits(value, places).Value();
}
