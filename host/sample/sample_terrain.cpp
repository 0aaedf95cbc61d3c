#include "host/sample/sample_terrain.h"

#include <cstddef>

namespace vorn_host {

namespace {

/// The splitmix64 generator: small, and the same everywhere, unlike the distributions of the standard library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}

  std::uint64_t Next() {
    m_state += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }
  /// A whole number from first to last.
  std::int64_t Between(std::int64_t first, std::int64_t last) {
    return first + static_cast<std::int64_t>(Next() % static_cast<std::uint64_t>(last - first + 1));
  }

 private:
  std::uint64_t m_state;
};

/// A wave of that length or up to a quarter longer, anywhere in its swing.
SampleWave RandomWave(Random& random, Millimetres length, std::int64_t amplitude) {
  SampleWave wave;
  wave.period = random.Between(length / 2000, length * 5 / 8000) * 2000;
  wave.phase = random.Between(0, wave.period - 1);
  wave.amplitude = amplitude;
  return wave;
}

/// How the terrain of a kind of work is shaped.
struct Relief {
  Millimetres profilePeriod;
  Millimetres profileRise;
  Millimetres level;
  std::int64_t large;
  std::int64_t small;
  std::int64_t crossSlope;
  std::int64_t bumps;
};

Relief ReliefOf(SampleKind kind) {
  switch (kind) {
    case SampleKind::River:
      return {24'000'000, 6'000, -5'500, 1'000, 600, 500, 150};
    case SampleKind::Farm:
      return {4'000'000, 1'000, 0, 900, 400, 1'500, 100};
    case SampleKind::Road:
      break;
  }
  return {1'200'000, 12'000, 0, 7'000, 2'500, 20'000, 250};
}

/// Offsets of the ground's vertices on the right, closer together near the centre.
constexpr std::array<Millimetres, 8> kOffsets = {3'000, 7'000, 12'000, 18'000, 26'000, 36'000, 48'000, 62'000};

/// Where the river bed begins, and how far it lies below the foreland.
constexpr Millimetres kBankOffset = 30'000;
constexpr Millimetres kBedDepth = 2'500;

}  // namespace

std::int64_t SampleWave::At(Millimetres station) const {
  const Millimetres half = period / 2;
  const Millimetres place = (station + phase) % period;
  const Millimetres along = place % half;
  const std::int64_t height = 4 * amplitude * along * (half - along) / (half * half);
  return place < half ? height : -height;
}

SampleTerrain::SampleTerrain(SampleKind kind, std::uint64_t seed) : m_kind(kind), m_seed(seed) {
  Random random(seed);
  const Relief relief = ReliefOf(kind);
  m_base = random.Between(20, 80) * 1'000;
  m_profilePeriod = relief.profilePeriod;
  m_profileRise = relief.profileRise;
  m_level = relief.level;
  m_relief[0] = RandomWave(random, 280'000, relief.large);
  m_relief[1] = RandomWave(random, 170'000, relief.small);
  m_crossSlope = RandomWave(random, 700'000, relief.crossSlope);
  m_crossfall = RandomWave(random, 360'000, 250);
  for (SampleWave& bump : m_bumps) bump = RandomWave(random, 90'000, relief.bumps);
}

Millimetres SampleTerrain::ProfileHeight(Millimetres station) const {
  // Straight grades, up and down in turn.
  const Millimetres half = m_profilePeriod / 2;
  const Millimetres place = station % m_profilePeriod;
  return m_base + m_profileRise * (place < half ? place : m_profilePeriod - place) / half;
}

GroundLine SampleTerrain::Ground(Millimetres station) const {
  Random random(m_seed ^ (static_cast<std::uint64_t>(station) * 0x9E3779B97F4A7C15u));
  const Millimetres centre = ProfileHeight(station) + m_level + m_relief[0].At(station) + m_relief[1].At(station);
  const std::int64_t slope = m_crossSlope.At(station);

  GroundLine ground(kVertices);
  for (std::size_t i = 0; i < kVertices; ++i) {
    constexpr std::size_t kCentre = kVertices / 2;
    GroundVertex& vertex = ground[i];
    if (i < kCentre) vertex.offset = -kOffsets[kCentre - i - 1] + random.Between(-400, 400);
    if (i > kCentre) vertex.offset = kOffsets[i - kCentre - 1] + random.Between(-400, 400);
    vertex.height = centre + slope * vertex.offset / 100'000 + m_bumps[i].At(station) + random.Between(-30, 30);
    if (m_kind == SampleKind::River && vertex.offset > kBankOffset) vertex.height -= kBedDepth;
  }
  return ground;
}

}  // namespace vorn_host
