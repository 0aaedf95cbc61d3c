#include "host/document/written_forms.h"

namespace vorn_host {

namespace {

constexpr int kFewestPoints = 2;

}  // namespace

bool IsWritten(const VornBuildForm& form, bool edition20) { return WhyNotWritten(form, edition20).empty(); }

bool IsWritten(const VornExistingBuildForm& form) { return form.GetComposedPntArray().GetSize() >= kFewestPoints; }

std::string_view WhyNotWritten(const VornBuildForm& form, bool edition20) {
  if (form.GetComposedPntArray().GetSize() < kFewestPoints) return kTooFewPoints;
  if (form.GetOmitFlag() != 0 || (form.GetExport() == 0 && !edition20)) return kNotExported;
  return {};
}

}  // namespace vorn_host
