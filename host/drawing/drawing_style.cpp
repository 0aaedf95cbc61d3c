#include "host/drawing/drawing_style.h"

#include <cstddef>

namespace vorn_host {

const std::array<DrawingStyle, 13>& DrawingStyles() {
  static const std::array<DrawingStyle, 13> styles = {{
      {DrawingKind::Frame, "frame", "#000000", 0.18, "#000000", {}},
      {DrawingKind::GroundHatch, "ground-hatch", "#009e73", 0.13, "#000000", {}},
      {DrawingKind::Ground, "ground", "#009e73", 0.25, "#00664b", {}},
      {DrawingKind::CenterLine, "center-line", "#000000", 0.18, "#000000", {8.0, 1.5, 1.5, 1.5}},
      {DrawingKind::PavementLayer, "pavement-layer", "#d55e00", 0.25, "#000000", {}},
      {DrawingKind::OtherForm, "other-form", "#cc79a7", 0.35, "#000000", {4.0, 1.0}},
      {DrawingKind::DesignSurface, "design-surface", "#000000", 0.70, "#000000", {}},
      {DrawingKind::Slope, "slope", "#0072b2", 0.50, "#000000", {}},
      {DrawingKind::Dimension, "dimension", "#000000", 0.13, "#000000", {}},
      {DrawingKind::Code, "code", "#000000", 0.10, "#000000", {}},
      {DrawingKind::Crossing, "crossing", "#d55e00", 0.30, "#000000", {}},
      {DrawingKind::Grade, "grade", "#000000", 0.18, "#00507d", {}},
      {DrawingKind::Title, "title", "#000000", 0.18, "#000000", {}},
  }};
  return styles;
}

const std::array<MarkStyle, 4>& MarkStyles() {
  using Shape = DrawnMark::Shape;
  static const std::array<MarkStyle, 4> styles = {{
      {Shape::Point, "point", 0.15, false, 0.4, 0.0, 0.0},
      {Shape::Crossing, "cross", 0.30, false, 0.9, 0.0, 0.0},
      {Shape::Height, "height", 0.13, false, 0.0, 2.2, 1.3},
      {Shape::Arrow, "arrow", 0.13, true, 0.0, 2.2, 0.35},
  }};
  return styles;
}

const MarkStyle& StyleOf(DrawnMark::Shape shape) { return MarkStyles()[static_cast<std::size_t>(shape)]; }

}  // namespace vorn_host
