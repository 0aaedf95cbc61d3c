#pragma once

#include <cstdint>

/// What a reader made of a document, counted and summed up: readers are only compared when they hold the same. Plain
/// C++14, since data binding is compiled so.
struct DocumentTally {
  std::int64_t sections = 0;
  std::int64_t forms = 0;
  std::int64_t points = 0;
  std::int64_t leftPoints = 0;
  std::int64_t slopes = 0;  ///< points whose component type is a slope of a cut or a fill
  std::int64_t grades = 0;  ///< points with a grade in percent
  std::int64_t existing = 0;
  std::int64_t codeBytes = 0;
  std::int64_t groundPoints = 0;
  std::int64_t targets = 0;
  std::int64_t slopeTargets = 0;
  std::int64_t targetPoints = 0;
  double stations = 0.0;
  double x = 0.0;
  double y = 0.0;
  double groundDistances = 0.0;
  double groundHeights = 0.0;
  double targetStations = 0.0;
};

/// Whether two readers hold the same. The sums are exact: every reader gives the double that is closest to the text,
/// and they add them up in the same order.
inline bool operator==(const DocumentTally& a, const DocumentTally& b) {
  return a.sections == b.sections && a.forms == b.forms && a.points == b.points && a.leftPoints == b.leftPoints &&
         a.slopes == b.slopes && a.grades == b.grades && a.existing == b.existing && a.codeBytes == b.codeBytes &&
         a.groundPoints == b.groundPoints && a.targets == b.targets && a.slopeTargets == b.slopeTargets &&
         a.targetPoints == b.targetPoints && a.stations == b.stations && a.x == b.x && a.y == b.y &&
         a.groundDistances == b.groundDistances && a.groundHeights == b.groundHeights &&
         a.targetStations == b.targetStations;
}
