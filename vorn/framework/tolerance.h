#pragma once

/// Stations closer than this, in metres, are one station.
inline constexpr double kSameStation = 1e-6;
