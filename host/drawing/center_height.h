#pragma once

#include <optional>

#include "host/drawing/section_view.h"

namespace vorn_host {

/// The height of the centre line that a section's own ground tells: both sides of its design surfaces have to end on
/// the ground, and to tell one height. Heights of the view count from the centre line still.
[[nodiscard]] std::optional<double> HeightFromCrossings(const SectionView& view);

/// A design that ends on the ground crosses it there, whether or not the document marks the point.
void MarkCrossings(SectionView& view);

}  // namespace vorn_host
