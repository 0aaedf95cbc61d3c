#pragma once

#include <cstdint>

#include "vorn/platform/tam_world2.h"

/// A line segment: where it begins, and the way from there to its end.
struct TamyLine {
  TamWorld2 origin;     ///< where it begins
  TamWorld2 direction;  ///< the way to its end
};

/// Whether a point lies on a segment, end points included, within the tiny distance.
/// @param result receives the nearest point of the segment, in either case
[[nodiscard]] bool TamyIntersectDotLine(TamWorld2& result, const TamWorld2& point, const TamyLine& segment);

/// Bits that tell about a crossing: whether it is an end, within the tiny length, of the first or the second segment.
/// The crossing is an end of the first segment.
inline constexpr std::uint16_t kNurCrossAtEndOfFirst = 0x1;
/// The crossing is an end of the second segment.
inline constexpr std::uint16_t kNurCrossAtEndOfSecond = 0x2;

/// Crossing of the segment 1-2 with the segment 3-4. Touching ends count, and so does an end that stops short of the
/// crossing by no more than the tiny length, measured along its own segment. Segments that are parallel or coincident,
/// up to the rounding of their coordinates, do not cross, nor do segments without a length.
///
/// @param x,y   the crossing, on the first segment; untouched when there is none
/// @param flag  `kNurCrossAtEndOf...`; 0 when there is no crossing
/// @param limit coordinates beyond it in magnitude are refused, and so are unset ones and what is no number
/// @return non-zero when the segments cross
int NurGetCrossTenFrom2Lin(const double& x1, const double& y1, const double& x2, const double& y2, const double& x3,
                           const double& y3, const double& x4, const double& y4, double& x, double& y,
                           std::uint16_t& flag, double limit);
