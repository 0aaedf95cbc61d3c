#pragma once

#include <cstdint>

#include "vorn/framework/array.h"
#include "vorn/framework/base.h"
#include "vorn/framework/identifier.h"
#include "vorn/model/build_form_array.h"
#include "vorn/model/existing_build_form.h"
#include "vorn/platform/kel_point_array.h"

class VornGroundProfile;

/// One design cross section at one station of the centre line: its build forms and, from edition 4.0 on, the existing
/// ground measured there. Element "tsf:XSection".
class VornXSection : public Vorn_Base {
 public:
  VornXSection();
  VornXSection(const VornXSection&) = default;
  VornXSection(VornXSection&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornXSection& operator=(const VornXSection& other) { return *this = VornXSection(other); }
  VornXSection& operator=(VornXSection&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The station is set, and there is at least one build form, each enabled.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);
  /// The record of store versions up to "03.00". Writing it keeps nothing but the build forms: intended, old programs
  /// read no more.
  virtual void SerializeOld(CArchive& ar, const CString& tag);

  /// Non-zero: the existing ground is written to documents. Reading sets it.
  [[nodiscard]] const std::int32_t& GetExistingFlag() const { return m_existingFlag; }
  void SetExistingFlag(const std::int32_t& flag) { m_existingFlag = flag; }
  /// Section identifier of the project archive; `kVornNoID` when unassigned.
  [[nodiscard]] const std::uint32_t& GetSectionID() const { return m_sectionID; }
  void SetSectionID(const std::uint32_t& id) { m_sectionID = id; }
  /// Name of the cross section, such as "No.6" (attribute "name").
  [[nodiscard]] const CString& GetName() const { return m_name; }
  [[nodiscard]] CString& GetName() { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Whether this is an as-built control section.
  [[nodiscard]] const bool& GetControlSect() const { return m_controlSect; }
  [[nodiscard]] bool& GetControlSect() { return m_controlSect; }
  void SetControlSect(const bool& controlSect) { m_controlSect = controlSect; }
  /// Whether the shape of the section changes here: the section behind the change carries the flag.
  [[nodiscard]] const bool& GetXSectChg() const { return m_xSectChg; }
  [[nodiscard]] bool& GetXSectChg() { return m_xSectChg; }
  void SetXSectChg(const bool& xSectChg) { m_xSectChg = xSectChg; }
  /// Height of the centre line in metres.
  [[nodiscard]] const NurReal& GetHeight() const { return m_height; }
  /// The mutable getter keeps the spelling that hosts call.
  [[nodiscard]] NurReal& GetHeigt() { return m_height; }
  /// Sets the height of the centre line in metres.
  void SetHeight(const NurReal& height) { m_height = height; }
  /// The station: cumulative distance along the centre line in metres.
  [[nodiscard]] const NurReal& GetCumulativeDist() const { return m_cumulativeDist; }
  [[nodiscard]] NurReal& GetCumulativeDist() { return m_cumulativeDist; }
  void SetCumulativeDist(const NurReal& dist) { m_cumulativeDist = dist; }
  /// The build forms: the design surface and what is derived from it.
  [[nodiscard]] const Vorn_BuildFormArray& GetBuildFormArray() const { return m_buildFormArray; }
  [[nodiscard]] Vorn_BuildFormArray& GetBuildFormArray() { return m_buildFormArray; }
  void SetBuildFormArray(const Vorn_BuildFormArray& forms) { m_buildFormArray = forms; }
  /// Shift of the section in metres, upward.
  [[nodiscard]] const NurReal& GetShiftGH() const { return m_shiftGH; }
  [[nodiscard]] NurReal& GetShiftGH() { return m_shiftGH; }
  void SetShiftGH(const NurReal& shift) { m_shiftGH = shift; }
  /// Shift of the section in metres, sideways.
  [[nodiscard]] const NurReal& GetShiftDist() const { return m_shiftDist; }
  [[nodiscard]] NurReal& GetShiftDist() { return m_shiftDist; }
  void SetShiftDist(const NurReal& shift) { m_shiftDist = shift; }
  /// The existing ground, from edition 4.0 on.
  [[nodiscard]] const VornExistingBuildFormArray& GetExistingBuildFormArray() const { return m_existingBuildFormArray; }
  [[nodiscard]] VornExistingBuildFormArray& GetExistingBuildFormArray() { return m_existingBuildFormArray; }
  void SetExistingBuildFormArray(const VornExistingBuildFormArray& forms) { m_existingBuildFormArray = forms; }
  /// Kept as the document writes it, not converted.
  [[nodiscard]] const CString& GetDirectionAngle() const { return m_directionAngle; }
  [[nodiscard]] CString& GetDirectionAngle() { return m_directionAngle; }
  void SetDirectionAngle(const CString& angle) { m_directionAngle = angle; }
  /// Identifier of a survey point, kept as the document writes it.
  [[nodiscard]] const CString& GetTargetPntID() const { return m_targetPntID; }
  [[nodiscard]] CString& GetTargetPntID() { return m_targetPntID; }
  void SetTargetPntID(const CString& id) { m_targetPntID = id; }

  /// Index of the first build form of that name (exactly) that, when pointName is given, has a point of that code;
  /// -1 when there is none.
  [[nodiscard]] int Find(const CString& formName, const CString* pointName) const;
  /// The form that `Find` finds. Without one and without a pointName, the first form when any of its points carries
  /// formName as cross-section name in either role. Otherwise null.
  [[nodiscard]] VornBuildForm* GetBuildForm(const CString& formName, const CString* pointName);
  /// Main code of the first form's point with that serial; empty when there is none. Only the first form is searched.
  [[nodiscard]] CString FindNameFromID(std::uint32_t serialID) const;
  /// Whether a form has that cross-section type and that name.
  [[nodiscard]] bool IsUsedBuildName(const CString& xsectType, const CString& formName) const;
  /// Renames every form of that type and name, with its control targets.
  void RenameBuildForm(const CString& xsectType, const CString& oldName, const CString& newName);

  // Editing (cross_section_editing.cpp).

  /// Moves every placed point sideways from the stored shift to the new one (metres), and stores both. Heights stay,
  /// whatever shiftGH is: intended, heights come from the vertical alignment. A point without a distance keeps none,
  /// and an unset shift counts as 0.
  void SetShiftData(const NurReal& shiftGH, const NurReal& shiftDist);
  /// (sideways, upward) in metres.
  [[nodiscard]] TamWorld2 GetShiftData() const { return {m_shiftDist.Value(), m_shiftGH.Value()}; }
  /// Decides which points of a side exist: those up to and including the first crossing point, and later crossing
  /// points. A crossing point is one that its form does not go on through (`SeriesPnt` false).
  static void RegulateComposedPnt(Vorn_ComposedPntArray& points, VornLocation side);
  /// As above, for both sides of every build form.
  void RegulateComposedPnt();
  /// `ChangeDist` of the control targets of every build form.
  void ChangeDist(const double& oldDist, const double& newDist, bool xSectChg);
  /// `ChangeDistH` of the control targets of every build form.
  void ChangeDistH(const double& oldDist, const double& newDist, bool xSectChg);
  /// Removes every control target for a length or an area.
  void RemoveFormH();
  /// Removes the build forms of that name (exactly), org surfaces excepted. When the design surface goes, every org
  /// surface takes its serial 0 over, or the first form when there is none.
  /// @param newSurfaceName receives the name of the form that took over (the last of several), otherwise empty
  void RemoveBuildForm(const CString& name, CString& newSurfaceName);
  /// Forgets the connections of all points and crossings, and with clearCode the codes of the points too.
  void ClearConnectInfo(bool clearCode);
  /// Empties both codes of every point.
  void ClearCode();
  /// Puts the build forms into the order of a list of names, compared without regard to case. The result has as many
  /// forms as before: forms that the list does not name are dropped and empty forms fill up the end, a form named
  /// twice comes twice as far as there is room, and numbering starts over. Intended: a host passes the list of all
  /// forms that it wants, so pass every name once.
  void SortBuildForms(const CStringArray& names);
  /// Mirrors the section, left for right: the build forms and the existing ground. Points without a side become left
  /// ones. All points but the centre ones get fresh serials, and references to them are not rewritten: intended.
  void SwapLR();

  // Crossings with the existing ground (cross_section_crossings.cpp). Positions are (height, distance from the centre
  // line), in metres.

  /// Whether the present (existing) ground is in use: the flag is set and the first existing ground form has points.
  [[nodiscard]] bool IsValidPres() const;
  /// Whether there is a crossing point on the left and one on the right, in any of the forms.
  [[nodiscard]] bool IsCrossPoint() const;
  /// Makes the last point of a side the crossing point, in every build form that has one.
  void ChangeCrossPoint(VornLocation side);
  /// Takes back the crossing points of a side: a KE point stays and becomes an ordinary one, with the part of its code
  /// behind the last "-"; all others are removed.
  void RemoveCrossPoint(VornLocation side);
  /// Makes a crossing point at a position: the first point that lies there is marked, or a new one ("XL", "XR") is
  /// inserted into the first segment of that side that passes there. A start point counts for either side. Only the
  /// first form that matches changes, of whatever type; without one nothing does. A side that is not left is the right.
  void InsertPoint(const TamWorld2& pos, VornLocation side);
  /// Appends where the plan-type forms of a side cross the first existing ground form, at most once for each design
  /// segment: on the earliest ground segment. Returns how many; 0 when the existing ground is not in use. A side that
  /// is not left is the right.
  int GetCrossPoint(VornLocation side, KelPointArray& points) const;
  /// Recomputes the crossing points of both sides: on each, the one farthest from the centre line; then which points
  /// exist. When memory runs out, crossing points may be gone that were not found again yet: another call finds them.
  void CalcCrossPoint();

  // Splitting, joining and retyping (cross_section_typing.cpp). `forms` is the section's build form collection.

  /// Joins the second build form into the first: its points but the start point, with fresh serials, its control
  /// targets but those for a height without a side, and its `GetExportForm`. Fewer than two forms stay as they are.
  static void MakeOneBuildForm(Vorn_BuildFormArray& forms);
  /// Splits the first build form. The left points stay; the second form, named type, gets a copy of the start point and
  /// all others. Control targets of the left stay, those without a side are in both forms afterwards, the others go
  /// over; when the forms have targets across both sides (`IsRoadWL_R`), those of the first form are removed, but of
  /// two adjacent ones only the first. Both forms bear one serial afterwards: intended (a form without a serial stays
  /// so, and its right half is numbered). An empty collection throws `CInvalidArgException`.
  static void DevideBuildForm(Vorn_BuildFormArray& forms, const CString& type);
  /// Gives the section one work type, or two different ones for its left and its right: with one plan-type form, that
  /// is split when the types differ; with two, they are joined when the types are equal. Any other number of plan-type
  /// forms changes nothing.
  void ChangeXSectType(const CString& type1, const CString& type2);

 private:
  void ReadAttribute(std::string_view name, std::string_view value);
  [[nodiscard]] KelPointArray Crossings(const VornGroundProfile& ground, VornLocation side) const;
  void InsertOutermostCrossing(const VornGroundProfile& ground, VornLocation side);

  std::int32_t m_existingFlag = 0;
  std::uint32_t m_sectionID = kVornNoID;
  CString m_name;
  bool m_controlSect = false;
  bool m_xSectChg = false;
  NurReal m_height;
  NurReal m_cumulativeDist;
  Vorn_BuildFormArray m_buildFormArray;
  NurReal m_shiftGH = 0.0;
  NurReal m_shiftDist = 0.0;
  VornExistingBuildFormArray m_existingBuildFormArray;
  CString m_directionAngle;
  CString m_targetPntID;
};

/// The cross sections of a set, ordered by station.
class Vorn_XSectionArray : public Vorn_Array<VornXSection> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::OneOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:XSection"; }

  /// Index of the first section less than 1e-6 m from the station; -1 when there is none.
  [[nodiscard]] int Find(const double& station) const;
  /// Inserts a copy in the order of stations, behind a section at the same station (within 1e-6 m). Always true.
  bool Insert(const VornXSection& section);
  /// The sections on either side of a station. False when the station lies on a section (both outputs null), before
  /// the first (before keeps what the caller passed: pass null) or behind the last section (after is untouched).
  bool QueryNearSection(const double& station, VornXSection*& before, VornXSection*& after);
  /// Whether any section has a form of that cross-section type and name.
  [[nodiscard]] bool IsUsedBuildName(const CString& xsectType, const CString& formName) const;
  /// Mirrors every section.
  void SwapLR();
};
