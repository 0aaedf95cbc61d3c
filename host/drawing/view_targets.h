#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/document/name_index.h"
#include "host/drawing/section_view.h"
#include "vorn/model/x_section.h"

namespace vorn_host {

/// Where forms and points of a cross section stand in its view; -1 for what is left out there.
struct ViewIndices {
  std::vector<int> forms;                ///< by form of the document: its index in the view
  std::vector<std::vector<int>> points;  ///< the same for its points
};

/// Looks at the control targets of one cross section, or of none. The edition has to be selected meanwhile.
class TargetViewer {
 public:
  /// @param section null for targets that stand in no section; has to outlive the viewer
  TargetViewer(bool edition20, const VornXSection* section, ViewIndices indices);

  /// Adds a target to the view of the section.
  /// @param owner index of the form that holds it; -1 for a target of the set itself
  void Add(SectionView& view, const VornFormCtrlTarget& target, int owner);

 private:
  /// Finds forms and points of the section, which has to be there.
  [[nodiscard]] FormIndex& Forms();
  /// A point of a form of the section; -1 both where it is not there or has no place.
  [[nodiscard]] ViewTarget::Pnt PntOf(int form, const CString& code, std::string name);
  void AddPointsByCode(ViewTarget& added, const VornFormCtrlTarget& target, int owner);
  void AddPointsByStation(ViewTarget& added, const VornFormCtrlTarget& target);
  [[nodiscard]] bool IsHere(const VornFormCtrlTargetPnt& point) const;

  bool m_edition20;
  const VornXSection* m_section;
  std::optional<FormIndex> m_forms;  ///< of the section, once it was asked for
  ViewIndices m_indices;
};

}  // namespace vorn_host
