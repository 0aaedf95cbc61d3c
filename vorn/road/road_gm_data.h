#pragma once

#include <cstdint>

#include "vorn/framework/base.h"
#include "vorn/framework/schema.h"
#include "vorn/model/file_info.h"
#include "vorn/platform/cstring.h"
#include "vorn/road/alignment.h"
#include "vorn/road/record.h"
#include "vorn/road/road_info.h"
#include "vorn/road/setting.h"
#include "vorn/types/hoso_type.h"
#include "vorn/types/structure_type.h"

/// The road geometry of a project: what the road is, its alignments with their cross sections, the kind of work, and
/// the edition of the schema in which the data were made.
class VornRoadGmData : public VornRecord {
 public:
  /// Road class.
  using Classificat = VornRoadInfo::Classificat;
  /// Design speed.
  using DesignSpeed = VornRoadInfo::DesignSpeed;

  /// Name of the key that the settings lie in.
  static constexpr const char* kSettingsKey = "RoadInfo";
  /// The settings: values of `Classificat` and of `DesignSpeed`, and the traffic class.
  static constexpr VornIntegerSetting kClassificatSetting{"classificat", 0};
  /// The setting of the design speed.
  static constexpr VornIntegerSetting kSpeedSetting{"speed", 0};
  /// The setting of the traffic class.
  static constexpr VornIntegerSetting kTrafficSetting{"traffic", 1};

  VornRoadGmData() = default;
  VornRoadGmData(const VornRoadGmData&) = default;
  VornRoadGmData(VornRoadGmData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornRoadGmData& operator=(const VornRoadGmData& other) { return *this = VornRoadGmData(other); }
  VornRoadGmData& operator=(VornRoadGmData&&) noexcept = default;

  /// The record of the project archive; the store version is compared as a number here. Archive and file exceptions
  /// pass through.
  void Serialize(CArchive& ar, const char* tag, VORN_DataKind kind);
  /// The record of store versions before "03.00". Intended: it is read with the road's information, but written
  /// without. Loading sets the edition to 2.0. For a store version from "03.00" on, which `Serialize` never passes
  /// here, a schema option follows the road's information, and an empty extension table the alignments.
  void SerializeOld(CArchive& ar, const char* tag, VORN_DataKind kind);

  /// Takes road class, design speed and traffic class from the settings; where the settings have none, the first
  /// class, the highest speed and traffic class 1. Nothing changes when the settings cannot be opened.
  void LoadRegistry();
  /// Keeps road class, design speed and traffic class in the settings, as far as these can be written.
  void StoreRegistry() const;

  /// What the road is.
  [[nodiscard]] const VornRoadInfo& GetRoadInfo() const { return m_roadInfo; }
  [[nodiscard]] VornRoadInfo& GetRoadInfo() { return m_roadInfo; }
  void SetRoadInfo(const VornRoadInfo& info) { m_roadInfo = info; }
  /// The alignments with their cross sections.
  [[nodiscard]] const VornAlignmentsArray& GetAlignments() const { return m_alignments; }
  [[nodiscard]] VornAlignmentsArray& GetAlignments() { return m_alignments; }
  void SetAlignments(const VornAlignmentsArray& alignments) { m_alignments = alignments; }
  /// Edition in which the data were made.
  [[nodiscard]] VornSchema::Version GetSchemaVersion() const { return m_schemaVersion; }
  void SetSchemaVersion(VornSchema::Version version) { m_schemaVersion = version; }
  /// When its document was created and changed.
  [[nodiscard]] const VornFileInfoArray& GetFileInfos() const { return m_fileInfos; }
  [[nodiscard]] VornFileInfoArray& GetFileInfos() { return m_fileInfos; }
  void SetFileInfos(const VornFileInfoArray& fileInfos) { m_fileInfos = fileInfos; }
  /// The kind of work.
  [[nodiscard]] const VornStructureType& GetStructureType() const { return m_structureType; }
  [[nodiscard]] VornStructureType& GetStructureType() { return m_structureType; }
  void SetStructureType(const VornStructureType& type) { m_structureType = type; }
  /// The type of cross section.
  [[nodiscard]] const VornXSectType& GetXSectType() const { return m_xSectType; }
  [[nodiscard]] VornXSectType& GetXSectType() { return m_xSectType; }
  void SetXSectType(const VornXSectType& type) { m_xSectType = type; }
  /// Two numbers and a text that the library keeps and does not look into.
  [[nodiscard]] std::int32_t GetOption() const { return m_option; }
  void SetOption(std::int32_t option) { m_option = option; }
  [[nodiscard]] std::int32_t GetOption2() const { return m_option2; }
  void SetOption2(std::int32_t option) { m_option2 = option; }
  /// The text among these.
  [[nodiscard]] const CString& GetText() const { return m_text; }
  void SetText(const CString& text) { m_text = text; }

  /// Text of a road class; empty for an unknown value.
  [[nodiscard]] static CString GetClassificatStr(Classificat classificat) {
    return VornRoadInfo::GetClassificatRoad(classificat);
  }
  /// A design speed in km/h; 0 for an unknown value, unlike `VornRoadInfo::GetSpeed`.
  [[nodiscard]] static std::int32_t GetDesignSpeedVal(DesignSpeed speed);

  /// Whether the data are of that edition and of the other's work type. A structure type that names no work fits any.
  [[nodiscard]] bool IsSameType(VornSchema::Version version, const VornStructureType& structureType) const;
  /// Whether name, road class, design speed and traffic class are equal; nothing else is compared.
  [[nodiscard]] bool CompareRoadInfo(const VornRoadGmData& other) const;
  /// `VornAlignmentsArray::IsUsedCrsName` of the alignments.
  [[nodiscard]] bool IsUsedCrsName(const char* name) const { return m_alignments.IsUsedCrsName(name); }

 private:
  VornRoadInfo m_roadInfo;
  std::int32_t m_option = 0;
  VornAlignmentsArray m_alignments;
  VornSchema::Version m_schemaVersion = VornSchema::Version41;
  VornFileInfoArray m_fileInfos;
  VornStructureType m_structureType;
  VornXSectType m_xSectType;
  std::int32_t m_option2 = 0;
  CString m_text;
};
