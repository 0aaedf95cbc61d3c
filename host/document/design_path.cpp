#include "host/document/design_path.h"

#include "host/document/text_encoding.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

namespace vorn_host {

namespace {

std::string InParentheses(const std::string& text) { return text.empty() ? std::string() : " (" + text + ")"; }

/// The text, or what number it is when it has none.
std::string NameOr(const CString& text, int index) {
  return text.IsEmpty() ? "no. " + std::to_string(index + 1) : NameText(text);
}

/// "Width L1 R1": what a target controls, and its codes.
std::string ItemAndCodes(const VornFormCtrlTarget& target) {
  std::string text = target.GetControlItemString().GetString();
  const CString codes = target.GetCode();
  if (!codes.IsEmpty()) text += (text.empty() ? "" : " ") + NameText(codes);
  return text;
}

}  // namespace

std::string NameText(const CString& name) {
  constexpr std::size_t kLongest = 200;
  const std::string_view text = name.View();
  if (text.size() <= kLongest) return ToUtf8(text);
  std::size_t end = 0;
  for (std::size_t next = 0; next <= kLongest; next += code_page_932::CharacterLength(text, next)) end = next;
  return ToUtf8(text.substr(0, end)) + "...";
}

std::string StationText(const NurReal& station) {
  return station.IsSet() ? SilString::StrDouble(station.Value(), 4).GetString() : "unset";
}

std::string StationPath(const NurReal& station, bool xSectChg) {
  return "station " + StationText(station) + (xSectChg ? " behind the change of shape" : "");
}

std::string SetPath(const VornXSections& set, int index) {
  return "set " + std::to_string(index + 1) + InParentheses(NameText(set.GetRefAlign()));
}

std::string SectionPath(const std::string& setPath, const VornXSection& section) {
  return setPath + " > " + StationPath(section.GetCumulativeDist(), section.GetXSectChg()) +
         InParentheses(NameText(section.GetName()));
}

std::string FormPath(const std::string& sectionPath, const CString& formName) {
  return sectionPath + " > form " + (formName.IsEmpty() ? "without a name" : NameText(formName));
}

std::string PointPath(const std::string& formPath, const CString& code, int index) {
  return formPath + " > point " + NameOr(code, index);
}

std::string TargetPath(const std::string& ownerPath, const VornFormCtrlTarget& target, int index) {
  return ownerPath + " > control target " + std::to_string(index + 1) + InParentheses(ItemAndCodes(target));
}

std::string TargetText(const VornFormCtrlTarget& target) {
  return "control target" + InParentheses(ItemAndCodes(target));
}

}  // namespace vorn_host
