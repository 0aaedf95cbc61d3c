#pragma once

#include <string>
#include <string_view>

namespace vorn_host {

/// Lengths and offsets (metres) that differ by less than this are the same: half of what a document can hold.
inline constexpr double kSamePlace = 5e-5;

/// A number with as many decimals as it needs, between `least` and `most`: 1.5 with 1 to 3 gives "1.5", 2 gives "2.0",
/// 1.23456 gives "1.235". Half rounds away from zero; never an exponent, never "-0.0". What is no number gives "".
[[nodiscard]] std::string ValueText(double value, int least, int most);

/// A scale as people write it: "1:200".
/// @param scale how many times smaller a drawing is
[[nodiscard]] std::string ScaleText(double scale);

/// A station as the distance from the number before it: "No.6+0.0000" of 120 m where a number stands every 20 m.
/// @param station metres, not negative
/// @param interval metres from one number to the next, greater than 0
[[nodiscard]] std::string NumberedStation(double station, std::string_view prefix, double interval);

}  // namespace vorn_host
