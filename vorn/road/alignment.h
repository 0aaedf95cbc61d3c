#pragma once

#include <cstdint>

#include "vorn/framework/base.h"
#include "vorn/model/x_sections.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/on_demand.h"
#include "vorn/road/record.h"
#include "vorn/road/up_date.h"

/// A road alignment with its cross sections.
class VornAlignment : public VornRecord {
 public:
  /// What the shortest record takes: an old one, which ends before the cross sections.
  static constexpr std::uint32_t kLeastArchiveBytes = 9;

  VornAlignment() = default;
  VornAlignment(const VornAlignment&) = default;
  VornAlignment(VornAlignment&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornAlignment& operator=(const VornAlignment& other) { return *this = VornAlignment(other); }
  VornAlignment& operator=(VornAlignment&&) noexcept = default;

  /// The record of the project archive. Cross sections and dates are always written, but read only in road-geometry
  /// data and, from "02.50" on, in form-control data; what is not read stays. Intended, since older form-control data
  /// do not have them. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag, VORN_DataKind kind);

  /// Name of the alignment.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Name of the `VornCrsData` that the alignment's coordinates refer to.
  [[nodiscard]] const CString& GetCrsName() const { return m_crsName; }
  void SetCrsName(const CString& name) { m_crsName = name; }
  /// A text and three numbers that the library keeps and does not look into.
  [[nodiscard]] const CString& GetAuxText() const { return m_auxText; }
  void SetAuxText(const CString& text) { m_auxText = text; }
  /// The three numbers.
  [[nodiscard]] std::uint16_t GetAttr1() const { return m_attr1; }
  void SetAttr1(std::uint16_t attr) { m_attr1 = attr; }
  [[nodiscard]] std::uint16_t GetAttr2() const { return m_attr2; }
  void SetAttr2(std::uint16_t attr) { m_attr2 = attr; }
  [[nodiscard]] std::uint16_t GetAttr3() const { return m_attr3; }
  void SetAttr3(std::uint16_t attr) { m_attr3 = attr; }
  /// The set of cross sections. One that was never asked for to be changed is shared by all new alignments: a reference
  /// from a constant alignment is good until then. Assigning replaces the set as a whole, and moving hands it over:
  /// whoever holds a reference asks for it again.
  [[nodiscard]] const VornXSections& GetXSections() const { return m_xSections.Get(); }
  [[nodiscard]] VornXSections& GetXSections() { return m_xSections.Change(); }
  void SetXSections(const VornXSections& sections) { m_xSections.Change() = sections; }
  /// The three dates.
  [[nodiscard]] const VornUpDate& GetUpDate() const { return m_upDate; }
  [[nodiscard]] VornUpDate& GetUpDate() { return m_upDate; }
  void SetUpDate(const VornUpDate& dates) { m_upDate = dates; }
  /// Three texts for as long as the object lives: they are not archived.
  [[nodiscard]] const CString& GetMemo1() const { return m_memo1; }
  void SetMemo1(const CString& memo) { m_memo1 = memo; }
  [[nodiscard]] const CString& GetMemo2() const { return m_memo2; }
  void SetMemo2(const CString& memo) { m_memo2 = memo; }
  [[nodiscard]] const CString& GetMemo3() const { return m_memo3; }
  void SetMemo3(const CString& memo) { m_memo3 = memo; }

 private:
  CString m_name;
  CString m_crsName;
  CString m_auxText;
  std::uint16_t m_attr1 = 0;
  std::uint16_t m_attr2 = 0;
  std::uint16_t m_attr3 = 0;
  OnDemand<VornXSections> m_xSections;  ///< old records of nine bytes have none
  VornUpDate m_upDate;
  CString m_memo1;
  CString m_memo2;
  CString m_memo3;
};

/// The alignments of a project, one of which may be the current one.
class VornAlignmentsArray : public VornRecordArray<VornAlignment> {
 public:
  /// Index of the current alignment, the signed 32-bit count, the alignments' records. Loading replaces all.
  void Serialize(CArchive& ar, const char* tag, VORN_DataKind kind);

  /// Index of the current alignment; -1 for none. Nothing keeps it within the array.
  [[nodiscard]] std::int32_t GetCurrent() const { return m_current; }
  /// Sets the index of the current alignment.
  void SetCurrent(std::int32_t index) { m_current = index; }

  /// Whether an alignment refers to the coordinate reference system of that name (exactly). No system has an empty
  /// name: false for it.
  [[nodiscard]] bool IsUsedCrsName(const char* name) const;

 private:
  std::int32_t m_current = -1;
};
