#pragma once

#include <optional>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "vorn/model/build_form_array.h"

namespace vorn_host {

// Control targets name forms and codes. What they name is found as the library's own look-ups find it, but a section or
// a form that holds much is looked through once for all of its targets, not once for each. The indexes are sorted: no
// choice of names makes them slow.

/// Finds the points of a form by code: the answers of `Vorn_ComposedPntArray::Find`.
class PointIndex {
 public:
  /// The points have to outlive the index and to stay as they are meanwhile.
  explicit PointIndex(const Vorn_ComposedPntArray& points) : m_points(&points) {}

  /// Index of the first point with that code; -1 without one.
  [[nodiscard]] int Find(const CString& code);

 private:
  const Vorn_ComposedPntArray* m_points;
  std::optional<std::vector<std::pair<std::string_view, int>>> m_codes;  ///< in order; where there are many points
};

/// Finds the forms of a cross section by name, and their points: the answers of `VornXSection::Find`.
class FormIndex {
 public:
  /// The forms have to outlive the index and to stay as they are meanwhile, but for their control targets.
  explicit FormIndex(const Vorn_BuildFormArray& forms);

  /// Index of the first form of that name; -1 without one.
  [[nodiscard]] int Find(const CString& name);
  /// Index of the first form of that name that has a point with that code; -1 without one.
  [[nodiscard]] int Find(const CString& name, const CString& code);
  /// Index of the first point with that code in a form of the section, which has to be there; -1 without one.
  [[nodiscard]] int FindPoint(int form, const CString& code);

 private:
  /// What many forms are found by, each in order.
  struct Names {
    std::vector<std::pair<std::string_view, int>> forms;
    std::vector<std::tuple<int, std::string_view, int>> codes;  ///< first form of a name, code, form that has it
  };

  [[nodiscard]] bool IsLarge() const;
  [[nodiscard]] const Names& NamesOfMany();

  const Vorn_BuildFormArray* m_forms;
  std::vector<PointIndex> m_points;  ///< by form
  std::optional<Names> m_names;      ///< where there are many forms
};

}  // namespace vorn_host
