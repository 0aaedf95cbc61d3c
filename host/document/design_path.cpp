#include "host/document/design_path.h"

#include "host/document/text_encoding.h"
#include "vorn/platform/sil_string.h"

namespace vorn_host {

namespace {

std::string InParentheses(const CString& text) {
  return text.IsEmpty() ? std::string() : " (" + ToUtf8(text.View()) + ")";
}

/// The text, or what number it is when it has none.
std::string NameOr(const CString& text, int index) {
  return text.IsEmpty() ? "no. " + std::to_string(index + 1) : ToUtf8(text.View());
}

}  // namespace

std::string StationText(const NurReal& station) {
  return station.IsSet() ? SilString::StrDouble(station.Value(), 4).GetString() : "unset";
}

std::string StationPath(const NurReal& station, bool xSectChg) {
  return "station " + StationText(station) + (xSectChg ? " behind the change of shape" : "");
}

std::string SetPath(const VornXSections& set, int index) {
  return "set " + std::to_string(index + 1) + InParentheses(set.GetRefAlign());
}

std::string SectionPath(const std::string& setPath, const VornXSection& section) {
  return setPath + " > " + StationPath(section.GetCumulativeDist(), section.GetXSectChg()) +
         InParentheses(section.GetName());
}

std::string FormPath(const std::string& sectionPath, const CString& formName) {
  return sectionPath + " > form " + (formName.IsEmpty() ? "without a name" : ToUtf8(formName.View()));
}

std::string PointPath(const std::string& formPath, const CString& code, int index) {
  return formPath + " > point " + NameOr(code, index);
}

std::string TargetPath(const std::string& ownerPath, const VornFormCtrlTarget& target, int index) {
  std::string what = target.GetControlItemString().GetString();
  const CString code = target.GetCode();
  if (!code.IsEmpty()) what += (what.empty() ? "" : " ") + ToUtf8(code.View());
  return ownerPath + " > control target " + std::to_string(index + 1) + (what.empty() ? "" : " (" + what + ")");
}

}  // namespace vorn_host
