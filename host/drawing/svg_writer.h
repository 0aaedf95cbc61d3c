#pragma once

#include <string>
#include <vector>

#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// A drawing as an SVG document in millimetres on paper, which needs nothing but itself: colours that can be told apart
/// without colour vision and in grey, and dashes besides. Texts stay texts.
/// @param title what the document calls itself; the texts of the drawing are written as they are drawn
[[nodiscard]] std::string WriteSvg(const SectionDrawing& drawing, const std::string& title);

/// Several drawings, one below the other: the sections before and behind a change of shape.
[[nodiscard]] std::string WriteSvg(const std::vector<SectionDrawing>& drawings, const std::string& title);

}  // namespace vorn_host
