#include "host/drawing/drawing_style.h"

namespace vorn_host {

const std::array<DrawingStyle, 13>& DrawingStyles() {
  static const std::array<DrawingStyle, 13> styles = {{
      {DrawingKind::DesignSurface, "design-surface", "#000000", 0.50, {}},
      {DrawingKind::Slope, "slope", "#0072b2", 0.50, {}},
      {DrawingKind::PavementLayer, "pavement-layer", "#56667a", 0.25, {}},
      {DrawingKind::OtherForm, "other-form", "#9d4f7e", 0.25, {4.0, 1.0}},
      {DrawingKind::Ground, "ground", "#8c5a00", 0.25, {}},
      {DrawingKind::GroundHatch, "ground-hatch", "#8c5a00", 0.13, {}},
      {DrawingKind::Crossing, "crossing", "#d55e00", 0.35, {}},
      {DrawingKind::CenterLine, "center-line", "#b00020", 0.18, {8.0, 1.5, 1.0, 1.5}},
      {DrawingKind::Code, "code", "#333333", 0.18, {}},
      {DrawingKind::Grade, "grade", "#005f46", 0.18, {}},
      {DrawingKind::Dimension, "dimension", "#6a3d9a", 0.18, {}},
      {DrawingKind::Frame, "frame", "#555555", 0.18, {}},
      {DrawingKind::Title, "title", "#000000", 0.18, {}},
  }};
  return styles;
}

}  // namespace vorn_host
