#pragma once

#include <vector>

#include "vorn/model/x_sections.h"
#include "vorn/road/alignment.h"

namespace vorn_host {

/// Whose alignments the sets of a design are. Applications insert, remove, rename and exchange alignments as they like,
/// so a set's alignment is known by itself and by its name, not by its place.
class SetPlaces {
 public:
  /// Notes the alignments at these places, ascending, as those of the sets, in order.
  void Remember(VornAlignmentsArray& alignments, const std::vector<int>& places);
  /// Notes that the sets are handed out: their alignments refer to nothing until they are back.
  void HandOut();

  /// How many sets there are.
  [[nodiscard]] int GetSize() const { return static_cast<int>(m_sets.size()); }
  /// What a set referred to when it was remembered.
  [[nodiscard]] const CString& ReferenceOf(int set) const { return m_sets[static_cast<std::size_t>(set)].given; }

  /// For each set, the index of its alignment now; -1 for one whose alignment is gone.
  [[nodiscard]] std::vector<int> Find(const VornAlignmentsArray& alignments) const;

  /// For each set of a design, which of the remembered ones it is, -1 for a new one: the one with the same references,
  /// with the same road alignment, or on an alignment of that name. What is left is the set in the same place.
  /// @param found the alignments of the remembered sets; those without one are nobody's any more
  [[nodiscard]] std::vector<int> Match(const Vorn_XSectionsArray& sets, const VornAlignmentsArray& alignments,
                                       const std::vector<int>& found) const;

 private:
  struct Set {
    /// Stays the same while its alignment is moved about in the array. Another may have it once that is gone.
    const VornXSections* object;
    CString name;       ///< of the alignment
    CString reference;  ///< of the set in the road data, empty while it is handed out
    CString given;      ///< of the set in the design
    CString vertical;   ///< the same of the vertical alignment
  };

  std::vector<Set> m_sets;
};

/// Gives every set of a design its alignment and takes the others away that had one; alignments without a set keep
/// their order. The current alignment stays the current one, or when it is one that goes, gives way to the next.
/// @param found the alignments that had sets, -1 for none
/// @param chosen for each set, the one of these that becomes its alignment, -1 for a new one
/// @returns the indices of the sets' alignments, ascending
std::vector<int> ArrangeAlignments(VornAlignmentsArray& alignments, const std::vector<int>& found,
                                   const std::vector<int>& chosen);

}  // namespace vorn_host
