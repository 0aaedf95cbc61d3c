#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/document/name_index.h"
#include "vorn/model/x_sections.h"

namespace vorn_host {

/// The section, the form and the point that a point of a control target stands on.
struct Standing {
  int section = -1;  ///< index in the set; -1 when there is none
  int form = -1;     ///< index in the section: of the first of its name that has the code, else of the first; or -1
  int point = -1;    ///< index in the form; -1 when no form of that name has the code
};
/// Why a target's point stands on no form: "there is no form A at station 20.0000". Empty when it stands on one.
[[nodiscard]] std::string WhyWithoutForm(const VornFormCtrlTargetPnt& point, const Standing& standing);

/// Finds the cross sections of a set by station: the answers of `VornXSections::Find`, in O(log n) each where stations
/// are apart. But a section without a station is not taken for one at station 0: what is measured there would be shown
/// in the wrong section. What control targets name in the sections is found too.
class SectionIndex {
 public:
  /// The set has to outlive the index and to stay as it is meanwhile, but for its control targets.
  explicit SectionIndex(const VornXSections& set);

  /// Index of the first section less than 1e-6 m from the station with that change-of-shape flag; -1 without one. A
  /// station that is not set finds the first section without one.
  [[nodiscard]] int Find(const NurReal& station, bool xSectChg) const;

  /// Finds where a target's point stands by its station, the name of its form and its code.
  [[nodiscard]] Standing FindStanding(const VornFormCtrlTargetPnt& point);

  /// Finds forms and points of a section.
  [[nodiscard]] FormIndex& FormsOf(int section);

 private:
  /// The sections before, or behind, a change of shape.
  struct Side {
    std::vector<std::pair<double, int>> byStation;  ///< in order; of sections at the same station the first
    int withoutStation = -1;                        ///< the first
  };

  const Vorn_XSectionArray* m_sections;
  std::array<Side, 2> m_sides;
  std::unordered_map<int, FormIndex> m_forms;  ///< by section, of those that were asked for
};

}  // namespace vorn_host
