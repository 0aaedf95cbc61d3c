#include "host/editing/design_editor.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/text_encoding.h"
#include "host/editing/point_positions.h"
#include "host/editing/set_targets.h"
#include "vorn/framework/base.h"
#include "vorn/platform/fixed_decimal.h"
#include "vorn/platform/line_geometry.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

namespace {

constexpr std::uint32_t kUnassigned = 0xFFFFFFFF;

using PntType = VornComposedPnt::PntType;

std::string Utf8(const CString& text) { return ToUtf8(text.View()); }

std::string Metres(double value) { return std::string(FixedDecimal(value, 4).View()); }

/// Forms of a document come without serials. The first one is the design surface; none is marked as the org surface,
/// which a document does not know.
void NumberForms(Vorn_BuildFormArray& forms) {
  for (int i = 0; i < forms.GetSize(); ++i) {
    if (forms[i].GetSerialID() == kUnassigned) forms.SetSerialID(i, true);
  }
}

bool ArePlaced(const VornXSection& section) {
  const auto& forms = section.GetBuildFormArray();
  return std::all_of(forms.begin(), forms.end(), [](const VornBuildForm& form) { return IsPlaced(form); });
}

std::vector<TamWorld2> PositionsOf(const VornXSection& section) {
  std::vector<TamWorld2> positions;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    for (const VornComposedPnt& point : form.GetComposedPntArray()) positions.push_back(point.Pos());
  }
  return positions;
}

void ExpressSection(VornXSection& section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) ExpressPositions(form);
}

/// A form whose start point is no centre point cannot be placed in the section: its values tell nothing about where it
/// begins.
void RequireCentreStart(const VornBuildForm& form, const std::string& sectionPath) {
  const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  if (points.IsEmpty() || points[0].IsCenter()) return;
  throw EditError(FormPath(sectionPath, form.GetName()),
                  "it does not begin with a centre point, so nobody can tell where it lies");
}

std::string FormNames(const VornXSection& section) {
  std::string names;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    names += (names.empty() ? "" : ", ") + Utf8(form.GetName());
  }
  return names;
}

std::string FoldedName(CString name) { return std::string(name.MakeLower().View()); }

// --- crossings -------------------------------------------------------------------------------------------------------

/// Codes of the crossing points that the library inserts; all others are design points.
bool IsInsertedCrossing(const VornComposedPnt& point) { return point.GetCode() == "XL" || point.GetCode() == "XR"; }

/// A document does not tell which crossing points are points of the design, but their codes do. Without the mark they
/// would be removed as if a crossing had inserted them, and the design would lose its corners.
void MarkDesignPoints(VornXSection& section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) {
      if (point.GetSeriesPnt() || IsInsertedCrossing(point)) continue;
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
  const bool isOnDesign = point.GetCode() == (side == VornLocation::Left ? "XL" : "XR") && index > 0 &&
                          index < points.GetUpperBound() && points[index + 1].GetLocation() == side &&
                          LiesOn(points[index - 1].Pos(), points[index + 1].Pos(), pos);
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

// --- work types ------------------------------------------------------------------------------------------------------

/// What a retyping did to the first two forms of a section.
struct Retyping {
  CString first;  ///< their names before; empty for a form that is not there
  CString second;
  int formsAdded = 0;  ///< 1 when the first was split, -1 when the second was joined into it
};

CString NameOf(const Vorn_BuildFormArray& forms, int index) {
  return index < forms.GetSize() ? forms[index].GetName() : CString();
}

/// Leads a control target's point to the form that holds its code now. A form behind the halves keeps its name.
void FollowRetyping(VornFormCtrlTargetPnt& point, const Retyping& retyping, const Vorn_BuildFormArray& forms) {
  const auto lead = [&](int form) {
    if (form >= forms.GetSize() || forms[form].GetComposedPntArray().Find(point.GetCode()) < 0) return false;
    point.SetBuildFormName(forms[form].GetName());
    return true;
  };
  const bool isSplit = retyping.formsAdded > 0;
  if (point.GetBuildFormName() == retyping.first) {
    if (!lead(0) && isSplit) lead(1);
  } else if (!isSplit && !retyping.second.IsEmpty() && point.GetBuildFormName() == retyping.second) {
    lead(retyping.formsAdded < 0 ? 0 : 1);
  }
}

/// Tells the control targets of a form their side, which documents do not: the one that their codes lie on. The start
/// point belongs to both sides, and so does a target that names points on both.
void TellSides(VornBuildForm& form) {
  for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    CStringArray codes;
    Vorn_Base::DivideString(target.GetCodeName().View(), codes);
    bool left = false;
    bool right = false;
    for (const CString& code : codes) {
      const VornLocation side = form.GetLRFromCode(code);
      left = left || side == VornLocation::Left;
      right = right || side == VornLocation::Right;
    }
    target.SetLR(left == right ? VornLocation::Unset : left ? VornLocation::Left : VornLocation::Right);
  }
}

/// How many control targets the forms of a section have, and how many of them run across both sides.
struct TargetCount {
  explicit TargetCount(const Vorn_BuildFormArray& forms) {
    for (const VornBuildForm& form : forms) {
      for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
        ++all;
        across += target.GetTargetPntType() == VornFormCtrlTarget::TargetPntType::LeftRight ? 1 : 0;
      }
    }
  }

  int all = 0;
  int across = 0;
};

/// What regulation did to the control targets of a section or of all.
struct RegulationCount {
  int reordered = 0;
  int removed = 0;
  int irregular = 0;

  void Add(const TargetFate& fate) {
    removed += fate.removed ? 1 : 0;
    reordered += fate.reordered && !fate.removed ? 1 : 0;
    irregular += fate.irregular && !fate.removed ? 1 : 0;
  }
  void Add(const std::vector<TargetFate>& fates) {
    for (const TargetFate& fate : fates) Add(fate);
  }
  [[nodiscard]] std::string Text() const {
    std::string text;
    if (reordered > 0) text = std::to_string(reordered) + " control targets put in order";
    if (removed > 0) text += (text.empty() ? "" : ", ") + std::to_string(removed) + " repeated ones removed";
    return text;
  }
};

bool HasForm(const VornXSection& section, const CString& name) { return section.Find(name, nullptr) >= 0; }

}  // namespace

// --- frame -----------------------------------------------------------------------------------------------------------

std::string DesignEditor::Site::Path() const { return SectionPath(SetPath(set, setIndex), section); }

DesignEditor::DesignEditor(DesignDocument& document) : m_document(document), m_follower(document) {
  const EditionScope scope(document.edition);
  m_danglingBefore = DanglingTargets(document);
  for (VornXSections& set : document.sets) {
    std::vector<char>& known = m_elevationsKnown.emplace_back();
    for (VornXSection& section : set.GetXSectionArray()) {
      NumberForms(section.GetBuildFormArray());
      known.push_back(ArePlaced(section) ? 1 : 0);
      if (known.back() != 0) continue;
      // Heights above the centre line, so that the shape is known while the elevation is not.
      NurReal dist;
      NurReal height;
      section.GetBuildFormArray().RegulateComposedPnt(NurReal(0.0), dist, height);
    }
  }
}

template <typename Edit>
void DesignEditor::ForEachSection(EditReport& report, Edit&& edit, bool mirrored) {
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    for (int j = 0; j < set.GetXSectionArray().GetSize(); ++j) {
      const Site site{i, j, set, set.GetXSectionArray()[j]};
      m_follower.Mark(i, j);
      std::string what = edit(site);
      m_follower.Trace(i, j, mirrored);
      if (!what.empty()) report.changes.push_back({site.Path(), std::move(what)});
    }
  }
}

void DesignEditor::Finish(EditReport& report) {
  const std::vector<CarriedContent::Row> dropped = m_follower.Apply();
  if (!dropped.empty()) report.notes.push_back("Lost, with the element that held it: " + Describe(dropped));
}

void DesignEditor::NoteRoadGeometry(EditReport& report) const {
  if (!report.HasChanged() || !m_document.carried.HasRoadGeometry()) return;
  report.notes.push_back("The road geometry is carried over unchanged: it does not follow the cross sections.");
}

char& DesignEditor::ElevationsKnown(const Site& site) {
  return m_elevationsKnown[static_cast<std::size_t>(site.setIndex)][static_cast<std::size_t>(site.index)];
}

std::vector<std::string> DesignEditor::LostTargets() const {
  const EditionScope scope(m_document.edition);
  std::multiset<std::string_view> before(m_danglingBefore.begin(), m_danglingBefore.end());
  std::vector<std::string> lost = DanglingTargets(m_document);
  std::erase_if(lost, [&](const std::string& line) {
    const auto known = before.find(line);
    if (known == before.end()) return false;
    before.erase(known);
    return true;
  });
  return lost;
}

// --- positions and crossings -----------------------------------------------------------------------------------------

EditReport DesignEditor::Recalc(const NurReal& centerHeight) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    const NurReal height = centerHeight.IsSet() ? centerHeight : site.section.GetHeight();
    if (!height.IsSet()) throw EditError(site.Path(), "it has no height of its own; name one for all sections");
    const std::vector<TamWorld2> before = PositionsOf(site.section);
    NurReal planDist;
    NurReal planHeight;
    site.section.GetBuildFormArray().RegulateComposedPnt(height, planDist, planHeight);
    const std::vector<TamWorld2> after = PositionsOf(site.section);
    const bool wasKnown = std::exchange(ElevationsKnown(site), 1) != 0;
    int moved = 0;
    for (std::size_t i = 0; i < after.size(); ++i) moved += !wasKnown || !(before[i] == after[i]) ? 1 : 0;
    report.Add("points placed", moved);
    return moved > 0 ? std::to_string(moved) + " points placed from height " + Metres(height.Value()) : std::string();
  });
  Finish(report);
  return report;
}

EditReport DesignEditor::RecalcCrossings() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    if (site.section.IsValidPres()) return RecalcCrossingsOf(site, report);
    report.remarks.push_back({site.Path(), "there is no existing ground"});
    return {};
  });
  Finish(report);
  return report;
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
  if (ElevationsKnown(site) == 0) {
    throw EditError(site.Path(),
                    "its points have no elevations to compare with the ground: recalculate the positions first");
  }
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    if (VornIsPlan(form.GetXSectType())) RequireCentreStart(form, site.Path());
  }
  Vorn_BuildFormArray before = section.GetBuildFormArray();
  MarkDesignPoints(section);
  const Codes codes = CodesWithHyphen(section);
  section.CalcCrossPoint();
  PutCodesBack(codes, section);
  bool changed = true;
  if (IsCrossingRight(before, section, VornLocation::Left) && IsCrossingRight(before, section, VornLocation::Right)) {
    section.GetBuildFormArray() = std::move(before);
    const std::vector<VORN_Existence> existences = ExistencesOf(section);
    section.RegulateComposedPnt();
    changed = existences != ExistencesOf(section);
  } else {
    ExpressSection(section);
  }

  const std::string left = CrossingText(section, VornLocation::Left);
  const std::string right = CrossingText(section, VornLocation::Right);
  RemarkOnUnmet(site, left, VornLocation::Left, report);
  RemarkOnUnmet(site, right, VornLocation::Right, report);
  if (!changed) return {};
  report.Add("crossings with the ground", (left.empty() ? 0 : 1) + (right.empty() ? 0 : 1));
  return "left " + (left.empty() ? "without a crossing" : left) + ", right " +
         (right.empty() ? "without a crossing" : right);
}

EditReport DesignEditor::Mirror() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(
      report,
      [&](const Site& site) -> std::string {
        if (site.section.GetBuildFormArray().IsEmpty() && site.section.GetExistingBuildFormArray().IsEmpty()) return {};
        site.section.SwapLR();
        ExpressSection(site.section);
        return "left and right exchanged";
      },
      true);
  NoteRoadGeometry(report);
  Finish(report);
  return report;
}

EditReport DesignEditor::Shift(double dist, double height) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    const TamWorld2 before = section.GetShiftData();
    if (before == TamWorld2{dist, height}) return {};
    const std::vector<TamWorld2> positions = PositionsOf(section);
    if (before.x != dist) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) RequireCentreStart(form, site.Path());
    }
    section.SetShiftData(height, dist);
    ExpressSection(section);
    report.Add("points shifted", before.x == dist ? 0 : static_cast<int>(positions.size()));
    return "shifted by " + Metres(dist - before.x) + " sideways; " + Metres(height - before.y) + " upward noted";
  });
  if (height != 0.0) {
    report.notes.push_back(
        "The shift in height is kept with the cross sections and moves no point; documents do not hold it.");
  }
  NoteRoadGeometry(report);
  Finish(report);
  return report;
}

// --- forms -----------------------------------------------------------------------------------------------------------

EditReport DesignEditor::Retype(const CString& left, const CString& right) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  std::vector<std::vector<Retyping>> retypings(static_cast<std::size_t>(m_document.sets.GetSize()));
  ForEachSection(report, [&](const Site& site) -> std::string {
    Vorn_BuildFormArray& forms = site.section.GetBuildFormArray();
    const int count = forms.GetSize();
    Retyping& retyping =
        retypings[static_cast<std::size_t>(site.setIndex)].emplace_back(Retyping{NameOf(forms, 0), NameOf(forms, 1)});
    const auto isPlan = [](const VornBuildForm& form) { return VornIsPlan(form.GetXSectType()); };
    const auto planForms = std::count_if(forms.begin(), forms.end(), isPlan);
    if (planForms != 1 && planForms != 2) {
      report.remarks.push_back({site.Path(), "there are neither one nor two plan surfaces"});
      return {};
    }
    const CString firstType = forms[0].GetXSectType();
    const CString secondType = count > 1 ? forms[1].GetXSectType() : CString();
    if (IsEdition20(m_document.edition)) {
      for (VornBuildForm& form : forms) TellSides(form);
    }
    const TargetCount targets(forms);
    site.section.ChangeXSectType(left, right);
    ExpressSection(site.section);
    retyping.formsAdded = forms.GetSize() - count;
    if (retyping.formsAdded > 0) {
      report.Add("control targets across both halves removed", targets.across - TargetCount(forms).across);
      return "split into " + Utf8(left) + " and " + Utf8(right);
    }
    if (retyping.formsAdded < 0) {
      report.Add("repeated control targets at the centre removed", targets.all - TargetCount(forms).all);
      return "joined into " + Utf8(left);
    }
    const bool same = NameOf(forms, 0) == retyping.first && NameOf(forms, 1) == retyping.second &&
                      firstType == forms[0].GetXSectType() && (count < 2 || secondType == forms[1].GetXSectType());
    return same ? std::string() : "typed " + Utf8(left) + (left == right ? "" : " and " + Utf8(right));
  });
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    ForEachTargetPoint(set, [&](VornFormCtrlTargetPnt& point, int section) {
      FollowRetyping(point, retypings[static_cast<std::size_t>(i)][static_cast<std::size_t>(section)],
                     set.GetXSectionArray()[section].GetBuildFormArray());
    });
  }
  Finish(report);
  return report;
}

EditReport DesignEditor::SortForms(const CStringArray& names) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    const std::string before = FormNames(site.section);
    // Sorting drops what the list does not name, and copies what it names twice: the list is completed first.
    CStringArray all;
    std::set<std::string> seen;
    const auto add = [&](const CString& name) {
      if (seen.insert(FoldedName(name)).second) all.Add(name);
    };
    for (const CString& name : names) add(name);
    for (const VornBuildForm& form : site.section.GetBuildFormArray()) add(form.GetName());
    site.section.SortBuildForms(all);
    const std::string after = FormNames(site.section);
    return after == before ? std::string() : "order " + after;
  });
  Finish(report);
  return report;
}

EditReport DesignEditor::RemoveForm(const CString& name) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  std::vector<std::vector<bool>> removed(static_cast<std::size_t>(m_document.sets.GetSize()));
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    const int before = section.GetBuildFormArray().GetSize();
    CString newSurface;
    section.RemoveBuildForm(name, newSurface);
    const int count = before - section.GetBuildFormArray().GetSize();
    if (count > 0 && section.GetBuildFormArray().IsEmpty()) {
      throw EditError(site.Path(), "the form " + Utf8(name) + " is the only one, and a cross section needs one");
    }
    removed[static_cast<std::size_t>(site.setIndex)].push_back(count > 0);
    report.Add("forms removed", count);
    if (count == 0) return {};
    return Utf8(name) + " removed" +
           (newSurface.IsEmpty() ? "" : "; " + Utf8(newSurface) + " is the design surface now");
  });
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    const std::vector<TargetFate> fates = RemoveTargetsOn(set, name, removed[static_cast<std::size_t>(i)]);
    const auto isRemoved = [](const TargetFate& fate) { return fate.removed; };
    report.Add("control targets removed with their form",
               static_cast<int>(std::count_if(fates.begin(), fates.end(), isRemoved)));
    m_follower.FollowTargets(i, fates);
  }
  Finish(report);
  return report;
}

EditReport DesignEditor::RenameForm(const CString& xsectType, const CString& oldName, const CString& newName) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  std::vector<std::vector<bool>> renamed(static_cast<std::size_t>(m_document.sets.GetSize()));
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    const bool hit = oldName != newName && section.IsUsedBuildName(xsectType, oldName);
    if (hit && HasForm(section, newName)) {
      throw EditError(site.Path(), "there is a form " + Utf8(newName) + " already");
    }
    if (hit) section.RenameBuildForm(xsectType, oldName, newName);
    // While another form keeps the old name, control targets of that name stay with it.
    renamed[static_cast<std::size_t>(site.setIndex)].push_back(hit && !HasForm(section, oldName));
    return hit ? Utf8(oldName) + " is " + Utf8(newName) + " now" : std::string();
  });
  int points = 0;
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    ForEachTargetPoint(m_document.sets[i], [&](VornFormCtrlTargetPnt& point, int section) {
      if (point.GetBuildFormName() != oldName) return;
      if (!renamed[static_cast<std::size_t>(i)][static_cast<std::size_t>(section)]) return;
      point.SetBuildFormName(newName);
      ++points;
    });
  }
  report.Add("points of control targets renamed", points);
  Finish(report);
  return report;
}

// --- codes and control targets ---------------------------------------------------------------------------------------

EditReport DesignEditor::ClearCodes() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  ForEachSection(report, [&](const Site& site) -> std::string {
    int cleared = 0;
    for (const VornBuildForm& form : site.section.GetBuildFormArray()) {
      for (const VornComposedPnt& point : form.GetComposedPntArray()) {
        cleared += point.GetCode().IsEmpty() && point.GetCode(PntType::Sub).IsEmpty() ? 0 : 1;
      }
    }
    site.section.ClearCode();
    report.Add("codes emptied", cleared);
    return cleared > 0 ? std::to_string(cleared) + " codes emptied" : std::string();
  });
  Finish(report);
  return report;
}

EditReport DesignEditor::RegulateTargets() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  RegulationCount total;
  int withoutSection = 0;
  std::vector<std::vector<RegulationCount>> bySection;
  std::vector<SectionIndex> indexes;
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    auto& counts = bySection.emplace_back(static_cast<std::size_t>(set.GetXSectionArray().GetSize()));
    indexes.emplace_back(set);
    if (IsEdition20(m_document.edition)) continue;
    const std::vector<TargetFate> result =
        vorn_host::RegulateTargets(set.GetFormCtrlTargetArray(), set, indexes.back());
    total.Add(result);
    for (const TargetFate& fate : result) {
      if (fate.section >= 0) counts[static_cast<std::size_t>(fate.section)].Add(fate);
      if (fate.irregular && fate.section < 0) ++withoutSection;
    }
    m_follower.FollowTargets(i, result);
  }
  ForEachSection(report, [&](const Site& site) -> std::string {
    RegulationCount count = bySection[static_cast<std::size_t>(site.setIndex)][static_cast<std::size_t>(site.index)];
    for (VornBuildForm& form : site.section.GetBuildFormArray()) {
      const std::vector<TargetFate> result =
          IsEdition20(m_document.edition)
              ? RegulateTargets20(form, site.section.GetCumulativeDist())
              : vorn_host::RegulateTargets(form.GetFormCtrlTargetArray(), site.set,
                                           indexes[static_cast<std::size_t>(site.setIndex)]);
      total.Add(result);
      count.Add(result);
    }
    if (count.irregular > 0) {
      report.remarks.push_back({site.Path(),
                                "some control targets cannot be put in order, as their points do not "
                                "exist or do not fit to what is measured"});
    }
    return count.Text();
  });
  report.Add("control targets put in order", total.reordered);
  report.Add("repeated control targets removed", total.removed);
  if (withoutSection > 0) {
    report.notes.push_back(std::to_string(withoutSection) + " control targets stand in no cross section and stay.");
  }
  Finish(report);
  return report;
}

}  // namespace vorn_host
