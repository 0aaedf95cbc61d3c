#pragma once

#include <cstdint>

#include "vorn/road/record.h"

/// A ground point that is selected for the LandXML export, by its number.
class VornLandXMLCgPoint : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 2;

  /// The record of the project archive, the same for every version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag, const char* version);

  /// `VornGmPnt::GetNumber` of the point.
  [[nodiscard]] std::uint16_t GetNumber() const { return m_number; }
  void SetNumber(std::uint16_t number) { m_number = number; }

  /// Whether the numbers are equal.
  [[nodiscard]] bool Compare(const VornLandXMLCgPoint& other) const { return m_number == other.m_number; }

 private:
  std::uint16_t m_number = 0;
};

/// The ground points that are selected for the LandXML export. `Compare` does not look at the options.
class VornLandXMLCgPointsArray : public VornRecordArray<VornLandXMLCgPoint> {
 public:
  /// The signed 32-bit count, the points, both options. Loading replaces all.
  void Serialize(CArchive& ar, const char* tag, const char* version);

  /// Options of the export, which the library keeps and does not look into.
  [[nodiscard]] std::int32_t GetOption1() const { return m_option1; }
  void SetOption1(std::int32_t option) { m_option1 = option; }
  [[nodiscard]] std::int32_t GetOption2() const { return m_option2; }
  void SetOption2(std::int32_t option) { m_option2 = option; }

 private:
  std::int32_t m_option1 = 1;
  std::int32_t m_option2 = 0;
};
