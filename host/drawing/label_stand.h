#pragma once

#include <vector>

#include "host/drawing/paper.h"
#include "host/drawing/section_drawing.h"

namespace vorn_host {

/// A way for a label to stand at its place, in millimetres on paper.
struct LabelStand {
  double right = 0.0;                                    ///< from the place to where the text is anchored
  double lift = 0.0;                                     ///< from the place up to the base line of the text
  DrawnText::Anchor anchor = DrawnText::Anchor::Middle;  ///< which end of the text stands there
};

/// The size of all labels of a section.
inline constexpr double kLabelSizeMm = 2.5;

/// Where the leader to a label ends, as seen from its place: right below the text, or above it.
[[nodiscard]] PaperPlace LeaderEnd(const LabelStand& stand);

/// How far a label stands from its place.
[[nodiscard]] double ReachOf(const LabelStand& stand);

/// Where labels stand that are led to their places: in rows above and below, the nearest stand first.
[[nodiscard]] const std::vector<LabelStand>& FarStands();

/// A line from a place to a label that had to go far from it.
struct LabelLeader {
  PaperPlace from;  ///< the place
  PaperPlace to;    ///< the label

  /// In millimetres.
  [[nodiscard]] double Length() const;
  /// The place so far along it.
  [[nodiscard]] PaperPlace At(double along) const;
  /// How far a place lies from the line, in millimetres.
  [[nodiscard]] double DistanceTo(const PaperPlace& place) const;
};

}  // namespace vorn_host
