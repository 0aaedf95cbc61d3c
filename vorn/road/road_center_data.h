#pragma once

#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/road/crs_data.h"
#include "vorn/road/gm_pnts.h"
#include "vorn/road/project_data.h"
#include "vorn/road/record.h"
#include "vorn/road/road_gm_data.h"

class VornInfoConstrcut;

/// The road-centre data of a project: the project itself, coordinate reference systems, groups of ground points, and
/// road geometry.
class VornRoadCenterData : public VornRecord {
 public:
  VornRoadCenterData() = default;
  VornRoadCenterData(const VornRoadCenterData&) = default;
  VornRoadCenterData(VornRoadCenterData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornRoadCenterData& operator=(const VornRoadCenterData& other) { return *this = VornRoadCenterData(other); }
  VornRoadCenterData& operator=(VornRoadCenterData&&) noexcept = default;

  /// The record of the project archive, with its own store version at its head; the one given is not looked at.
  /// Loading one newer than the library writes throws `false`, with nothing but the version read. Archive and file
  /// exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// The version that was last read or written.
  [[nodiscard]] const CString& GetStoreVersion() const { return m_storeVersion; }
  /// The version that the library writes, and the newest that it reads; "05.00" at first.
  [[nodiscard]] const CString& GetLibVersion() const { return m_libVersion; }
  /// Sets the version that the library writes, and takes for the newest.
  void SetStoreVersion(const char* version) { m_libVersion = version; }

  /// The project.
  [[nodiscard]] const VornProjectData& GetProject() const { return m_project; }
  [[nodiscard]] VornProjectData& GetProject() { return m_project; }
  void SetProject(const VornProjectData& project) { m_project = project; }
  /// The coordinate reference systems.
  [[nodiscard]] const VornCrsArray& GetCrsArray() const { return m_crsArray; }
  [[nodiscard]] VornCrsArray& GetCrsArray() { return m_crsArray; }
  void SetCrsArray(const VornCrsArray& systems) { m_crsArray = systems; }
  /// The groups of ground points.
  [[nodiscard]] const VornGmPntsArray& GetGmPnts() const { return m_gmPnts; }
  [[nodiscard]] VornGmPntsArray& GetGmPnts() { return m_gmPnts; }
  void SetGmPnts(const VornGmPntsArray& groups) { m_gmPnts = groups; }
  /// The road geometry.
  [[nodiscard]] const VornRoadGmData& GetRoadGm() const { return m_roadGm; }
  [[nodiscard]] VornRoadGmData& GetRoadGm() { return m_roadGm; }
  void SetRoadGm(const VornRoadGmData& roadGm) { m_roadGm = roadGm; }

  /// Replaces the coordinate reference systems, the alignments with the current one, and the road's name, class,
  /// design speed and traffic class by those of the construction information. Everything else stays.
  void SetCommonData(const VornInfoConstrcut& source);

 private:
  CString m_storeVersion = "05.00";
  CString m_libVersion = "05.00";
  VornProjectData m_project;
  VornCrsArray m_crsArray;
  VornGmPntsArray m_gmPnts;
  VornRoadGmData m_roadGm;
};
