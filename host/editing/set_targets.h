#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/document/design_document.h"
#include "host/document/section_index.h"

namespace vorn_host {

// From edition 4.0 on, the control targets belong to the set and name stations, forms and codes: whatever changes these
// has to change the targets too.

/// Calls visit(target point, index of its section) for every target point of a set, and of the forms in it, that stands
/// on a cross section.
/// @param sections those of the set
template <typename Visit>
void ForEachTargetPoint(VornXSections& set, const SectionIndex& sections, Visit&& visit) {
  const auto visitAll = [&](Vorn_FormCtrlTargetArray& targets) {
    for (VornFormCtrlTarget& target : targets) {
      for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
        const int section = sections.Find(point.GetCumulativeDist(), point.GetXSectChg());
        if (section >= 0) visit(point, section);
      }
    }
  };
  visitAll(set.GetFormCtrlTargetArray());
  for (VornXSection& section : set.GetXSectionArray()) {
    for (VornBuildForm& form : section.GetBuildFormArray()) visitAll(form.GetFormCtrlTargetArray());
  }
}

/// What became of a control target.
struct TargetFate {
  bool removed = false;    ///< the target is gone
  bool swapped = false;    ///< its two points changed places
  bool reordered = false;  ///< they did, or its type changed
  bool irregular = false;  ///< it cannot be put into the canonical form
  int section = -1;        ///< the cross section that it stands in
};

/// Removes the control targets of a set that have a point on a form of that name.
/// @param isMeant whether the section of an index is one in which they are removed
/// @returns what became of every target that the set had
[[nodiscard]] std::vector<TargetFate> RemoveTargetsOn(VornXSections& set, const CString& formName,
                                                      const std::function<bool(int)>& isMeant);

/// Where control targets name a form or a code that does not exist, one line each.
[[nodiscard]] std::vector<std::string> DanglingTargets(const DesignDocument& document);

/// By section: how many control targets of a set have a point there that does not exist (attribute "existence").
[[nodiscard]] std::vector<int> CountTargetsOnMissingPoints(const VornXSections& set);

/// Regulates targets of a set or of a form in it, against the placed points of its sections.
[[nodiscard]] std::vector<TargetFate> RegulateTargetsOf(Vorn_FormCtrlTargetArray& targets, const VornXSections& set,
                                                        SectionIndex& sections);
/// Regulates the targets of a form, as edition 2.0 holds them.
[[nodiscard]] std::vector<TargetFate> RegulateTargetsOf20(VornBuildForm& form, const NurReal& station);

}  // namespace vorn_host
