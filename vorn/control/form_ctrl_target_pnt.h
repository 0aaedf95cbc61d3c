#pragma once

#include <cstdint>

#include "vorn/framework/array.h"
#include "vorn/framework/base.h"
#include "vorn/framework/identifier.h"
#include "vorn/types/location.h"

/// What a target point is at a crossing of forms; the values beyond the default belong to the host.
enum class CrossPointType : std::int32_t { None = 0 };

/// A point of a control target: the build form and the composed point's code on which it stands, and the station of
/// its cross section. Element "tsf:FormCtrlTargetPnt", from edition 4.0 on.
class VornFormCtrlTargetPnt : public Vorn_Base {
 public:
  VornFormCtrlTargetPnt();
  VornFormCtrlTargetPnt(const VornFormCtrlTargetPnt&) = default;
  VornFormCtrlTargetPnt(VornFormCtrlTargetPnt&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornFormCtrlTargetPnt& operator=(const VornFormCtrlTargetPnt& other) { return *this = VornFormCtrlTargetPnt(other); }
  VornFormCtrlTargetPnt& operator=(VornFormCtrlTargetPnt&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The station is set, and the form's name and the code are not empty.
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Assigns station (metres), form name, code and change-of-shape flag in one call.
  void Set(const NurReal& cumulativeDist, const CString& buildFormName, const CString& code, bool xSectChg);

  /// Identifier of the composed point stood on; `kVornNoID` when the host has not filled it.
  [[nodiscard]] std::uint32_t GetPntID() const { return m_pntID; }
  void SetPntID(std::uint32_t id) { m_pntID = id; }
  /// Signed horizontal distance from the centre line in metres, negative on the left; unset until filled.
  [[nodiscard]] double GetOffset() const { return m_offset; }
  void SetOffset(double offset) { m_offset = offset; }
  /// Height in metres; unset until filled.
  [[nodiscard]] double GetElevation() const { return m_elevation; }
  void SetElevation(double elevation) { m_elevation = elevation; }
  /// Side of the centre line that the point lies on.
  [[nodiscard]] VornLocation GetSide() const { return m_side; }
  void SetSide(VornLocation side) { m_side = side; }

  /// Station of the cross section in metres (attribute "cumulativeDist").
  [[nodiscard]] const NurReal& GetCumulativeDist() const { return m_cumulativeDist; }
  [[nodiscard]] NurReal& GetCumulativeDist() { return m_cumulativeDist; }
  void SetCumulativeDist(const NurReal& dist) { m_cumulativeDist = dist; }
  /// Whether the cross section is the one behind a change of shape (attribute "xSectChg").
  [[nodiscard]] const bool& GetXSectChg() const { return m_xSectChg; }
  [[nodiscard]] bool& GetXSectChg() { return m_xSectChg; }
  void SetXSectChg(const bool& xSectChg) { m_xSectChg = xSectChg; }
  /// Name of the build form that holds the point stood on.
  [[nodiscard]] const CString& GetBuildFormName() const { return m_buildFormName; }
  [[nodiscard]] CString& GetBuildFormName() { return m_buildFormName; }
  void SetBuildFormName(const CString& name) { m_buildFormName = name; }
  /// Code of the composed point stood on.
  [[nodiscard]] const CString& GetCode() const { return m_code; }
  [[nodiscard]] CString& GetCode() { return m_code; }
  void SetCode(const CString& code) { m_code = code; }

  /// Serial of the composed point stood on.
  [[nodiscard]] const std::uint32_t& GetSerialID() const { return m_serialID; }
  [[nodiscard]] std::uint32_t& GetSerialID() { return m_serialID; }
  void SetSerialID(const std::uint32_t& id) { m_serialID = id; }
  /// Serial of the build form that holds it.
  [[nodiscard]] const std::uint32_t& GetBuildFormID() const { return m_buildFormID; }
  [[nodiscard]] std::uint32_t& GetBuildFormID() { return m_buildFormID; }
  void SetBuildFormID(const std::uint32_t& id) { m_buildFormID = id; }
  /// Identifier of the cross section.
  [[nodiscard]] const std::uint32_t& GetSectionID() const { return m_sectionID; }
  [[nodiscard]] std::uint32_t& GetSectionID() { return m_sectionID; }
  void SetSectionID(const std::uint32_t& id) { m_sectionID = id; }
  /// Identifier of the cross-section (work) type.
  [[nodiscard]] const std::uint32_t& GetXSectType() const { return m_xSectType; }
  [[nodiscard]] std::uint32_t& GetXSectType() { return m_xSectType; }
  void SetXSectType(const std::uint32_t& id) { m_xSectType = id; }
  /// Identifier of the cross section's name.
  [[nodiscard]] const std::uint32_t& GetSectNameID() const { return m_sectNameID; }
  [[nodiscard]] std::uint32_t& GetSectNameID() { return m_sectNameID; }
  void SetSectNameID(const std::uint32_t& id) { m_sectNameID = id; }
  /// What the point is at a crossing of forms.
  [[nodiscard]] const CrossPointType& GetCrossPointType() const { return m_crossPointType; }
  [[nodiscard]] CrossPointType& GetCrossPointType() { return m_crossPointType; }
  void SetCrossPointType(const CrossPointType& type) { m_crossPointType = type; }

 private:
  std::uint32_t m_pntID = kVornNoID;
  double m_offset = kNurUnsetReal;
  double m_elevation = kNurUnsetReal;
  VornLocation m_side = VornLocation::Unset;
  NurReal m_cumulativeDist;
  bool m_xSectChg = false;
  CString m_buildFormName;
  CString m_code;
  std::uint32_t m_serialID = 0;
  std::uint32_t m_buildFormID = 0;
  std::uint32_t m_sectionID = 0;
  std::uint32_t m_xSectType = 0;
  std::uint32_t m_sectNameID = 0;
  CrossPointType m_crossPointType = CrossPointType::None;
};

/// The points of one control target.
class VornFormCtrlTargetPntArray : public Vorn_Array<VornFormCtrlTargetPnt> {
 public:
  [[nodiscard]] VORN_Occurs occurs() const override { return VORN_Occurs::TwoOrMore; }
  [[nodiscard]] CString tagName() const override { return "tsf:FormCtrlTargetPnt"; }

  // Maintenance after changes of the cross sections (form_ctrl_target_regulation.cpp).

  /// Moves every point at station oldDist (within 1e-6 m) with that change-of-shape flag to newDist; an unset newDist
  /// removes the point.
  void ChangeDist(const double& oldDist, const double& newDist, bool xSectChg);
  /// Exchanges two build-form identifiers in the points of a section.
  void SwapBuildFormID(const std::uint32_t& sectionID, const std::uint32_t& a, const std::uint32_t& b);
  /// Gives the three new identifiers to every point that carries all three old ones.
  void ChangeID(const std::uint32_t& oldSectionID, const std::uint32_t& oldBuildFormID,
                const std::uint32_t& oldSerialID, const std::uint32_t& newSectionID,
                const std::uint32_t& newBuildFormID, const std::uint32_t& newSerialID);
};
