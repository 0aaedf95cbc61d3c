#include "host/editing/edit_pieces.h"

#include "host/document/design_path.h"
#include "host/document/text_encoding.h"
#include "host/editing/edit_report.h"
#include "host/editing/point_positions.h"
#include "vorn/platform/fixed_decimal.h"

namespace vorn_host {

std::string Utf8(const CString& text) { return ToUtf8(text.View()); }

std::string Metres(double value) { return std::string(FixedDecimal(value, 4).View()); }

void ExpressSection(VornXSection& section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) ExpressPositions(form);
}

void RequireCentreStart(const VornBuildForm& form, const std::string& sectionPath) {
  const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  if (points.IsEmpty() || points[0].IsCenter()) return;
  throw EditError(FormPath(sectionPath, form.GetName()),
                  "it does not begin with a centre point, so nobody can tell where it lies");
}

}  // namespace vorn_host
