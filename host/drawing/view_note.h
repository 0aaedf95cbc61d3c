#pragma once

#include <string>
#include <vector>

#include "host/drawing/language.h"

namespace vorn_host {

/// What of a cross section could not be shown, and why; or where what is shown was taken from.
struct ViewNote {
  /// What it is about.
  enum class Kind {
    FormWithoutPoints,
    FormOutOfReach,     ///< its start point lies farther away than anything of a cross section
    FormWithoutCenter,  ///< it does not begin with a centre point, so nobody can tell where it lies
    FormPointsLeftOut,
    GroundPointsLeftOut,
    GroundTooShort,         ///< fewer than two points
    GroundWithoutHeight,    ///< it lies at elevations, and the height of the centre line is not known
    HeightFromGround,       ///< the height of the centre line comes from where the design ends on the ground
    HeightNotAsStored,      ///< the points stand at another height of the centre line than the section itself tells
    WidthsLeftOut,          ///< width dimensions that found no room
    HeightsLeftOut,         ///< heights of points that found none
    LengthsLeftOut,         ///< slope lengths that found none
    TargetsWithoutSection,  ///< control targets of which no point is at the station of a cross section
  };
  Kind kind = Kind::FormWithoutPoints;  ///< what it is about
  std::string name = {};                ///< of the form or the ground; may be empty
  int points = 0;                       ///< how many points, dimensions or control targets it is about
  double height = 0.0;                  ///< of the centre line, in metres

  friend bool operator==(const ViewNote&, const ViewNote&) = default;
};

/// The note in words: one sentence without a full stop.
[[nodiscard]] std::string NoteText(const ViewNote& note, Language language);
/// Several of them.
[[nodiscard]] std::vector<std::string> NoteTexts(const std::vector<ViewNote>& notes, Language language);

}  // namespace vorn_host
