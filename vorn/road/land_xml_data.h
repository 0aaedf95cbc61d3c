#pragma once

#include <cstdint>

#include "vorn/platform/cstring.h"
#include "vorn/platform/cstring_list.h"
#include "vorn/road/land_xml_alignment.h"
#include "vorn/road/land_xml_cg_point.h"
#include "vorn/road/land_xml_project.h"
#include "vorn/road/record.h"

/// A list of texts.
class VornStringList : public CStringList {
 public:
  VornStringList() : CStringList(10) {}
};

/// What a project's export to LandXML is set to: the project's texts, the selected ground points, the alignments, and
/// options. The export itself is the host's.
class VornLandXMLData : public VornRecord {
 public:
  /// The store version that is written, and the newest that is read.
  static constexpr const char* kNewestStoreVersion = "01.11";

  VornLandXMLData() = default;
  VornLandXMLData(const VornLandXMLData&) = default;
  VornLandXMLData(VornLandXMLData&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornLandXMLData& operator=(const VornLandXMLData& other) { return *this = VornLandXMLData(other); }
  VornLandXMLData& operator=(VornLandXMLData&&) noexcept = default;

  /// The record of the project archive, with its own store version at its head. Loading a newer one throws `false`
  /// before anything else is read. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// The version that was last read or written.
  [[nodiscard]] const CString& GetStoreVersion() const { return m_storeVersion; }
  /// Name and description of the project.
  [[nodiscard]] const VornLandXMLProject& GetProject() const { return m_project; }
  [[nodiscard]] VornLandXMLProject& GetProject() { return m_project; }
  void SetProject(const VornLandXMLProject& project) { m_project = project; }
  /// The selected ground points.
  [[nodiscard]] const VornLandXMLCgPointsArray& GetCgPoints() const { return m_cgPoints; }
  [[nodiscard]] VornLandXMLCgPointsArray& GetCgPoints() { return m_cgPoints; }
  void SetCgPoints(const VornLandXMLCgPointsArray& points) { m_cgPoints = points; }
  /// The alignments.
  [[nodiscard]] const VornLandXMLAlignmentsArray& GetAlignments() const { return m_alignments; }
  [[nodiscard]] VornLandXMLAlignmentsArray& GetAlignments() { return m_alignments; }
  void SetAlignments(const VornLandXMLAlignmentsArray& alignments) { m_alignments = alignments; }
  /// 1 in new data. Data of version "01.10" do not have it: loading them gives 1 when the flag of any alignment is not
  /// 0, otherwise 0.
  [[nodiscard]] std::int32_t GetFlagAny() const { return m_flagAny; }
  void SetFlagAny(std::int32_t flag) { m_flagAny = flag; }
  /// Options of the export, which the library keeps and does not look into.
  [[nodiscard]] std::int32_t GetOption1() const { return m_option1; }
  void SetOption1(std::int32_t option) { m_option1 = option; }
  /// A second option, which archives do not hold.
  [[nodiscard]] std::int32_t GetOption2() const { return m_option2; }
  void SetOption2(std::int32_t option) { m_option2 = option; }
  /// A third option, archived.
  [[nodiscard]] std::int32_t GetOption3() const { return m_option3; }
  void SetOption3(std::int32_t option) { m_option3 = option; }
  /// Texts that the library keeps.
  [[nodiscard]] const VornStringList& GetTexts() const { return m_texts; }
  [[nodiscard]] VornStringList& GetTexts() { return m_texts; }
  void SetTexts(const VornStringList& texts) { m_texts = texts; }
  /// A number that the library keeps.
  [[nodiscard]] double GetValue() const { return m_value; }
  void SetValue(double value) { m_value = value; }

 private:
  void SerializeOptions(CArchive& ar);

  CString m_storeVersion = kNewestStoreVersion;
  VornLandXMLProject m_project;
  VornLandXMLCgPointsArray m_cgPoints;
  VornLandXMLAlignmentsArray m_alignments;
  std::int32_t m_flagAny = 1;
  std::int32_t m_option1 = 1;
  std::int32_t m_option2 = 0;
  VornStringList m_texts;
  std::int32_t m_option3 = 0;
  double m_value = 5.0;
};
