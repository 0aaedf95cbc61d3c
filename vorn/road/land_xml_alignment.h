#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"
#include "vorn/road/record.h"

/// An alignment's entry in the LandXML export. The library keeps all of it; of the flag it only asks whether it is 0.
class VornLandXMLAlignment : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 12;
  /// A code that is not set.
  static constexpr std::uint16_t kNoCode = 0xFFFF;

  VornLandXMLAlignment() = default;
  VornLandXMLAlignment(const VornLandXMLAlignment&) = default;
  VornLandXMLAlignment(VornLandXMLAlignment&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornLandXMLAlignment& operator=(const VornLandXMLAlignment& other) { return *this = VornLandXMLAlignment(other); }
  VornLandXMLAlignment& operator=(VornLandXMLAlignment&&) noexcept = default;

  /// The record of the project archive, the same for every version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag, const char* version);

  /// Name of the alignment.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// A text that the library keeps.
  [[nodiscard]] const CString& GetText() const { return m_text; }
  void SetText(const CString& text) { m_text = text; }
  /// Not 0 when the alignment is selected; what else it says is the host's.
  [[nodiscard]] std::int32_t GetFlag() const { return m_flag; }
  void SetFlag(std::int32_t flag) { m_flag = flag; }
  /// Codes; `kNoCode` when not set.
  [[nodiscard]] std::uint16_t GetCode1() const { return m_code1; }
  void SetCode1(std::uint16_t code) { m_code1 = code; }
  [[nodiscard]] std::uint16_t GetCode2() const { return m_code2; }
  void SetCode2(std::uint16_t code) { m_code2 = code; }
  [[nodiscard]] std::uint16_t GetCode3() const { return m_code3; }
  void SetCode3(std::uint16_t code) { m_code3 = code; }

 private:
  CString m_name;
  CString m_text;
  std::int32_t m_flag = 0;
  std::uint16_t m_code1 = kNoCode;
  std::uint16_t m_code2 = kNoCode;
  std::uint16_t m_code3 = kNoCode;
};

/// The alignments of the export.
class VornLandXMLAlignmentsArray : public VornRecordArray<VornLandXMLAlignment> {};
