#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// How a kind of piece looks on white, wherever it is drawn. Colours stay apart for colour-blind readers and in grey;
/// lines that may lie beside each other differ in weight or dashes too.
struct DrawingStyle {
  DrawingKind kind;
  std::string_view name;         ///< for programs: "design-surface"
  std::string_view lineColor;    ///< "#0072b2"
  double lineMm;                 ///< weight of lines on paper
  std::string_view textColor;    ///< "#000000"
  std::vector<double> dashesMm;  ///< dash, gap, dash, gap, ...; none for a whole line
};

/// Every kind, in the order in which they are drawn: what comes later lies above.
[[nodiscard]] const std::array<DrawingStyle, 13>& DrawingStyles();

}  // namespace vorn_host
