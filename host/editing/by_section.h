#pragma once

#include <cstddef>
#include <vector>

#include "vorn/model/x_sections.h"

namespace vorn_host {

/// A value for every cross section of a design, by the indices of set and section.
template <class T>
class BySection {
 public:
  /// Each value as it is made by default.
  explicit BySection(const Vorn_XSectionsArray& sets) {
    for (const VornXSections& set : sets) {
      m_values.emplace_back(static_cast<std::size_t>(set.GetXSectionArray().GetSize()));
    }
  }

  /// The value of a section that the design had when the values were made.
  [[nodiscard]] T& At(int set, int section) {
    return m_values[static_cast<std::size_t>(set)][static_cast<std::size_t>(section)].value;
  }

 private:
  /// So that truth values have addresses, too.
  struct Held {
    T value{};
  };

  std::vector<std::vector<Held>> m_values;
};

}  // namespace vorn_host
