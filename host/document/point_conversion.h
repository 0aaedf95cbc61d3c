#pragma once

#include "vorn/model/build_form.h"

namespace vorn_host {

/// How far points moved when their input values were re-expressed for another edition.
struct PointDisplacement {
  int convertedPoints = 0;  ///< points that got other input values
  double largest = 0.0;     ///< metres
  int largestAt = -1;       ///< index of the point in its form
  int farPoints = 0;        ///< points that moved by more than a millimetre

  /// Takes account of a point that moved by a distance (metres).
  void Note(double distance, int index);
};

/// Re-expresses a form's points for edition 2.0, which reads Y as a grade or a ratio by the slope type. Every point
/// but a centre point keeps its position, as near as the decimals of the edition allow; each is placed from where the
/// point before it really comes to lie, so that roundings do not add up along the form.
PointDisplacement ConvertPointsTo20(VornBuildForm& form);

/// Gives the points of a form read as edition 2.0 the data type that later editions read: exact.
void ConvertPointsFrom20(VornBuildForm& form);

}  // namespace vorn_host
