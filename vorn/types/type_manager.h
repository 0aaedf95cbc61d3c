#pragma once

#include "vorn/platform/cstring.h"
#include "vorn/platform/kel_array.h"
#include "vorn/types/form_attr.h"
#include "vorn/types/structure_type.h"

/// The build forms that each work type has, by name. Holds nothing itself: all tables are fixed.
class VornTypeManager {
 public:
  /// A list of forms.
  using List = KelArray<VornFormAttr>;

  /// Replaces the list by the forms of a work type in the current edition. Edition 2.0 has only fill and cut, for
  /// road and river earthwork, and never the other forms; later editions have road, river and other forms, and add
  /// the other ones on demand to any type, known or not.
  void Type(VornStructureType::Type type, List& list, bool includeOther) const;

  // Appending one table, whatever the edition.
  /// Appends the forms of road earthwork.
  void Road(List& list) const;
  /// Appends the forms of river earthwork.
  void River(List& list) const;
  /// Appends the forms of other work.
  void Other(List& list) const;

  /// The first form of that name in a list; null when there is none. Names are compared exactly, but half-width
  /// characters count as their full-width forms.
  [[nodiscard]] static const VornFormAttr* FindIn(const List& list, const CString& name);
  /// The form of that name among those of a work type. With allowBase the reference surface "基準面" is known to every
  /// type. A name that is not found gives the form "不明" (unknown) without flags, and false.
  bool Find(VornFormAttr& attr, VornStructureType::Type type, const CString& name, bool includeOther,
            bool allowBase) const;
  /// The form of that name in road earthwork, river earthwork or other work, in this order, with the other forms and
  /// the reference surface allowed. False, and the unknown form, when none of them has it.
  bool Find(VornFormAttr& attr, const CString& name) const;
};
