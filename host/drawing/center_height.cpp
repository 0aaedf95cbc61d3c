#include "host/drawing/center_height.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "host/document/input_values.h"

namespace vorn_host {

namespace {

/// Crossings tell one height of the centre line when they differ by no more than this, in metres; and what lies this
/// near to the ground lies on it.
constexpr double kOnGround = 0.005;
/// Ends of slopes that nobody marked as crossings tell a height only on ground that differs by as much, in metres: on
/// level ground the two sides of any symmetric section agree, however high it stands.
constexpr double kTellingGround = 0.02;

/// A place of the design on a side that has to lie on the ground, and the height of the centre line that it tells.
struct GroundEnd {
  bool isMarked = false;
  bool isLeft = false;
  double ground = 0.0;  ///< elevation
  double centerHeight = 0.0;
};

/// The outermost crossing of a side, else its last point; null for a side without points.
const ViewPoint* EndOf(const ViewForm& form, std::string_view side) {
  const ViewPoint* end = nullptr;
  for (const ViewPoint& point : form.points) {
    if (point.side == side && point.exists && (end == nullptr || !end->isCrossing || point.isCrossing)) end = &point;
  }
  return end;
}

/// Where the design surfaces end: at the outermost crossing, else at the foot or the top of the outermost slope.
std::vector<GroundEnd> GroundEnds(const SectionView& view) {
  std::vector<GroundEnd> ends;
  for (const ViewForm& form : view.forms) {
    if (form.role != FormRole::DesignSurface) continue;
    for (const char* side : {"Left", "Right"}) {
      const ViewPoint* end = EndOf(form, side);
      if (end == nullptr || (!end->isCrossing && end->part != SectionPart::Slope)) continue;
      const std::optional<double> ground = GroundHeightAt(view.grounds.front(), end->place.offset);
      if (!ground) continue;
      ends.push_back({end->isCrossing, side == std::string_view("Left"), *ground, *ground - end->place.height});
    }
  }
  return ends;
}

std::pair<double, double> MinMaxOf(const std::vector<GroundEnd>& ends, double GroundEnd::*value) {
  const auto [least, most] = std::minmax_element(
      ends.begin(), ends.end(), [&](const GroundEnd& a, const GroundEnd& b) { return a.*value < b.*value; });
  return {(*least).*value, (*most).*value};
}

double SpreadOf(const std::vector<GroundEnd>& ends, double GroundEnd::*value) {
  const auto [least, most] = MinMaxOf(ends, value);
  return most - least;
}

}  // namespace

std::optional<double> HeightFromCrossings(const SectionView& view) {
  if (view.grounds.empty()) return std::nullopt;
  std::vector<GroundEnd> ends = GroundEnds(view);
  const auto hasBothSides = [](const std::vector<GroundEnd>& of, bool markedOnly) {
    const auto has = [&](bool left) {
      return std::any_of(of.begin(), of.end(),
                         [&](const GroundEnd& end) { return end.isLeft == left && (end.isMarked || !markedOnly); });
    };
    return has(true) && has(false);
  };
  if (!hasBothSides(ends, false)) return std::nullopt;
  if (hasBothSides(ends, true)) {
    std::erase_if(ends, [](const GroundEnd& end) { return !end.isMarked; });
  } else if (SpreadOf(ends, &GroundEnd::ground) < kTellingGround) {
    return std::nullopt;
  }
  if (SpreadOf(ends, &GroundEnd::centerHeight) > kOnGround) return std::nullopt;
  const auto [least, most] = MinMaxOf(ends, &GroundEnd::centerHeight);
  return Rounded((least + most) / 2.0, 3);
}

void MarkCrossings(SectionView& view) {
  if (view.grounds.empty()) return;
  for (ViewForm& form : view.forms) {
    if (form.role != FormRole::DesignSurface) continue;
    for (const char* side : {"Left", "Right"}) {
      const ViewPoint* end = EndOf(form, side);
      if (end == nullptr || end->isCrossing) continue;
      const std::optional<double> ground = GroundHeightAt(view.grounds.front(), end->place.offset);
      if (!ground || std::abs(*ground - end->place.height) > kOnGround) continue;
      form.points[static_cast<std::size_t>(end - form.points.data())].isCrossing = true;
    }
  }
}

}  // namespace vorn_host
