#pragma once

#include <utility>
#include <vector>

#include "vorn/model/x_sections.h"

namespace vorn_host {

/// Finds the cross sections of a set by station: the answers of `VornXSections::Find`, in O(log n) each.
class SectionIndex {
 public:
  explicit SectionIndex(const VornXSections& set);

  /// Index of the first section less than 1e-6 m from the station with that change-of-shape flag; -1 without one.
  [[nodiscard]] int Find(const NurReal& station, bool xSectChg) const;

 private:
  const Vorn_XSectionArray& m_sections;
  std::vector<std::pair<double, int>> m_byStation;
};

}  // namespace vorn_host
