#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// How a kind of piece looks on white, wherever it is drawn. Colours stay apart for colour-blind readers and in grey;
/// lines that may lie beside each other differ in weight or dashes too.
struct DrawingStyle {
  DrawingKind kind;              ///< what it is the style of
  std::string_view name;         ///< for programs: "design-surface"
  std::string_view lineColor;    ///< "#0072b2"
  double lineMm;                 ///< weight of lines on paper
  std::string_view textColor;    ///< "#000000"
  std::vector<double> dashesMm;  ///< dash, gap, dash, gap, ...; none for a whole line
};

/// How a shape of marks looks, wherever it is drawn: a circle around its place, or a triangle that points at it. Its
/// line has the colour of the mark's kind.
struct MarkStyle {
  DrawnMark::Shape shape;  ///< what it is the style of
  std::string_view name;   ///< for programs: "point"
  double lineMm;           ///< weight of its line on paper
  bool isFilled;           ///< with the colour of its line, else with that of the paper
  double radiusMm;         ///< of a circle; 0 for a triangle
  double lengthMm;         ///< of a triangle, from its tip to its base
  double halfBaseMm;       ///< of a triangle
};

/// Every kind, in the order in which they are drawn: what comes later lies above.
[[nodiscard]] const std::array<DrawingStyle, 13>& DrawingStyles();

/// Every shape, in the order of the enumeration.
[[nodiscard]] const std::array<MarkStyle, 4>& MarkStyles();
/// The style of a shape.
[[nodiscard]] const MarkStyle& StyleOf(DrawnMark::Shape shape);

}  // namespace vorn_host
