#pragma once

#include <cstdint>
#include <string_view>

#include "vorn/framework/enum_table.h"
#include "vorn/platform/cstring.h"
#include "vorn/road/record.h"

/// A survey point by its number, its class and its name: what control points and bench marks have in common.
/// @tparam kClassTexts the texts of the classes
template <typename ClassType, const auto& kClassTexts>
class VornSurveyPoint : public VornRecord {
 public:
  /// What the shortest record takes.
  static constexpr std::uint32_t kLeastArchiveBytes = 7;

  VornSurveyPoint() = default;
  VornSurveyPoint(const VornSurveyPoint&) = default;
  VornSurveyPoint(VornSurveyPoint&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornSurveyPoint& operator=(const VornSurveyPoint& other) { return *this = VornSurveyPoint(other); }
  VornSurveyPoint& operator=(VornSurveyPoint&&) noexcept = default;

  /// The record of the project archive, the same for every store version. Archive and file exceptions pass through.
  void Serialize(CArchive& ar, const char* tag);

  /// Identifier of the point within its array.
  [[nodiscard]] std::uint16_t GetNumber() const { return m_number; }
  void SetNumber(std::uint16_t number) { m_number = number; }
  /// Name of the point.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }

  /// Japanese text of a class; empty for an unknown value.
  [[nodiscard]] static CString GetClass(ClassType pointClass) { return EnumToText(kClassTexts, pointClass); }
  /// Text of the own class.
  [[nodiscard]] CString Class() const { return GetClass(m_class); }
  /// Takes the class of a text (exactly). False for any other text, the empty one too: the class is unset then.
  bool SetClass(std::string_view text) { return ResetAndSet(kClassTexts, text, m_class); }

  /// Whether number, class and name are equal.
  [[nodiscard]] bool Compare(const VornSurveyPoint& other) const {
    return m_number == other.m_number && m_class == other.m_class && m_name == other.m_name;
  }

 protected:
  std::uint16_t m_number = 0;            ///< identifier within the array
  ClassType m_class = ClassType::Unset;  ///< class of the point
  CString m_name;                        ///< name of the point
};
