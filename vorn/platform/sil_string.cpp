#include "vorn/platform/sil_string.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "vorn/platform/fixed_decimal.h"

namespace {

constexpr bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

/// Takes the characters of a number off the front of a text, one part after the other.
class NumberScanner {
 public:
  explicit NumberScanner(std::string_view text) : m_text(text) {
    m_at = std::min(m_text.find_first_not_of(" \t\n\v\f\r"), m_text.size());
    m_negative = Accept('-');
    if (!m_negative) Accept('+');
  }

  [[nodiscard]] bool IsNegative() const { return m_negative; }

  bool Accept(char byte) {
    const bool accepted = m_at < m_text.size() && m_text[m_at] == byte;
    if (accepted) ++m_at;
    return accepted;
  }

  std::string_view Digits() {
    const std::size_t first = m_at;
    while (m_at < m_text.size() && IsDigit(m_text[m_at])) ++m_at;
    return m_text.substr(first, m_at - first);
  }

  /// The exponent, 0 when there is none; an `e` without digits belongs to what follows the number.
  std::int32_t Exponent() {
    const std::size_t first = m_at;
    if (!Accept('e') && !Accept('E')) return 0;
    const std::size_t sign = m_at;
    if (!Accept('-')) Accept('+');
    if (Digits().empty()) {
      m_at = first;
      return 0;
    }
    return SilString::ToInteger(m_text.substr(sign));
  }

  [[nodiscard]] const char* Here() const { return m_text.data() + m_at; }

 private:
  std::string_view m_text;
  std::size_t m_at = 0;
  bool m_negative = false;
};

/// Whether a number that a double cannot hold is too large, rather than too small.
bool IsHuge(std::string_view whole, std::string_view fraction, std::int32_t exponent) {
  const std::size_t leading = whole.find_first_not_of('0');
  if (leading != std::string_view::npos) return static_cast<std::int64_t>(whole.size() - leading) + exponent > 0;
  const std::size_t zeros = std::min(fraction.find_first_not_of('0'), fraction.size());
  return exponent - static_cast<std::int64_t>(zeros) > 0;
}

}  // namespace

double SilString::ToDouble(std::string_view text) {
  NumberScanner scanner(text);
  const char* const first = scanner.Here();
  const std::string_view whole = scanner.Digits();
  const std::string_view fraction = scanner.Accept('.') ? scanner.Digits() : std::string_view();
  if (whole.empty() && fraction.empty()) return 0.0;
  const std::int32_t exponent = scanner.Exponent();

  double value = 0.0;
  const std::errc error = std::from_chars(first, scanner.Here(), value).ec;
  const bool outOfRange = error == std::errc::result_out_of_range;
  if (std::isinf(value) || (outOfRange && IsHuge(whole, fraction, exponent))) {
    value = std::numeric_limits<double>::max();
  } else if (outOfRange || value == 0.0) {
    return 0.0;
  }
  return scanner.IsNegative() ? -value : value;
}

std::int32_t SilString::ToInteger(std::string_view text) {
  NumberScanner scanner(text);
  constexpr std::int64_t kSmallest = std::numeric_limits<std::int32_t>::min();
  constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::int64_t magnitude = 0;
  for (const char digit : scanner.Digits()) magnitude = std::min(magnitude * 10 + (digit - '0'), -kSmallest);
  return static_cast<std::int32_t>(scanner.IsNegative() ? -magnitude : std::min(magnitude, kLargest));
}

CString SilString::StrDouble(double value, KelMrmFigure places) { return FixedDecimal(value, places).View(); }

CString SilString::StrSignedInteger(std::int32_t value) {
  std::array<char, 12> text{};
  char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return std::string_view(text.data(), static_cast<std::size_t>(end - text.data()));
}
