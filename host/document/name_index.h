#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "vorn/model/build_form_array.h"

namespace vorn_host {

// Control targets name forms and codes. What they name is found as the library's own look-ups find it, but a section or
// a form that holds much is looked through once for all of its targets, not once for each.

/// Finds the points of a form by code: the answers of `Vorn_ComposedPntArray::Find`.
class PointIndex {
 public:
  /// The points have to outlive the index and to stay as they are meanwhile.
  explicit PointIndex(const Vorn_ComposedPntArray& points) : m_points(&points) {}

  /// Index of the first point with that code; -1 without one.
  [[nodiscard]] int Find(const CString& code);

 private:
  const Vorn_ComposedPntArray* m_points;
  std::unordered_map<std::string_view, int> m_firstOf;  ///< by code; empty until it is worth its while
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
  /// Index of the first point with that code in a form of the section; -1 without one.
  [[nodiscard]] int FindPoint(int form, const CString& code);

 private:
  /// The forms of one name.
  struct Namesakes {
    int first = -1;
    std::unordered_map<std::string_view, int> formOf;  ///< by code: the first form that has it
  };

  [[nodiscard]] bool IsLarge() const;
  /// The forms of that name, where there are many forms; null without one.
  [[nodiscard]] const Namesakes* FindNamesakes(const CString& name);

  const Vorn_BuildFormArray* m_forms;
  std::vector<PointIndex> m_points;                             ///< by form
  std::unordered_map<std::string_view, Namesakes> m_namesakes;  ///< by name; empty until it is worth its while
};

}  // namespace vorn_host
