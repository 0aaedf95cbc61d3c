#pragma once

#include <string>

#include "vorn/model/x_section.h"

// What the steps of the editor share.

namespace vorn_host {

/// A text of the model for reports.
[[nodiscard]] std::string Utf8(const CString& text);
/// A length with the decimals of a document.
[[nodiscard]] std::string Metres(double value);
/// `ExpressPositions` of every form.
void ExpressSection(VornXSection& section);
/// Throws `EditError` for a form whose start point is no centre point: its values tell nothing about where it lies in
/// the section.
void RequireCentreStart(const VornBuildForm& form, const std::string& sectionPath);

}  // namespace vorn_host
