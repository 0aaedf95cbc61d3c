// What a cross section consists of on paper, and in which order its labels find room.

#include "host/drawing/section_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/drawing/drawing_style.h"
#include "host/drawing/label_placer.h"
#include "host/drawing/label_stand.h"
#include "host/drawing/paper_profile.h"
#include "host/drawing/value_text.h"

namespace vorn_host {

namespace {

using Anchor = DrawnText::Anchor;
using FirstTry = LabelPlacer::FirstTry;
using Shape = DrawnMark::Shape;

// Sizes on paper, in millimetres.
constexpr double kHatchEvery = 12.0;  ///< from one group of hatch ticks to the next
constexpr double kHatchStep = 1.2;    ///< from tick to tick in a group
constexpr double kHatchTick = 2.2;    ///< how far a tick reaches down and to the side
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

// --- what is measured ------------------------------------------------------------------------------------------------

/// A place in whole micrometres: what differs by less is the same place, computed in another way.
using PlaceKey = std::array<long long, 2>;
PlaceKey KeyOf(const SectionPlace& place) {
  return {std::llround(place.offset * 1e6), std::llround(place.height * 1e6)};
}

/// Where a width or a length is measured, whichever of its points is named first.
using WidthKey = std::array<PlaceKey, 2>;
WidthKey KeyOf(const SectionPlace& one, const SectionPlace& other) {
  const PlaceKey first = KeyOf(one);
  const PlaceKey second = KeyOf(other);
  return first < second ? WidthKey{first, second} : WidthKey{second, first};
}

int MeasuredCount(const SectionDrawing& drawing) { return static_cast<int>(drawing.measured.size()); }

/// Adds a control target to what is measured.
/// @param measured index; the number of all for what is new
void Measure(SectionDrawing& drawing, int measured, int target) {
  if (measured == MeasuredCount(drawing)) drawing.measured.emplace_back();
  std::vector<int>& targets = drawing.measured[static_cast<std::size_t>(measured)];
  if (targets.empty() || targets.back() != target) targets.push_back(target);
}

/// The line of a slope whose length is measured.
struct Slope {
  std::vector<PaperPlace> places;
  std::string length;
  int form = -1;
  int target = -1;
};

/// Along the form that has both points of a target, else straight from one to the other.
std::vector<PaperPlace> LineOf(const ViewTarget& target, const SectionView& view, const PaperScale& scale) {
  const auto onPaper = [&](const ViewTarget::Pnt& pnt) { return scale.ToPaper(PointOf(view, pnt)->place); };
  const ViewTarget::Pnt& first = target.points[0];
  const ViewTarget::Pnt& second = target.points[1];
  if (first.form != second.form) return {onPaper(first), onPaper(second)};
  const ViewForm& form = *FormOf(view, first);
  std::vector<PaperPlace> places;
  for (const int point : PathBetween(form, first.point, second.point)) {
    places.push_back(scale.ToPaper(form.points[static_cast<std::size_t>(point)].place));
  }
  return places;
}

/// The slope lengths to draw, each once however many targets ask for it.
std::vector<Slope> CollectSlopes(const SectionView& view, const PaperScale& scale, SectionDrawing& drawing) {
  std::vector<Slope> slopes;
  std::map<std::pair<WidthKey, std::string>, int> measured;
  for (std::size_t i = 0; i < view.targets.size(); ++i) {
    const ViewTarget& target = view.targets[i];
    if (target.item != ViewTarget::Item::SlopeLength || !target.designValue) continue;
    const ViewPoint* first = PointOf(view, target.points.at(0));
    const ViewPoint* second = PointOf(view, target.points.at(1));
    if (first == nullptr || second == nullptr) continue;
    std::string length = "SL=" + ValueText(*target.designValue, 3, 3);
    const auto [known, isNew] =
        measured.try_emplace({KeyOf(first->place, second->place), length}, MeasuredCount(drawing));
    Measure(drawing, known->second, static_cast<int>(i));
    if (isNew) slopes.push_back({LineOf(target, view, scale), std::move(length), target.points[0].form, known->second});
  }
  return slopes;
}

/// A width that is measured, from its left end to its right one.
struct Width {
  PaperPlace left;
  PaperPlace right;
  int form = -1;
  int target = -1;
};

/// The widths to draw, each once however many targets ask for it.
std::vector<Width> CollectWidths(const SectionView& view, const PaperScale& scale, SectionDrawing& drawing) {
  std::vector<Width> widths;
  std::map<WidthKey, int> measured;
  for (std::size_t i = 0; i < view.targets.size(); ++i) {
    const ViewTarget& target = view.targets[i];
    if (target.item != ViewTarget::Item::Width || !target.designValue) continue;
    const ViewPoint* first = PointOf(view, target.points.at(0));
    const ViewPoint* second = PointOf(view, target.points.at(1));
    if (first == nullptr || second == nullptr) continue;
    const auto [known, isNew] = measured.try_emplace(KeyOf(first->place, second->place), MeasuredCount(drawing));
    Measure(drawing, known->second, static_cast<int>(i));
    if (!isNew) continue;
    Width width{scale.ToPaper(first->place), scale.ToPaper(second->place), target.points[0].form, known->second};
    if (width.left.x > width.right.x) std::swap(width.left, width.right);
    widths.push_back(width);
  }
  return widths;
}

// --- the layout ------------------------------------------------------------------------------------------------------

/// Lays out one section, pass by pass: what comes first has more room.
class Layout {
 public:
  Layout(const SectionView& view, const SectionWindow& window, const PaperScale& scale, SectionDrawing& drawing)
      : m_view(view),
        m_window(window),
        m_scale(scale),
        m_drawing(drawing),
        m_extent(ExtentOf(view, window, scale)),
        m_placer(scale, m_extent.Widened(kRoomForLabels), drawing) {}

  PaperBox Run() {
    AddGrounds();
    for (std::size_t i = 0; i < m_view.forms.size(); ++i) AddForm(static_cast<int>(i));
    AddCenterLine();
    for (const DrawnLine& line : m_drawing.lines) m_placer.KeepLabelsOff(line);
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

  // --- room ------------------------------------------------------------------------------------------------------

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
      m_drawing.lines.push_back({DrawingKind::Ground, std::move(line)});
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
        m_placer.AddPaperLine(DrawingKind::GroundHatch, at,
                              {at.x + reach * (along.y - along.x), at.y - reach * (along.x + along.y)});
      }
      passed += segment;
    }
  }

  void AddCenterLine() {
    const auto [bottom, top] = CenterLineOf(m_extent, m_scale);
    m_placer.AddPaperLine(DrawingKind::CenterLine, bottom, top);
    DrawnText text{DrawingKind::CenterLine, m_scale.ToSection(top)};
    text.liftMm = 1.0;
    text.sizeMm = 3.0;
    text.text = "CL";
    m_placer.AddText(text);
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
        m_placer.AddPoint(OnPaper(point), StyleOf(mark.shape).radiusMm);
      }
    }
    m_placer.SortPoints();
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
          DrawnText text = LabelOf(DrawingKind::Grade, SegmentGrade(form, line[j - 1], line[j]));
          text.form = static_cast<int>(i);
          m_placer.AddAlong(std::move(text), from, to, FirstTry::Above);
        }
      }
    }
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
        if (!m_placer.AddUntouched(text, StandsAt(place, role))) m_ledCodes.push_back(std::move(text));
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
      if (m_placer.AddLedFar(text, 0.0)) continue;
      m_placer.AddApart(text, StandsAt(KeyOf(text.place), Form(text.form).role), StyleOf(Shape::Point).radiusMm);
    }
  }

  void AddGroundNames() {
    for (const ViewGround& ground : m_view.grounds) {
      const std::vector<SectionPlace> line = Clipped(ground.line, m_window);
      if (line.size() < 2) continue;
      DrawnText text{DrawingKind::Ground, line.back()};
      text.sizeMm = kLabelSizeMm;
      text.text = ground.name;
      m_placer.AddAt(
          text,
          {{-1.0, 2.0, Anchor::End}, {-1.0, 5.0, Anchor::End}, {-1.0, -7.0, Anchor::End}, {-1.0, 8.0, Anchor::End}});
    }
  }

  // --- dimensions ------------------------------------------------------------------------------------------------

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
        const ViewPoint* point = PointOf(m_view, pnt);
        if (point == nullptr) continue;
        const auto [known, isNew] = m_heights.try_emplace(KeyOf(point->place), MeasuredCount(m_drawing));
        Measure(m_drawing, known->second, static_cast<int>(i));
        if (!isNew) continue;
        DrawnMark mark{DrawingKind::Dimension, Shape::Height, point->place, kDownward};
        mark.form = pnt.form;
        mark.point = pnt.point;
        mark.target = known->second;
        m_drawing.marks.push_back(mark);
        const PaperPlace place = OnPaper(*point);
        m_placer.KeepLabelsOff({{place.x - kTriangle / 2.0, place.y + 0.2}, kTriangle, kTriangle});
        m_placer.KeepLeadersOff(
            {{place.x - kTriangle / 2.0, place.y + kTriangle / 2.0}, kTriangle, kTriangle / 2.0 - 0.6});
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
      if (!m_placer.AddLedNear(text, near, kTriangle) && !m_placer.AddLedFar(text, kTriangle))
        ++m_drawing.heightsLeftOut;
    }
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
    for (const Slope& slope : CollectSlopes(m_view, m_scale, m_drawing)) {
      std::vector<Segment> segments = SegmentsOf(slope.places);
      const auto isShorter = [](const Segment& a, const Segment& b) { return a.length < b.length; };
      const auto longest = std::max_element(segments.begin(), segments.end(), isShorter);
      if (longest == segments.end()) continue;
      const PaperPlace middle = Middle(longest->from, longest->to);
      std::erase_if(segments,
                    [&](const Segment& segment) { return !LabelPlacer::HasLengthFor(slope.length, segment.length); });
      std::stable_sort(segments.begin(), segments.end(), [&](const auto& a, const auto& b) { return isShorter(b, a); });
      const bool isAdded = std::any_of(segments.begin(), segments.end(), [&](const Segment& segment) {
        return m_placer.AddAlong(LabelOf(slope), segment.from, segment.to, FirstTry::Below);
      });
      if (isAdded) continue;
      m_ledLengths.push_back(LabelOf(slope));
      m_ledLengths.back().place = m_scale.ToSection(middle);
    }
  }

  static DrawnText LabelOf(DrawingKind kind, std::string label) {
    DrawnText text{kind, {}};
    text.sizeMm = kLabelSizeMm;
    text.text = std::move(label);
    return text;
  }

  static DrawnText LabelOf(const Slope& slope) {
    DrawnText text = LabelOf(DrawingKind::Dimension, slope.length);
    text.form = slope.form;
    text.target = slope.target;
    return text;
  }

  /// Lengths that no segment has room for are led to the middle of their longest one.
  void AddLedLengths() {
    for (const DrawnText& text : m_ledLengths) {
      if (!m_placer.AddLedFar(text, 0.0)) ++m_drawing.lengthsLeftOut;
    }
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
    std::vector<Width> widths = CollectWidths(m_view, m_scale, m_drawing);
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
    return m_placer.IsFree({{width.left.x - beyond, y - 1.0}, length, 2.0}) &&
           m_placer.IsFree(BoxOf(TextOfWidth(width, y, value), m_scale));
  }

  void DrawWidth(const Width& width, double y, const std::string& value) {
    const bool isShort = IsShort(width, value);
    for (const PaperPlace& end : {width.left, width.right}) {
      const double up = y > end.y ? 1.0 : -1.0;
      m_placer.AddCoveringLine(DrawingKind::Dimension, {end.x, end.y + up * kExtensionGap},
                               {end.x, y + up * kExtensionOver}, width.form, width.target);
      m_drawing.lines.back().beginsBeside = m_scale.ToSection(end);
      DrawnMark arrow{DrawingKind::Dimension, Shape::Arrow, m_scale.ToSection({end.x, y})};
      arrow.angle = (end.x == width.left.x) != isShort ? 180.0 : 0.0;
      arrow.form = width.form;
      arrow.target = width.target;
      m_drawing.marks.push_back(arrow);
    }
    const double beyond = isShort ? kOutsideArrow : 0.0;
    m_placer.AddCoveringLine(DrawingKind::Dimension, {width.left.x - beyond, y}, {width.right.x + beyond, y},
                             width.form, width.target);
    m_placer.KeepLeadersOff({width.left.x - beyond, y}, {width.right.x + beyond, y});
    DrawnText text = TextOfWidth(width, y, value);
    m_placer.Cover(BoxOf(text, m_scale));
    m_drawing.texts.push_back(std::move(text));
  }

  const SectionView& m_view;
  SectionWindow m_window;
  const PaperScale& m_scale;
  SectionDrawing& m_drawing;
  PaperBox m_extent;
  LabelPlacer m_placer;
  std::map<PlaceKey, int> m_heights;                   ///< where triangles stand, with what they measure
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
