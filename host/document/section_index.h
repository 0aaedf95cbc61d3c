#pragma once

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

}  // namespace vorn_host
