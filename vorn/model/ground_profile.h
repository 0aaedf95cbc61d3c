#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "vorn/model/existing_build_form.h"
#include "vorn/platform/tam_world2.h"

/// The existing ground of a cross section, prepared for finding where design segments cross it. The ground may hold
/// thousands of points (laser scans), run vertically or backwards and repeat points.
///
/// Built in a time that is linear in the ground points. Finding a crossing looks at the ground near the design segment,
/// which is all of it only where the two run along each other. Positions are (height, distance from the centre line)
/// in metres.
class VornGroundProfile {
 public:
  /// Prepares the ground of these points.
  explicit VornGroundProfile(const VornExistingComposedPntArray& points);

  /// Where the segment from a to b crosses the ground, on the earliest ground segment in the order of the points that
  /// `NurGetCrossTenFrom2Lin` finds crossed; nothing when there is none.
  [[nodiscard]] std::optional<TamWorld2> FindCrossing(const TamWorld2& a, const TamWorld2& b) const;

 private:
  /// The extent of a run of consecutive ground segments.
  struct Box {
    TamWorld2 low = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    TamWorld2 high = {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void Include(const TamWorld2& point);
    void Include(const Box& box);
  };
  struct DesignSegment;

  [[nodiscard]] std::optional<TamWorld2> FindIn(std::size_t level, std::size_t index,
                                                const DesignSegment& segment) const;
  [[nodiscard]] std::optional<TamWorld2> FindAmongSegments(std::size_t first, const DesignSegment& segment) const;

  std::vector<TamWorld2> m_points;
  /// A box for each run of segments, and on every further level one for each run of boxes below, up to a single box.
  std::vector<std::vector<Box>> m_levels;
};
