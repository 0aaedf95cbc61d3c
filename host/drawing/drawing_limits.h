#pragma once

/// Which numbers a user may tell for a drawing.
namespace vorn_host {

/// Height of a centre line, up and down, in metres: farther from the datum than any road, and still exact to the last
/// place of a document.
inline constexpr double kLargestHeight = 99999.9999;
/// 1:1.
inline constexpr double kLargestScale = 1.0;
/// 1:this.
inline constexpr double kSmallestScale = 1e6;
/// How many times heights are drawn larger than widths, at least.
inline constexpr double kLeastExaggeration = 0.1;
/// How many times heights are drawn larger than widths, at most.
inline constexpr double kMostExaggeration = 100.0;

}  // namespace vorn_host
