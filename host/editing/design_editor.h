#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/document/design_document.h"
#include "host/editing/by_section.h"
#include "host/editing/carried_follower.h"
#include "host/editing/edit_report.h"

namespace vorn_host {

/// Edits the cross sections of a design, a step at a time, and keeps the rest of the document in step: input values
/// follow the positions, control targets follow their forms, and what is carried over follows its elements.
///
///     DesignEditor editor(document);
///     editor.Recalc(NurReal(62.5));
///     EditReport report = editor.RecalcCrossings();
///     document.Write("edited.xml");
///
/// A step that cannot be done throws `EditError`.
class DesignEditor {
 public:
  /// Numbers the build forms that have no serial yet; the document has to outlive the editor.
  explicit DesignEditor(DesignDocument& document);

  /// Positions of all points from the height of the centre line, in metres; unset takes each section's own height.
  EditReport Recalc(const NurReal& centerHeight);
  /// Recomputes the crossings with the existing ground in every section that has some. Their points have to be placed:
  /// heights of the ground are elevations.
  EditReport RecalcCrossings();
  /// Exchanges left and right. Codes stay with their points, but for inserted crossing points, which are named for
  /// their side.
  EditReport Mirror();
  /// Shifts the sections, from where they are: sideways, and upward (metres). The points move sideways only.
  EditReport Shift(double dist, double height);
  /// Gives the sections one work type, or different ones for left and right.
  EditReport Retype(const CString& left, const CString& right);
  /// Puts the forms that the list names first, in its order; the others follow in the order that they have.
  EditReport SortForms(const CStringArray& names);
  /// Removes the forms of that name, with the control targets on them.
  EditReport RemoveForm(const CString& name);
  /// Renames the forms of a cross-section type and a name, in the control targets too.
  EditReport RenameForm(const CString& xsectType, const CString& oldName, const CString& newName);
  /// Empties the codes of all points.
  EditReport ClearCodes();
  /// Puts the control targets into their canonical form, and removes repeated ones.
  EditReport RegulateTargets();

  /// Where control targets name a form or a code that does not exist, and did exist before the first step.
  [[nodiscard]] std::vector<std::string> LostTargets() const;

 private:
  /// A cross section that a step works on.
  struct Site {
    int setIndex = 0;
    int index = 0;
    VornXSections& set;
    VornXSection& section;

    [[nodiscard]] std::string Path() const;
  };

  /// Edits one section, and returns what changed, in words; an empty text when nothing.
  using EditSection = std::function<std::string(const Site&)>;

  /// @param mirrored whether the step puts the existing ground in reverse order
  void ForEachSection(EditReport& report, const EditSection& edit, bool mirrored = false);
  /// A step that moves the sections leaves the alignment that they stand on.
  void NoteRoadGeometry(EditReport& report) const;
  /// Ends a step.
  void Finish(EditReport& report);

  /// Notes how control targets that named nothing before a step are called after it. For steps that leave their number
  /// and order.
  /// @param before `DanglingTargets` before the step
  void FollowDangling(const std::vector<std::string>& before);

  /// Tells where control targets stand on points that do not exist (any more).
  void RemarkOnMissingPoints(EditReport& report) const;
  /// @param crossing the crossing point of a side, empty when there is none
  static void RemarkOnUnmet(const Site& site, const std::string& crossing, VornLocation side, EditReport& report);
  std::string RecalcCrossingsOf(const Site& site, EditReport& report);

  DesignDocument& m_document;
  CarriedFollower m_follower;
  BySection<bool> m_elevationsKnown;
  std::vector<std::string> m_danglingBefore;
};

}  // namespace vorn_host
