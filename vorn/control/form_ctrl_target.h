#pragma once

#include <cstdint>

#include "vorn/control/form_ctrl_target_pnt.h"
#include "vorn/framework/array.h"
#include "vorn/framework/base.h"
#include "vorn/framework/identifier.h"
#include "vorn/types/location.h"

class VornBuildForm;

/// One as-built control item: what is measured, for which work, over which scope and region, and between which points
/// of the cross section. Element "tsf:FormCtrlTarget". Edition 2.0 carries the codes of the points as the element's
/// text and the target inside its build form; later editions carry target points, and the target inside the set.
class VornFormCtrlTarget : public Vorn_Base {
 public:
  /// Cut or fill (attribute "workType", in edition 2.0 only).
  enum class WorkType : std::int32_t { Unset = -1, CutWork = 0, FillWork = 1 };
  /// What is measured (attribute "controlItem").
  enum class ControlItem : std::int32_t {
    Unset = -1,
    SlopeLength = 0,
    Width = 1,
    Height = 2,
    Thickness = 3,
    Depth = 4,
    XSectArea = 5,
    Length = 6,
    Area = 7,
  };
  /// Which pair of points bounds the measurement.
  enum class TargetPntType : std::int32_t {
    Unset = -1,
    ShoulderToe = 0,
    ToeShoulder = 1,
    InnerOuter = 2,
    LeftRight = 3,
    TargetPnt = 4,
    UpperLower = 5,
    LowerUpper = 6,
  };

  VornFormCtrlTarget();
  VornFormCtrlTarget(const VornFormCtrlTarget&) = default;
  VornFormCtrlTarget(VornFormCtrlTarget&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornFormCtrlTarget& operator=(const VornFormCtrlTarget& other) { return *this = VornFormCtrlTarget(other); }
  VornFormCtrlTarget& operator=(VornFormCtrlTarget&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// Code, scope and region are not empty, work type and control item are set, the point-pair type is 0 to 4, and the
  /// points, when there are any, are a valid collection. "Upper Lower" and "Lower Upper" are never valid although
  /// regulation sets them: the limit is intended, so a regulated thickness or depth is never enabled.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Text of a work type; empty for an unknown value.
  [[nodiscard]] static CString GetWorkTypeString(WorkType type);
  [[nodiscard]] CString GetWorkTypeString() const { return GetWorkTypeString(m_workType); }
  /// Text of a control item; empty for an unknown value.
  [[nodiscard]] static CString GetControlItemString(ControlItem item);
  [[nodiscard]] CString GetControlItemString() const { return GetControlItemString(m_controlItem); }
  /// Text of a point-pair type; empty for an unknown value.
  [[nodiscard]] static CString GetTargetPntTypeString(TargetPntType type);
  [[nodiscard]] CString GetTargetPntTypeString() const { return GetTargetPntTypeString(m_targetPntType); }
  // Each resets the member to unset first; false when the text is none of the table (compared exactly).
  /// Takes the work type of a text.
  bool SetWorkTypeString(std::string_view text);
  /// Takes the control item of a text.
  bool SetControlItemString(std::string_view text);
  /// Takes the point-pair type of a text.
  bool SetTargetPntTypeString(std::string_view text);

  /// The codes of the points: in edition 2.0 the code text as it stands, otherwise the points' codes joined by single
  /// blanks.
  [[nodiscard]] CString GetCode() const;
  /// The first code; empty when there is none.
  [[nodiscard]] CString GetCode1() const { return CodePiece(0); }
  /// The second code; empty when there is none.
  [[nodiscard]] CString GetCode2() const { return CodePiece(1); }
  /// The code of target point n; empty in edition 2.0, otherwise an n outside the points throws
  /// `CInvalidArgException`.
  [[nodiscard]] CString GetCodeN(int n) const;
  /// The code text as it stands.
  [[nodiscard]] CString GetCodeName() const { return m_code; }
  /// Sets the code text, which only edition 2.0 writes.
  void SetCode(const CString& code) { m_code = code; }

  /// Whether any target point names the build form (compared exactly); never in edition 2.0.
  [[nodiscard]] bool IsHitBuildForm(const CString& name) const;
  /// Whether any target point stands on the composed point with that identifier.
  [[nodiscard]] bool FindPnt(std::uint32_t id) const;

  /// Cut or fill.
  [[nodiscard]] const WorkType& GetWorkType() const { return m_workType; }
  [[nodiscard]] WorkType& GetWorkType() { return m_workType; }
  void SetWorkType(const WorkType& type) { m_workType = type; }
  /// What is measured.
  [[nodiscard]] const ControlItem& GetControlItem() const { return m_controlItem; }
  [[nodiscard]] ControlItem& GetControlItem() { return m_controlItem; }
  void SetControlItem(const ControlItem& item) { m_controlItem = item; }
  /// Over what extent is measured, such as "全延長" (attribute "targetScope").
  [[nodiscard]] const CString& GetTargetScope() const { return m_targetScope; }
  [[nodiscard]] CString& GetTargetScope() { return m_targetScope; }
  void SetTargetScope(const CString& scope) { m_targetScope = scope; }
  /// Where is measured, such as "管理断面" (attribute "targetRegio").
  [[nodiscard]] const CString& GetTargetRegio() const { return m_targetRegio; }
  [[nodiscard]] CString& GetTargetRegio() { return m_targetRegio; }
  void SetTargetRegio(const CString& region) { m_targetRegio = region; }
  /// Which pair of points bounds the measurement.
  [[nodiscard]] const TargetPntType& GetTargetPntType() const { return m_targetPntType; }
  [[nodiscard]] TargetPntType& GetTargetPntType() { return m_targetPntType; }
  void SetTargetPntType(const TargetPntType& type) { m_targetPntType = type; }
  /// The side of the centre line. Documents do not hold it.
  [[nodiscard]] const VornLocation& GetLR() const { return m_lr; }
  [[nodiscard]] VornLocation& GetLR() { return m_lr; }
  void SetLR(const VornLocation& side) { m_lr = side; }
  /// The points, from edition 4.0 on.
  [[nodiscard]] const VornFormCtrlTargetPntArray& GetTargetPntArray() const { return m_targetPntArray; }
  [[nodiscard]] VornFormCtrlTargetPntArray& GetTargetPntArray() { return m_targetPntArray; }
  /// Non-zero: the target is written to documents.
  [[nodiscard]] const std::int32_t& GetExport() const { return m_export; }
  [[nodiscard]] std::int32_t& GetExport() { return m_export; }
  void SetExport(const std::int32_t& exported) { m_export = exported; }
  /// Running identifier within the collection; `kVornNoID` when unassigned.
  [[nodiscard]] const std::uint32_t& GetSerialID() const { return m_serialID; }
  [[nodiscard]] std::uint32_t& GetSerialID() { return m_serialID; }
  void SetSerialID(const std::uint32_t& id) { m_serialID = id; }

  /// Whether the target is a length or an area, which runs over several cross sections and keeps the stations of its
  /// own points.
  [[nodiscard]] bool SpansSections() const {
    return m_controlItem == ControlItem::Length || m_controlItem == ControlItem::Area;
  }

  // Regulation (form_ctrl_target_regulation.cpp).

  /// Creates the points of a target that has none: two for a slope length or width, one for a height, all at the
  /// station dist. The form is not looked at: the points are made whether or not it has composed points of these codes.
  void RegulatePnt(const NurReal& dist, VornBuildForm* form);
  /// Puts the pair of points and the point-pair type into the order that the control item asks for; false when the
  /// target cannot be put into it.
  bool Regulate();
  /// Gives every point the station dist.
  void RegulateDist(const NurReal& dist);
  /// `VornFormCtrlTargetPntArray::SwapBuildFormID` on the points.
  void SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a, const std::uint32_t& b);
  /// `VornFormCtrlTargetPntArray::ChangeID` on the points.
  void ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID);

 private:
  [[nodiscard]] CString CodePiece(int index) const;
  bool RegulateSlope(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1);
  void RegulateWidth(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1);
  void RegulateThickness(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1);
  void RegulateDepth(VornFormCtrlTargetPnt& p0, VornFormCtrlTargetPnt& p1);

  CString m_code;
  WorkType m_workType = WorkType::Unset;
  ControlItem m_controlItem = ControlItem::Unset;
  CString m_targetScope;
  CString m_targetRegio;
  TargetPntType m_targetPntType = TargetPntType::Unset;
  VornLocation m_lr = VornLocation::Unset;
  VornFormCtrlTargetPntArray m_targetPntArray;
  std::int32_t m_export = 1;
  std::uint32_t m_serialID = kVornNoID;
};

/// The control targets of a build form or of a cross-section set. Hands out their serial identifiers, from 0 on.
class Vorn_FormCtrlTargetArray : public Vorn_Array<VornFormCtrlTarget> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::AnyNumber; }
  [[nodiscard]] CString tagName() const override { return "tsf:FormCtrlTarget"; }
  /// The next serial (from store version "05.00" on), then the elements. Older data leave the next serial at 0: the
  /// elements' own serials decide then.
  void Serialize(CArchive& ar, const CString& tag) override;

  // Each copies the target into place and numbers it: one without a serial gets the next one, one that brings its own
  // raises the next serial above it.
  /// Appends a copy, and returns its index.
  int Add(const VornFormCtrlTarget& target);
  int Add(VornFormCtrlTarget&& target);
  /// Reads a target from the cursor's element to the end of the array; nothing is added when it cannot be read.
  bool AddFromXML(PimIterator* cursor);
  /// Reads a run as `fromXML`, which leaves targets unnumbered, and numbers them.
  bool AddRunFromXML(PimIterator* cursor);
  /// Inserts a copy before index.
  void InsertAt(int index, const VornFormCtrlTarget& target);
  /// Replaces the target at index by a copy.
  void SetAt(int index, const VornFormCtrlTarget& target);
  void SetAtGrow(int index, const VornFormCtrlTarget& target) = delete;  // would not number
  /// Replaces all targets and the next serial by another collection's.
  void Copy(const Vorn_FormCtrlTargetArray& other) { *this = other; }

  /// Index of the first target with that serial; -1 when there is none.
  [[nodiscard]] int Find(std::uint32_t serialID) const;
  /// Whether any target stands on the composed point with that identifier.
  [[nodiscard]] bool FindPnt(std::uint32_t id) const;
  /// Renames the build form in every target point that names it (compared exactly).
  void ChangeBuildName(const CString& oldName, const CString& newName);
  /// As above, in the target points with that build-form identifier only.
  void ChangeBuildName(const CString& oldName, std::uint32_t formID, const CString& newName);

  // Regulation (form_ctrl_target_regulation.cpp).

  /// Removes every target that repeats an earlier one's control item and codes.
  void Regulate();
  /// Gives the station dist to the points of every target but those for a length or an area, which keep their own.
  void RegulateDist(const NurReal& dist);
  /// `VornFormCtrlTargetPntArray::ChangeDist` on every target but those for a length or an area.
  void ChangeDist(const double& oldDist, const double& newDist, bool xSectChg);
  /// `VornFormCtrlTargetPntArray::ChangeDist` on the targets for a length or an area only.
  void ChangeDistH(const double& oldDist, const double& newDist, bool xSectChg);
  /// `VornFormCtrlTargetPntArray::SwapBuildFormID` on every target.
  void SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a, const std::uint32_t& b);
  /// `VornFormCtrlTargetPntArray::ChangeID` on every target.
  void ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID);

  /// The serial that the next unnumbered target receives.
  [[nodiscard]] std::uint32_t GetNextSerialID() const { return m_serials.Next(); }

 protected:
  /// Numbers the target at index.
  void SetSerialID(int index);

 private:
  /// Names the build form anew in every target point for which `matches` holds, or in none when memory runs out.
  template <typename Matches>
  void SetBuildFormNames(const CString& name, Matches&& matches);

  VornSerialCounter m_serials{0};
};

/// 1 when a point at the signed offset (metres) lies on the given side: left means below -1e-6, right everything
/// else; any other side holds for every point. Otherwise 0.
[[nodiscard]] int VornIsPoint_LR(VornLocation side, double offset);
