#include "vorn/model/ground_profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/model/model_builders.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/line_geometry.h"

namespace {

using model_test::PointAt;
using testing::Gt;

/// Positions: (height, distance from the centre line).
using Polyline = std::vector<TamWorld2>;

constexpr double kLimit = 999999.9999;
constexpr std::string_view kFill = u8"盛土工"_cp932;

VornExistingComposedPntArray GroundPoints(const Polyline& positions) {
  VornExistingComposedPntArray points;
  for (const TamWorld2& position : positions) {
    VornExistingComposedPnt point;
    point.SetGh(position.x);
    point.SetCLDist(position.y);
    points.Add(std::move(point));
  }
  return points;
}

std::optional<TamWorld2> Crossing(const VornGroundProfile& ground, const TamWorld2& a, const TamWorld2& b) {
  return ground.FindCrossing(a, b);
}

std::optional<TamWorld2> Crossing(const Polyline& ground, const TamWorld2& a, const TamWorld2& b) {
  return Crossing(VornGroundProfile(GroundPoints(ground)), a, b);
}

// --- single crossings ----------------------------------------------------------------------------------------------

TEST(GroundProfile, FindsWhereADesignSegmentCrossesIt) {
  EXPECT_EQ(Crossing({{10.0, -5.0}, {10.0, 5.0}, {12.0, 9.0}}, {8.0, 1.0}, {12.0, 3.0}), (TamWorld2{10.0, 2.0}));
  EXPECT_EQ(Crossing({{10.0, -5.0}, {10.0, 5.0}, {12.0, 9.0}}, {8.0, 7.0}, {14.0, 7.0}), (TamWorld2{11.0, 7.0}));
}

TEST(GroundProfile, IsNotCrossedBelowItOrBesideIt) {
  EXPECT_EQ(Crossing({{10.0, -5.0}, {10.0, 5.0}}, {8.0, 1.0}, {9.0, 3.0}), std::nullopt);
  EXPECT_EQ(Crossing({{10.0, -5.0}, {10.0, 5.0}}, {8.0, 6.0}, {12.0, 6.0}), std::nullopt);
}

TEST(GroundProfile, CrossesNothingWithFewerThanTwoPoints) {
  EXPECT_EQ(Crossing(Polyline{}, {8.0, 1.0}, {12.0, 1.0}), std::nullopt);
  EXPECT_EQ(Crossing({{10.0, 1.0}}, {8.0, 1.0}, {12.0, 1.0}), std::nullopt);
}

TEST(GroundProfile, CrossesOnItsEarliestSegment) {
  // Runs out, back above itself, and out again; the design segment meets the middle run first.
  const Polyline ground = {{10.0, 0.0}, {10.0, 10.0}, {11.0, 10.0}, {11.0, 0.0}, {12.0, 0.0}, {12.0, 10.0}};
  EXPECT_EQ(Crossing(ground, {13.0, 5.0}, {9.0, 5.0}), (TamWorld2{10.0, 5.0}));
  EXPECT_EQ(Crossing(ground, {13.0, 5.0}, {10.5, 5.0}), (TamWorld2{11.0, 5.0}));
  EXPECT_EQ(Crossing(ground, {13.0, 5.0}, {11.5, 5.0}), (TamWorld2{12.0, 5.0}));
}

TEST(GroundProfile, CrossesOnItsEarliestSegmentAmongManyFarAndNear) {
  Polyline ground;
  for (int i = 0; i < 1000; ++i) {
    const double height = i % 2 == 0 ? 0.0 : 10.0;
    ground.push_back({height, i < 500 ? 1.0 * i : 999.0 - i});
  }
  // Both the way out and the way back cross; the way out comes first.
  const std::optional<TamWorld2> crossing = Crossing(ground, {5.0, 250.1}, {5.0, 400.0});
  ASSERT_TRUE(crossing.has_value());
  EXPECT_EQ(*crossing, (TamWorld2{5.0, 250.5}));
}

TEST(GroundProfile, CrossesOnEverySegment) {
  for (const int size : {2, 3, 8, 9, 10, 64, 65, 66, 513, 514}) {
    Polyline points;
    for (int i = 0; i < size; ++i) points.push_back({i % 3 == 0 ? 1.0 : 2.0, 1.0 * i});
    const VornGroundProfile ground(GroundPoints(points));
    for (int i = 0; i + 1 < size; ++i) {
      const std::optional<TamWorld2> crossing = Crossing(ground, {0.0, i + 0.5}, {3.0, i + 0.5});
      ASSERT_TRUE(crossing.has_value()) << i << " of " << size;
      EXPECT_EQ(crossing->y, i + 0.5) << i << " of " << size;
    }
  }
}

TEST(GroundProfile, RunsVertically) {
  const Polyline wall = {{0.0, 5.0}, {3.0, 5.0}, {6.0, 5.0}};
  EXPECT_EQ(Crossing(wall, {4.0, 0.0}, {4.0, 10.0}), (TamWorld2{4.0, 5.0}));
  EXPECT_EQ(Crossing(wall, {1.0, 5.0}, {4.0, 5.0}), std::nullopt);
}

TEST(GroundProfile, TouchesEnds) {
  const Polyline ground = {{10.0, 0.0}, {10.0, 10.0}};
  EXPECT_EQ(Crossing(ground, {8.0, 0.0}, {12.0, 0.0}), (TamWorld2{10.0, 0.0}));
  EXPECT_EQ(Crossing(ground, {8.0, 10.0}, {12.0, 10.0}), (TamWorld2{10.0, 10.0}));
  EXPECT_EQ(Crossing(ground, {8.0, 5.0}, {10.0 - 0.5e-6, 5.0}), (TamWorld2{10.0 - 0.5e-6, 5.0}));
  EXPECT_EQ(Crossing(ground, {8.0, 5.0}, {10.0 - 1.5e-6, 5.0}), std::nullopt);
  EXPECT_EQ(Crossing(ground, {8.0, 10.0 + 0.5e-6}, {12.0, 10.0 + 0.5e-6}), (TamWorld2{10.0, 10.0 + 0.5e-6}));
  EXPECT_EQ(Crossing(ground, {8.0, 10.0 + 1.5e-6}, {12.0, 10.0 + 1.5e-6}), std::nullopt);
}

TEST(GroundProfile, IsNotCrossedWhereTheDesignRunsAlongIt) {
  const Polyline ground = {{10.0, 0.0}, {10.0, 4.0}, {10.0, 4.0}, {10.0, 10.0}};
  EXPECT_EQ(Crossing(ground, {10.0, 0.0}, {10.0, 10.0}), std::nullopt);
  EXPECT_EQ(Crossing(ground, {10.0, 2.0}, {10.0, 20.0}), std::nullopt);
}

TEST(GroundProfile, HasAGapAtAPointWithoutAPosition) {
  for (const TamWorld2& missing : {TamWorld2{kNurUnsetReal, 5.0}, TamWorld2{10.0, kNurUnsetReal},
                                   TamWorld2{2.0 * kLimit, 5.0}, TamWorld2{10.0, -2.0 * kLimit}}) {
    const Polyline ground = {{10.0, 0.0}, {10.0, 4.0}, missing, {10.0, 6.0}, {10.0, 10.0}};
    EXPECT_EQ(Crossing(ground, {8.0, 4.5}, {12.0, 4.5}), std::nullopt);
    EXPECT_EQ(Crossing(ground, {8.0, 5.5}, {12.0, 5.5}), std::nullopt);
    EXPECT_EQ(Crossing(ground, {8.0, 3.0}, {12.0, 3.0}), (TamWorld2{10.0, 3.0}));
    EXPECT_EQ(Crossing(ground, {8.0, 7.0}, {12.0, 7.0}), (TamWorld2{10.0, 7.0}));
  }
}

TEST(GroundProfile, ReachesToTheLimitOfCoordinates) {
  EXPECT_NE(Crossing({{10.0, -kLimit}, {10.0, kLimit}}, {8.0, 3.0}, {12.0, 3.0}), std::nullopt);
  EXPECT_NE(Crossing({{10.0, 0.0}, {10.0, 5.0}}, {-kLimit, 3.0}, {kLimit, 3.0}), std::nullopt);
  const double beyond = std::nextafter(kLimit, 2.0 * kLimit);
  EXPECT_EQ(Crossing({{10.0, -beyond}, {10.0, 5.0}}, {8.0, 3.0}, {12.0, 3.0}), std::nullopt);
  EXPECT_EQ(Crossing({{10.0, 0.0}, {10.0, 5.0}}, {8.0, 3.0}, {beyond, 3.0}), std::nullopt);
}

TEST(GroundProfile, IsNotCrossedByASegmentWithoutPositions) {
  const Polyline ground = {{-10.0, 0.0}, {10.0, 0.0}};
  ASSERT_EQ(Crossing(ground, {0.0, -5.0}, {0.0, 5.0}), (TamWorld2{0.0, 0.0}));
  EXPECT_EQ(Crossing(ground, {kNurUnsetReal, -5.0}, {0.0, 5.0}), std::nullopt);
  EXPECT_EQ(Crossing(ground, {0.0, -5.0}, {kNurUnsetReal, 5.0}), std::nullopt);
  EXPECT_EQ(Crossing(ground, {5.0, kNurUnsetReal}, {5.0, 5.0}), std::nullopt);
  EXPECT_EQ(Crossing(ground, {5.0, 5.0}, {5.0, kNurUnsetReal}), std::nullopt);
}

TEST(GroundProfile, StaysAsThePointsWereWhenTheyChange) {
  VornExistingComposedPntArray points = GroundPoints({{10.0, 0.0}, {10.0, 10.0}});
  const VornGroundProfile ground(points);
  points.RemoveAll();
  EXPECT_EQ(Crossing(ground, {8.0, 5.0}, {12.0, 5.0}), (TamWorld2{10.0, 5.0}));
}

// --- the definition, on many sections ------------------------------------------------------------------------------

/// The definition of a crossing: each ground segment in the order of the points is tried, and the first that is
/// crossed gives it.
std::optional<TamWorld2> PlainCrossing(const Polyline& ground, const TamWorld2& a, const TamWorld2& b) {
  TamWorld2 crossing;
  std::uint16_t flag = 0;
  for (std::size_t i = 0; i + 1 < ground.size(); ++i) {
    const TamWorld2& p = ground[i];
    const TamWorld2& q = ground[i + 1];
    if (NurGetCrossTenFrom2Lin(a.x, a.y, b.x, b.y, p.x, p.y, q.x, q.y, crossing.x, crossing.y, flag, kLimit) != 0)
      return crossing;
  }
  return std::nullopt;
}

std::string Text(const TamWorld2& point) { return testing::PrintToString(std::make_pair(point.x, point.y)); }

bool SameBits(const TamWorld2& a, const TamWorld2& b) {
  return std::bit_cast<std::array<std::uint64_t, 2>>(a) == std::bit_cast<std::array<std::uint64_t, 2>>(b);
}

/// The same numbers with every compiler, which the distributions of the standard library do not promise.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_engine(seed) {}

  double Within(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine() >> 11U) * 0x1p-53);
  }
  std::size_t Below(std::size_t end) { return static_cast<std::size_t>(m_engine() % end); }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  template <typename Type, std::size_t kSize>
  Type OneOf(const std::array<Type, kSize>& choices) {
    return choices[Below(kSize)];
  }

 private:
  std::mt19937_64 m_engine;
};

double ToMillimetres(double value) { return std::round(value * 1000.0) / 1000.0; }

// Grounds of a size. They lie about (0, 0) with the extent of a cross section.

Polyline SmoothGround(Random& random, std::size_t size) {
  Polyline points;
  double slope = random.Within(-0.2, 0.2);
  TamWorld2 at = {random.Within(-2.0, 2.0), -20.0};
  const double step = 40.0 / static_cast<double>(size + 1);
  for (std::size_t i = 0; i < size; ++i) {
    points.push_back(at);
    slope = std::clamp(slope + random.Within(-0.1, 0.1), -0.5, 0.5);
    at = {at.x + slope * step, at.y + step * random.Within(0.5, 1.5)};
  }
  return points;
}

Polyline NoisyGround(Random& random, std::size_t size) {
  Polyline points = SmoothGround(random, size);
  for (TamWorld2& point : points) point.x += random.Within(-0.5, 0.5);
  return points;
}

Polyline SteppedGround(Random& random, std::size_t size) {
  Polyline points;
  TamWorld2 at = {0.0, -20.0};
  for (std::size_t i = 0; i < size; ++i) {
    points.push_back(at);
    if (i % 2 == 0) {
      at.x += random.Within(-2.0, 2.0);
    } else {
      at.y += random.Within(0.0, 80.0) / static_cast<double>(size + 1);
    }
  }
  return points;
}

Polyline BackwardGround(Random& random, std::size_t size) {
  Polyline points;
  TamWorld2 at = {random.Within(-2.0, 2.0), random.Within(-5.0, 5.0)};
  for (std::size_t i = 0; i < size; ++i) {
    points.push_back(at);
    at.x = std::clamp(at.x + random.Within(-1.0, 1.0), -5.0, 5.0);
    at.y = std::clamp(at.y + random.Within(-3.0, 3.0), -20.0, 20.0);
  }
  return points;
}

Polyline RepeatingGround(Random& random, std::size_t size) {
  Polyline points = random.OneIn(2) ? BackwardGround(random, size) : NoisyGround(random, size);
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (random.OneIn(3)) points[i] = points[random.OneIn(2) ? i - 1 : random.Below(i)];
  }
  return points;
}

Polyline MillimetreGround(Random& random, std::size_t size) {
  Polyline points = random.OneIn(2) ? BackwardGround(random, size) : SteppedGround(random, size);
  for (TamWorld2& point : points) point = {ToMillimetres(point.x), ToMillimetres(point.y)};
  return points;
}

/// A few millimetres wide: most points coincide with others, and most segments overlap.
Polyline TinyGround(Random& random, std::size_t size) {
  Polyline points;
  for (std::size_t i = 0; i < size; ++i) {
    points.push_back({0.001 * static_cast<double>(random.Below(6)), 0.001 * static_cast<double>(random.Below(6))});
  }
  return points;
}

// What is done to a ground.

void LoseCoordinates(Random& random, Polyline& points) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr std::array<double, 9> kNone = {kNurUnsetReal, kNurUnsetReal, 2e6,
                                           -1e6,          1e300,         -999999.99991,
                                           kInfinity,     -kInfinity,    std::numeric_limits<double>::quiet_NaN()};
  for (TamWorld2& point : points) {
    if (random.OneIn(8)) (random.OneIn(2) ? point.x : point.y) = random.OneOf(kNone);
  }
}

void ReachTheLimit(Random& random, Polyline& points) {
  constexpr std::array<double, 4> kFar = {kLimit, -kLimit, 999999.0, -500000.0};
  for (TamWorld2& point : points) {
    if (random.OneIn(8)) (random.OneIn(2) ? point.x : point.y) = random.OneOf(kFar);
  }
}

void MoveAway(Random& random, Polyline& points) {
  constexpr std::array<double, 4> kAway = {1e5, -1e5, 123456.789, 999900.0};
  const TamWorld2 away = {random.OneOf(kAway), random.OneOf(kAway)};
  for (TamWorld2& point : points) point = {point.x + away.x, point.y + away.y};
}

// Design polylines over a ground.

TamWorld2 Somewhere(Random& random, const Polyline& ground) {
  if (ground.empty()) return {random.Within(-3.0, 3.0), random.Within(-20.0, 20.0)};
  const TamWorld2& p = ground[random.Below(ground.size())];
  const TamWorld2& q = ground[random.Below(ground.size())];
  const TamWorld2 between = {p.x + (q.x - p.x) * random.Within(0.0, 1.0), p.y + (q.y - p.y) * random.Within(0.0, 1.0)};
  return {between.x + random.Within(-0.5, 0.5), between.y + random.Within(-1.0, 1.0)};
}

/// A point of the ground, or one on it.
TamWorld2 OnGround(Random& random, const Polyline& ground) {
  if (ground.size() < 2) return Somewhere(random, ground);
  const std::size_t i = random.Below(ground.size() - 1);
  const TamWorld2& p = ground[i];
  const TamWorld2& q = ground[i + 1];
  if (random.OneIn(2)) return random.OneIn(2) ? p : q;
  const double at = random.Within(0.0, 1.0);
  return {p.x + (q.x - p.x) * at, p.y + (q.y - p.y) * at};
}

double Off(Random& random) {
  constexpr std::array<double, 9> kOff = {0.0, 0.0, 1e-9, 1e-8, 1e-7, 0.5e-6, 1e-6, 1.5e-6, 1e-5};
  return random.OneOf(kOff) * (random.OneIn(2) ? 1.0 : -1.0);
}

/// Along the ground, exactly or nearly so.
void RunAlong(Random& random, const Polyline& ground, Polyline& design) {
  if (ground.size() < 2) return design.push_back(Somewhere(random, ground));
  const std::size_t i = random.Below(ground.size() - 1);
  const TamWorld2& p = ground[i];
  const TamWorld2& q = ground[i + 1];
  const bool reversed = random.OneIn(2);
  const bool beyond = random.OneIn(2);
  const TamWorld2 from = beyond ? TamWorld2{p.x - (q.x - p.x), p.y - (q.y - p.y)} : p;
  const TamWorld2 to = beyond ? TamWorld2{q.x + (q.x - p.x), q.y + (q.y - p.y)} : q;
  const TamWorld2 off = {Off(random), Off(random)};
  design.push_back({(reversed ? to : from).x + off.x, (reversed ? to : from).y + off.y});
  const TamWorld2 tilted = random.OneIn(2) ? off : TamWorld2{Off(random), Off(random)};
  design.push_back({(reversed ? from : to).x + tilted.x, (reversed ? from : to).y + tilted.y});
}

/// From somewhere to the ground, where it stops exactly, short of it or beyond it.
void RunUpTo(Random& random, const Polyline& ground, Polyline& design) {
  constexpr std::array<double, 7> kShort = {0.0, 0.5e-6, 1e-6, 1.5e-6, -0.5e-6, -1.5e-6, 1e-9};
  const TamWorld2 from = Somewhere(random, ground);
  const TamWorld2 to = OnGround(random, ground);
  const double length = std::sqrt((to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y));
  const double cut = length > 0.0 ? random.OneOf(kShort) / length : 0.0;
  const TamWorld2 end = {to.x - (to.x - from.x) * cut, to.y - (to.y - from.y) * cut};
  const bool reversed = random.OneIn(2);
  design.push_back(reversed ? end : from);
  design.push_back(reversed ? from : end);
}

Polyline DesignOver(Random& random, const Polyline& ground, std::size_t size) {
  Polyline design;
  while (design.size() < size) {
    switch (random.Below(5)) {
      case 0:
        RunAlong(random, ground, design);
        break;
      case 1:
        RunUpTo(random, ground, design);
        break;
      case 2:
        design.push_back(OnGround(random, ground));
        break;
      default:
        design.push_back(Somewhere(random, ground));
    }
    if (random.OneIn(40)) design.push_back(design.back());
    if (random.OneIn(40)) (random.OneIn(2) ? design.back().x : design.back().y) = kNurUnsetReal;
    if (random.OneIn(40)) design.back().y *= 1e6;
  }
  return design;
}

/// A form whose sides run through the points of a design in turns: the first is the start of both.
VornBuildForm FormThrough(Random& random, const Polyline& design) {
  VornBuildForm form;
  form.SetXSectType(CString(kFill));
  for (const TamWorld2& position : design) {
    const VornLocation side = random.OneIn(2) ? VornLocation::Left : VornLocation::Right;
    const bool isStart = form.GetComposedPntArray().IsEmpty();
    form.GetComposedPntArray().Add(PointAt(isStart ? VornLocation::Center : side, position.x, position.y));
  }
  return form;
}

Polyline Side(const VornBuildForm& form, VornLocation side) {
  Polyline positions;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) {
    const bool belongs = point.IsCenter() || point.GetLocation() == side;
    if (belongs) positions.push_back({point.GetGh().Value(), point.GetCLDist().Value()});
  }
  return positions;
}

struct Tally {
  int segments = 0;
  int crossings = 0;
};

/// Compares every crossing of a form with the definition, one by one and gathered by the section.
void CompareWithTheDefinition(const Polyline& ground, const VornBuildForm& form, Tally& tally) {
  VornXSection section;
  section.SetExistingFlag(1);
  VornExistingBuildForm groundForm;
  groundForm.SetComposedPntArray(GroundPoints(ground));
  section.GetExistingBuildFormArray().Add(std::move(groundForm));
  section.GetBuildFormArray().Add(form);
  const VornGroundProfile profile(section.GetExistingBuildFormArray()[0].GetComposedPntArray());

  for (const VornLocation side : {VornLocation::Left, VornLocation::Right}) {
    const Polyline design = Side(form, side);
    Polyline expected;
    for (std::size_t i = 0; i + 1 < design.size(); ++i) {
      const std::optional<TamWorld2> plain = PlainCrossing(ground, design[i], design[i + 1]);
      const std::optional<TamWorld2> found = Crossing(profile, design[i], design[i + 1]);
      ASSERT_EQ(found.has_value(), plain.has_value()) << Text(design[i]) << " to " << Text(design[i + 1]);
      ++tally.segments;
      if (!plain.has_value()) continue;
      ASSERT_TRUE(SameBits(*found, *plain)) << Text(*found) << " is not " << Text(*plain);
      ++tally.crossings;
      expected.push_back(*plain);
    }
    KelPointArray points;
    ASSERT_EQ(section.GetCrossPoint(side, points), static_cast<int>(expected.size()));
    ASSERT_TRUE(std::equal(points.begin(), points.end(), expected.begin(), expected.end(), SameBits));
  }
}

using MakeGround = Polyline (*)(Random&, std::size_t);
using Change = void (*)(Random&, Polyline&);

struct GroundKind {
  const char* name;
  MakeGround make;
  Change change;  ///< none: null

  friend std::ostream& operator<<(std::ostream& out, const GroundKind& kind) { return out << kind.name; }
};

class GroundProfileOn : public testing::TestWithParam<GroundKind> {
 public:
  static std::string Name(const testing::TestParamInfo<GroundKind>& info) { return info.param.name; }

 protected:
  void Compare(Random& random, std::size_t size, std::size_t designSize, Tally& tally) {
    Polyline ground = GetParam().make(random, size);
    // The design follows the ground as it was laid out: near what is lost, and where nothing is any more.
    Polyline design = DesignOver(random, ground, designSize);
    if (GetParam().change == MoveAway) {
      MoveAway(random, ground);
      design = DesignOver(random, ground, designSize);
    } else if (GetParam().change != nullptr) {
      GetParam().change(random, ground);
    }
    CompareWithTheDefinition(ground, FormThrough(random, design), tally);
  }
};

TEST_P(GroundProfileOn, AgreesWithTheDefinition) {
  constexpr std::array<std::size_t, 13> kSizes = {0, 1, 2, 3, 8, 9, 10, 17, 30, 64, 65, 66, 140};
  constexpr int kSectionsOfASize = 90;
  Random random(20240607);
  Tally tally;
  for (const std::size_t size : kSizes) {
    for (int i = 0; i < kSectionsOfASize; ++i) {
      ASSERT_NO_FATAL_FAILURE(Compare(random, size, 12, tally)) << "section " << i << " of " << size << " points";
    }
  }
  // Without many crossings the comparison would prove nothing.
  EXPECT_THAT(tally.crossings, Gt(tally.segments / 4));
}

TEST_P(GroundProfileOn, AgreesWithTheDefinitionOnThousandsOfPoints) {
  constexpr std::array<std::size_t, 5> kSizes = {513, 1000, 3000, 4097, 5000};
  Random random(7);
  Tally tally;
  for (const std::size_t size : kSizes) {
    ASSERT_NO_FATAL_FAILURE(Compare(random, size, 40, tally)) << size << " points";
  }
  EXPECT_THAT(tally.crossings, Gt(tally.segments / 4));
}

INSTANTIATE_TEST_SUITE_P(
    , GroundProfileOn,
    testing::Values(GroundKind{"Smooth", SmoothGround, nullptr}, GroundKind{"Noisy", NoisyGround, nullptr},
                    GroundKind{"Stepped", SteppedGround, nullptr}, GroundKind{"Backward", BackwardGround, nullptr},
                    GroundKind{"Repeating", RepeatingGround, nullptr},
                    GroundKind{"Millimetres", MillimetreGround, nullptr}, GroundKind{"Tiny", TinyGround, nullptr},
                    GroundKind{"SmoothLosing", SmoothGround, LoseCoordinates},
                    GroundKind{"BackwardLosing", BackwardGround, LoseCoordinates},
                    GroundKind{"NoisyToTheLimit", NoisyGround, ReachTheLimit},
                    GroundKind{"SteppedToTheLimit", SteppedGround, ReachTheLimit},
                    GroundKind{"NoisyAway", NoisyGround, MoveAway}, GroundKind{"SteppedAway", SteppedGround, MoveAway},
                    GroundKind{"RepeatingAway", RepeatingGround, MoveAway},
                    GroundKind{"TinyAway", TinyGround, MoveAway}),
    GroundProfileOn::Name);

}  // namespace
