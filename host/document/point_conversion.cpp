#include "host/document/point_conversion.h"

#include <cmath>
#include <vector>

#include "host/document/input_values.h"
#include "vorn/platform/tam_world2.h"

namespace vorn_host {

namespace {

using DataType = VornComposedPnt::DataType;
using SlopeType = VornComposedPnt::SlopeType;

// The decimal places of edition 2.0.
constexpr KelMrmFigure kPlacesOfX = 4;
constexpr KelMrmFigure kPlacesOfPercent = 3;
constexpr KelMrmFigure kPlacesOfRate = 1;

/// A point that keeps its own reading stays as it was designed when that puts it this near (metres).
constexpr double kNearEnough = 1e-4;

/// A width and its grade; without a width, a height and its ratio.
InputValues FromPositions(VornLocation side, const TamWorld2& from, const TamWorld2& to) {
  const double outward = OutwardWidth(side, from, to);
  const double width = Rounded(outward, kPlacesOfX);
  if (width != 0.0) {
    return {Reading::Percent, width, Rounded(100.0 * (to.y - from.y) / std::abs(width), kPlacesOfPercent)};
  }
  const double rise = Rounded(to.y - from.y, kPlacesOfX);
  return {Reading::Rate, rise, rise == 0.0 ? 0.0 : Rounded(outward / std::abs(rise), kPlacesOfRate)};
}

/// The point's own percent or ratio, in the decimals of the edition.
InputValues AsItStands(const VornComposedPnt& point) {
  const bool rate = point.GetDataType() == DataType::Rate;
  return {rate ? Reading::Rate : Reading::Percent, Rounded(point.GetX().Value(), kPlacesOfX),
          Rounded(point.GetY().Value(), rate ? kPlacesOfRate : kPlacesOfPercent)};
}

InputValues NearestReading(const VornComposedPnt& point, const TamWorld2& from, const TamWorld2& to) {
  const VornLocation side = point.GetLocation();
  if (point.GetDataType() == DataType::Percent || point.GetDataType() == DataType::Rate) {
    const InputValues own = AsItStands(point);
    if (Distance(Place(own, side, from), to) <= kNearEnough) return own;
  }
  return FromPositions(side, from, to);
}

/// A value that was not set stays so where it may: it counts as zero.
NurReal KeepUnset(const NurReal& former, double value) {
  return !former.IsSet() && value == 0.0 ? former : NurReal(value);
}

bool HasValues(const VornComposedPnt& point) { return point.GetX().IsSet() || point.GetY().IsSet(); }

/// Gives a point other input values. Whether they, or how they are read, were others before.
bool SetValues(const InputValues& values, VornComposedPnt& point) {
  const NurReal x = KeepUnset(point.GetX(), values.x);
  const NurReal y = KeepUnset(point.GetY(), values.y);
  const bool rate = values.reading == Reading::Rate;
  const DataType dataType = rate ? DataType::Rate : DataType::Percent;
  const bool isNew = !(point.GetX() == x && point.GetY() == y && point.GetDataType() == dataType);
  point.SetX(x);
  point.SetY(y);
  point.SetSlopeType(rate ? SlopeType::Rate : SlopeType::Percent);
  point.SetDataType(dataType);
  return isNew;
}

/// Where a centre point that begins a form comes to lie: its values stay as they are, and written with the decimals of
/// the edition, they place what follows.
TamWorld2 PlaceOfCenter(const VornComposedPnt& start) {
  return {Rounded(start.GetX().Value(), kPlacesOfX), Rounded(start.GetY().Value(), kPlacesOfPercent)};
}

/// The positions of all points by their later-edition reading. A start point that is no centre point is placed from
/// the origin: only what lies between the points counts.
std::vector<TamWorld2> PositionsBefore(Vorn_ComposedPntArray& points) {
  std::vector<TamWorld2> positions;
  positions.reserve(static_cast<std::size_t>(points.GetSize()));
  VornComposedPnt origin;
  origin.SetCLDist(0.0);
  origin.SetGh(0.0);
  for (int i = 0; i < points.GetSize(); ++i) {
    VornComposedPnt point = points[i];
    if (i == 0 && point.IsCenter()) {
      point.RegulateCenter(NurReal(0.0));
    } else {
      VornComposedPnt from = origin;
      if (i > 0) {
        const TamWorld2& place = positions[static_cast<std::size_t>(OriginOf(points, i))];
        from.SetCLDist(place.x);
        from.SetGh(place.y);
      }
      point.Regulate(from);
    }
    positions.push_back(point.Pos());
  }
  return positions;
}

}  // namespace

void PointDisplacement::Note(double distance, int index) {
  constexpr double kFar = 0.001;
  if (distance > kFar) ++farPoints;
  if (distance <= largest) return;
  largest = distance;
  largestAt = index;
}

PointDisplacement ConvertPointsTo20(VornBuildForm& form) {
  Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  const std::vector<TamWorld2> wanted = PositionsBefore(points);
  std::vector<TamWorld2> reached = wanted;
  PointDisplacement displacement;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    VornComposedPnt& point = points[static_cast<int>(i)];
    const int origin = OriginOf(points, static_cast<int>(i));
    const TamWorld2 from = origin < 0 ? TamWorld2{0.0, 0.0} : reached[static_cast<std::size_t>(origin)];
    if (point.IsCenter()) {
      if (i == 0) {
        reached[i] = PlaceOfCenter(point);
        displacement.Note(Distance(reached[i], wanted[i]), 0);
      }
      continue;
    }
    if (!HasValues(point)) {
      point.SetSlopeType(SlopeType::Percent);
      continue;
    }
    const InputValues values = NearestReading(point, from, wanted[i]);
    if (SetValues(values, point)) ++displacement.convertedPoints;
    reached[i] = Place(values, point.GetLocation(), from);
    displacement.Note(Distance(reached[i], wanted[i]), static_cast<int>(i));
  }
  return displacement;
}

void ConvertPointsFrom20(VornBuildForm& form) {
  for (VornComposedPnt& point : form.GetComposedPntArray()) {
    if (point.IsCenter()) {
      point.SetDataType(DataType::WidthHeight);
    } else {
      point.SetDataType(point.IsSlope() ? DataType::Rate : DataType::Percent);
    }
  }
}

}  // namespace vorn_host
