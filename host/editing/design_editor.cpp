#include "host/editing/design_editor.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "host/document/design_path.h"
#include "host/document/input_values.h"
#include "host/document/target_codes.h"
#include "host/editing/edit_pieces.h"
#include "host/editing/point_positions.h"
#include "host/editing/set_targets.h"

namespace vorn_host {

namespace {

/// Forms of a document come without serials. The first one is the design surface; none is marked as the org surface,
/// which a document does not know.
void NumberForms(Vorn_BuildFormArray& forms) {
  for (int i = 0; i < forms.GetSize(); ++i) {
    if (forms[i].GetSerialID() == kVornNoID) forms.SetSerialID(i, true);
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

int CountMoved(const std::vector<TamWorld2>& before, const std::vector<TamWorld2>& after) {
  int moved = 0;
  for (std::size_t i = 0; i < after.size(); ++i) moved += before[i] == after[i] ? 0 : 1;
  return moved;
}

/// Inserted crossing points are named for their side: "XL" is "XR" on the other one. All other codes stay.
CString MirroredCode(const CString& code) { return code == "XL" ? "XR" : code == "XR" ? "XL" : code; }

/// @param withTargets whether the form's control targets name the codes as texts
void SwapCrossingCodes(VornBuildForm& form, bool withTargets) {
  for (VornComposedPnt& point : form.GetComposedPntArray()) {
    if (MirroredCode(point.GetCode()) != point.GetCode()) point.SetCode(MirroredCode(point.GetCode()));
  }
  if (!withTargets) return;
  for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    if (target.GetCodeName().Find("X") < 0) continue;
    const CStringArray codes = CodesOf(target);
    CString mirrored;
    for (int i = 0; i < codes.GetSize(); ++i) mirrored += (i > 0 ? " " : "") + MirroredCode(codes[i]);
    target.SetCode(mirrored);
  }
}

}  // namespace

// --- frame -----------------------------------------------------------------------------------------------------------

std::string DesignEditor::Site::Path() const { return SectionPath(SetPath(set, setIndex), section); }

DesignEditor::DesignEditor(DesignDocument& document)
    : m_document(document), m_follower(document), m_elevationsKnown(document.sets) {
  const EditionScope scope(document.edition);
  m_danglingBefore = DanglingTargets(document);
  for (int i = 0; i < document.sets.GetSize(); ++i) {
    Vorn_XSectionArray& sections = document.sets[i].GetXSectionArray();
    for (int j = 0; j < sections.GetSize(); ++j) {
      VornXSection& section = sections[j];
      NumberForms(section.GetBuildFormArray());
      m_elevationsKnown.At(i, j) = ArePlaced(section);
      if (m_elevationsKnown.At(i, j)) continue;
      // Heights above the centre line, so that the shape is known while the elevation is not.
      NurReal dist;
      NurReal height;
      section.GetBuildFormArray().RegulateComposedPnt(NurReal(0.0), dist, height);
    }
  }
}

void DesignEditor::ForEachSection(EditReport& report, const EditSection& edit, bool mirrored) {
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
  if (!dropped.empty()) report.notes.emplace_back("Lost, with the element that held it: " + Describe(dropped));
}

void DesignEditor::NoteRoadGeometry(EditReport& report) const {
  if (!report.HasChanged() || !m_document.carried.HasRoadGeometry()) return;
  report.notes.emplace_back("The road geometry is carried over unchanged: it does not follow the cross sections.");
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

void DesignEditor::FollowDangling(const std::vector<std::string>& before) {
  const std::vector<std::string> after = DanglingTargets(m_document);
  if (after.size() != before.size()) return;
  std::multiset<std::string_view> known(m_danglingBefore.begin(), m_danglingBefore.end());
  std::vector<std::string> followed;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const auto same = known.find(before[i]);
    if (same == known.end()) continue;
    known.erase(same);
    followed.push_back(after[i]);
  }
  followed.insert(followed.end(), known.begin(), known.end());
  m_danglingBefore = std::move(followed);
}

// --- steps on whole sections -----------------------------------------------------------------------------------------

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
    const bool wasKnown = std::exchange(m_elevationsKnown.At(site.setIndex, site.index), true);
    const int moved = wasKnown ? CountMoved(before, after) : static_cast<int>(after.size());
    report.Add("points placed", moved);
    return moved > 0 ? std::to_string(moved) + " points placed from height " + Metres(height.Value()) : std::string();
  });
  report.notes.emplace_back("Positions serve the steps that follow; a project keeps them, a document does not.");
  Finish(report);
  return report;
}

EditReport DesignEditor::Mirror() {
  const EditionScope scope(m_document.edition);
  const std::vector<std::string> dangling = DanglingTargets(m_document);
  EditReport report;
  ForEachSection(
      report,
      [&](const Site& site) -> std::string {
        if (site.section.GetBuildFormArray().IsEmpty() && site.section.GetExistingBuildFormArray().IsEmpty()) return {};
        for (const VornBuildForm& form : site.section.GetBuildFormArray()) RequireCentreStart(form, site.Path());
        site.section.SwapLR();
        for (VornBuildForm& form : site.section.GetBuildFormArray()) {
          ExpressPositions(form);
          SwapCrossingCodes(form, IsEdition20(m_document.edition));
        }
        return "left and right exchanged";
      },
      true);
  // A crossing that is not there changes its side too: a target that names it and the other one still names both.
  if (!IsEdition20(m_document.edition)) {
    for (VornXSections& set : m_document.sets) {
      ForEachTargetPoint(set, SectionIndex(set),
                         [](VornFormCtrlTargetPnt& point, int) { point.SetCode(MirroredCode(point.GetCode())); });
    }
  }
  FollowDangling(dangling);
  NoteRoadGeometry(report);
  Finish(report);
  return report;
}

EditReport DesignEditor::Shift(double dist, double height) {
  const EditionScope scope(m_document.edition);
  EditReport report;
  bool hasGround = false;
  ForEachSection(report, [&](const Site& site) -> std::string {
    VornXSection& section = site.section;
    if (section.GetBuildFormArray().IsEmpty() || (dist == 0.0 && height == 0.0)) return {};
    if (dist != 0.0) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) RequireCentreStart(form, site.Path());
    }
    const TamWorld2 stored = section.GetShiftData();
    const std::vector<TamWorld2> before = PositionsOf(section);
    section.SetShiftData(stored.y + height, stored.x + dist);
    ExpressSection(section);
    if (dist == 0.0) return Metres(height) + " upward noted";
    report.Add("points shifted", CountMoved(before, PositionsOf(section)));
    hasGround = hasGround || section.IsValidPres();
    return "shifted by " + Metres(dist) + " sideways" + (height == 0.0 ? "" : "; " + Metres(height) + " upward noted");
  });
  if (height != 0.0) {
    report.notes.emplace_back(
        "The shift in height is kept with the cross sections and moves no point; documents do not hold it.");
  }
  if (hasGround) {
    report.notes.emplace_back("The existing ground stays where it is: the crossings with it have to be recomputed.");
  }
  NoteRoadGeometry(report);
  Finish(report);
  return report;
}

EditReport DesignEditor::ClearCodes() {
  using PntType = VornComposedPnt::PntType;
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

}  // namespace vorn_host
