#pragma once

#include "vorn/model/build_form.h"
#include "vorn/platform/nur_mrm.h"

namespace vorn_host {

/// How the two input values of a composed point are read.
using Reading = VornComposedPnt::Reading;

/// The input values of a composed point: one way to write where it lies.
struct InputValues {
  Reading reading = Reading::WidthHeight;  ///< how x and y are read
  double x = 0.0;                          ///< width, or height of a ratio, in metres
  double y = 0.0;                          ///< height in metres, grade in percent, or ratio
};

/// Index of the point of a form that a point is placed from: the one before it in the order of the form, but the start
/// point where that lies on another side, as each run of one side begins there. -1 for the start point itself.
[[nodiscard]] int OriginOf(const Vorn_ComposedPntArray& points, int index);
/// Where input values lead from a place, towards a side. Positions are (distance from the centre line, height).
[[nodiscard]] TamWorld2 Place(const InputValues& values, VornLocation side, const TamWorld2& from);
/// The way from one place to another outward on a side, in metres.
[[nodiscard]] double OutwardWidth(VornLocation side, const TamWorld2& from, const TamWorld2& to);
/// How far two places lie apart, in metres.
[[nodiscard]] double Distance(const TamWorld2& a, const TamWorld2& b);
/// As a document writes it; an unset value counts as zero.
[[nodiscard]] double Rounded(double value, KelMrmFigure places);
/// Whether every point of a form has a distance and a height. A start point that is no centre point may lack them:
/// nothing places it.
[[nodiscard]] bool IsPlaced(const VornBuildForm& form);

}  // namespace vorn_host
