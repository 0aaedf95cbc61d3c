// What a cross section consists of on paper, and where its labels find room.

#include "host/drawing/section_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/drawing_style.h"
#include "host/drawing/label_stand.h"
#include "host/drawing/paper_profile.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

using Anchor = DrawnText::Anchor;
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
constexpr double kHatchEvery = 12.0;   ///< from one group of hatch ticks to the next
constexpr double kHatchStep = 1.2;     ///< from tick to tick in a group
constexpr double kHatchTick = 2.2;     ///< how far a tick reaches down and to the side
constexpr int kHatchTicks = 3;
constexpr double kMostHatchGroups = 300.0;
constexpr double kCenterLineOver = 7.0;  ///< how far the centre line goes beyond the section
constexpr double kDownward = -90.0;      ///< degrees: the mark at a height stands on its tip
constexpr double kTriangle = 2.6;        ///< height of the mark at a height
constexpr double kFirstTier = 9.0;       ///< from the section to the first dimension line
constexpr double kNextTier = 1.5;        ///< from one try to the next
constexpr int kMostTiers = 40;
constexpr double kShortDimension = 7.0;  ///< arrows of a shorter one stand outside
constexpr double kOutsideArrow = 4.0;
constexpr double kBesideDimension = 0.9;  ///< from a dimension line to the base line of its value
constexpr double kExtensionGap = 1.0;
constexpr double kExtensionOver = 1.2;
/// Beyond the room of the section itself, for what is written around it.
constexpr double kRoomForLabels = 120.0;

/// Angle at which a text along a segment is read from left to right, in degrees.
double ReadingAngle(const PaperPlace& from, const PaperPlace& to) {
  double angle = std::atan2(to.y - from.y, to.x - from.x) * 180.0 / std::numbers::pi;
  if (angle > 90.0) angle -= 180.0;
  if (angle <= -90.0) angle += 180.0;
  return angle;
}

PaperPlace Middle(const PaperPlace& a, const PaperPlace& b) { return {(a.x + b.x) / 2.0, (a.y + b.y) / 2.0}; }

double Distance(const PaperPlace& a, const PaperPlace& b) { return std::hypot(b.x - a.x, b.y - a.y); }

/// The part of a line between two offsets.
std::vector<SectionPlace> Clipped(const std::vector<SectionPlace>& line, const SectionWindow& window) {
  std::vector<SectionPlace> clipped;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const SectionPlace& from = line[i - 1];
    const SectionPlace& to = line[i];
    const auto at = [&](double offset) -> SectionPlace {
      const double share = (offset - from.offset) / (to.offset - from.offset);
      return {offset, from.height + (to.height - from.height) * share};
    };
    const auto cut = [&](const SectionPlace& place) {
      return place.offset < window.left ? at(window.left) : place.offset > window.right ? at(window.right) : place;
    };
    if (std::max(from.offset, to.offset) < window.left || std::min(from.offset, to.offset) > window.right) continue;
    const SectionPlace begin = cut(from);
    if (clipped.empty() || !(clipped.back() == begin)) clipped.push_back(begin);
    clipped.push_back(cut(to));
  }
  return clipped;
}

std::string SignedHeight(double height, bool isElevation) {
  const std::string text = ValueText(height, 3, 3);
  return isElevation || text.front() == '-' ? text : (text == "0.000" ? "±" : "+") + text;
}

/// The section itself, without any labels.
PaperBox ExtentOf(const SectionView& view, const SectionWindow& window, const PaperScale& scale) {
  PaperBox extent;
  for (const ViewForm& form : view.forms) {
    for (const ViewPoint& point : form.points) {
      if (point.exists) extent.Include(scale.ToPaper(point.place));
    }
  }
  for (const ViewGround& ground : view.grounds) {
    for (const SectionPlace& place : Clipped(ground.line, window)) extent.Include(scale.ToPaper(place));
  }
  if (extent.isEmpty) extent.Include(scale.ToPaper({0.0, view.centerHeight.value_or(0.0)}));
  extent.Include({scale.ToPaper({window.left, 0.0}).x, extent.bottom});
  extent.Include({scale.ToPaper({window.right, 0.0}).x, extent.top});
  return extent;
}

/// Where the centre line ends below and above a section.
std::pair<PaperPlace, PaperPlace> CenterLineOf(const PaperBox& extent, const PaperScale& scale) {
  const double x = scale.ToPaper({0.0, 0.0}).x;
  return {{x, extent.bottom - kCenterLineOver}, {x, extent.top + kCenterLineOver}};
}

class Layout {
 public:
  Layout(const SectionView& view, const SectionWindow& window, const PaperScale& scale, SectionDrawing& drawing)
      : m_view(view),
        m_window(window),
        m_scale(scale),
        m_drawing(drawing),
        m_extent(ExtentOf(view, window, scale)),
        m_grid(Room()),
        m_labels(Room()) {}

  PaperBox Run() {
    AddGrounds();
    for (std::size_t i = 0; i < m_view.forms.size(); ++i) AddForm(static_cast<int>(i));
    AddCenterLine();
    for (const DrawnLine& line : m_drawing.lines) Occupy(line);
    AddMarks();
    AddHeightMarks();
    AddWidths();
    AddGrades();
    AddHeightTexts();
    AddCodes(FormRole::DesignSurface);
    AddCodes(FormRole::Other);
    AddLengths();
    AddGroundNames();
    AddCodes(FormRole::Layer);
    AddLedCodes();
    AddLedLengths();
    return Room(m_drawing);
  }

 private:
  const ViewForm& Form(int index) const { return m_view.forms[static_cast<std::size_t>(index)]; }
  const ViewPoint& Point(int form, int point) const { return Form(form).points[static_cast<std::size_t>(point)]; }
  [[nodiscard]] PaperPlace OnPaper(const ViewPoint& point) const { return m_scale.ToPaper(point.place); }

  /// A place in whole micrometres: what differs by less is the same place, computed in another way.
  using PlaceKey = std::array<long long, 2>;
  static PlaceKey KeyOf(const SectionPlace& place) {
    return {std::llround(place.offset * 1e6), std::llround(place.height * 1e6)};
  }

  /// A point with its mark.
  struct MarkedPoint {
    PaperPlace place;
    double radius = 0.0;
  };

  // --- room ------------------------------------------------------------------------------------------------------

  [[nodiscard]] PaperBox Room() const { return m_extent.Widened(kRoomForLabels); }

  [[nodiscard]] PaperBox Room(const SectionDrawing& drawing) const {
    PaperBox room = m_extent;
    for (const DrawnLine& line : drawing.lines) {
      for (const SectionPlace& place : line.places) room.Include(m_scale.ToPaper(place));
    }
    for (const DrawnText& text : drawing.texts) {
      const LabelBox box = BoxOf(text, m_scale);
      for (const double along : {0.0, box.width}) {
        for (const double across : {0.0, box.height}) room.Include(box.At(along, across));
      }
    }
    return room;
  }

  void Occupy(const DrawnLine& line) {
    for (std::size_t i = 1; i < line.places.size(); ++i) {
      m_grid.OccupyLine(m_scale.ToPaper(line.places[i - 1]), m_scale.ToPaper(line.places[i]));
    }
  }

  void AddLine(DrawingKind kind, std::vector<SectionPlace> places, int form = -1, int target = -1) {
    m_drawing.lines.push_back({kind, std::move(places), form, target});
  }

  /// A line that labels keep clear of.
  void AddCoveringLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form, int target) {
    AddPaperLine(kind, from, to, form, target);
    m_grid.OccupyLine(from, to);
  }

  void AddPaperLine(DrawingKind kind, const PaperPlace& from, const PaperPlace& to, int form = -1, int target = -1) {
    AddLine(kind, {m_scale.ToSection(from), m_scale.ToSection(to)}, form, target);
  }

  /// The room of a label.
  void Cover(const LabelBox& box) {
    m_grid.Occupy(box);
    m_labels.Occupy(box);
  }

  /// Adds a text where it finds room; false when it does not.
  bool AddText(const DrawnText& text) {
    const LabelBox box = BoxOf(text, m_scale);
    if (text.text.empty() || !m_grid.IsFree(box)) return false;
    Cover(box);
    m_drawing.texts.push_back(text);
    return true;
  }

  // --- lines -----------------------------------------------------------------------------------------------------

  void AddForm(int index) {
    const ViewForm& form = Form(index);
    for (const std::vector<int>& line : form.lines) {
      DrawnLine piece;
      for (std::size_t i = 1; i < line.size(); ++i) {
        const DrawingKind kind = SegmentKind(form, line[i - 1], line[i]);
        if (piece.places.empty() || piece.kind != kind) {
          if (!piece.places.empty()) m_drawing.lines.push_back(piece);
          piece = {kind, {Point(index, line[i - 1]).place}, index, -1};
        }
        piece.places.push_back(Point(index, line[i]).place);
      }
      if (!piece.places.empty()) m_drawing.lines.push_back(std::move(piece));
    }
  }

  void AddGrounds() {
    for (const ViewGround& ground : m_view.grounds) {
      std::vector<SectionPlace> line = Clipped(ground.line, m_window);
      if (line.size() < 2) continue;
      AddHatch(line);
      AddLine(DrawingKind::Ground, std::move(line));
    }
  }

  /// Groups of slanted ticks at regular distances along the ground. They turn with it, so that they stand in the earth
  /// however steeply the ground rises or falls.
  void AddHatch(const std::vector<SectionPlace>& line) {
    double length = 0.0;
    for (std::size_t i = 1; i < line.size(); ++i) {
      length += Distance(m_scale.ToPaper(line[i - 1]), m_scale.ToPaper(line[i]));
    }
    const double every = std::max(kHatchEvery, length / kMostHatchGroups);
    double passed = 0.0;
    double next = every / 2.0;
    int tick = 0;
    for (std::size_t i = 1; i < line.size(); ++i) {
      const PaperPlace from = m_scale.ToPaper(line[i - 1]);
      const PaperPlace to = m_scale.ToPaper(line[i]);
      const double segment = Distance(from, to);
      if (segment == 0.0) continue;
      for (; next <= passed + segment;
           next += ++tick % kHatchTicks == 0 ? every - (kHatchTicks - 1) * kHatchStep : kHatchStep) {
        const double share = (next - passed) / segment;
        const PaperPlace at = {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
        const PaperPlace along = {(to.x - from.x) / segment, (to.y - from.y) / segment};
        const double reach = kHatchTick * 0.7;  // back along the ground, and down from it
        AddPaperLine(DrawingKind::GroundHatch, at,
                     {at.x + reach * (along.y - along.x), at.y - reach * (along.x + along.y)});
      }
      passed += segment;
    }
  }

  void AddCenterLine() {
    const auto [bottom, top] = CenterLineOf(m_extent, m_scale);
    AddPaperLine(DrawingKind::CenterLine, bottom, top);
    DrawnText text{DrawingKind::CenterLine, m_scale.ToSection(top)};
    text.liftMm = 1.0;
    text.sizeMm = 3.0;
    text.text = "CL";
    AddText(text);
  }

  // --- marks and labels ------------------------------------------------------------------------------------------

  void AddMarks() {
    for (std::size_t i = 0; i < m_view.forms.size(); ++i) {
      const ViewForm& form = m_view.forms[i];
      for (std::size_t j = 0; j < form.points.size(); ++j) {
        const ViewPoint& point = form.points[j];
        if (!point.exists) continue;
        DrawnMark mark{DrawingKind::Code, Shape::Point, point.place};
        mark.form = static_cast<int>(i);
        mark.point = static_cast<int>(j);
        if (point.isCrossing) {
          mark.kind = DrawingKind::Crossing;
          mark.shape = Shape::Crossing;
        }
        m_drawing.marks.push_back(mark);
        m_points.push_back({OnPaper(point), StyleOf(mark.shape).radiusMm});
      }
    }
    std::sort(m_points.begin(), m_points.end(), [](const auto& a, const auto& b) { return a.place.x < b.place.x; });
  }

  /// The ratio or the grade along every segment of the design surface that is long enough.
  void AddGrades() {
    for (std::size_t i = 0; i < m_view.forms.size(); ++i) {
      const ViewForm& form = m_view.forms[i];
      if (form.role != FormRole::DesignSurface) continue;
      for (const std::vector<int>& line : form.lines) {
        for (std::size_t j = 1; j < line.size(); ++j) {
          const PaperPlace from = OnPaper(form.points[static_cast<std::size_t>(line[j - 1])]);
          const PaperPlace to = OnPaper(form.points[static_cast<std::size_t>(line[j])]);
          AddAlong(DrawingKind::Grade, SegmentGrade(form, line[j - 1], line[j]), from, to, static_cast<int>(i), -1,
                   true);
        }
      }
    }
  }

  [[nodiscard]] static bool HasLengthFor(const std::string& label, double length) {
    return TextWidth(label, kLabelSizeMm) + kBesideEnds <= length;
  }

  /// A text along a segment, above it or (else) below it, where it is no longer than the segment.
  bool AddAlong(DrawingKind kind, const std::string& label, const PaperPlace& from, const PaperPlace& to, int form,
                int target, bool aboveFirst) {
    if (!HasLengthFor(label, Distance(from, to))) return false;
    DrawnText text{kind, m_scale.ToSection(Middle(from, to))};
    text.sizeMm = kLabelSizeMm;
    text.angle = ReadingAngle(from, to);
    text.text = label;
    text.form = form;
    text.target = target;
    const double above = kBesideLine;
    const double below = -(kBesideLine + 0.75 * kLabelSizeMm);
    for (const double lift : {aboveFirst ? above : below, aboveFirst ? below : above}) {
      text.liftMm = lift;
      if (AddText(text)) return true;
    }
    return false;
  }

  /// The leader of a label; none where the label stands near enough to its place.
  /// @param footAbove how far above the place a leader upward begins: on top of what is drawn there
  [[nodiscard]] std::optional<LabelLeader> LeaderTo(const DrawnText& text, double footAbove) const {
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
  [[nodiscard]] double LengthOnLines(const LabelLeader& leader) const {
    constexpr double kOwnLines = 0.7;  // from where it begins
    return leader.Length() > kOwnLines ? m_grid.CoveredLength(leader.At(kOwnLines), leader.to) : 0.0;
  }

  using PointRange = std::pair<std::vector<MarkedPoint>::const_iterator, std::vector<MarkedPoint>::const_iterator>;
  [[nodiscard]] PointRange PointsBetween(double left, double right) const {
    const auto isLeft = [](const MarkedPoint& point, double x) { return point.place.x < x; };
    const auto first = std::lower_bound(m_points.begin(), m_points.end(), left, isLeft);
    return {first, std::lower_bound(first, m_points.end(), right, isLeft)};
  }

  /// Whether a leader seems to lead to a point that is not its own.
  /// @param own the place that it leads to, and @param apart how far from there other points count
  [[nodiscard]] bool RunsThroughPoint(const LabelLeader& leader, const PaperPlace& own, double apart) const {
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
  [[nodiscard]] double CostOf(const DrawnText& text, const std::optional<LabelLeader>& leader) const {
    double cost = IsAtAnotherPoint(text, kTouching) ? kCostAtPoint : 0.0;
    if (!leader) return cost;
    const PaperPlace own = m_scale.ToPaper(text.place);
    if (RunsThroughPoint(*leader, own, kTouching)) return std::numeric_limits<double>::infinity();
    if (RunsThroughPoint(*leader, own, kSamePoint)) cost += kCostAtPoint;
    return cost + kCostOnLines * LengthOnLines(*leader);
  }

  /// Adds a text in the first way in which it finds room.
  /// @returns false when it finds none
  bool AddAt(DrawnText text, const std::vector<LabelStand>& stands) {
    return std::any_of(stands.begin(), stands.end(), [&](const LabelStand& stand) {
      Put(text, stand);
      return AddText(text);
    });
  }

  /// The same for a code, which stands no nearer than this to another point.
  bool AddApart(DrawnText text, const std::vector<LabelStand>& stands, double apart) {
    return std::any_of(stands.begin(), stands.end(), [&](const LabelStand& stand) {
      Put(text, stand);
      return !IsAtAnotherPoint(text, apart) && AddText(text);
    });
  }

  /// Whether a level text is nearer than this to a point that is not its own.
  [[nodiscard]] bool IsAtAnotherPoint(const DrawnText& text, double apart) const {
    const LabelBox box = BoxOf(text, m_scale);
    const PaperPlace own = m_scale.ToPaper(text.place);
    const auto [first, last] = PointsBetween(box.corner.x - apart, box.corner.x + box.width + apart);
    return std::any_of(first, last, [&](const MarkedPoint& point) {
      const double above = point.place.y - box.corner.y;
      return above > -apart && above < box.height + apart && Distance(point.place, own) > kSamePoint;
    });
  }

  /// Adds a text with its leader where it stands free, and the leader runs through no label and crosses no other.
  bool AddLed(const DrawnText& text, double footAbove) {
    const std::optional<LabelLeader> leader = LeaderTo(text, footAbove);
    if (!IsLeaderFree(leader) || !AddText(text)) return false;
    if (leader) AddLeader(*leader, text);
    return true;
  }

  [[nodiscard]] bool IsLeaderFree(const std::optional<LabelLeader>& leader) const {
    return !leader || m_labels.IsLineFree(leader->from, leader->to);
  }

  /// The same in the way that costs least: the leader is short, crosses few lines and runs through no other point, and
  /// the text stands at no other.
  /// @returns false when it finds no room
  /// @param stands the nearest first
  bool AddLedAt(DrawnText text, const std::vector<LabelStand>& stands, double footAbove) {
    const LabelStand* best = nullptr;
    double leastCost = kMostCost;
    for (const LabelStand& stand : stands) {
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

  static void Put(DrawnText& text, const LabelStand& stand) {
    text.alongMm = stand.right;
    text.liftMm = stand.lift;
    text.anchor = stand.anchor;
  }

  void AddLeader(const LabelLeader& leader, const DrawnText& text) {
    AddCoveringLine(text.kind, leader.from, leader.to, text.form, text.target);
    m_drawing.lines.back().leadsTo = text.place;
    m_labels.OccupyLine(leader.from, leader.to);
  }

  /// The codes of the forms of a role: at their points where there is room, else later by `AddLedCodes`, as a leader
  /// is not to take the room at another point. Where points of several forms lie on each other, a code stands there
  /// once.
  void AddCodes(FormRole role) {
    for (std::size_t i = 0; i < m_view.forms.size(); ++i) {
      const ViewForm& form = m_view.forms[i];
      if (form.role != role) continue;
      for (const ViewPoint& point : form.points) {
        // The centre line says itself what it is.
        if (!point.exists || (point.code == "CL" && std::abs(point.place.offset) < kSamePlace)) continue;
        const PlaceKey place = KeyOf(point.place);
        if (point.code.empty() || !m_codes.insert({place, point.code}).second) continue;
        DrawnText text{DrawingKind::Code, point.place};
        text.sizeMm = kLabelSizeMm;
        text.text = point.code;
        text.form = static_cast<int>(i);
        if (!AddApart(text, StandsAt(place, role), kTouching)) m_ledCodes.push_back(std::move(text));
      }
    }
  }

  /// Layers lie closely: their codes stand right below their points.
  [[nodiscard]] const std::vector<LabelStand>& StandsAt(const PlaceKey& place, FormRole role) const {
    static const std::vector<LabelStand> below = {
        {0.0, -3.4, Anchor::Middle}, {1.2, -2.8, Anchor::Start}, {-1.2, -2.8, Anchor::End}};
    static const std::vector<LabelStand> around = {
        {0.0, 1.5, Anchor::Middle}, {1.2, 0.9, Anchor::Start}, {-1.2, 0.9, Anchor::End}, below[0], below[1], below[2]};
    static const std::vector<LabelStand> aroundTriangle = {{0.0, kTriangle + 1.1, Anchor::Middle},
                                                           {0.8, kTriangle + 1.1, Anchor::Start},
                                                           {-0.8, kTriangle + 1.1, Anchor::End},
                                                           below[0],
                                                           below[1],
                                                           below[2]};
    if (role == FormRole::Layer) return below;
    return m_heights.contains(place) ? aroundTriangle : around;
  }

  void AddLedCodes() {
    for (const DrawnText& text : m_ledCodes) {
      if (AddLedAt(text, FarStands(), 0.0)) continue;
      AddApart(text, StandsAt(KeyOf(text.place), Form(text.form).role), StyleOf(Shape::Point).radiusMm);
    }
  }

  void AddGroundNames() {
    for (const ViewGround& ground : m_view.grounds) {
      const std::vector<SectionPlace> line = Clipped(ground.line, m_window);
      if (line.size() < 2) continue;
      DrawnText text{DrawingKind::Ground, line.back()};
      text.sizeMm = kLabelSizeMm;
      text.text = ground.name;
      AddAt(text,
            {{-1.0, 2.0, Anchor::End}, {-1.0, 5.0, Anchor::End}, {-1.0, -7.0, Anchor::End}, {-1.0, 8.0, Anchor::End}});
    }
  }

  // --- dimensions ------------------------------------------------------------------------------------------------

  [[nodiscard]] const ViewPoint* PointOf(const ViewTarget::Pnt& pnt) const {
    return pnt.form < 0 || pnt.point < 0 ? nullptr : &Point(pnt.form, pnt.point);
  }

  [[nodiscard]] int MeasuredCount() const { return static_cast<int>(m_drawing.measured.size()); }

  /// Adds a control target to what is measured.
  /// @param measured index; the number of all for what is new
  void Measure(int measured, int target) {
    if (measured == MeasuredCount()) m_drawing.measured.emplace_back();
    std::vector<int>& targets = m_drawing.measured[static_cast<std::size_t>(measured)];
    if (targets.empty() || targets.back() != target) targets.push_back(target);
  }

  [[nodiscard]] const ViewTarget& FirstTargetOf(int measured) const {
    const int target = m_drawing.measured[static_cast<std::size_t>(measured)].front();
    return m_view.targets[static_cast<std::size_t>(target)];
  }

  /// A triangle that stands on each point whose height is measured. What is written beside it comes later: grades
  /// have less choice where to stand.
  void AddHeightMarks() {
    for (std::size_t i = 0; i < m_view.targets.size(); ++i) {
      const ViewTarget& target = m_view.targets[i];
      if (target.item != ViewTarget::Item::Height) continue;
      for (const ViewTarget::Pnt& pnt : target.points) {
        const ViewPoint* point = PointOf(pnt);
        if (point == nullptr) continue;
        const auto [known, isNew] = m_heights.try_emplace(KeyOf(point->place), MeasuredCount());
        Measure(known->second, static_cast<int>(i));
        if (!isNew) continue;
        DrawnMark mark{DrawingKind::Dimension, Shape::Height, point->place, kDownward};
        mark.form = pnt.form;
        mark.point = pnt.point;
        mark.target = known->second;
        m_drawing.marks.push_back(mark);
        const PaperPlace place = OnPaper(*point);
        m_grid.Occupy({{place.x - kTriangle / 2.0, place.y + 0.2}, kTriangle, kTriangle});
        m_labels.Occupy({{place.x - kTriangle / 2.0, place.y + kTriangle / 2.0}, kTriangle, kTriangle / 2.0 - 0.6});
      }
    }
  }

  void AddHeightTexts() {
    static const double beside = kTriangle * 0.7 + 0.4;
    static const std::vector<LabelStand> near = {{beside, 1.0, Anchor::Start}, {-beside, 1.0, Anchor::End},
                                                 {0.8, 3.4, Anchor::Start},    {-0.8, 3.4, Anchor::End},
                                                 {0.8, 6.0, Anchor::Start},    {-0.8, 6.0, Anchor::End},
                                                 {0.8, -4.2, Anchor::Start},   {-0.8, -4.2, Anchor::End},
                                                 {0.8, 9.0, Anchor::Start},    {-0.8, 9.0, Anchor::End}};
    for (const DrawnMark& mark : m_drawing.marks) {
      if (mark.shape != Shape::Height) continue;
      DrawnText text{DrawingKind::Dimension, mark.place};
      text.sizeMm = kLabelSizeMm;
      text.text = SignedHeight(mark.place.height, m_view.centerHeight.has_value());
      text.form = mark.form;
      text.target = mark.target;
      const bool isNear = std::any_of(near.begin(), near.end(), [&](const LabelStand& stand) {
        Put(text, stand);
        return AddLed(text, kTriangle);
      });
      if (!isNear && !AddLedAt(text, FarStands(), kTriangle)) ++m_drawing.heightsLeftOut;
    }
  }

  /// Where a width or a length is measured, whichever of its points is named first.
  using WidthKey = std::array<PlaceKey, 2>;
  static WidthKey KeyOf(const SectionPlace& one, const SectionPlace& other) {
    const PlaceKey first = KeyOf(one);
    const PlaceKey second = KeyOf(other);
    return first < second ? WidthKey{first, second} : WidthKey{second, first};
  }

  /// The line of a slope whose length is measured.
  struct Slope {
    std::vector<PaperPlace> places;
    std::string length;
    int form = -1;
    int target = -1;
  };

  /// The slope lengths to draw, each once however many targets ask for it.
  std::vector<Slope> Slopes() {
    std::vector<Slope> slopes;
    std::map<std::pair<WidthKey, std::string>, int> measured;
    for (std::size_t i = 0; i < m_view.targets.size(); ++i) {
      const ViewTarget& target = m_view.targets[i];
      if (target.item != ViewTarget::Item::SlopeLength || !target.designValue) continue;
      const ViewPoint* first = PointOf(target.points.at(0));
      const ViewPoint* second = PointOf(target.points.at(1));
      if (first == nullptr || second == nullptr) continue;
      std::string length = "SL=" + ValueText(*target.designValue, 3, 3);
      const auto [known, isNew] = measured.try_emplace({KeyOf(first->place, second->place), length}, MeasuredCount());
      Measure(known->second, static_cast<int>(i));
      if (isNew) slopes.push_back({LineOf(target), std::move(length), target.points[0].form, known->second});
    }
    return slopes;
  }

  /// Along the form that has both points of a target, else straight from one to the other.
  [[nodiscard]] std::vector<PaperPlace> LineOf(const ViewTarget& target) const {
    const ViewTarget::Pnt& first = target.points[0];
    const ViewTarget::Pnt& second = target.points[1];
    if (first.form != second.form) return {OnPaper(*PointOf(first)), OnPaper(*PointOf(second))};
    const std::vector<int> path = PathBetween(Form(first.form), first.point, second.point);
    std::vector<PaperPlace> places;
    places.reserve(path.size());
    for (const int point : path) places.push_back(OnPaper(Point(first.form, point)));
    return places;
  }

  /// A segment of a line on paper.
  struct Segment {
    PaperPlace from;
    PaperPlace to;
    double length = 0.0;
  };

  static std::vector<Segment> SegmentsOf(const std::vector<PaperPlace>& line) {
    std::vector<Segment> segments;
    for (std::size_t i = 1; i < line.size(); ++i) {
      segments.push_back({line[i - 1], line[i], Distance(line[i - 1], line[i])});
    }
    return segments;
  }

  /// Lengths of slopes, along them: on the longest of their segments that has room.
  void AddLengths() {
    for (const Slope& slope : Slopes()) {
      std::vector<Segment> segments = SegmentsOf(slope.places);
      const auto isShorter = [](const Segment& a, const Segment& b) { return a.length < b.length; };
      const auto longest = std::max_element(segments.begin(), segments.end(), isShorter);
      if (longest == segments.end()) continue;
      const PaperPlace middle = Middle(longest->from, longest->to);
      std::erase_if(segments, [&](const Segment& segment) { return !HasLengthFor(slope.length, segment.length); });
      std::stable_sort(segments.begin(), segments.end(), [&](const auto& a, const auto& b) { return isShorter(b, a); });
      const bool isAdded = std::any_of(segments.begin(), segments.end(), [&](const Segment& segment) {
        return AddAlong(DrawingKind::Dimension, slope.length, segment.from, segment.to, slope.form, slope.target,
                        false);
      });
      if (!isAdded) m_ledLengths.push_back(LedLength(slope, middle));
    }
  }

  [[nodiscard]] DrawnText LedLength(const Slope& slope, const PaperPlace& middle) const {
    DrawnText text{DrawingKind::Dimension, m_scale.ToSection(middle)};
    text.sizeMm = kLabelSizeMm;
    text.text = slope.length;
    text.form = slope.form;
    text.target = slope.target;
    return text;
  }

  /// Lengths that no segment has room for are led to the middle of their longest one.
  void AddLedLengths() {
    for (const DrawnText& text : m_ledLengths) {
      if (!AddLedAt(text, FarStands(), 0.0)) ++m_drawing.lengthsLeftOut;
    }
  }

  struct Width {
    PaperPlace left;
    PaperPlace right;
    int form = -1;
    int target = -1;
  };

  /// The widths to draw, each once however many targets ask for it.
  std::vector<Width> Widths() {
    std::vector<Width> widths;
    std::map<WidthKey, int> measured;
    for (std::size_t i = 0; i < m_view.targets.size(); ++i) {
      const ViewTarget& target = m_view.targets[i];
      if (target.item != ViewTarget::Item::Width || !target.designValue) continue;
      const ViewPoint* first = PointOf(target.points.at(0));
      const ViewPoint* second = PointOf(target.points.at(1));
      if (first == nullptr || second == nullptr) continue;
      const auto [known, isNew] = measured.try_emplace(KeyOf(first->place, second->place), MeasuredCount());
      Measure(known->second, static_cast<int>(i));
      if (!isNew) continue;
      Width width{OnPaper(*first), OnPaper(*second), target.points[0].form, known->second};
      if (width.left.x > width.right.x) std::swap(width.left, width.right);
      widths.push_back(width);
    }
    return widths;
  }

  /// How high and how low the section reaches, without its centre line.
  [[nodiscard]] PaperProfile ProfileOf() const {
    PaperProfile profile(m_extent.left, m_extent.right);
    for (const DrawnLine& line : m_drawing.lines) {
      if (line.kind == DrawingKind::CenterLine) continue;
      for (std::size_t i = 1; i < line.places.size(); ++i) {
        profile.Include(m_scale.ToPaper(line.places[i - 1]), m_scale.ToPaper(line.places[i]));
      }
    }
    return profile;
  }

  /// Narrow ones first: they stand nearer to the section, and wider ones around them.
  void AddWidths() {
    std::vector<Width> widths = Widths();
    std::stable_sort(widths.begin(), widths.end(),
                     [](const Width& a, const Width& b) { return a.right.x - a.left.x < b.right.x - b.left.x; });
    const PaperProfile section = ProfileOf();
    for (const Width& width : widths) {
      if (!AddWidth(width, section.Between(width.left.x, width.right.x))) ++m_drawing.widthsLeftOut;
    }
  }

  /// Above the section or below it, whichever is nearer to the points that it measures: below in a cut, where the
  /// ground rises above the road.
  /// @param reach of the section between the points
  /// @returns false where no tier has room: a dimension on top of others would leave none of them legible
  bool AddWidth(const Width& width, const PaperProfile::Reach& reach) {
    const auto& [lowest, highest] = reach;
    const double above = highest - std::max(width.left.y, width.right.y);
    const double below = std::min(width.left.y, width.right.y) - lowest;
    const double direction = above <= below + kFirstTier ? 1.0 : -1.0;
    const double first = direction > 0.0 ? std::max({highest, width.left.y, width.right.y}) + kFirstTier
                                         : std::min({lowest, width.left.y, width.right.y}) - kFirstTier;
    const std::string value = ValueText(*FirstTargetOf(width.target).designValue, 3, 3);
    for (int tier = 0; tier < kMostTiers; ++tier) {
      const double y = first + direction * kNextTier * tier;
      if (!HasRoom(width, y, value)) continue;
      DrawWidth(width, y, value);
      return true;
    }
    return false;
  }

  /// Whether arrows and value of a dimension stand outside, as there is no room between its ends.
  [[nodiscard]] static bool IsShort(const Width& width, const std::string& value) {
    return width.right.x - width.left.x < std::max(kShortDimension, TextWidth(value, kLabelSizeMm) + 1.0);
  }

  /// The value of a dimension: above the middle of its line, or outside, away from the centre line.
  [[nodiscard]] DrawnText TextOfWidth(const Width& width, double y, const std::string& value) const {
    const double middle = (width.left.x + width.right.x) / 2.0;
    DrawnText text{DrawingKind::Dimension, m_scale.ToSection({middle, y})};
    text.liftMm = kBesideDimension;
    if (IsShort(width, value)) {
      const bool isLeft = middle < 0.0;
      const double x = isLeft ? width.left.x - kOutsideArrow : width.right.x + kOutsideArrow;
      text.place = m_scale.ToSection({x, y});
      text.alongMm = isLeft ? -0.5 : 0.5;
      text.anchor = isLeft ? Anchor::End : Anchor::Start;
      text.liftMm = -0.35 * kLabelSizeMm;
    }
    text.sizeMm = kLabelSizeMm;
    text.text = value;
    text.form = width.form;
    text.target = width.target;
    return text;
  }

  [[nodiscard]] bool HasRoom(const Width& width, double y, const std::string& value) const {
    const double beyond = IsShort(width, value) ? kOutsideArrow : -0.6;
    const double length = width.right.x - width.left.x + 2.0 * beyond;
    return m_grid.IsFree({{width.left.x - beyond, y - 1.0}, length, 2.0}) &&
           m_grid.IsFree(BoxOf(TextOfWidth(width, y, value), m_scale));
  }

  void DrawWidth(const Width& width, double y, const std::string& value) {
    const bool isShort = IsShort(width, value);
    for (const PaperPlace& end : {width.left, width.right}) {
      const double up = y > end.y ? 1.0 : -1.0;
      AddCoveringLine(DrawingKind::Dimension, {end.x, end.y + up * kExtensionGap}, {end.x, y + up * kExtensionOver},
                      width.form, width.target);
      m_drawing.lines.back().beginsBeside = m_scale.ToSection(end);
      DrawnMark arrow{DrawingKind::Dimension, Shape::Arrow, m_scale.ToSection({end.x, y})};
      arrow.angle = (end.x == width.left.x) != isShort ? 180.0 : 0.0;
      arrow.form = width.form;
      arrow.target = width.target;
      m_drawing.marks.push_back(arrow);
    }
    const double beyond = isShort ? kOutsideArrow : 0.0;
    AddCoveringLine(DrawingKind::Dimension, {width.left.x - beyond, y}, {width.right.x + beyond, y}, width.form,
                    width.target);
    m_labels.OccupyLine({width.left.x - beyond, y}, {width.right.x + beyond, y});
    DrawnText text = TextOfWidth(width, y, value);
    Cover(BoxOf(text, m_scale));
    m_drawing.texts.push_back(std::move(text));
  }

  const SectionView& m_view;
  SectionWindow m_window;
  const PaperScale& m_scale;
  SectionDrawing& m_drawing;
  PaperBox m_extent;
  PaperGrid m_grid;                   ///< all that labels keep clear of
  PaperGrid m_labels;                 ///< what leaders keep clear of: labels, other leaders, triangles, dimension lines
  std::vector<MarkedPoint> m_points;  ///< from left to right
  std::map<PlaceKey, int> m_heights;  ///< where triangles stand, with what they measure
  std::set<std::pair<PlaceKey, std::string>> m_codes;  ///< what is named, and where
  std::vector<DrawnText> m_ledCodes;                   ///< codes that found no room at their points
  std::vector<DrawnText> m_ledLengths;                 ///< slope lengths that found none along their slopes
};

}  // namespace

SectionWindow WindowOf(const SectionView& view) {
  constexpr double kShareBeside = 0.12;  ///< of the width of the forms
  constexpr double kLeastBeside = 2.0;   ///< metres
  PaperBox reach;                        // in metres
  for (const ViewForm& form : view.forms) {
    for (const ViewPoint& point : form.points) {
      if (point.exists) reach.Include({point.place.offset, 0.0});
    }
  }
  if (reach.isEmpty) {
    for (const ViewGround& ground : view.grounds) {
      for (const SectionPlace& place : ground.line) reach.Include({place.offset, 0.0});
    }
    if (!reach.isEmpty) return {reach.left, reach.right};
  }
  reach.Include({0.0, 0.0});
  const double beside = std::max(kLeastBeside, kShareBeside * reach.Width());
  return {reach.left - beside, reach.right + beside};
}

PaperBox LeastRoom(const SectionView& view, const SectionWindow& window, const PaperScale& scale) {
  PaperBox room = ExtentOf(view, window, scale);
  const auto [bottom, top] = CenterLineOf(room, scale);
  room.Include(bottom);
  room.Include(top);
  return room;
}

PaperBox LayOutSection(const SectionView& view, const SectionWindow& window, const PaperScale& scale,
                       SectionDrawing& drawing) {
  return Layout(view, window, scale, drawing).Run();
}

}  // namespace vorn_host
