#include "host/editing/point_positions.h"

#include <cmath>
#include <vector>

#include "host/document/input_values.h"
#include "vorn/framework/numerical_precision.h"
#include "vorn/framework/schema.h"

namespace vorn_host {

namespace {

using DataType = VornComposedPnt::DataType;
using SlopeType = VornComposedPnt::SlopeType;

/// How an edition reads and writes input values.
class EditionReadings {
 public:
  EditionReadings() : m_ver2(VornSchema::Instance().IsVer2()) {
    const VornNumericalPrecision& precision = VornNumericalPrecision::GetInstance();
    m_dist = precision.GetDecimalPlaceDist();
    m_height = m_ver2 ? precision.GetDecimalPlaceDist() : precision.GetDecimalPlaceZ();
    m_percent = m_ver2 ? precision.GetDecimalPercent() : precision.GetDecimalPlaceSlant();
    m_rate = m_ver2 ? precision.GetDecimalRate() : precision.GetDecimalPlaceSlope();
  }

  [[nodiscard]] InputValues Of(const VornComposedPnt& point) const {
    return {point.GetReading(), point.GetX().Value(), point.GetY().Value()};
  }

  void Apply(const InputValues& values, VornComposedPnt& point) const {
    point.SetX(values.x);
    point.SetY(values.y);
    if (m_ver2) point.SetSlopeType(values.reading == Reading::Rate ? SlopeType::Rate : SlopeType::Percent);
    point.SetDataType(values.reading == Reading::Rate      ? DataType::Rate
                      : values.reading == Reading::Percent ? DataType::Percent
                                                           : DataType::WidthHeight);
  }

  /// The ways to write a point that leads from one place to another, the nearest to how it is written now first.
  [[nodiscard]] std::vector<InputValues> Candidates(const VornComposedPnt& point, const TamWorld2& from,
                                                    const TamWorld2& to) const {
    const double outward = OutwardWidth(point.GetLocation(), from, to);
    const double width = Rounded(outward, m_dist);
    const double rise = Rounded(to.y - from.y, m_height);
    std::vector<InputValues> candidates;
    const Reading own = point.GetReading();
    const auto addPercents = [&] {
      if (own == Reading::Percent) candidates.push_back({own, width, point.GetY().Value()});
      if (width != 0.0) {
        candidates.push_back({Reading::Percent, width, Rounded(100.0 * (to.y - from.y) / std::abs(width), m_percent)});
      }
    };
    const auto addRates = [&] {
      if (own == Reading::Rate) candidates.push_back({own, rise, point.GetY().Value()});
      if (rise != 0.0) candidates.push_back({Reading::Rate, rise, Rounded(outward / std::abs(rise), m_rate)});
    };
    if (own == Reading::Percent) addPercents();
    if (own == Reading::Rate) addRates();
    if (!m_ver2) {
      candidates.push_back({Reading::WidthHeight, width, rise});
    } else {
      addPercents();
      addRates();
      if (candidates.empty()) candidates.push_back({Reading::Percent, 0.0, 0.0});
    }
    return candidates;
  }

 private:
  bool m_ver2;
  KelMrmFigure m_dist = 0;
  KelMrmFigure m_height = 0;
  KelMrmFigure m_percent = 0;
  KelMrmFigure m_rate = 0;
};

/// A point that keeps its grade or ratio may come to lie this far off (metres): a designed 1:1.5 stays one, also where
/// a crossing before it was rounded to the decimals of the document.
constexpr double kKeptReading = 2e-4;

/// The first of the ways that leads near enough, else the one that leads nearest.
InputValues BestOf(const std::vector<InputValues>& candidates, VornLocation side, const TamWorld2& from,
                   const TamWorld2& to) {
  InputValues best = candidates.front();
  double least = Distance(Place(best, side, from), to);
  if (best.reading != Reading::WidthHeight && least <= kKeptReading) return best;
  for (const InputValues& candidate : candidates) {
    if (least <= kChangedPosition) break;
    const double distance = Distance(Place(candidate, side, from), to);
    if (distance >= least) continue;
    best = candidate;
    least = distance;
  }
  return best;
}

/// A centre point that begins the form holds its distance itself, with the decimals of the document.
bool ExpressStart(VornComposedPnt& start) {
  if (!start.IsCenter() || !start.GetCLDist().IsSet()) return false;
  const KelMrmFigure places = VornNumericalPrecision::GetInstance().GetDecimalPlaceDist();
  if (Rounded(start.GetX().Value(), places) == Rounded(start.GetCLDist().Value(), places)) return false;
  start.SetX(start.GetCLDist());
  return true;
}

}  // namespace

int ExpressPositions(VornBuildForm& form) {
  Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  if (points.IsEmpty()) return 0;
  const EditionReadings readings;
  int changed = ExpressStart(points[0]) ? 1 : 0;
  const TamWorld2 start = points[0].Pos();
  TamWorld2 before = start;   // where the point before is meant to lie
  TamWorld2 reached = start;  // and where its values lead
  for (int i = 1; i < points.GetSize(); ++i) {
    VornComposedPnt& point = points[i];
    const VornLocation side = point.GetLocation();
    if (OriginOf(points, i) == 0) before = reached = start;
    const TamWorld2 wanted = point.Pos();
    InputValues values = readings.Of(point);
    if (Distance(Place(values, side, before), wanted) > kChangedPosition) {
      values = BestOf(readings.Candidates(point, reached, wanted), side, reached, wanted);
      readings.Apply(values, point);
      ++changed;
    }
    before = wanted;
    reached = Place(values, side, reached);
  }
  return changed;
}

}  // namespace vorn_host
