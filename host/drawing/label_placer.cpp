#include "host/drawing/label_placer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "host/drawing/drawing_style.h"

namespace vorn_host {

namespace {

using Shape = DrawnMark::Shape;

// Sizes on paper, in millimetres.
constexpr double kBesideLine = 1.3;    ///< from a line to the base line of a text along it
constexpr double kBesideEnds = 0.6;    ///< a segment is longer than its text by this
constexpr double kLeaderFrom = 3.6;    ///< a label this far from its place is led to it by a line
constexpr double kLeaderGap = 0.6;     ///< from a point to where the leader of its code begins
constexpr double kTouching = 0.8;      ///< the marks of nearer points touch
constexpr double kSamePoint = 0.01;    ///< nearer points lie on each other
constexpr double kMostCost = 30.0;     ///< of a leader, in millimetres of its length; beyond it the label is left out
constexpr double kCostAtPoint = 12.0;  ///< a leader is rather longer by this than it or its label at another's point
constexpr double kCostOnLines = 6.0;   ///< a leader is rather longer by this than on lines for a millimetre

/// Angle at which a text along a segment is read from left to right, in degrees.
double ReadingAngle(const PaperPlace& from, const PaperPlace& to) {
  double angle = std::atan2(to.y - from.y, to.x - from.x) * 180.0 / std::numbers::pi;
  if (angle > 90.0) angle -= 180.0;
  if (angle <= -90.0) angle += 180.0;
  return angle;
}

void Put(DrawnText& text, const LabelStand& stand) {
  text.alongMm = stand.right;
  text.liftMm = stand.lift;
  text.anchor = stand.anchor;
}

}  // namespace

void LabelPlacer::KeepLabelsOff(const DrawnLine& line) {
  for (std::size_t i = 1; i < line.places.size(); ++i) {
    m_grid.OccupyLine(m_scale.ToPaper(line.places[i - 1]), m_scale.ToPaper(line.places[i]));
  }
}

void LabelPlacer::SortPoints() {
  std::sort(m_points.begin(), m_points.end(), [](const auto& a, const auto& b) { return a.place.x < b.place.x; });
}

void LabelPlacer::AddCoveringLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form,
                                  int target) {
  AddPaperLine(kind, from, to, form, target);
  m_grid.OccupyLine(from, to);
}

void LabelPlacer::AddPaperLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form, int target) {
  m_drawing.lines.push_back({kind, {m_scale.ToSection(from), m_scale.ToSection(to)}, form, target});
}

void LabelPlacer::Cover(const LabelBox& box) {
  m_grid.Occupy(box);
  m_labels.Occupy(box);
}

bool LabelPlacer::AddText(const DrawnText& text) {
  const LabelBox box = BoxOf(text, m_scale);
  if (text.text.empty() || !m_grid.IsFree(box)) return false;
  Cover(box);
  m_drawing.texts.push_back(text);
  return true;
}

bool LabelPlacer::HasLengthFor(const std::string& label, double length) {
  return TextWidth(label, kLabelSizeMm) + kBesideEnds <= length;
}

bool LabelPlacer::AddAlong(DrawnText text, const PaperPlace& from, const PaperPlace& to, FirstTry first) {
  if (!HasLengthFor(text.text, Distance(from, to))) return false;
  text.place = m_scale.ToSection(Middle(from, to));
  text.angle = ReadingAngle(from, to);
  const double above = kBesideLine;
  const double below = -(kBesideLine + 0.75 * kLabelSizeMm);
  const bool isAboveFirst = first == FirstTry::Above;
  for (const double lift : {isAboveFirst ? above : below, isAboveFirst ? below : above}) {
    text.liftMm = lift;
    if (AddText(text)) return true;
  }
  return false;
}

/// The leader of a label; none where the label stands near enough to its place.
std::optional<LabelLeader> LabelPlacer::LeaderTo(const DrawnText& text, double footAbove) const {
  const LabelStand stand = {text.alongMm, text.liftMm, text.anchor};
  if (ReachOf(stand) < kLeaderFrom) return std::nullopt;
  const PaperPlace place = m_scale.ToPaper(text.place);
  const PaperPlace end = LeaderEnd(stand);
  const double foot = text.liftMm > 0.0 ? footAbove : 0.0;
  const LabelLeader whole = {{place.x, place.y + foot}, {place.x + end.x, place.y + end.y}};
  if (whole.Length() <= kLeaderGap) return std::nullopt;
  return LabelLeader{whole.At(kLeaderGap), whole.to};
}

/// How much of a leader lies on lines other than those that run through its own place, in millimetres.
double LabelPlacer::LengthOnLines(const LabelLeader& leader) const {
  constexpr double kOwnLines = 0.7;  // from where it begins
  return leader.Length() > kOwnLines ? m_grid.CoveredLength(leader.At(kOwnLines), leader.to) : 0.0;
}

LabelPlacer::PointRange LabelPlacer::PointsBetween(double left, double right) const {
  const auto isLeft = [](const MarkedPoint& point, double x) { return point.place.x < x; };
  const auto first = std::lower_bound(m_points.begin(), m_points.end(), left, isLeft);
  return {first, std::lower_bound(first, m_points.end(), right, isLeft)};
}

/// Whether a leader seems to lead to a point that is not its own.
/// @param own the place that it leads to, and @param apart how far from there other points count
bool LabelPlacer::RunsThroughPoint(const LabelLeader& leader, const PaperPlace& own, double apart) const {
  const double largest = StyleOf(Shape::Crossing).radiusMm;
  const auto [left, right] = std::minmax(leader.from.x, leader.to.x);
  const auto [first, last] = PointsBetween(left - largest, right + largest);
  const auto [bottom, top] = std::minmax(leader.from.y, leader.to.y);
  return std::any_of(first, last, [&, lowest = bottom - largest, highest = top + largest](const MarkedPoint& point) {
    const bool isBeside = point.place.y >= lowest && point.place.y <= highest;  // quick, where thousands are
    return isBeside && leader.DistanceTo(point.place) < point.radius && Distance(point.place, own) > apart;
  });
}

/// What a way to stand costs, in millimetres that the leader is rather longer; infinite where none would do.
double LabelPlacer::CostOf(const DrawnText& text, const std::optional<LabelLeader>& leader) const {
  double cost = IsAtAnotherPoint(text, kTouching) ? kCostAtPoint : 0.0;
  if (!leader) return cost;
  const PaperPlace own = m_scale.ToPaper(text.place);
  if (RunsThroughPoint(*leader, own, kTouching)) return std::numeric_limits<double>::infinity();
  if (RunsThroughPoint(*leader, own, kSamePoint)) cost += kCostAtPoint;
  return cost + kCostOnLines * LengthOnLines(*leader);
}

bool LabelPlacer::AddAt(DrawnText text, const std::vector<LabelStand>& stands) {
  return std::any_of(stands.begin(), stands.end(), [&](const LabelStand& stand) {
    Put(text, stand);
    return AddText(text);
  });
}

bool LabelPlacer::AddApart(DrawnText text, const std::vector<LabelStand>& stands, double apart) {
  return std::any_of(stands.begin(), stands.end(), [&](const LabelStand& stand) {
    Put(text, stand);
    return !IsAtAnotherPoint(text, apart) && AddText(text);
  });
}

/// Whether a level text is nearer than this to a point that is not its own.
bool LabelPlacer::IsAtAnotherPoint(const DrawnText& text, double apart) const {
  const LabelBox box = BoxOf(text, m_scale);
  const PaperPlace own = m_scale.ToPaper(text.place);
  const auto [first, last] = PointsBetween(box.corner.x - apart, box.corner.x + box.width + apart);
  return std::any_of(first, last, [&](const MarkedPoint& point) {
    const double above = point.place.y - box.corner.y;
    return above > -apart && above < box.height + apart && Distance(point.place, own) > kSamePoint;
  });
}

bool LabelPlacer::AddLed(const DrawnText& text, double footAbove) {
  const std::optional<LabelLeader> leader = LeaderTo(text, footAbove);
  if (!IsLeaderFree(leader) || !AddText(text)) return false;
  if (leader) AddLeader(*leader, text);
  return true;
}

bool LabelPlacer::IsLeaderFree(const std::optional<LabelLeader>& leader) const {
  return !leader || m_labels.IsLineFree(leader->from, leader->to);
}

bool LabelPlacer::AddUntouched(DrawnText text, const std::vector<LabelStand>& stands) {
  return AddApart(std::move(text), stands, kTouching);
}

bool LabelPlacer::AddLedNear(DrawnText text, const std::vector<LabelStand>& stands, double footAbove) {
  return std::any_of(stands.begin(), stands.end(), [&](const LabelStand& stand) {
    Put(text, stand);
    return AddLed(text, footAbove);
  });
}

bool LabelPlacer::AddLedFar(DrawnText text, double footAbove) {
  const LabelStand* best = nullptr;
  double leastCost = kMostCost;
  for (const LabelStand& stand : FarStands()) {
    if (ReachOf(stand) >= leastCost) break;
    Put(text, stand);
    if (!m_grid.IsFree(BoxOf(text, m_scale))) continue;
    const std::optional<LabelLeader> leader = LeaderTo(text, footAbove);
    if (!IsLeaderFree(leader)) continue;
    const double cost = ReachOf(stand) + CostOf(text, leader);
    if (cost >= leastCost) continue;
    best = &stand;
    leastCost = cost;
  }
  if (best == nullptr) return false;
  Put(text, *best);
  return AddLed(text, footAbove);
}

void LabelPlacer::AddLeader(const LabelLeader& leader, const DrawnText& text) {
  AddCoveringLine(text.kind, leader.from, leader.to, text.form, text.target);
  m_drawing.lines.back().leadsTo = text.place;
  m_labels.OccupyLine(leader.from, leader.to);
}

}  // namespace vorn_host
