#include "vorn/platform/line_geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "vorn/platform/nur_real.h"

namespace {

/// How many roundings of the coordinates the directions of two segments have to part by over the shorter of them: what
/// parts them by less is rounding, and their crossing would lie anywhere.
constexpr double kParallel = 64.0 * std::numeric_limits<double>::epsilon();

TamWorld2 operator-(const TamWorld2& a, const TamWorld2& b) { return {a.x - b.x, a.y - b.y}; }

double Cross(const TamWorld2& a, const TamWorld2& b) { return a.x * b.y - a.y * b.x; }

double Length(const TamWorld2& a) { return std::sqrt(a.x * a.x + a.y * a.y); }

/// Whether the ranges from a1 to a2 and from b1 to b2 keep apart. First of all tests. A search over many segments that
/// leaves out whole groups of them needs a wider margin than this.
bool AreApart(double a1, double a2, double b1, double b2) {
  return std::max(a1, a2) + kTamTinyLength < std::min(b1, b2) || std::max(b1, b2) + kTamTinyLength < std::min(a1, a2);
}

/// A place along a segment, 0 at its origin and 1 at its end, cut to that range.
struct Place {
  bool within = false;
  bool atEnd = false;
  double at = 0.0;
};

Place PlaceOn(double at, double length) {
  const double slack = kTamTinyLength / length;
  return {at >= -slack && at <= 1.0 + slack, at <= slack || at >= 1.0 - slack, std::clamp(at, 0.0, 1.0)};
}

}  // namespace

bool TamyIntersectDotLine(TamWorld2& result, const TamWorld2& point, const TamyLine& segment) {
  const TamWorld2 way = point - segment.origin;
  const TamWorld2& direction = segment.direction;
  const double squaredLength = direction.x * direction.x + direction.y * direction.y;
  const double along = way.x * direction.x + way.y * direction.y;
  const double at = squaredLength > 0.0 ? std::clamp(along / squaredLength, 0.0, 1.0) : 0.0;
  result = {segment.origin.x + at * direction.x, segment.origin.y + at * direction.y};
  return TamIsTinyDistance(point, result);
}

int NurGetCrossTenFrom2Lin(const double& x1, const double& y1, const double& x2, const double& y2, const double& x3,
                           const double& y3, const double& x4, const double& y4, double& x, double& y,
                           std::uint16_t& flag, double limit) {
  flag = 0;
  if (AreApart(x1, x2, x3, x4) || AreApart(y1, y2, y3, y4)) return 0;
  double largest = 0.0;
  for (const double coordinate : {x1, y1, x2, y2, x3, y3, x4, y4}) {
    if (KelIsShoki(coordinate) || !(std::abs(coordinate) <= limit)) return 0;
    largest = std::max(largest, std::abs(coordinate));
  }

  const TamWorld2 end = {x2, y2};
  const TamWorld2 first = end - TamWorld2{x1, y1};
  const TamWorld2 second = TamWorld2{x4, y4} - TamWorld2{x3, y3};
  const TamWorld2 between = TamWorld2{x3, y3} - TamWorld2{x1, y1};
  const double parting = Cross(first, second);
  const double firstLength = Length(first);
  const double secondLength = Length(second);
  if (std::abs(parting) <= kParallel * largest * std::max(firstLength, secondLength)) return 0;

  const Place onFirst = PlaceOn(Cross(between, second) / parting, firstLength);
  const Place onSecond = PlaceOn(Cross(between, first) / parting, secondLength);
  if (!onFirst.within || !onSecond.within) return 0;
  // The end itself and not a sum that may miss it by a rounding.
  x = onFirst.at == 1.0 ? end.x : x1 + onFirst.at * first.x;
  y = onFirst.at == 1.0 ? end.y : y1 + onFirst.at * first.y;
  if (onFirst.atEnd) flag |= kNurCrossAtEndOfFirst;
  if (onSecond.atEnd) flag |= kNurCrossAtEndOfSecond;
  return 1;
}
