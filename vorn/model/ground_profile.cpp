#include "vorn/model/ground_profile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "vorn/platform/line_geometry.h"
#include "vorn/platform/nur_real.h"

namespace {

/// Length of a run: ground segments in a box of the lowest level, boxes in one of the level above.
constexpr std::size_t kRun = 8;
/// Coordinates beyond it, in metres, are no positions.
constexpr double kLimit = 999999.9999;

bool IsPosition(const TamWorld2& point) {
  return !KelIsShoki(point.x) && !KelIsShoki(point.y) && std::abs(point.x) <= kLimit && std::abs(point.y) <= kLimit;
}

}  // namespace

void VornGroundProfile::Box::Include(const TamWorld2& point) {
  low = {std::min(low.x, point.x), std::min(low.y, point.y)};
  high = {std::max(high.x, point.x), std::max(high.y, point.y)};
}

void VornGroundProfile::Box::Include(const Box& box) {
  low = {std::min(low.x, box.low.x), std::min(low.y, box.low.y)};
  high = {std::max(high.x, box.high.x), std::max(high.y, box.high.y)};
}

/// A design segment, and which boxes it cannot cross anything in. A box is left out only for sure: the exact test of
/// the segments in it must not find a crossing that leaving it out would hide.
struct VornGroundProfile::DesignSegment {
  DesignSegment(const TamWorld2& from, const TamWorld2& to)
      : a(from),
        b(to),
        way{to.x - from.x, to.y - from.y},
        low{std::min(from.x, to.x), std::min(from.y, to.y)},
        high{std::max(from.x, to.x), std::max(from.y, to.y)},
        reach(std::sqrt(way.x * way.x + way.y * way.y) * kTamTinyLength) {}

  [[nodiscard]] bool Misses(const Box& box) const { return IsApartFrom(box) || IsBeside(box); }

  /// The extents keep apart, by a wider margin than the exact test's own: also where a processor carries more digits
  /// in one place than in another.
  [[nodiscard]] bool IsApartFrom(const Box& box) const {
    constexpr double kMargin = 2.0 * kTamTinyLength;
    return high.x + kMargin < box.low.x || box.high.x + kMargin < low.x || high.y + kMargin < box.low.y ||
           box.high.y + kMargin < low.y;
  }

  /// The whole box lies on one side of the line through the segment, farther from it than the exact test lets an end
  /// reach: twice as far, as rounding does not come to a hundredth of that reach while coordinates keep to the limit.
  /// Everything here is a distance times the segment's length.
  [[nodiscard]] bool IsBeside(const Box& box) const {
    const TamWorld2 half = {(box.high.x - box.low.x) / 2.0, (box.high.y - box.low.y) / 2.0};
    const TamWorld2 middle = {(box.low.x + box.high.x) / 2.0 - a.x, (box.low.y + box.high.y) / 2.0 - a.y};
    const double distance = std::abs(way.x * middle.y - way.y * middle.x);
    const double extent = std::abs(way.x) * half.y + std::abs(way.y) * half.x;
    return distance > extent + 2.0 * reach;
  }

  TamWorld2 a;
  TamWorld2 b;
  TamWorld2 way;
  TamWorld2 low;
  TamWorld2 high;
  double reach;
};

VornGroundProfile::VornGroundProfile(const VornExistingComposedPntArray& points) {
  m_points.reserve(static_cast<std::size_t>(points.GetSize()));
  for (const VornExistingComposedPnt& point : points) m_points.push_back(point.HeightAndDist());
  if (m_points.size() < 2) return;

  const std::size_t segments = m_points.size() - 1;
  std::vector<Box>& lowest = m_levels.emplace_back((segments + kRun - 1) / kRun);
  for (std::size_t i = 0; i < segments; ++i) {
    // A segment without a length, or without positions at both ends, crosses nothing.
    if (m_points[i] == m_points[i + 1] || !IsPosition(m_points[i]) || !IsPosition(m_points[i + 1])) continue;
    lowest[i / kRun].Include(m_points[i]);
    lowest[i / kRun].Include(m_points[i + 1]);
  }
  while (m_levels.back().size() > 1) {
    const std::vector<Box>& below = m_levels.back();
    std::vector<Box> level((below.size() + kRun - 1) / kRun);
    for (std::size_t i = 0; i < below.size(); ++i) level[i / kRun].Include(below[i]);
    m_levels.push_back(std::move(level));
  }
}

std::optional<TamWorld2> VornGroundProfile::FindCrossing(const TamWorld2& a, const TamWorld2& b) const {
  if (m_levels.empty() || a == b || !IsPosition(a) || !IsPosition(b)) return std::nullopt;
  return FindIn(m_levels.size() - 1, 0, DesignSegment(a, b));
}

std::optional<TamWorld2> VornGroundProfile::FindIn(std::size_t level, std::size_t index,
                                                   const DesignSegment& segment) const {
  if (segment.Misses(m_levels[level][index])) return std::nullopt;
  const std::size_t first = index * kRun;
  if (level == 0) return FindAmongSegments(first, segment);
  const std::size_t end = std::min(first + kRun, m_levels[level - 1].size());
  for (std::size_t i = first; i < end; ++i) {
    if (const auto crossing = FindIn(level - 1, i, segment)) return crossing;
  }
  return std::nullopt;
}

std::optional<TamWorld2> VornGroundProfile::FindAmongSegments(std::size_t first, const DesignSegment& segment) const {
  const std::size_t end = std::min(first + kRun, m_points.size() - 1);
  std::uint16_t flag = 0;
  TamWorld2 crossing;
  for (std::size_t i = first; i < end; ++i) {
    const TamWorld2& p = m_points[i];
    const TamWorld2& q = m_points[i + 1];
    if (NurGetCrossTenFrom2Lin(segment.a.x, segment.a.y, segment.b.x, segment.b.y, p.x, p.y, q.x, q.y, crossing.x,
                               crossing.y, flag, kLimit) != 0) {
      return crossing;
    }
  }
  return std::nullopt;
}
