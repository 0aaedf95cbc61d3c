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
  /// A set value; -1e-99 is unset.
  constexpr NurReal(double value) : m_value(value) {}  // NOLINT(google-explicit-constructor)

  /// The raw number; -1e-99 while unset.
  [[nodiscard]] constexpr double Value() const { return m_value; }
  /// Whether there is a value.
  [[nodiscard]] constexpr bool IsSet() const { return !KelIsShoki(m_value); }
  /// Takes the value away.
  constexpr void Unset() { m_value = kNurUnsetReal; }

  /// Whether both are the same value, or both unset.
  friend constexpr bool operator==(NurReal a, NurReal b) { return a.m_value == b.m_value; }

 private:
  double m_value = kNurUnsetReal;
};

/// Whether a real is unset.
[[nodiscard]] constexpr bool KelIsShoki(NurReal value) { return !value.IsSet(); }

/// A signed 32-bit integer with an unset state.
class NurLong {
 public:
  constexpr NurLong() = default;
  /// A set value; the smallest integer is unset.
  constexpr NurLong(std::int32_t value) : m_value(value) {}  // NOLINT(google-explicit-constructor)

  /// The raw number; the smallest integer while unset.
  [[nodiscard]] constexpr std::int32_t Value() const { return m_value; }
  /// Whether there is a value.
  [[nodiscard]] constexpr bool IsSet() const { return !KelIsShokiL(m_value); }
  /// Takes the value away.
  constexpr void Unset() { m_value = kNurUnsetLong; }

  /// Whether both are the same value, or both unset.
  friend constexpr bool operator==(NurLong a, NurLong b) { return a.m_value == b.m_value; }

 private:
  std::int32_t m_value = kNurUnsetLong;
};

/// Whether an integer is unset.
[[nodiscard]] constexpr bool KelIsShokiL(NurLong value) { return !value.IsSet(); }
