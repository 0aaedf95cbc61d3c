// The editor's steps on the build forms of a section: retyping, sorting, removing, renaming.

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>

#include "host/document/target_codes.h"
#include "host/editing/design_editor.h"
#include "host/editing/edit_pieces.h"
#include "host/editing/point_positions.h"
#include "host/editing/set_targets.h"
#include "vorn/types/structure_type.h"

namespace vorn_host {

namespace {

std::string FormNames(const VornXSection& section) {
  std::string names;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    names += (names.empty() ? "" : ", ") + Utf8(form.GetName());
  }
  return names;
}

std::string FoldedName(CString name) { return std::string(name.MakeLower().View()); }

bool HasForm(const VornXSection& section, const CString& name) { return section.Find(name, nullptr) >= 0; }

// --- work types ------------------------------------------------------------------------------------------------------

/// What a retyping did to the first two forms of a section.
struct Retyping {
  CString first;  ///< their names before; empty for a form that is not there
  CString second;
  bool isPair = false;  ///< whether the second one is the right half of the first
  int formsAdded = 0;   ///< 1 when the first was split, -1 when the second was joined into it
};

CString NameOf(const Vorn_BuildFormArray& forms, int index) {
  return index < forms.GetSize() ? forms[index].GetName() : CString();
}

bool HasSide(const VornBuildForm& form, VornLocation side) {
  const auto& points = form.GetComposedPntArray();
  return std::any_of(points.begin(), points.end(),
                     [=](const VornComposedPnt& point) { return point.GetLocation() == side; });
}

bool IsPlan(const VornBuildForm& form) { return VornIsPlan(form.GetXSectType()); }

bool BeginAtOnePoint(const VornBuildForm& a, const VornBuildForm& b) {
  const Vorn_ComposedPntArray& p = a.GetComposedPntArray();
  const Vorn_ComposedPntArray& q = b.GetComposedPntArray();
  if (p.IsEmpty() || q.IsEmpty()) return false;
  return p[0].IsCenter() && q[0].IsCenter() &&
         std::hypot(p[0].Pos().x - q[0].Pos().x, p[0].Pos().y - q[0].Pos().y) <= kChangedPosition;
}

/// Whether two forms have a point of one code besides their start points, which a joined form would have twice.
bool ShareACode(const VornBuildForm& a, const VornBuildForm& b) {
  std::set<std::string_view> codes;
  for (const VornComposedPnt& point : a.GetComposedPntArray()) codes.insert(point.GetCode().View());
  const auto& points = b.GetComposedPntArray();
  return std::any_of(points.begin() + std::min(1, points.GetSize()), points.end(), [&](const VornComposedPnt& point) {
    return !point.GetCode().IsEmpty() && codes.contains(point.GetCode().View());
  });
}

/// Why a section cannot be given work types; null when it can. The library acts on the first two forms: they have to be
/// the plan surfaces, or other forms would be split, joined or renamed in their place.
const char* WhyNotRetyped(const Vorn_BuildFormArray& forms, bool join) {
  const auto planForms = std::count_if(forms.begin(), forms.end(), IsPlan);
  if (planForms != 1 && planForms != 2) return "there are neither one nor two plan surfaces";
  if (!IsPlan(forms[0])) return "the plan surface is not the first form";
  if (planForms == 1) return nullptr;
  const VornBuildForm& left = forms[0];
  const VornBuildForm& right = forms[1];
  if (!IsPlan(right)) return "its two plan surfaces do not stand side by side";
  const auto areHalves = [](const VornBuildForm& a, const VornBuildForm& b) {
    return !HasSide(a, VornLocation::Right) && !HasSide(b, VornLocation::Left);
  };
  if (areHalves(right, left)) return "the right half stands before the left one: sort them first";
  if (!areHalves(left, right)) return "its two plan surfaces are not a left and a right half";
  if (join && !BeginAtOnePoint(left, right)) return "its two halves do not begin at one centre point";
  if (join && ShareACode(left, right)) return "its two halves have points of one code";
  return nullptr;
}

/// The forms behind the halves keep their names, and control targets tell forms by their names.
void RequireFreeNames(const std::string& path, const Vorn_BuildFormArray& forms, const CString& left,
                      const CString& right) {
  for (int i = 1; i < forms.GetSize(); ++i) {
    if (i == 1 && IsPlan(forms[1])) continue;
    if (forms[i].GetName() == left || forms[i].GetName() == right) {
      throw EditError(path, "there is a form " + Utf8(forms[i].GetName()) + " already");
    }
  }
}

/// Leads a control target's point to the form that holds its code now. A form behind the halves keeps its name.
void FollowRetyping(VornFormCtrlTargetPnt& point, const Retyping& retyping, const Vorn_BuildFormArray& forms,
                    FormIndex& index) {
  const auto lead = [&](int form) {
    if (form >= forms.GetSize() || index.FindPoint(form, point.GetCode()) < 0) return false;
    point.SetBuildFormName(forms[form].GetName());
    return true;
  };
  const bool isSplit = retyping.formsAdded > 0;
  const bool isOnFirst = point.GetBuildFormName() == retyping.first;
  const bool isOnSecond = isSplit ? isOnFirst : retyping.isPair && point.GetBuildFormName() == retyping.second;
  if (isOnFirst && lead(0)) return;
  if (isOnSecond) lead(retyping.formsAdded < 0 ? 0 : 1);
}

/// Finds the sides of a form's points by code: the answers of `VornBuildForm::GetLRFromCode`, which looks through the
/// points for each.
class SideIndex {
 public:
  explicit SideIndex(const Vorn_ComposedPntArray& points) {
    for (int i = 1; i < points.GetSize(); ++i) m_points.push_back(&points[i]);
    std::stable_sort(m_points.begin(), m_points.end(),
                     [](const VornComposedPnt* a, const VornComposedPnt* b) { return IsBefore(*a, b->GetCode()); });
  }

  /// The side of the first point with that code, in whatever case; unset without one.
  [[nodiscard]] VornLocation Of(const CString& code) const {
    const auto found =
        std::lower_bound(m_points.begin(), m_points.end(), code,
                         [](const VornComposedPnt* point, const CString& wanted) { return IsBefore(*point, wanted); });
    const bool isThere = found != m_points.end() && (*found)->GetCode().CompareNoCase(code.View()) == 0;
    return isThere ? (*found)->GetLocation() : VornLocation::Unset;
  }

 private:
  [[nodiscard]] static bool IsBefore(const VornComposedPnt& point, const CString& code) {
    return point.GetCode().CompareNoCase(code.View()) < 0;
  }

  std::vector<const VornComposedPnt*> m_points;  ///< in the order of their codes; not the start point, on both sides
};

/// Tells the control targets of a form their side, which documents do not: the one that their codes lie on. The start
/// point belongs to both sides, and so does a target that names points on both.
void TellSides(VornBuildForm& form) {
  if (form.GetFormCtrlTargetArray().IsEmpty()) return;
  const SideIndex sides(form.GetComposedPntArray());
  for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    bool left = false;
    bool right = false;
    for (const CString& code : CodesOf(target)) {
      const VornLocation side = sides.Of(code);
      left = left || side == VornLocation::Left;
      right = right || side == VornLocation::Right;
    }
    target.SetLR(left == right ? VornLocation::Unset : left ? VornLocation::Left : VornLocation::Right);
  }
}

/// How many control targets the forms of a section have.
int CountTargets(const Vorn_BuildFormArray& forms) {
  int count = 0;
  for (const VornBuildForm& form : forms) count += form.GetFormCtrlTargetArray().GetSize();
  return count;
}

/// How many control targets of a form run across both sides.
int AcrossTargetsOf(const VornBuildForm& form) {
  const auto& targets = form.GetFormCtrlTargetArray();
  return static_cast<int>(std::count_if(targets.begin(), targets.end(), [](const VornFormCtrlTarget& target) {
    return target.GetTargetPntType() == VornFormCtrlTarget::TargetPntType::LeftRight;
  }));
}

/// Gives a section work types that it can have. Returns what changed, in words.
std::string RetypeForms(VornXSection& section, const CString& left, const CString& right, Retyping& retyping,
                        EditReport& report) {
  Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  const int count = forms.GetSize();
  const CString firstType = forms[0].GetXSectType();
  const CString secondType = count > 1 ? forms[1].GetXSectType() : CString();
  const int targets = CountTargets(forms);
  const int acrossBefore = AcrossTargetsOf(forms[0]);
  section.ChangeXSectType(left, right);
  ExpressSection(section);
  retyping.formsAdded = forms.GetSize() - count;
  if (retyping.formsAdded > 0) {
    report.Add("control targets across both halves removed", acrossBefore - AcrossTargetsOf(forms[0]));
    return "split into " + Utf8(left) + " and " + Utf8(right);
  }
  if (retyping.formsAdded < 0) {
    report.Add("repeated control targets at the centre removed", targets - CountTargets(forms));
    return "joined into " + Utf8(left);
  }
  const bool same = NameOf(forms, 0) == retyping.first && NameOf(forms, 1) == retyping.second &&
                    firstType == forms[0].GetXSectType() && (count < 2 || secondType == forms[1].GetXSectType());
  return same ? std::string() : "typed " + Utf8(left) + (left == right ? "" : " and " + Utf8(right));
}

void NoteLostPlanSurfaces(const CString& left, const CString& right, EditReport& report) {
  for (const CString& type : {left, right}) {
    if (!VornIsPlan(type)) {
      report.notes.push_back(Utf8(type) +
                             " is not the type of a plan surface: crossings are not sought on it any more.");
    }
    if (left == right) break;
  }
}

}  // namespace

EditReport DesignEditor::Retype(const CString& left, const CString& right) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  BySection<Retyping> retypings(m_document.sets);
  ForEachSection(report, [&](const Site& site) -> std::string {
    Vorn_BuildFormArray& forms = site.section.GetBuildFormArray();
    Retyping& retyping = retypings.At(site.setIndex, site.index);
    retyping = {NameOf(forms, 0), NameOf(forms, 1), forms.GetSize() > 1 && IsPlan(forms[1])};
    if (const char* reason = WhyNotRetyped(forms, left == right)) {
      report.remarks.push_back({site.Path(), reason});
      return {};
    }
    RequireFreeNames(site.Path(), forms, left, right);
    if (IsEdition20(m_document.edition)) {
      for (VornBuildForm& form : forms) TellSides(form);
    }
    return RetypeForms(site.section, left, right, retyping, report);
  });
  if (report.HasChanged()) NoteLostPlanSurfaces(left, right, report);
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    SectionIndex sections(set);
    ForEachTargetPoint(set, sections, [&](VornFormCtrlTargetPnt& point, int section) {
      FollowRetyping(point, retypings.At(i, section), set.GetXSectionArray()[section].GetBuildFormArray(),
                     sections.FormsOf(section));
    });
  }
  Finish(report);
  return report;
}

namespace {

/// Sorting starts numbering over, and the forms keep their serials: the next form must not get one of these.
void RaiseNextSerial(Vorn_BuildFormArray& forms) {
  for (int i = 0; i < forms.GetSize(); ++i) forms.SetSerialID(i, false);
}

}  // namespace

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
    RaiseNextSerial(site.section.GetBuildFormArray());
    const std::string after = FormNames(site.section);
    return after == before ? std::string() : "order " + after;
  });
  Finish(report);
  return report;
}

EditReport DesignEditor::RemoveForm(const CString& name) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  BySection<bool> removed(m_document.sets);
  int ownTargets = 0;  // of the forms themselves, as edition 2.0 holds them
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    const int before = section.GetBuildFormArray().GetSize();
    const int targetsBefore = CountTargets(section.GetBuildFormArray());
    CString newSurface;
    section.RemoveBuildForm(name, newSurface);
    const int count = before - section.GetBuildFormArray().GetSize();
    if (count > 0 && section.GetBuildFormArray().IsEmpty()) {
      throw EditError(site.Path(), "the form " + Utf8(name) + " is the only one, and a cross section needs one");
    }
    removed.At(site.setIndex, site.index) = count > 0;
    report.Add("forms removed", count);
    ownTargets += targetsBefore - CountTargets(section.GetBuildFormArray());
    if (count == 0) return {};
    return Utf8(name) + " removed" +
           (newSurface.IsEmpty() ? "" : "; " + Utf8(newSurface) + " is the design surface now");
  });
  report.Add("control targets removed with their form", ownTargets);
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    const std::vector<TargetFate> fates =
        RemoveTargetsOn(set, name, [&](int section) { return removed.At(i, section); });
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
  const std::vector<std::string> dangling = DanglingTargets(m_document);
  EditReport report;
  BySection<bool> renamed(m_document.sets);
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    const bool hit = oldName != newName && section.IsUsedBuildName(xsectType, oldName);
    if (hit && HasForm(section, newName)) {
      throw EditError(site.Path(), "there is a form " + Utf8(newName) + " already");
    }
    if (hit) section.RenameBuildForm(xsectType, oldName, newName);
    // While another form keeps the old name, control targets of that name stay with it.
    renamed.At(site.setIndex, site.index) = hit && !HasForm(section, oldName);
    return hit ? Utf8(oldName) + " is " + Utf8(newName) + " now" : std::string();
  });
  int points = 0;
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    SectionIndex sections(set);
    ForEachTargetPoint(set, sections, [&](VornFormCtrlTargetPnt& point, int section) {
      if (point.GetBuildFormName() != oldName) return;
      if (!renamed.At(i, section)) return;
      if (sections.FormsOf(section).Find(newName, point.GetCode()) < 0) return;  // it named nothing before
      point.SetBuildFormName(newName);
      ++points;
    });
  }
  FollowDangling(dangling);
  report.Add("points of control targets renamed", points);
  Finish(report);
  return report;
}

}  // namespace vorn_host
