#pragma once

#include <cstdint>

#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/array.h"
#include "vorn/framework/base.h"
#include "vorn/model/x_section.h"

/// The design cross sections of one road alignment and one vertical alignment, ordered by station, with the set's own
/// control targets. Element "tsf:XSections".
class VornXSections : public Vorn_Base {
 public:
  /// What the shortest record takes, one with empty texts and collections: a larger number would refuse sound archives.
  static constexpr std::uint32_t kLeastArchiveBytes = 10;

  VornXSections();
  VornXSections(const VornXSections&) = default;
  VornXSections(VornXSections&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornXSections& operator=(const VornXSections& other) { return *this = VornXSections(other); }
  VornXSections& operator=(VornXSections&&) noexcept = default;

  /// From edition 4.0 on the build forms' control targets are first gathered into the set's own, behind those that are
  /// there already. Whoever writes more than once resets the set's targets in between.
  bool toXML(PimIterator* cursor) override;
  /// Orders the cross sections once they are read.
  bool fromXML(PimIterator* cursor) override;
  /// Both alignments are named, and there is at least one cross section, each enabled.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);
  /// The record of store versions up to "03.00": the names of the alignments and the cross sections.
  virtual void SerializeOld(CArchive& ar, const CString& tag);

  /// Name of the road alignment.
  [[nodiscard]] const CString& GetRefAlign() const { return m_refAlign; }
  [[nodiscard]] CString& GetRefAlign() { return m_refAlign; }
  void SetRefAlign(const CString& name) { m_refAlign = name; }
  /// Name of the vertical alignment.
  [[nodiscard]] const CString& GetRefVertical() const { return m_refVertical; }
  [[nodiscard]] CString& GetRefVertical() { return m_refVertical; }
  void SetRefVertical(const CString& name) { m_refVertical = name; }
  /// The cross sections, ordered by station.
  [[nodiscard]] const Vorn_XSectionArray& GetXSectionArray() const { return m_xSectionArray; }
  [[nodiscard]] Vorn_XSectionArray& GetXSectionArray() { return m_xSectionArray; }
  void SetXSectionArray(const Vorn_XSectionArray& sections) { m_xSectionArray = sections; }
  /// Phase of the project, from edition 4.0 on (attribute "projectPhase").
  [[nodiscard]] const CString& GetProjectPhase() const { return m_projectPhase; }
  [[nodiscard]] CString& GetProjectPhase() { return m_projectPhase; }
  void SetProjectPhase(const CString& phase) { m_projectPhase = phase; }
  /// Whether the sections stand on an alignment (attribute "alignment", written only when false).
  [[nodiscard]] const bool& GetAlignment() const { return m_alignment; }
  [[nodiscard]] bool& GetAlignment() { return m_alignment; }
  void SetAlignment(const bool& alignment) { m_alignment = alignment; }
  /// The set's own control targets; from edition 4.0 on documents hold them here.
  [[nodiscard]] const Vorn_FormCtrlTargetArray& GetFormCtrlTargetArray() const { return m_formCtrlTargetArray; }
  [[nodiscard]] Vorn_FormCtrlTargetArray& GetFormCtrlTargetArray() { return m_formCtrlTargetArray; }
  void SetFormCtrlTargetArray(const Vorn_FormCtrlTargetArray& targets) { m_formCtrlTargetArray = targets; }
  /// A flag of the host: neither documents nor archives hold it.
  [[nodiscard]] const bool& GetHiErr() const { return m_hiErr; }
  [[nodiscard]] bool& GetHiErr() { return m_hiErr; }
  void SetHiErr(const bool& hiErr) { m_hiErr = hiErr; }

  /// Index of the first section less than 1e-6 m from the station with that change-of-shape flag; -1 when there is
  /// none. Two sections share a station when one of them marks the change of shape.
  [[nodiscard]] int Find(const NurReal& station, bool xSectChg) const;
  /// `VornXSection::GetBuildForm` of the section that `Find` finds; null when there is none.
  [[nodiscard]] VornBuildForm* GetBuildForm(const NurReal& station, const CString& formName, bool xSectChg,
                                            const CString* pointName);
  /// Renames the referenced road alignment when it has the old name (exactly).
  void ChangeRefAlign(const CString& oldName, const CString& newName);

 protected:
  /// Appends copies of all build forms' control targets to the set's own.
  void ConvFormCtrlTarget();
  /// Appends a target point with the target's codes at a station (metres).
  static void CreateFormCtrlTargetPnt(VornFormCtrlTarget& target, NurReal distance);
  /// Orders the sections by station; at one station the section with the change-of-shape flag comes second.
  void ReformSelf();

 private:
  void ReadAttribute(std::string_view name, std::string_view value);

  CString m_refAlign;
  CString m_refVertical;
  Vorn_XSectionArray m_xSectionArray;
  CString m_projectPhase;
  bool m_alignment = true;
  Vorn_FormCtrlTargetArray m_formCtrlTargetArray;
  bool m_hiErr = false;
};

/// All cross-section sets of a document.
class Vorn_XSectionsArray : public Vorn_Array<VornXSections> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:XSections"; }

  /// Removes all sets.
  void Initialize() { RemoveAll(); }
  /// `VornXSections::ChangeRefAlign` of every set.
  void ChangeRefAlign(const CString& oldName, const CString& newName);
};
