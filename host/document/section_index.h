#pragma once

#include <string>
#include <utility>
#include <vector>

#include "vorn/model/x_sections.h"

namespace vorn_host {

/// Finds the cross sections of a set by station: the answers of `VornXSections::Find`, in O(log n) each. But a section
/// without a station is not taken for one at station 0: what is measured there would be shown in the wrong section.
class SectionIndex {
 public:
  /// The set has to outlive the index and to stay as it is meanwhile.
  explicit SectionIndex(const VornXSections& set);

  /// Index of the first section less than 1e-6 m from the station with that change-of-shape flag; -1 without one. A
  /// station that is not set finds the first section without one.
  [[nodiscard]] int Find(const NurReal& station, bool xSectChg) const;

 private:
  [[nodiscard]] bool IsBehindChange(int section) const { return m_sections[section].GetXSectChg(); }

  const Vorn_XSectionArray& m_sections;
  std::vector<std::pair<double, int>> m_byStation;
  std::vector<int> m_withoutStation;
};

/// The section and the form that a point of a control target stands on.
struct Standing {
  int section = -1;     ///< index in the set; -1 when there is none
  int form = -1;        ///< index in the section; -1 when there is none
  std::string missing;  ///< "there is no form A at station 20.0000"; empty when there are both
};
/// Finds where a target's point stands by its station and the name of its form.
/// @param sections those of the set
[[nodiscard]] Standing FindStanding(const VornFormCtrlTargetPnt& point, const VornXSections& set,
                                    const SectionIndex& sections);

}  // namespace vorn_host
