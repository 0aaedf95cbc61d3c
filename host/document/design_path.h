#pragma once

#include <string>

#include "vorn/model/x_sections.h"

namespace vorn_host {

/// Places in a design as messages name them, in UTF-8: "set 1 (CL-1) > station 120.0000 (No.6) > form 路面".

/// A name or a code; of one longer than 200 bytes in code page 932, the beginning with "..." behind it. Each message
/// repeats the names above it: long ones would fill the memory.
[[nodiscard]] std::string NameText(const CString& name);
/// "set 1 (CL-1)".
[[nodiscard]] std::string SetPath(const VornXSections& set, int index);
/// "... > station 120.0000 (No.6)".
[[nodiscard]] std::string SectionPath(const std::string& setPath, const VornXSection& section);
/// "... > form 路面".
[[nodiscard]] std::string FormPath(const std::string& sectionPath, const CString& formName);
/// "... > point L1"; its number where it has no code.
[[nodiscard]] std::string PointPath(const std::string& formPath, const CString& code, int index);
/// "control target 3 (Width L1 R1)", below a set or a form.
[[nodiscard]] std::string TargetPath(const std::string& ownerPath, const VornFormCtrlTarget& target, int index);
/// "control target (Width L1 R1)", where its number tells nothing.
[[nodiscard]] std::string TargetText(const VornFormCtrlTarget& target);
/// A station with four decimals, "unset" for an unset one.
[[nodiscard]] std::string StationText(const NurReal& station);
/// "station 120.0000", with the change-of-shape flag "station 120.0000 behind the change of shape".
[[nodiscard]] std::string StationPath(const NurReal& station, bool xSectChg);

}  // namespace vorn_host
