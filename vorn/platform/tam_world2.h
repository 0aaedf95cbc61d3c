#pragma once

#include <cmath>

/// A plane point. In a cross section most operations hold (distance from the centre line, height) in metres; those
/// that hold the height first say so.
struct TamWorld2 {
  double x = 0.0;  ///< first component; mostly the distance from the centre line in metres
  double y = 0.0;  ///< second component; mostly the height in metres

  /// Whether both components are equal, exactly.
  friend constexpr bool operator==(const TamWorld2& a, const TamWorld2& b) { return a.x == b.x && a.y == b.y; }
};

/// A length of at most this many metres is nothing.
inline constexpr double kTamTinyLength = 1e-6;
/// Points at most this many metres apart are one point.
inline constexpr double kTamTinyDistance = 1e-6;

/// Whether a length (or a difference of lengths), in metres, is no more than the tiny length.
[[nodiscard]] inline bool TamIsTinyLength(double length) { return std::abs(length) <= kTamTinyLength; }
/// Whether two points lie no farther apart than the tiny distance.
[[nodiscard]] inline bool TamIsTinyDistance(const TamWorld2& a, const TamWorld2& b) {
  return std::hypot(a.x - b.x, a.y - b.y) <= kTamTinyDistance;
}
