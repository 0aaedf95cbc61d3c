// The editor's step that finds where the design meets the existing ground.

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/input_values.h"
#include "host/editing/design_editor.h"
#include "host/editing/edit_pieces.h"
#include "host/editing/set_targets.h"
#include "vorn/platform/line_geometry.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

namespace {

/// Codes of the crossing points that the library inserts; all others are design points.
bool IsInsertedCrossing(const VornComposedPnt& point) { return point.GetCode() == "XL" || point.GetCode() == "XR"; }

/// A document does not tell which crossing points are points of the design. All but those that bear the codes of
/// inserted ones are taken for that: without the mark they would be removed as if a crossing had inserted them, and the
/// design would lose its corners. What another application inserted under other codes stays, too.
void MarkDesignPoints(VornXSection& section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) {
      const bool isInserted = IsInsertedCrossing(point) || (point.IsCrossPoint() && !point.IsKePoint());
      if (point.GetSeriesPnt() || isInserted) continue;
      point.SetPointType(point.GetPointType() | VornComposedPnt::kKePoint | VornComposedPnt::kCrossPoint);
    }
  }
}

bool IsBesideCenter(const VornComposedPnt& point) { return point.IsLeft() || point.IsRight(); }

/// Codes by form and serial, to be put back: taking a crossing back cuts the code of a design point, but control
/// targets of the document name the whole of it. Centre points are none of them, and share one serial.
using Codes = std::vector<std::unordered_map<std::uint32_t, CString>>;

Codes CodesWithHyphen(const VornXSection& section) {
  Codes codes;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    auto& ofForm = codes.emplace_back();
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      const bool isCut = IsBesideCenter(point) && !point.GetSeriesPnt() && point.GetCode().Find('-') >= 0;
      if (isCut) ofForm[point.GetSerialID()] = point.GetCode();
    }
  }
  return codes;
}

void PutCodesBack(const Codes& codes, VornXSection& section) {
  for (int i = 0; i < section.GetBuildFormArray().GetSize(); ++i) {
    const auto& ofForm = codes[static_cast<std::size_t>(i)];
    for (VornComposedPnt& point : section.GetBuildFormArray()[i].GetComposedPntArray()) {
      const auto code = ofForm.find(point.GetSerialID());
      if (IsBesideCenter(point) && code != ofForm.end()) point.SetCode(code->second);
    }
  }
}

/// What lies this near (metres) to a line lies on it: a document holds no more.
constexpr double kOnLine = 3e-4;

bool LiesOn(const TamWorld2& from, const TamWorld2& to, const TamWorld2& pos) {
  TamWorld2 nearest;
  (void)TamyIntersectDotLine(nearest, pos, {from, {to.x - from.x, to.y - from.y}});
  return std::hypot(nearest.x - pos.x, nearest.y - pos.y) <= kOnLine;
}

bool LiesOnGround(const TamWorld2& pos, const VornXSection& section) {
  const VornExistingComposedPntArray& ground = section.GetExistingBuildFormArray()[0].GetComposedPntArray();
  const auto positionOf = [&](int i) { return TamWorld2{ground[i].GetCLDist().Value(), ground[i].GetGh().Value()}; };
  for (int i = 1; i < ground.GetSize(); ++i) {
    if (LiesOn(positionOf(i - 1), positionOf(i), pos)) return true;
  }
  return false;
}

/// Where a crossing point stands.
struct Crossing {
  const Vorn_ComposedPntArray* points = nullptr;
  int index = 0;

  [[nodiscard]] const VornComposedPnt& Point() const { return (*points)[index]; }
};

std::vector<Crossing> CrossingsOf(const Vorn_BuildFormArray& forms, VornLocation side) {
  std::vector<Crossing> crossings;
  for (const VornBuildForm& form : forms) {
    const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    for (int i = 0; i < points.GetSize(); ++i) {
      if (points[i].GetLocation() == side && !points[i].GetSeriesPnt()) crossings.push_back({&points, i});
    }
  }
  return crossings;
}

/// Whether the crossing points of a side are as good as those computed anew. Where the ground runs nearly parallel to
/// the design, a crossing moves by many times the rounding of the points beside it, and it vanishes where the design
/// only just reaches the ground: one of a document stays while it lies on both.
bool IsCrossingRight(const Vorn_BuildFormArray& former, const VornXSection& computed, VornLocation side) {
  const std::vector<Crossing> before = CrossingsOf(former, side);
  const std::vector<Crossing> now = CrossingsOf(computed.GetBuildFormArray(), side);
  if (before.empty()) return now.empty();
  if (before.size() != 1 || now.size() > 1) return false;
  const VornComposedPnt& point = before[0].Point();
  const TamWorld2 pos = point.Pos();
  if (!IsInsertedCrossing(point)) {
    if (now.empty() || now[0].Point().GetCode() != point.GetCode()) return false;
    const TamWorld2 other = now[0].Point().Pos();
    return std::hypot(other.x - pos.x, other.y - pos.y) <= kOnLine;
  }
  const Vorn_ComposedPntArray& points = *before[0].points;
  const int index = before[0].index;
  const int inner = std::max(OriginOf(points, index), 0);
  const bool isOnDesign = point.GetCode() == (side == VornLocation::Left ? "XL" : "XR") && index > 0 &&
                          index < points.GetUpperBound() && points[index + 1].GetLocation() == side &&
                          LiesOn(points[inner].Pos(), points[index + 1].Pos(), pos);
  if (!isOnDesign || !LiesOnGround(pos, computed)) return false;
  if (now.empty()) return true;
  // The ground may cross one segment of the design twice.
  const TamWorld2 other = now[0].Point().Pos();
  return LiesOnGround({(pos.x + other.x) / 2.0, (pos.y + other.y) / 2.0}, computed);
}

std::vector<VORN_Existence> ExistencesOf(const VornXSection& section) {
  std::vector<VORN_Existence> existences;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    for (const VornComposedPnt& point : form.GetComposedPntArray()) existences.push_back(point.GetExistence());
  }
  return existences;
}

/// The crossing point of a side, "L9 at -22.4130"; empty when there is none.
std::string CrossingText(const VornXSection& section, VornLocation side) {
  const std::vector<Crossing> crossings = CrossingsOf(section.GetBuildFormArray(), side);
  if (crossings.empty()) return {};
  const VornComposedPnt& point = crossings[0].Point();
  return Utf8(point.GetCode()) + " at " + Metres(point.GetCLDist().Value());
}

/// The crossing points of both sides, as `CrossingText` tells them.
struct CrossingTexts {
  explicit CrossingTexts(const VornXSection& section)
      : left(CrossingText(section, VornLocation::Left)), right(CrossingText(section, VornLocation::Right)) {}

  std::string left;
  std::string right;
};

/// Computes the crossing points anew, but leaves those that are right as they are. Whether the section changed.
bool RenewCrossings(VornXSection& section) {
  Vorn_BuildFormArray before = section.GetBuildFormArray();
  MarkDesignPoints(section);
  const Codes codes = CodesWithHyphen(section);
  section.CalcCrossPoint();
  PutCodesBack(codes, section);
  if (!IsCrossingRight(before, section, VornLocation::Left) || !IsCrossingRight(before, section, VornLocation::Right)) {
    ExpressSection(section);
    return true;
  }
  section.GetBuildFormArray() = std::move(before);
  const std::vector<VORN_Existence> existences = ExistencesOf(section);
  section.RegulateComposedPnt();
  return existences != ExistencesOf(section);
}

void CountCrossing(const std::string& former, const std::string& now, EditReport& report) {
  if (former == now) return;
  report.Add(now.empty() ? "crossings taken back" : former.empty() ? "crossings found" : "crossings moved", 1);
}

}  // namespace

EditReport DesignEditor::RecalcCrossings() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    if (site.section.IsValidPres()) return RecalcCrossingsOf(site, report);
    report.remarks.push_back({site.Path(), "there is no existing ground"});
    return {};
  });
  if (report.HasChanged()) RemarkOnMissingPoints(report);
  Finish(report);
  return report;
}

void DesignEditor::RemarkOnMissingPoints(EditReport& report) const {
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    const VornXSections& set = m_document.sets[i];
    const std::vector<int> counts = CountTargetsOnMissingPoints(set);
    for (int j = 0; j < set.GetXSectionArray().GetSize(); ++j) {
      if (counts[static_cast<std::size_t>(j)] == 0) continue;
      report.remarks.push_back({SectionPath(SetPath(set, i), set.GetXSectionArray()[j]),
                                "control targets stand on points beyond the crossings, which do not exist"});
    }
  }
}

void DesignEditor::RemarkOnUnmet(const Site& site, const std::string& crossing, VornLocation side, EditReport& report) {
  if (!crossing.empty()) return;
  const std::string which = side == VornLocation::Left ? "the left " : "the right ";
  KelPointArray crossings;
  const bool meets = site.section.GetCrossPoint(side, crossings) > 0;
  // Crossing points go between neighbours in the order of the points, and the other side may stand in between.
  report.remarks.push_back({site.Path(), which + (meets ? "meets the ground where no crossing point can be inserted"
                                                        : "does not meet the ground")});
}

std::string DesignEditor::RecalcCrossingsOf(const Site& site, EditReport& report) {
  VornXSection& section = site.section;
  if (!m_elevationsKnown.At(site.setIndex, site.index)) {
    throw EditError(site.Path(),
                    "its points have no elevations to compare with the ground: recalculate the positions first");
  }
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    if (VornIsPlan(form.GetXSectType())) RequireCentreStart(form, site.Path());
  }
  const CrossingTexts former(section);
  const bool changed = RenewCrossings(section);
  const CrossingTexts now(section);
  RemarkOnUnmet(site, now.left, VornLocation::Left, report);
  RemarkOnUnmet(site, now.right, VornLocation::Right, report);
  if (!changed) return {};
  CountCrossing(former.left, now.left, report);
  CountCrossing(former.right, now.right, report);
  return "left " + (now.left.empty() ? "without a crossing" : now.left) + ", right " +
         (now.right.empty() ? "without a crossing" : now.right);
}

}  // namespace vorn_host
