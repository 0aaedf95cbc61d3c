#include "host/drawing/section_view.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/edition.h"
#include "host/document/input_values.h"
#include "host/document/section_index.h"
#include "host/document/text_encoding.h"
#include "host/drawing/center_height.h"
#include "host/drawing/point_text.h"
#include "host/drawing/value_text.h"
#include "host/drawing/view_targets.h"
#include "vorn/framework/schema.h"
#include "vorn/framework/tolerance.h"
#include "vorn/types/hoso_type.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

namespace {

using Component = VornComposedPnt::ComponentType;
using DataType = VornComposedPnt::DataType;
using Note = ViewNote::Kind;
using Reading = ViewInput::Reading;

/// Nothing of a cross section lies farther away than this, in metres: what does is a damaged value.
constexpr double kFarthest = 1e6;

bool IsWithinReach(double value) { return std::abs(value) <= kFarthest; }  // false for what is no number, too

// --- a point ---------------------------------------------------------------------------------------------------------

/// A centre point holds a distance and a height in every edition.
Reading ReadingOf(const VornComposedPnt& point) { return point.IsCenter() ? Reading::WidthHeight : point.GetReading(); }

ViewInput InputOf(const VornComposedPnt& point) {
  const auto told = [](const NurReal& value) { return value.IsSet() ? std::optional(value.Value()) : std::nullopt; };
  return {ReadingOf(point), told(point.GetX()), told(point.GetY())};
}

SectionPart PartOf(const VornComposedPnt& point) {
  switch (point.GetComponentType()) {
    case Component::RoadbedFill:
    case Component::RoadbedCut:
    case Component::Roadbed:
      return SectionPart::Roadbed;
    case Component::SlopeFill:
    case Component::SlopeCut:
    case Component::Slope:
      return SectionPart::Slope;
    case Component::BermFill:
    case Component::BermCut:
    case Component::Berm:
      return SectionPart::Berm;
    default:
      return SectionPart::Other;
  }
}

/// @param isStart that a form does not go on through its start point only tells that its sides are not joined
bool IsMarkedCrossing(const VornComposedPnt& point, bool isStart) {
  if (point.IsCrossPoint()) return true;
  return !isStart && (!point.GetSeriesPnt() || point.GetCode() == "XL" || point.GetCode() == "XR");
}

// --- roles of forms --------------------------------------------------------------------------------------------------

bool IsPavement(const VornBuildForm& form) {
  return VornTsHosoType::XSectTypeToMsdoPaveIdx(form.GetXSectType()) >= 0 ||
         VornTsHosoType::XSectTypeToMsdoPaveIdx(form.GetName()) >= 0;
}

/// A surface course is a plan surface by its type, and yet a layer where there is an earthwork below it.
std::vector<FormRole> RolesOf(const Vorn_BuildFormArray& forms) {
  std::vector<FormRole> roles;
  for (const VornBuildForm& form : forms) {
    roles.push_back(IsPavement(form)                  ? FormRole::Layer
                    : VornIsPlan(form.GetXSectType()) ? FormRole::DesignSurface
                                                      : FormRole::Other);
  }
  if (std::count(roles.begin(), roles.end(), FormRole::DesignSurface) > 0) return roles;
  auto surface = std::find(roles.begin(), roles.end(), FormRole::Other);
  if (surface == roles.end() && !roles.empty()) {
    const auto plan =
        std::find_if(forms.begin(), forms.end(), [](const auto& form) { return VornIsPlan(form.GetXSectType()); });
    surface = roles.begin() + (plan == forms.end() ? 0 : plan - forms.begin());
  }
  if (surface != roles.end()) *surface = FormRole::DesignSurface;
  return roles;
}

// --- lines -----------------------------------------------------------------------------------------------------------

/// The points of a side from the start point outward, whichever points of the other side stand in between.
std::vector<int> OutwardOn(VornLocation side, const Vorn_ComposedPntArray& points, const std::vector<int>& viewIndex) {
  std::vector<int> outward = {0};
  for (int i = 1; i < points.GetSize(); ++i) {
    if (points[i].GetLocation() == side && viewIndex[static_cast<std::size_t>(i)] >= 0) outward.push_back(i);
  }
  return outward;
}

/// The pieces that the points of a form are connected to, by their indices in the document.
class LineTracer {
 public:
  LineTracer(const Vorn_ComposedPntArray& points, const std::vector<int>& viewIndex) : m_points(points) {
    const std::vector<std::vector<int>> left = PiecesOf(OutwardOn(VornLocation::Left, points, viewIndex));
    std::vector<std::vector<int>> right = PiecesOf(OutwardOn(VornLocation::Right, points, viewIndex));
    for (auto piece = left.rbegin(); piece != left.rend(); ++piece) {
      m_lines.emplace_back(piece->rbegin(), piece->rend());
    }
    const bool isJoined = !left.empty() && !right.empty() && left.front().front() == 0 && right.front().front() == 0 &&
                          m_points[0].GetSeriesPnt();
    if (isJoined) {
      m_lines.back().insert(m_lines.back().end(), right.front().begin() + 1, right.front().end());
      right.erase(right.begin());
    }
    m_lines.insert(m_lines.end(), right.begin(), right.end());
    for (std::vector<int>& line : m_lines) {
      for (int& index : line) index = viewIndex[static_cast<std::size_t>(index)];
    }
  }

  [[nodiscard]] std::vector<std::vector<int>> Take() { return std::move(m_lines); }

 private:
  /// Pieces of two and more points, from the start point outward. A line ends where the form does not go on, and at
  /// points that are not built.
  [[nodiscard]] std::vector<std::vector<int>> PiecesOf(const std::vector<int>& outward) const {
    std::vector<std::vector<int>> pieces;
    std::vector<int> piece;
    const auto end = [&] {
      if (piece.size() > 1) pieces.push_back(piece);
      piece.clear();
    };
    for (const int index : outward) {
      const VornComposedPnt& point = m_points[index];
      if (point.GetExistence() == VORN_Existence::False) {
        end();
        continue;
      }
      piece.push_back(index);
      // The two sides of a start point end there, but each of them begins there, too.
      if (index > 0 && !point.GetSeriesPnt()) end();
    }
    end();
    return pieces;
  }

  const Vorn_ComposedPntArray& m_points;
  std::vector<std::vector<int>> m_lines;
};

}  // namespace

std::string SegmentGrade(const ViewForm& form, int one, int other) {
  const int outerIndex = OuterOf(one, other);
  const int innerIndex = std::min(one, other);
  const ViewPoint& outer = form.points[static_cast<std::size_t>(outerIndex)];
  if (outer.from == innerIndex) return outer.grade;
  return GradeText({}, outer.part, form.points[static_cast<std::size_t>(innerIndex)].place, outer.place);
}

std::vector<int> PathBetween(const ViewForm& form, int from, int to) {
  for (const std::vector<int>& line : form.lines) {
    auto begin = std::find(line.begin(), line.end(), from);
    auto end = std::find(line.begin(), line.end(), to);
    if (begin == line.end() || end == line.end()) continue;
    if (begin > end) std::swap(begin, end);
    return {begin, end + 1};
  }
  return {from, to};
}

std::optional<double> GroundHeightAt(const ViewGround& ground, double offset) {
  for (std::size_t i = 1; i < ground.line.size(); ++i) {
    const SectionPlace& from = ground.line[i - 1];
    const SectionPlace& to = ground.line[i];
    if (offset < std::min(from.offset, to.offset) || offset > std::max(from.offset, to.offset)) continue;
    const double width = to.offset - from.offset;
    return width == 0.0 ? from.height : from.height + (to.height - from.height) * ((offset - from.offset) / width);
  }
  return std::nullopt;
}

// --- what is known of a set ------------------------------------------------------------------------------------------

struct SectionViewer::Knowledge {
  /// How stations of a set are counted: "No.6" stands at six times 20 m.
  struct StationNumbers {
    std::string prefix;     ///< "No."
    double interval = 0.0;  ///< metres from one number to the next
  };
  /// A control target, and the index of the form that holds it; -1 for a target of the set itself.
  struct HeldTarget {
    const VornFormCtrlTarget* target = nullptr;
    int owner = -1;
  };
  struct Set {
    explicit Set(const VornXSections& set, const VornStructureType& type, bool edition20);

    std::optional<StationNumbers> numbers;
    std::vector<std::vector<HeldTarget>> targets;     ///< by section: those with a point there
    std::vector<const VornFormCtrlTarget*> unplaced;  ///< those of the set that stand in no section

   private:
    void Hold(const VornFormCtrlTarget& target, int owner, int section);
    /// @returns false where no section stands at a station of the target
    bool HoldByStations(const VornFormCtrlTarget& target, int owner, const SectionIndex& sections);
  };

  std::vector<Set> sets;
};

namespace {

/// The whole of a text as a number; none for any other text.
template <typename Number>
std::optional<Number> ParseWhole(std::string_view text) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

/// The number behind a prefix, "No.6"; none for any other text.
std::optional<int> NumberBehind(std::string_view prefix, std::string_view text) {
  if (!text.starts_with(prefix)) return std::nullopt;
  const std::optional<int> number = ParseWhole<int>(text.substr(prefix.size()));
  return number && *number >= 0 ? number : std::nullopt;
}

/// Metres from one number to the next, as the names of the sections agree on; none where they do not tell.
std::optional<double> StationInterval(const VornXSections& set, std::string_view prefix) {
  std::optional<double> interval;
  for (const VornXSection& section : set.GetXSectionArray()) {
    const std::optional<int> number = NumberBehind(prefix, section.GetName());
    if (!number || !section.GetCumulativeDist().IsSet()) continue;
    const double station = section.GetCumulativeDist().Value();
    if (*number > 0 && !interval) interval = station / *number;
    if (std::abs(*number * interval.value_or(0.0) - station) >= kSamePlace) return std::nullopt;
  }
  return interval && IsWithinReach(*interval) && *interval > kSamePlace ? interval : std::nullopt;
}

}  // namespace

SectionViewer::Knowledge::Set::Set(const VornXSections& set, const VornStructureType& type, bool edition20) {
  const std::string_view prefix = type.GetStationType() == "NO" ? "No." : type.GetStationType() == "STA" ? "STA." : "";
  if (!prefix.empty()) {
    if (const auto interval = StationInterval(set, prefix)) numbers = StationNumbers{std::string(prefix), *interval};
  }

  const SectionIndex sections(set);
  targets.resize(static_cast<std::size_t>(set.GetXSectionArray().GetSize()));
  for (const VornFormCtrlTarget& target : set.GetFormCtrlTargetArray()) {
    if (!HoldByStations(target, -1, sections)) unplaced.push_back(&target);
  }
  for (int section = 0; section < set.GetXSectionArray().GetSize(); ++section) {
    const Vorn_BuildFormArray& forms = set.GetXSectionArray()[section].GetBuildFormArray();
    for (int form = 0; form < forms.GetSize(); ++form) {
      for (const VornFormCtrlTarget& target : forms[form].GetFormCtrlTargetArray()) {
        const bool byCodes = edition20 || target.GetTargetPntArray().IsEmpty();
        // A target of a form is seen where the form is, when not even one of its points is anywhere.
        if (byCodes || !HoldByStations(target, form, sections)) Hold(target, form, section);
      }
    }
  }
}

void SectionViewer::Knowledge::Set::Hold(const VornFormCtrlTarget& target, int owner, int section) {
  std::vector<HeldTarget>& held = targets[static_cast<std::size_t>(section)];
  if (held.empty() || held.back().target != &target) held.push_back({&target, owner});
}

bool SectionViewer::Knowledge::Set::HoldByStations(const VornFormCtrlTarget& target, int owner,
                                                   const SectionIndex& sections) {
  bool isHeld = false;
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
    if (!point.GetCumulativeDist().IsSet()) continue;
    const int section = sections.Find(point.GetCumulativeDist(), point.GetXSectChg());
    if (section < 0) continue;
    Hold(target, owner, section);
    isHeld = true;
  }
  return isHeld;
}

namespace {

// --- one section -----------------------------------------------------------------------------------------------------

/// Builds the view of one cross section. The edition has to be selected meanwhile.
class SectionBuilder {
 public:
  explicit SectionBuilder(const VornXSection& section)
      : m_section(section), m_forms(section.GetBuildFormArray()), m_roles(RolesOf(m_forms)) {}

  /// @param centerHeight where the document does not tell it
  /// @returns where forms and points of the document stand in the view
  [[nodiscard]] ViewIndices Build(SectionView& view, const std::optional<double>& centerHeight) {
    FindPositions();
    for (int i = 0; i < m_forms.GetSize(); ++i) AddForm(view, i);
    for (const VornExistingBuildForm& ground : m_section.GetExistingBuildFormArray()) AddGround(view, ground);
    SetHeight(view, centerHeight);
    MarkCrossings(view);
    return std::move(m_indices);
  }

 private:
  // --- positions -------------------------------------------------------------------------------------------------

  /// Points of a project have positions. Those of a document are placed here from a centre line at height 0, so that
  /// the shape is known while the elevation is not.
  void FindPositions() {
    m_arePlaced = std::all_of(m_forms.begin(), m_forms.end(), [](const VornBuildForm& form) { return IsPlaced(form); });
    if (m_arePlaced) return;
    NurReal dist;
    NurReal height;
    m_forms.RegulateComposedPnt(NurReal(0.0), dist, height);
  }

  /// Whether a point has a place, when the point that it hangs on has one.
  [[nodiscard]] bool HasPlace(const VornComposedPnt& point, bool isStart) const {
    const bool isSet = m_arePlaced || (isStart && !point.IsCenter())
                           ? point.GetCLDist().IsSet() && point.GetGh().IsSet()
                           : isStart || (point.GetX().IsSet() && point.GetY().IsSet());
    return isSet && IsWithinReach(point.GetCLDist().Value()) && IsWithinReach(point.GetGh().Value());
  }

  void AddForm(SectionView& view, int index) {
    const VornBuildForm& form = m_forms[index];
    const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    m_indices.forms.push_back(-1);
    std::vector<int>& placed = m_indices.points.emplace_back(static_cast<std::size_t>(points.GetSize()), -1);
    if (points.IsEmpty()) {
      view.notes.push_back({Note::FormWithoutPoints, ToUtf8(form.GetName())});
      return;
    }
    if (!HasPlace(points[0], true)) {
      const Note why = points[0].IsCenter() ? Note::FormOutOfReach : Note::FormWithoutCenter;
      view.notes.push_back({why, ToUtf8(form.GetName())});
      return;
    }
    m_indices.forms.back() = static_cast<int>(view.forms.size());
    ViewForm& added = view.forms.emplace_back();
    added.name = ToUtf8(form.GetName());
    added.xSectType = ToUtf8(form.GetXSectType());
    added.role = m_roles[static_cast<std::size_t>(index)];
    added.documentIndex = index;
    AddPoints(added, points, placed);
    added.lines = LineTracer(points, placed).Take();
    const int missing = points.GetSize() - static_cast<int>(added.points.size());
    if (missing > 0) view.notes.push_back({Note::FormPointsLeftOut, added.name, missing});
  }

  void AddPoints(ViewForm& form, const Vorn_ComposedPntArray& points, std::vector<int>& placed) const {
    for (int i = 0; i < points.GetSize(); ++i) {
      const VornComposedPnt& point = points[i];
      const int origin = OriginOf(points, i);
      const int from = origin < 0 ? -1 : placed[static_cast<std::size_t>(origin)];
      if ((i > 0 && from < 0 && !m_arePlaced) || !HasPlace(point, i == 0)) continue;
      placed[static_cast<std::size_t>(i)] = static_cast<int>(form.points.size());
      AddPoint(form, point, from);
      form.points.back().documentIndex = i;
    }
  }

  static void AddPoint(ViewForm& form, const VornComposedPnt& point, int from) {
    ViewPoint added;
    added.place = {point.GetCLDist().Value(), point.GetGh().Value()};
    added.code = ToUtf8(point.GetCode());
    added.from = from;
    added.side = VornComposedPnt::GetLocationStr(point.GetLocation()).GetString();
    added.values = InputOf(point);
    added.input = InputText(added.values);
    added.exists = point.GetExistence() != VORN_Existence::False;
    added.isCrossing = IsMarkedCrossing(point, form.points.empty());
    if (!form.points.empty()) added.part = PartOf(point);
    if (from >= 0) {
      const SectionPlace& before = form.points[static_cast<std::size_t>(from)].place;
      added.grade = GradeText(added.values, added.part, before, added.place);
    }
    form.points.push_back(std::move(added));
  }

  static void AddGround(SectionView& view, const VornExistingBuildForm& form) {
    const Vorn_Array<VornExistingComposedPnt>& points = form.GetComposedPntArray();
    if (points.IsEmpty()) return;
    ViewGround ground;
    ground.name = ToUtf8(form.GetName());
    int missing = 0;
    for (const VornExistingComposedPnt& point : points) {
      const bool isSet = point.GetCLDist().IsSet() && point.GetGh().IsSet();
      if (isSet && IsWithinReach(point.GetCLDist().Value()) && IsWithinReach(point.GetGh().Value())) {
        ground.line.push_back({point.GetCLDist().Value(), point.GetGh().Value()});
      } else {
        ++missing;
      }
    }
    if (missing > 0) view.notes.push_back({Note::GroundPointsLeftOut, ground.name, missing});
    if (ground.line.size() < 2) {
      view.notes.push_back({Note::GroundTooShort, ground.name});
      return;
    }
    if (ground.line.front().offset > ground.line.back().offset) std::reverse(ground.line.begin(), ground.line.end());
    view.grounds.push_back(std::move(ground));
  }

  // --- heights ---------------------------------------------------------------------------------------------------

  /// Height of the centre line that the positions stand on; 0 where they count from the centre line, as those of a
  /// document do, and those of a project in which nobody has told the height.
  [[nodiscard]] double PlacedFrom() const {
    if (!m_arePlaced) return 0.0;
    for (const VornBuildForm& form : m_forms) {
      const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
      if (points.IsEmpty() || !points[0].IsCenter()) continue;
      const double height = points[0].GetGh().Value() - points[0].GetY().Value();
      return std::abs(height) <= kSamePlace ? 0.0 : height;
    }
    return 0.0;
  }

  void SetHeight(SectionView& view, const std::optional<double>& given) const {
    const double placedFrom = PlacedFrom();
    const NurReal& stored = m_section.GetHeight();
    const bool isStored = stored.IsSet() && IsWithinReach(stored.Value());
    if (placedFrom != 0.0) {
      view.centerHeight = placedFrom;
      const bool isOther = isStored && std::abs(stored.Value() - placedFrom) > kSamePlace;
      if (isOther) view.notes.push_back({.kind = Note::HeightNotAsStored, .height = stored.Value()});
    } else if (isStored) {
      view.centerHeight = stored.Value();
    } else if (given && IsWithinReach(*given)) {
      view.centerHeight = given;
    } else if (const auto found = HeightFromCrossings(view)) {
      view.centerHeight = found;
      view.isHeightAssumed = true;
      view.notes.push_back({.kind = Note::HeightFromGround, .height = *found});
    }
    if (!view.centerHeight) {
      if (!view.grounds.empty()) view.notes.push_back({.kind = Note::GroundWithoutHeight});
      view.grounds.clear();
    } else if (placedFrom == 0.0) {
      for (ViewForm& form : view.forms) {
        for (ViewPoint& point : form.points) point.place.height += *view.centerHeight;
      }
    }
  }

  const VornXSection& m_section;
  Vorn_BuildFormArray m_forms;  ///< a copy: the document stays as it is
  std::vector<FormRole> m_roles;
  bool m_arePlaced = false;
  ViewIndices m_indices;
};

}  // namespace

// --- the viewer ------------------------------------------------------------------------------------------------------

SectionViewer::SectionViewer(const DesignDocument& document) : m_document(document) {
  auto knowledge = std::make_shared<Knowledge>();
  for (const VornXSections& set : document.sets) {
    knowledge->sets.emplace_back(set, document.structureType, IsEdition20(document.edition));
  }
  m_knowledge = std::move(knowledge);
}

SectionView SectionViewer::Of(int set, int section, const std::optional<double>& centerHeight) const {
  const EditionScope scope(m_document.edition);
  const Knowledge::Set& knowledge = m_knowledge->sets[static_cast<std::size_t>(set)];
  const VornXSections& sections = m_document.sets[set];
  const VornXSection& shown = sections.GetXSectionArray()[section];
  SectionView view;
  view.set = set;
  view.section = section;
  view.alignment = ToUtf8(sections.GetRefAlign());
  view.name = ToUtf8(shown.GetName());
  view.isBehindChange = shown.GetXSectChg();
  view.isControlSection = shown.GetControlSect();
  if (shown.GetCumulativeDist().IsSet()) {
    view.station = shown.GetCumulativeDist().Value();
    view.stationText = StationText(shown.GetCumulativeDist());
    if (knowledge.numbers && *view.station >= 0.0) {
      view.stationText = NumberedStation(*view.station, knowledge.numbers->prefix, knowledge.numbers->interval);
    }
  }
  TargetViewer viewer(IsEdition20(m_document.edition), &shown, SectionBuilder(shown).Build(view, centerHeight));
  for (const Knowledge::HeldTarget& held : knowledge.targets[static_cast<std::size_t>(section)]) {
    viewer.Add(view, *held.target, held.owner);
  }
  return view;
}

SectionView SectionViewer::WithoutSection(int set) const {
  const EditionScope scope(m_document.edition);
  SectionView view;
  view.set = set;
  view.section = -1;
  view.alignment = ToUtf8(m_document.sets[set].GetRefAlign());
  TargetViewer viewer(IsEdition20(m_document.edition), nullptr, {});
  for (const VornFormCtrlTarget* target : m_knowledge->sets[static_cast<std::size_t>(set)].unplaced) {
    viewer.Add(view, *target, -1);
  }
  const int count = static_cast<int>(view.targets.size());
  if (count > 0) view.notes.push_back({.kind = Note::TargetsWithoutSection, .points = count});
  return view;
}

std::optional<double> SectionViewer::StationOf(int set, std::string_view text) const {
  if (const auto metres = ParseWhole<double>(text)) return IsWithinReach(*metres) ? metres : std::nullopt;
  const auto& numbers = m_knowledge->sets[static_cast<std::size_t>(set)].numbers;
  if (!numbers) return std::nullopt;
  const std::size_t plus = text.find('+');
  const std::optional<int> number = NumberBehind(numbers->prefix, text.substr(0, plus));
  const std::optional<double> rest =
      plus == std::string_view::npos ? std::optional(0.0) : ParseWhole<double>(text.substr(plus + 1));
  if (!number || !rest || !IsWithinReach(*rest)) return std::nullopt;
  return *number * numbers->interval + *rest;
}

SectionView ViewOf(const DesignDocument& document, int set, int section, const std::optional<double>& centerHeight) {
  return SectionViewer(document).Of(set, section, centerHeight);
}

}  // namespace vorn_host
