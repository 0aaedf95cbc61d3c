#pragma once

#include <string_view>

#include "vorn/model/build_form.h"
#include "vorn/model/existing_build_form.h"

namespace vorn_host {

// Which forms of a cross section stand in its document: an application may hold others beside them.

/// Whether a build form is written. Edition 2.0 writes forms too that are not exported, and exports them from then on.
[[nodiscard]] bool IsWritten(const VornBuildForm& form, bool edition20);
/// Whether an existing ground form is written, in the editions that hold such forms.
[[nodiscard]] bool IsWritten(const VornExistingBuildForm& form);
/// A reason of `WhyNotWritten`, as it follows the name of the form.
inline constexpr std::string_view kTooFewPoints = "has fewer than two points";
/// The other reason.
inline constexpr std::string_view kNotExported = "is not exported";
/// What keeps a build form from being written, the lack of points before the lack of export; empty when it is written.
[[nodiscard]] std::string_view WhyNotWritten(const VornBuildForm& form, bool edition20);

}  // namespace vorn_host
