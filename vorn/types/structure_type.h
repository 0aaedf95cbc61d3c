#pragma once

#include <cstdint>

#include "vorn/framework/base.h"

/// The kind of construction work that a document describes, with the job, the company and the kind of station
/// numbering: element "tsf:StructureType", from edition 4.0 on. The work type is carried by its Japanese name.
class VornStructureType : public Vorn_Base {
 public:
  /// Index of the work type in the fixed list of names.
  enum class Type : std::int32_t {
    Unknown = -1,
    RoadEarthwork = 0,
    RiverCoastErosionControl = 1,
    RoadPavement = 2,
    RiverPavement = 3,
    RoadBuriedStructure = 4,
    Other = 5,
    MaffCommonEarthwork = 6,
    MaffPipeline = 7,
    MaffFarmField = 8,
  };
  /// The ministry whose rules apply.
  enum class MinistryType : std::int32_t { Land = 0, Agriculture = 1 };

  VornStructureType();
  VornStructureType(const VornStructureType&) = default;
  VornStructureType(VornStructureType&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornStructureType& operator=(const VornStructureType& other) { return *this = VornStructureType(other); }
  VornStructureType& operator=(VornStructureType&&) noexcept = default;

  bool toXML(PimIterator* cursor) override;
  bool fromXML(PimIterator* cursor) override;
  /// The work type is one of the nine names (without regard to case) and the station type one of "NO", "SP", "STA"
  /// and "距離標" (exactly).
  [[nodiscard]] bool IsEnable() const override;
  /// The record of the project archive (vorn/archive/). Archive and file exceptions pass through.
  virtual void Serialize(CArchive& ar, const CString& tag);

  /// Empties all four texts, the station type too.
  void Initialize();

  /// The nine work-type names in index order; true when there are any.
  static bool GetStructureTypes(CStringArray& names);

  /// Index of the work type's name, `Unknown` when it is none of the list (compared exactly).
  [[nodiscard]] Type GetType() const;
  /// Takes the name of the type. `Unknown` and values past the list change nothing; one below `Unknown` throws
  /// `CInvalidArgException`.
  void SetType(Type type);
  /// Sets the work type's name as it stands (attribute "type").
  void SetType(const CString& name) { m_type = name; }
  /// The work type's name as it stands (attribute "type").
  [[nodiscard]] const CString& GetTypeStr() const { return m_type; }

  /// Name of the job (attribute "jobName").
  [[nodiscard]] const CString& GetJobName() const { return m_jobName; }
  [[nodiscard]] CString& GetJobName() { return m_jobName; }
  void SetJobName(const CString& jobName) { m_jobName = jobName; }
  /// Name of the company (attribute "company").
  [[nodiscard]] const CString& GetCompany() const { return m_company; }
  [[nodiscard]] CString& GetCompany() { return m_company; }
  void SetCompany(const CString& company) { m_company = company; }
  /// Kind of station numbering along the alignment; "NO" in a new object.
  [[nodiscard]] const CString& GetStationType() const { return m_stationType; }
  [[nodiscard]] CString& GetStationType() { return m_stationType; }
  void SetStationType(const CString& stationType) { m_stationType = stationType; }

  /// The ministry of a type; an unknown type counts as the land ministry.
  [[nodiscard]] static MinistryType Ministry(Type type);
  /// The ministry of the own type; an unknown type counts as the land ministry.
  [[nodiscard]] MinistryType Ministry() const { return Ministry(GetType()); }
  /// "国土交通省" or "農林水産省".
  [[nodiscard]] CString MinistryStr() const;

 private:
  CString m_type;
  CString m_jobName;
  CString m_company;
  CString m_stationType;
};

/// River earthwork; with pavement also the river pavement.
[[nodiscard]] bool VornIsRiver(VornStructureType::Type type, bool withPavement);
/// Road or river pavement.
[[nodiscard]] bool VornIsPavement(VornStructureType::Type type);
/// Work under the agriculture ministry's rules.
[[nodiscard]] bool VornIsMaff(VornStructureType::Type type);
/// Whether a form's work-type name denotes a plan surface: it contains one of "盛土", "切土", "掘削", "表層", "基準面"
/// and "その他".
[[nodiscard]] bool VornIsPlan(const CString& name);

/// The type of a sibling application's work-type code; `Unknown` for any other code.
[[nodiscard]] VornStructureType::Type VornStructureTypeLumrToVorn(const std::uint32_t& code);
/// The sibling application's code of a type; 0 when it has none. "Other" has none: it does not survive the way there
/// and back, which is intended.
[[nodiscard]] std::uint32_t VornStructureTypeVornToLumr(const VornStructureType::Type& type);
