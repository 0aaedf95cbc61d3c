#pragma once

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/ctrl_points.h"
#include "vorn/road/form_ctrl.h"
#include "vorn/road/record.h"
#include "vorn/road/road_gm_data.h"

class VornRoadCenterData;

/// The construction information of a project: coordinate reference systems, survey control points, road geometry, and
/// how the as-built control items are called.
class VornInfoConstrcut : public VornRecord {
 public:
  VornInfoConstrcut() = default;
  VornInfoConstrcut(const VornInfoConstrcut&) = default;
  VornInfoConstrcut(VornInfoConstrcut&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornInfoConstrcut& operator=(const VornInfoConstrcut& other) { return *this = VornInfoConstrcut(other); }
  VornInfoConstrcut& operator=(VornInfoConstrcut&&) noexcept = default;

  /// The record of the project archive, with its own store version at its head. Loading one newer than the library
  /// writes throws `false`, with nothing but the version read. Archive and file exceptions pass through.
  void Serialize(CArchive& ar);
  /// The same record without the store version.
  void Serialize(CArchive& ar, const char* tag);

  /// The version that was last read or written.
  [[nodiscard]] const CString& GetStoreVersion() const { return m_storeVersion; }
  /// The version that the library writes, and the newest that it reads; "05.00" at first.
  [[nodiscard]] const CString& GetLibVersion() const { return m_libVersion; }
  /// Sets the version that the library writes, and takes for the newest.
  void SetStoreVersion(const char* version) { m_libVersion = version; }

  /// The coordinate reference systems.
  [[nodiscard]] const VornCrsArray& GetCrsArray() const { return m_crsArray; }
  [[nodiscard]] VornCrsArray& GetCrsArray() { return m_crsArray; }
  void SetCrsArray(const VornCrsArray& systems) { m_crsArray = systems; }
  /// The survey control points.
  [[nodiscard]] const VornCtrlPoints& GetCtrlPoints() const { return m_ctrlPoints; }
  [[nodiscard]] VornCtrlPoints& GetCtrlPoints() { return m_ctrlPoints; }
  void SetCtrlPoints(const VornCtrlPoints& points) { m_ctrlPoints = points; }
  /// The road geometry, with the design.
  [[nodiscard]] const VornRoadGmData& GetRoadGm() const { return m_roadGm; }
  [[nodiscard]] VornRoadGmData& GetRoadGm() { return m_roadGm; }
  void SetRoadGm(const VornRoadGmData& roadGm) { m_roadGm = roadGm; }
  /// How the as-built control items are called.
  [[nodiscard]] const VornFormCtrl& GetFormCtrl() const { return m_formCtrl; }
  [[nodiscard]] VornFormCtrl& GetFormCtrl() { return m_formCtrl; }
  void SetFormCtrl(const VornFormCtrl& formCtrl) { m_formCtrl = formCtrl; }

  /// Replaces the coordinate reference systems, the alignments with the current one, and the road's name, class,
  /// design speed and traffic class by those of the road-centre set. Everything else stays.
  void SetCommonData(const VornRoadCenterData& source);
  /// Takes the form control from the settings; nothing changes when they cannot be opened.
  void LoadRegistry();

 private:
  CString m_storeVersion = "05.00";
  CString m_libVersion = "05.00";
  VornCrsArray m_crsArray;
  VornCtrlPoints m_ctrlPoints;
  VornRoadGmData m_roadGm;
  VornFormCtrl m_formCtrl;
};
