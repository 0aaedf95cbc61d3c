// The editor's step that regulates control targets.

#include "host/editing/design_editor.h"
#include "host/editing/set_targets.h"

namespace vorn_host {

namespace {

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

}  // namespace

EditReport DesignEditor::RegulateTargets() {
  const EditionScope scope(m_document.edition);
  EditReport report;
  RegulationCount total;
  int withoutSection = 0;
  BySection<RegulationCount> counts(m_document.sets);
  std::vector<SectionIndex> indexes;
  for (int i = 0; i < m_document.sets.GetSize(); ++i) {
    VornXSections& set = m_document.sets[i];
    indexes.emplace_back(set);
    if (IsEdition20(m_document.edition)) continue;
    const std::vector<TargetFate> result = RegulateTargetsOf(set.GetFormCtrlTargetArray(), set, indexes.back());
    total.Add(result);
    for (const TargetFate& fate : result) {
      if (fate.section >= 0) counts.At(i, fate.section).Add(fate);
      if (fate.irregular && fate.section < 0) ++withoutSection;
    }
    m_follower.FollowTargets(i, result);
  }
  ForEachSection(report, [&](const Site& site) -> std::string {
    RegulationCount& count = counts.At(site.setIndex, site.index);
    for (VornBuildForm& form : site.section.GetBuildFormArray()) {
      const std::vector<TargetFate> result = IsEdition20(m_document.edition)
                                                 ? RegulateTargetsOf20(form, site.section.GetCumulativeDist())
                                                 : RegulateTargetsOf(form.GetFormCtrlTargetArray(), site.set,
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
