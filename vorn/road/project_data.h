#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"
#include "vorn/platform/ole_date_time.h"
#include "vorn/road/record.h"

/// Who made the data.
class VornCreatorInfoData : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 2;

  VornCreatorInfoData() = default;
  VornCreatorInfoData(const VornCreatorInfoData&) = default;
  VornCreatorInfoData(VornCreatorInfoData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornCreatorInfoData& operator=(const VornCreatorInfoData& other) { return *this = VornCreatorInfoData(other); }
  VornCreatorInfoData& operator=(VornCreatorInfoData&&) noexcept = default;

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Name of who made the data.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// A text about them.
  [[nodiscard]] const CString& GetText() const { return m_text; }
  void SetText(const CString& text) { m_text = text; }

 private:
  CString m_name;
  CString m_text;
};

/// Who made the data, one by one.
class VornCreatorInfoArray : public VornRecordArray<VornCreatorInfoData> {};

/// A project: its name, date and phase, and who made its data.
class VornProjectData : public VornRecord {
 public:
  /// Phase of a project.
  enum class ProjPhase : std::int32_t { Outline = 0, Preliminary = 1, Detailed = 2, Construction = 3 };

  /// In the construction phase, with an invalid date.
  VornProjectData() { m_date.SetStatus(COleDateTime::invalid); }
  VornProjectData(const VornProjectData&) = default;
  VornProjectData(VornProjectData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornProjectData& operator=(const VornProjectData& other) { return *this = VornProjectData(other); }
  VornProjectData& operator=(VornProjectData&&) noexcept = default;

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Name of the project.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Date of the project.
  [[nodiscard]] const COleDateTime& GetDate() const { return m_date; }
  void SetDate(const COleDateTime& date) { m_date = date; }
  /// Phase of the project.
  [[nodiscard]] ProjPhase GetProjPhase() const { return m_projPhase; }
  void SetProjPhase(ProjPhase phase) { m_projPhase = phase; }
  /// A text about the project.
  [[nodiscard]] const CString& GetText() const { return m_text; }
  void SetText(const CString& text) { m_text = text; }
  /// Who made its data.
  [[nodiscard]] const VornCreatorInfoArray& GetCreators() const { return m_creators; }
  [[nodiscard]] VornCreatorInfoArray& GetCreators() { return m_creators; }
  void SetCreators(const VornCreatorInfoArray& creators) { m_creators = creators; }

  /// Japanese text of a phase, such as "詳細"; empty for an unknown value.
  [[nodiscard]] static CString GetProjPhaseStr(ProjPhase phase);

 private:
  CString m_name;
  COleDateTime m_date;
  ProjPhase m_projPhase = ProjPhase::Construction;
  CString m_text;
  VornCreatorInfoArray m_creators;
};
