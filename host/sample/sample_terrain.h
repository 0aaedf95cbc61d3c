#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/sample/sample_design.h"

namespace vorn_host {

/// Lengths of a sample design. Whole millimetres throughout: no compiler and no processor rounds them differently.
using Millimetres = std::int64_t;

/// A vertex of the existing ground: signed offset from the centre line (negative on the left), and height.
struct GroundVertex {
  Millimetres offset = 0;  ///< from the centre line, negative on the left
  Millimetres height = 0;  ///< above the datum
};
/// The existing ground of a cross section from left to right.
using GroundLine = std::vector<GroundVertex>;

/// A smooth curve along the line that swings around zero, made of parabolas.
struct SampleWave {
  Millimetres period = 2;      ///< even
  Millimetres phase = 0;       ///< where the curve begins
  std::int64_t amplitude = 0;  ///< how far it swings to either side

  /// The curve's value at a station.
  [[nodiscard]] std::int64_t At(Millimetres station) const;
};

/// The country that a sample design is built in: the vertical alignment of the centre line, the existing ground around
/// it, and the crossfall of the surface.
class SampleTerrain {
 public:
  /// The country that a seed gives for a kind of work.
  SampleTerrain(SampleKind kind, std::uint64_t seed);

  /// Height of the centre line.
  [[nodiscard]] Millimetres ProfileHeight(Millimetres station) const;
  /// The existing ground, wide enough for every slope to end on it.
  [[nodiscard]] GroundLine Ground(Millimetres station) const;
  /// Slow swing of the crossfall, in 0.001 %.
  [[nodiscard]] std::int64_t CrossfallSwing(Millimetres station) const { return m_crossfall.At(station); }

 private:
  static constexpr std::size_t kVertices = 17;

  SampleKind m_kind;
  std::uint64_t m_seed;
  Millimetres m_base = 0;  ///< height around which the profile swings
  Millimetres m_profilePeriod = 2;
  Millimetres m_profileRise = 0;  ///< from the lowest point of the profile to the highest
  Millimetres m_level = 0;        ///< mean height of the ground above the design
  std::array<SampleWave, 2> m_relief;
  SampleWave m_crossSlope;  ///< of the ground, in 0.001 %
  SampleWave m_crossfall;
  std::array<SampleWave, kVertices> m_bumps;
};

}  // namespace vorn_host
