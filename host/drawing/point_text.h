#pragma once

#include <string>

#include "host/drawing/section_view.h"

namespace vorn_host {

/// The input values of a point as people write them: "3.500 m, -1.501 %", "-5.000 m, 1:1.500". A dash for a value that
/// is not set, which points that were placed may lack; nothing where both are.
[[nodiscard]] std::string InputText(const ViewInput& input);

/// The ratio of a slope or the grade of a surface from a place to the next one outward, rising outward. Upright
/// segments have no grade.
/// @param input what the document tells of this segment; its values are taken where it tells a ratio or a grade
[[nodiscard]] std::string GradeText(const ViewInput& input, SectionPart part, const SectionPlace& from,
                                    const SectionPlace& to);

}  // namespace vorn_host
