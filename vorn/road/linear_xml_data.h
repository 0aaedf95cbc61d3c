#pragma once

#include "vorn/platform/carchive.h"
#include "vorn/road/info_constrcut.h"
#include "vorn/road/land_xml_data.h"
#include "vorn/road/record.h"
#include "vorn/road/road_center_data.h"

/// All road and survey reference data of a project: what a host keeps in its project archive.
class VornLinearXMLData : public VornRecord {
 public:
  VornLinearXMLData() = default;
  VornLinearXMLData(const VornLinearXMLData&) = default;
  VornLinearXMLData(VornLinearXMLData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornLinearXMLData& operator=(const VornLinearXMLData& other) { return *this = VornLinearXMLData(other); }
  VornLinearXMLData& operator=(VornLinearXMLData&&) noexcept = default;

  /// The record of the project archive. Each of the three parts carries its own store version; loading a newer one
  /// throws `false`, with the parts before it read. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Marks the data as to be saved. Nothing but assignment takes the mark back; it is not archived.
  void SetSave() { m_save = true; }
  /// Whether the data are marked as to be saved.
  [[nodiscard]] bool IsSave() const { return m_save; }

  /// The construction information, with the design.
  [[nodiscard]] const VornInfoConstrcut& GetInfoConstrcut() const { return m_infoConstrcut; }
  [[nodiscard]] VornInfoConstrcut& GetInfoConstrcut() { return m_infoConstrcut; }
  void SetInfoConstrcut(const VornInfoConstrcut& info) { m_infoConstrcut = info; }
  /// The road-centre data.
  [[nodiscard]] const VornRoadCenterData& GetRoadCenter() const { return m_roadCenter; }
  [[nodiscard]] VornRoadCenterData& GetRoadCenter() { return m_roadCenter; }
  void SetRoadCenter(const VornRoadCenterData& roadCenter) { m_roadCenter = roadCenter; }
  /// What the export to LandXML is set to.
  [[nodiscard]] const VornLandXMLData& GetLandXml() const { return m_landXml; }
  [[nodiscard]] VornLandXMLData& GetLandXml() { return m_landXml; }
  void SetLandXml(const VornLandXMLData& landXml) { m_landXml = landXml; }

  /// `VornInfoConstrcut::LoadRegistry` of the construction information.
  void LoadRegistry() { m_infoConstrcut.LoadRegistry(); }

 private:
  bool m_save = false;
  VornInfoConstrcut m_infoConstrcut;
  VornRoadCenterData m_roadCenter;
  VornLandXMLData m_landXml;
};
