#pragma once

#include <cstdint>

/// The value that marks a real as unset.
inline constexpr double kNurUnsetReal = -1e-99;
/// The value that marks an integer as unset.
inline constexpr std::int32_t kNurUnsetLong = INT32_MIN;

/// Whether a real is unset: exactly -1e-99.
[[nodiscard]] constexpr bool KelIsShoki(double value) { return value == kNurUnsetReal; }
/// Whether an integer is unset: exactly -2147483648.
[[nodiscard]] constexpr bool KelIsShokiL(std::int32_t value) { return value == kNurUnsetLong; }

/// A real number (length in metres, station, height, ratio or percent) with an unset state.
///
/// There is no arithmetic and no implicit way back to `double`: what an unset operand means is decided where a
/// formula is written, with `Value()` for the raw number (-1e-99 while unset).
class NurReal {
 public:
  constexpr NurReal() = default;
  constexpr NurReal(double value) : m_value(value) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] constexpr double Value() const { return m_value; }
  [[nodiscard]] constexpr bool IsSet() const { return !KelIsShoki(m_value); }
  constexpr void Unset() { m_value = kNurUnsetReal; }

  friend constexpr bool operator==(NurReal a, NurReal b) { return a.m_value == b.m_value; }

 private:
  double m_value = kNurUnsetReal;
};

[[nodiscard]] constexpr bool KelIsShoki(NurReal value) { return !value.IsSet(); }

/// A signed 32-bit integer with an unset state.
class NurLong {
 public:
  constexpr NurLong() = default;
  constexpr NurLong(std::int32_t value) : m_value(value) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] constexpr std::int32_t Value() const { return m_value; }
  [[nodiscard]] constexpr bool IsSet() const { return !KelIsShokiL(m_value); }
  constexpr void Unset() { m_value = kNurUnsetLong; }

  friend constexpr bool operator==(NurLong a, NurLong b) { return a.m_value == b.m_value; }

 private:
  std::int32_t m_value = kNurUnsetLong;
};

[[nodiscard]] constexpr bool KelIsShokiL(NurLong value) { return !value.IsSet(); }
