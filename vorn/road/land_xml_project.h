#pragma once

#include "vorn/platform/cstring.h"
#include "vorn/road/record.h"

/// Name and description of the project in the LandXML export.
class VornLandXMLProject : public VornRecord {
 public:
  VornLandXMLProject() = default;
  VornLandXMLProject(const VornLandXMLProject&) = default;
  VornLandXMLProject(VornLandXMLProject&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornLandXMLProject& operator=(const VornLandXMLProject& other) { return *this = VornLandXMLProject(other); }
  VornLandXMLProject& operator=(VornLandXMLProject&&) noexcept = default;

  /// The record of the project archive, the same for every version. Archive and file exceptions pass through.
  /// @param tag     store version of the project
  /// @param version store version of the LandXML data
  void Serialize(CArchive& ar, const char* tag, const char* version);

  /// Name of the project.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// Description of the project.
  [[nodiscard]] const CString& GetDesc() const { return m_desc; }
  void SetDesc(const CString& desc) { m_desc = desc; }

 private:
  CString m_name;
  CString m_desc;
};
