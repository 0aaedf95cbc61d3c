#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A real as fixed-point text, rounded half away from zero on the shortest decimal text that reads back as the value.
///
/// The text sits inside the object unless it is very long, so documents are written without a heap allocation for
/// each number. Never an exponent, never a negative zero; an infinity or NaN has no such text and gives none.
class FixedDecimal {
 public:
  FixedDecimal() = default;
  /// @param places digits after the point; a negative number rounds before the point, and no point is written
  FixedDecimal(double value, std::int32_t places);

  /// Valid as long as the object.
  [[nodiscard]] std::string_view View() const {
    return m_long.empty() ? std::string_view(m_short.data(), m_length) : std::string_view(m_long);
  }

  /// The value rounded by the same rule: the double nearest to the text, cut to the largest finite one.
  /// An infinity and NaN are given back as they are.
  [[nodiscard]] static double Round(double value, std::int32_t places);

 private:
  static constexpr std::size_t kShort = 32;

  void WriteScaled(std::int64_t scaled, std::int32_t places, bool negative);

  std::array<char, kShort> m_short{};
  std::size_t m_length = 0;
  std::string m_long;
};
