#pragma once

#include <cmath>

/// Stations closer than this, in metres, are one station.
inline constexpr double kSameStation = 1e-6;
/// What lies nearer to the centre line than this, in metres, lies on it.
inline constexpr double kAtCenterLine = 1e-6;

/// Whether two stations, in metres, are one.
[[nodiscard]] inline bool IsSameStation(double a, double b) { return std::abs(a - b) < kSameStation; }
