#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// How a kind of piece looks wherever it is drawn. The colours stay apart for colour-blind readers and in grey; lines
/// that may lie beside each other differ in weight or dashes too.
struct DrawingStyle {
  DrawingKind kind;
  std::string_view name;         ///< for programs: "design-surface"
  std::string_view color;        ///< on white: "#0072B2"
  double widthMm;                ///< weight of lines on paper
  std::vector<double> dashesMm;  ///< dash, gap, dash, gap, ...; none for a whole line
};

/// Every kind, in the order of `DrawingKind`.
[[nodiscard]] const std::array<DrawingStyle, 13>& DrawingStyles();

}  // namespace vorn_host
