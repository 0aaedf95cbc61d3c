#pragma once

#include <cstdint>

#include "vorn/control/form_ctrl_target.h"
#include "vorn/framework/base.h"
#include "vorn/framework/identifier.h"
#include "vorn/model/composed_pnt_array.h"
#include "vorn/model/cross_point_info.h"

/// What a build form is for; further values belong to the host.
enum class TargetPntCategory : std::int32_t { None = 0, Structure = 1 };

/// One form of a cross section: a named polyline of composed points, such as the road surface with its
/// slopes and berms, a pavement layer or a structure, with the as-built control targets measured on it. Element
/// "tsf:BuildForm".
class VornBuildForm : public Vorn_Base {
 public:
  /// What the shortest record takes, one with empty texts and collections: a larger number would refuse sound archives.
  static constexpr std::uint32_t kLeastArchiveBytes = 18;
  /// Serial of the design surface.
  static constexpr std::uint32_t kSurfaceSerialID = 0;

  VornBuildForm();
  VornBuildForm(const VornBuildForm&) = default;
  VornBuildForm(VornBuildForm&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornBuildForm& operator=(const VornBuildForm& other) { return *this = VornBuildForm(other); }
  VornBuildForm& operator=(VornBuildForm&&) noexcept = default;

  /// Writes nothing, and succeeds, for an omitted or unexported form and for one with fewer than two points.
  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The name is not empty, and the points and the control targets are valid collections.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Non-zero: the form is not written to documents, in any edition.
  [[nodiscard]] const std::int32_t& GetOmitFlag() const { return m_omitFlag; }
  void SetOmitFlag(const std::int32_t& omit) { m_omitFlag = omit; }
  /// The name, by which control targets know the form (attribute "name").
  [[nodiscard]] const CString& GetName() const { return m_name; }
  /// A flag of the host; joining two forms takes the second one's over. Documents do not depend on it.
  [[nodiscard]] const std::int32_t& GetExportForm() const { return m_exportForm; }
  [[nodiscard]] std::int32_t& GetExportForm() { return m_exportForm; }
  void SetExportForm(const std::int32_t& exported) { m_exportForm = exported; }
  /// Running identifier within the cross section: 0 for the design surface, `kVornNoID` when unassigned.
  [[nodiscard]] const std::uint32_t& GetSerialID() const { return m_serialID; }
  [[nodiscard]] std::uint32_t& GetSerialID() { return m_serialID; }
  void SetSerialID(const std::uint32_t& id) { m_serialID = id; }
  /// Whether this is the org surface, which takes over when the design surface is removed.
  [[nodiscard]] const bool& IsOrgSurface() const { return m_orgSurface; }
  void SetOrgSurface(const bool& orgSurface) { m_orgSurface = orgSurface; }
  /// Identifier of the cross-section (work) type.
  [[nodiscard]] const std::uint32_t& GetXSectTypeID() const { return m_xSectTypeID; }
  /// Where the form crosses another one on the left.
  [[nodiscard]] const VornCrossPointInfo& GetCrossLeft() const { return m_crossLeft; }
  [[nodiscard]] VornCrossPointInfo& GetCrossLeft() { return m_crossLeft; }
  void SetCrossLeft(const VornCrossPointInfo& info) { m_crossLeft = info; }
  /// Where the form crosses another one on the right.
  [[nodiscard]] const VornCrossPointInfo& GetCrossRight() const { return m_crossRight; }
  [[nodiscard]] VornCrossPointInfo& GetCrossRight() { return m_crossRight; }
  void SetCrossRight(const VornCrossPointInfo& info) { m_crossRight = info; }
  /// Serial of the form that this one is derived from; `kVornNoID` for none.
  [[nodiscard]] const std::uint32_t& GetParentID() const { return m_parentID; }
  [[nodiscard]] std::uint32_t& GetParentID() { return m_parentID; }
  void SetParentID(const std::uint32_t& id) { m_parentID = id; }
  /// Index of the pavement set.
  [[nodiscard]] const std::uint8_t& GetPaveSetIdx() const { return m_paveSetIdx; }
  [[nodiscard]] std::uint8_t& GetPaveSetIdx() { return m_paveSetIdx; }
  void SetPaveSetIdx(const std::uint8_t& index) { m_paveSetIdx = index; }
  /// Text of the cross-section type (attribute "xSectType", from edition 4.0 on).
  [[nodiscard]] const CString& GetXSectType() const { return m_xSectType; }
  /// The points of the polyline.
  [[nodiscard]] const Vorn_ComposedPntArray& GetComposedPntArray() const { return m_composedPntArray; }
  [[nodiscard]] Vorn_ComposedPntArray& GetComposedPntArray() { return m_composedPntArray; }
  void SetComposedPntArray(const Vorn_ComposedPntArray& points) { m_composedPntArray = points; }
  /// The control targets that are measured on the form; edition 2.0 writes them here.
  [[nodiscard]] const Vorn_FormCtrlTargetArray& GetFormCtrlTargetArray() const { return m_formCtrlTargetArray; }
  [[nodiscard]] Vorn_FormCtrlTargetArray& GetFormCtrlTargetArray() { return m_formCtrlTargetArray; }
  void SetFormCtrlTargetArray(const Vorn_FormCtrlTargetArray& targets) { m_formCtrlTargetArray = targets; }
  /// What the form is for.
  [[nodiscard]] const TargetPntCategory& GetCategory() const { return m_category; }
  [[nodiscard]] TargetPntCategory& GetCategory() { return m_category; }
  void SetCategory(const TargetPntCategory& category) { m_category = category; }
  /// Non-zero: the form is written to documents. Edition 2.0 writes every form, and writing it sets this for good.
  [[nodiscard]] const std::int32_t& GetExport() const { return m_export; }
  [[nodiscard]] std::int32_t& GetExport() { return m_export; }
  void SetExport(const std::int32_t& exported) { m_export = exported; }

  /// Whether this is the design surface.
  [[nodiscard]] bool IsSurface() const { return m_serialID == kSurfaceSerialID; }
  /// Whether the form is a structure.
  [[nodiscard]] bool IsStructure() const { return m_category == TargetPntCategory::Structure; }
  /// Whether the form crosses another one on either side.
  [[nodiscard]] bool IsCrossPoint() const { return m_crossLeft.GetDist().IsSet() || m_crossRight.GetDist().IsSet(); }
  /// Whether a "Left Right" control target names points on two different sides. The first such target with a code
  /// that is not found decides for false.
  [[nodiscard]] bool IsRoadWL_R() const;

  /// Side of the first point with that main code, ignoring case. The start point is never matched: it belongs to both
  /// sides. `Unset` when there is none.
  [[nodiscard]] VornLocation GetLRFromCode(const CString& code) const;
  /// Appends the first code of every shoulder, toe or inner-outer target whose point lies on the side. Repeats stay.
  void GetNoriCodeArray(VornLocation side, CStringArray& codes) const;

  // Naming and typing; the points and the control targets follow.

  /// @param regulate rename the form in its control targets too
  void SetName(const CString& name, bool regulate);
  /// Renames the form, in its control targets too, and gives all points its name and identifier in a role.
  void SetName(const CString& name, std::uint32_t nameID, VornComposedPnt::PntType pntType);
  /// Gives all points the identifier of the form's name in a role.
  void SetNameID(std::uint32_t nameID, VornComposedPnt::PntType pntType);
  /// Sets the text of the cross-section type, and the identifier where one is given; the points keep theirs.
  void SetXSectType(const CString& text) { m_xSectType = text; }
  void SetXSectType(const CString& text, std::uint32_t id);
  /// The kind of earthwork that a form's name tells, as edition 2.0 has it, which writes no cross-section type:
  /// "盛土工" for a name with "盛", otherwise "切土工" for one with "切" or "削", otherwise empty.
  [[nodiscard]] static CString XSectTypeFromName(const CString& name);
  /// Points whose two roles have one type get the identifier in both, the others in the main role only.
  void SetXSectTypeID(std::uint32_t id);
  /// Renames the form in every target point that carries its old name and its serial.
  void RegulateFormCtrl(const CString& oldName, const CString& newName);
  /// Creates the missing points of every control target, at the station dist (metres).
  void ConvertFormCtrl(const NurReal& dist);
  /// Forgets the connections of all points and of both crossings, and with clearCode the points' codes too.
  void ClearConnectInfo(bool clearCode);

  // Geometry (build_form_geometry.cpp).

  /// Recomputes the positions of all points from their input values, as the edition reads them. Each run of points of
  /// one side chains from the start point; when the sides alternate, each run starts there again. A start point that is
  /// no centre point stays where it is. In an edition that is not recognised, and without points, nothing happens.
  /// @param centerHeight height of the centre line in metres; unset counts as 0
  /// @param dist, height receive the start point's input values when the form's type names a plan surface, and stay as
  /// they are otherwise
  void RegulateComposedPnt(const NurReal& centerHeight, NurReal& dist, NurReal& height);
  /// Recomputes the positions from the centre point (the last one) outward, reading X as a width and Y as a height
  /// difference whatever the data type: intended. A point that lacks a value gets no position, and the points behind
  /// it go on from the last one that has. Points from the first one without a side on stay. Without a centre point
  /// nothing happens.
  /// @param centerHeight height of the centre line in metres; unset leaves all heights and all sides without a position
  void CalcPointGhDist(const NurReal& centerHeight);
  /// Position of the first point with that main code, ignoring case, as (height, distance from the centre line);
  /// false, and pos untouched, when there is none. What the point has no value for is unset.
  [[nodiscard]] bool GetPntFromCode(const CString& code, TamWorld2& pos) const;
  /// Main code of the first point at a position, given as (height, distance from the centre line); false, and code
  /// untouched, when there is none. A point without a position counts as lying at (0, 0).
  [[nodiscard]] bool GetCodeFromPnt(const TamWorld2& pos, CString& code) const;
  /// Height of the leftmost point and distances of the leftmost and the rightmost one; false, and all three unset,
  /// for a form without points.
  bool QueryPaveInfo(NurReal& height, NurReal& leftDist, NurReal& rightDist) const;
  /// Whether the start point lies at a height (metres), both rounded to millimetres; unset counts as 0. False for a
  /// form without points.
  [[nodiscard]] bool IsSurface(const NurReal& height) const;

 private:
  void ReadAttribute(std::string_view name, std::string_view value);
  void PlaceOutward(const VornIndexArray& side, double sign, NurReal dist, NurReal height);

  std::int32_t m_omitFlag = 0;
  CString m_name;
  std::int32_t m_exportForm = 1;
  std::uint32_t m_serialID = kVornNoID;
  bool m_orgSurface = false;
  std::uint32_t m_xSectTypeID = 0;
  VornCrossPointInfo m_crossLeft;
  VornCrossPointInfo m_crossRight;
  std::uint32_t m_parentID = kVornNoID;
  std::uint8_t m_paveSetIdx = 0;
  CString m_xSectType;
  Vorn_ComposedPntArray m_composedPntArray;
  Vorn_FormCtrlTargetArray m_formCtrlTargetArray;
  TargetPntCategory m_category = TargetPntCategory::None;
  std::int32_t m_export = 1;
};
