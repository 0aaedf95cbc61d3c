#pragma once

#include "host/drawing/paper.h"
#include "host/drawing/section_drawing.h"
#include "host/drawing/section_view.h"

namespace vorn_host {

/// What of a section a drawing shows: offsets from left to right in metres.
struct SectionWindow {
  double left = 0.0;   ///< negative on the left
  double right = 0.0;  ///< positive on the right
};

/// The window of a section: its forms with some of the ground on either side; the ground alone where there is no form.
[[nodiscard]] SectionWindow WindowOf(const SectionView& view);

/// The room that a section takes on paper at least: the section itself and its centre line, without any labels.
[[nodiscard]] PaperBox LeastRoom(const SectionView& view, const SectionWindow& window, const PaperScale& scale);

/// Draws the section itself at one scale: forms, ground, marks, labels and dimensions.
/// @param drawing receives lines, marks and texts
/// @returns the room that all of it takes on paper
PaperBox LayOutSection(const SectionView& view, const SectionWindow& window, const PaperScale& scale,
                       SectionDrawing& drawing);

}  // namespace vorn_host
