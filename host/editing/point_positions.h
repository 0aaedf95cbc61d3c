#pragma once

#include "vorn/model/build_form.h"

namespace vorn_host {

/// Positions farther apart than this, in metres, are a change: less is rounding to the decimals of a document.
inline constexpr double kChangedPosition = 1e-4;

/// Gives the points of a form the input values that lead to their positions, after points were inserted, removed,
/// moved or put into another order: a document holds the input values only. Values that lead there as they are stay;
/// the others keep their reading (percent, ratio) where its decimals allow. Each point is placed from where the point
/// before it really comes to lie, so that roundings do not add up.
/// @returns how many points got new values
int ExpressPositions(VornBuildForm& form);

}  // namespace vorn_host
