#include "vorn/platform/line_geometry.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "vorn/platform/nur_real.h"

namespace {

constexpr double kLimit = 999999.9999;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// --- a point on a segment ------------------------------------------------------------------------------------------

constexpr TamyLine kFromOneTwoByThreeFour = {{1.0, 2.0}, {3.0, 4.0}};

TEST(TamyIntersectDotLine, HoldsOnTheSegment) {
  TamWorld2 result;
  EXPECT_TRUE(TamyIntersectDotLine(result, {2.5, 4.0}, kFromOneTwoByThreeFour));
  EXPECT_EQ(result, (TamWorld2{2.5, 4.0}));
}

TEST(TamyIntersectDotLine, IncludesTheEndPoints) {
  TamWorld2 result;
  EXPECT_TRUE(TamyIntersectDotLine(result, {1.0, 2.0}, kFromOneTwoByThreeFour));
  EXPECT_EQ(result, (TamWorld2{1.0, 2.0}));
  EXPECT_TRUE(TamyIntersectDotLine(result, {4.0, 6.0}, kFromOneTwoByThreeFour));
  EXPECT_EQ(result, (TamWorld2{4.0, 6.0}));
}

TEST(TamyIntersectDotLine, ReachesAMillionthOfAMetreAroundTheSegment) {
  const TamyLine segment = {{10.0, 0.0}, {0.0, 5.0}};
  TamWorld2 result;
  for (const double sign : {1.0, -1.0}) {
    EXPECT_TRUE(TamyIntersectDotLine(result, {10.0 + sign * 0.9e-6, 2.0}, segment));
    EXPECT_FALSE(TamyIntersectDotLine(result, {10.0 + sign * 1.1e-6, 2.0}, segment));
  }
  EXPECT_TRUE(TamyIntersectDotLine(result, {10.0, -0.9e-6}, segment));
  EXPECT_FALSE(TamyIntersectDotLine(result, {10.0, -1.1e-6}, segment));
  EXPECT_TRUE(TamyIntersectDotLine(result, {10.0, 5.0 + 0.9e-6}, segment));
  EXPECT_FALSE(TamyIntersectDotLine(result, {10.0, 5.0 + 1.1e-6}, segment));
}

TEST(TamyIntersectDotLine, GivesTheNearestPointOfTheSegmentInEitherCase) {
  const TamyLine segment = {{10.0, 0.0}, {0.0, 5.0}};
  TamWorld2 result;
  EXPECT_FALSE(TamyIntersectDotLine(result, {13.0, 2.0}, segment));
  EXPECT_EQ(result, (TamWorld2{10.0, 2.0}));
  EXPECT_FALSE(TamyIntersectDotLine(result, {13.0, -2.0}, segment));
  EXPECT_EQ(result, (TamWorld2{10.0, 0.0}));
  EXPECT_FALSE(TamyIntersectDotLine(result, {13.0, 7.0}, segment));
  EXPECT_EQ(result, (TamWorld2{10.0, 5.0}));
}

TEST(TamyIntersectDotLine, TakesASegmentWithoutALengthForAPoint) {
  const TamyLine segment = {{10.0, 5.0}, {0.0, 0.0}};
  TamWorld2 result;
  EXPECT_TRUE(TamyIntersectDotLine(result, {10.0, 5.0 + 0.9e-6}, segment));
  EXPECT_EQ(result, (TamWorld2{10.0, 5.0}));
  EXPECT_FALSE(TamyIntersectDotLine(result, {10.0, 5.0 + 1.1e-6}, segment));
}

TEST(TamyIntersectDotLine, MayGiveTheResultIntoThePointItself) {
  TamWorld2 point = {10.0000005, 2.0};
  EXPECT_TRUE(TamyIntersectDotLine(point, point, {{10.0, 0.0}, {0.0, 5.0}}));
  EXPECT_EQ(point, (TamWorld2{10.0, 2.0}));
}

// --- the crossing of two segments ----------------------------------------------------------------------------------

constexpr TamWorld2 kUntouched = {-77.0, -78.0};
constexpr std::uint16_t kFlagBefore = 0xAAAA;

struct Segment {
  TamWorld2 from;
  TamWorld2 to;
};

struct Outcome {
  bool crosses;
  TamWorld2 at;
  std::uint16_t flag;
};

Outcome Cross(const Segment& first, const Segment& second, double limit = kLimit) {
  TamWorld2 at = kUntouched;
  std::uint16_t flag = kFlagBefore;
  const int result = NurGetCrossTenFrom2Lin(first.from.x, first.from.y, first.to.x, first.to.y, second.from.x,
                                            second.from.y, second.to.x, second.to.y, at.x, at.y, flag, limit);
  return {result != 0, at, flag};
}

std::optional<TamWorld2> Crossing(const Segment& first, const Segment& second, double limit = kLimit) {
  const Outcome outcome = Cross(first, second, limit);
  if (!outcome.crosses) return std::nullopt;
  return outcome.at;
}

bool Crosses(const Segment& first, const Segment& second) { return Cross(first, second).crosses; }

TEST(NurGetCrossTenFrom2Lin, FindsWhereTwoSegmentsCross) {
  EXPECT_EQ(Crossing({{0.0, 0.0}, {4.0, 2.0}}, {{0.0, 2.0}, {4.0, 0.0}}), (TamWorld2{2.0, 1.0}));
  EXPECT_EQ(Crossing({{1.0, -3.0}, {1.0, 5.0}}, {{9.0, 2.0}, {-7.0, 2.0}}), (TamWorld2{1.0, 2.0}));
  EXPECT_EQ(Crossing({{-4.0, -8.0}, {0.0, 0.0}}, {{-4.0, -2.0}, {0.0, -2.0}}), (TamWorld2{-1.0, -2.0}));
}

TEST(NurGetCrossTenFrom2Lin, FindsItWhicheverWayTheSegmentsRun) {
  const TamWorld2 a = {0.0, 0.0};
  const TamWorld2 b = {4.0, 2.0};
  const TamWorld2 c = {0.0, 2.0};
  const TamWorld2 d = {4.0, 0.0};
  for (const Segment& first : {Segment{a, b}, Segment{b, a}}) {
    for (const Segment& second : {Segment{c, d}, Segment{d, c}}) {
      EXPECT_EQ(Crossing(first, second), (TamWorld2{2.0, 1.0}));
      EXPECT_EQ(Crossing(second, first), (TamWorld2{2.0, 1.0}));
    }
  }
}

TEST(NurGetCrossTenFrom2Lin, TakesSegmentsAndNotTheLinesThroughThem) {
  const Segment upward = {{0.0, 0.0}, {10.0, 10.0}};
  EXPECT_FALSE(Crosses(upward, {{8.0, 0.0}, {6.0, 2.0}}));
  EXPECT_FALSE(Crosses(upward, {{2.0, 8.0}, {4.0, 6.0}}));
  EXPECT_FALSE(Crosses({{8.0, 0.0}, {6.0, 2.0}}, upward));
  EXPECT_FALSE(Crosses({{2.0, 8.0}, {4.0, 6.0}}, upward));
  EXPECT_FALSE(Crosses(upward, {{11.0, 0.0}, {11.0, 20.0}}));
  EXPECT_FALSE(Crosses(upward, {{-1.0, -20.0}, {-1.0, 20.0}}));
}

TEST(NurGetCrossTenFrom2Lin, LeavesTheCrossingUntouchedWhenThereIsNone) {
  const Outcome outcome = Cross({{0.0, 0.0}, {10.0, 10.0}}, {{8.0, 0.0}, {6.0, 2.0}});
  EXPECT_EQ(outcome.at, kUntouched);
  EXPECT_EQ(outcome.flag, 0);
  EXPECT_EQ(Cross({{0.0, 0.0}, {10.0, 10.0}}, {{20.0, 0.0}, {30.0, 1.0}}).at, kUntouched);
  EXPECT_EQ(Cross({{0.0, 0.0}, {10.0, 10.0}}, {{20.0, 0.0}, {30.0, 1.0}}).flag, 0);
}

TEST(NurGetCrossTenFrom2Lin, CountsTouchingEnds) {
  const Segment first = {{0.1, 0.2}, {3.3, 7.7}};
  for (const TamWorld2& end : {first.from, first.to}) {
    EXPECT_EQ(Crossing(first, {end, {10.0, -1.0}}), end);
    EXPECT_EQ(Crossing(first, {{10.0, -1.0}, end}), end);
    EXPECT_EQ(Crossing(first, {{end.x - 1.0, end.y + 1.0}, {end.x + 1.0, end.y - 1.0}}), end);
  }
  const Segment level = {{0.0, 0.0}, {0.0, 10.0}};
  EXPECT_EQ(Crossing(level, {{0.0, 5.0}, {3.0, 4.0}}), (TamWorld2{0.0, 5.0}));
  EXPECT_EQ(Crossing(level, {{3.0, 4.0}, {0.0, 5.0}}), (TamWorld2{0.0, 5.0}));
}

TEST(NurGetCrossTenFrom2Lin, CountsAnEndOfTheFirstSegmentThatStopsShortByNoMoreThanAMillionth) {
  const Segment wall = {{-5.0, 10.0}, {5.0, 10.0}};
  EXPECT_EQ(Crossing({{0.0, 0.0}, {0.0, 10.0 - 0.5e-6}}, wall), (TamWorld2{0.0, 10.0 - 0.5e-6}));
  EXPECT_EQ(Crossing({{0.0, 10.0 - 0.5e-6}, {0.0, 0.0}}, wall), (TamWorld2{0.0, 10.0 - 0.5e-6}));
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0 - 1.5e-6}}, wall));
  EXPECT_FALSE(Crosses({{0.0, 10.0 - 1.5e-6}, {0.0, 0.0}}, wall));
}

TEST(NurGetCrossTenFrom2Lin, CountsAnEndOfTheSecondSegmentThatStopsShortByNoMoreThanAMillionth) {
  const Segment wall = {{-5.0, 10.0}, {5.0, 10.0}};
  EXPECT_EQ(Crossing(wall, {{0.0, 0.0}, {0.0, 10.0 - 0.5e-6}}), (TamWorld2{0.0, 10.0}));
  EXPECT_EQ(Crossing(wall, {{0.0, 10.0 - 0.5e-6}, {0.0, 0.0}}), (TamWorld2{0.0, 10.0}));
  EXPECT_FALSE(Crosses(wall, {{0.0, 0.0}, {0.0, 10.0 - 1.5e-6}}));
  EXPECT_FALSE(Crosses(wall, {{0.0, 10.0 - 1.5e-6}, {0.0, 0.0}}));
}

TEST(NurGetCrossTenFrom2Lin, MeasuresHowShortAnEndStopsAlongItsSegment) {
  // Both end short of the wall by 0.6e-6 across; the slanting one by 1.2e-6 along its own way.
  const Segment wall = {{-50.0, 10.0}, {50.0, 10.0}};
  const double shortOfWall = 10.0 - 0.6e-6;
  EXPECT_TRUE(Crosses({{0.0, 0.0}, {0.0, shortOfWall}}, wall));
  EXPECT_FALSE(Crosses({{-std::sqrt(3.0) * shortOfWall, 0.0}, {0.0, shortOfWall}}, wall));
  EXPECT_FALSE(Crosses(wall, {{-std::sqrt(3.0) * shortOfWall, 0.0}, {0.0, shortOfWall}}));
}

TEST(NurGetCrossTenFrom2Lin, TellsTheEndsInTheBitsThatHostsKnow) {
  EXPECT_EQ(kNurCrossAtEndOfFirst, 1);
  EXPECT_EQ(kNurCrossAtEndOfSecond, 2);
}

TEST(NurGetCrossTenFrom2Lin, TellsWhichSegmentsEndAtTheCrossing) {
  const Segment level = {{0.0, 0.0}, {0.0, 10.0}};
  const std::uint16_t first = kNurCrossAtEndOfFirst;
  const std::uint16_t second = kNurCrossAtEndOfSecond;
  EXPECT_EQ(Cross(level, {{-1.0, 5.0}, {1.0, 5.0}}).flag, 0);
  EXPECT_EQ(Cross(level, {{-1.0, 0.0}, {1.0, 0.0}}).flag, first);
  EXPECT_EQ(Cross(level, {{-1.0, 10.0}, {1.0, 10.0}}).flag, first);
  EXPECT_EQ(Cross(level, {{0.0, 5.0}, {1.0, 5.0}}).flag, second);
  EXPECT_EQ(Cross(level, {{-1.0, 5.0}, {0.0, 5.0}}).flag, second);
  EXPECT_EQ(Cross(level, {{0.0, 10.0}, {1.0, 12.0}}).flag, first | second);
}

TEST(NurGetCrossTenFrom2Lin, TakesACrossingWithinAMillionthOfAnEndForTheEnd) {
  const Segment level = {{0.0, 0.0}, {0.0, 10.0}};
  for (const double near : {0.5e-6, 10.0 - 0.5e-6}) {
    EXPECT_EQ(Cross(level, {{-1.0, near}, {1.0, near}}).flag, kNurCrossAtEndOfFirst) << near;
    EXPECT_EQ(Cross({{-1.0, near}, {1.0, near}}, level).flag, kNurCrossAtEndOfSecond) << near;
  }
  for (const double near : {1.5e-6, 10.0 - 1.5e-6}) {
    EXPECT_EQ(Cross(level, {{-1.0, near}, {1.0, near}}).flag, 0) << near;
    EXPECT_EQ(Cross({{-1.0, near}, {1.0, near}}, level).flag, 0) << near;
  }
}

TEST(NurGetCrossTenFrom2Lin, GivesExactlyTheEndWhereThatIsTheCrossing) {
  const Segment first = {{0.2, 0.2}, {0.9, 0.9}};
  ASSERT_NE(first.from.x + (first.to.x - first.from.x), first.to.x);  // a sum misses the end by a rounding
  EXPECT_EQ(Crossing(first, {first.to, {5.0, 0.0}}), first.to);
  EXPECT_EQ(Crossing(first, {{first.to.x - 1.0, first.to.y + 1.0}, {first.to.x + 1.0, first.to.y - 1.0}}), first.to);
}

TEST(NurGetCrossTenFrom2Lin, FindsNoCrossingOfParallelSegments) {
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0}}, {{1.0, 0.0}, {1.0, 10.0}}));
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {3.0, 10.0}}, {{1.0, 0.0}, {4.0, 10.0}}));
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0}}, {{0.5e-6, 0.0}, {0.5e-6, 10.0}}));
}

TEST(NurGetCrossTenFrom2Lin, FindsNoCrossingOfCoincidentSegments) {
  const Segment segment = {{1.0, 2.0}, {4.0, 12.0}};
  EXPECT_FALSE(Crosses(segment, segment));
  EXPECT_FALSE(Crosses(segment, {segment.to, segment.from}));
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0}}, {{0.0, 3.0}, {0.0, 20.0}}));
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0}}, {{0.0, 3.0}, {0.0, 4.0}}));
}

TEST(NurGetCrossTenFrom2Lin, FindsNoCrossingOfSegmentsThatGoOnInOneLine) {
  EXPECT_FALSE(Crosses({{0.0, 0.0}, {0.0, 10.0}}, {{0.0, 10.0}, {0.0, 20.0}}));
}

TEST(NurGetCrossTenFrom2Lin, TakesDirectionsThatPartByNoMoreThanRoundingForParallel) {
  const Segment level = {{100.0, 0.0}, {100.0, 10.0}};
  const auto tilted = [](double by) { return Segment{{100.0 - by, 0.0}, {100.0 + by, 10.0}}; };
  EXPECT_FALSE(Crosses(level, tilted(0.25e-12)));
  EXPECT_FALSE(Crosses(level, tilted(-0.25e-12)));
  EXPECT_TRUE(Crosses(level, tilted(1e-11)));
  EXPECT_TRUE(Crosses(level, tilted(-1e-11)));
}

TEST(NurGetCrossTenFrom2Lin, MeasuresThatPartingOverTheShorterSegment) {
  const Segment level = {{100.0, 0.0}, {100.0, 100.0}};
  const Segment nearlyLevel = {{100.0 - 0.25e-12, 50.0}, {100.0 + 0.25e-12, 50.1}};
  const Segment hardlyLevel = {{100.0 - 1e-11, 50.0}, {100.0 + 1e-11, 50.1}};
  EXPECT_FALSE(Crosses(level, nearlyLevel));
  EXPECT_FALSE(Crosses(nearlyLevel, level));
  EXPECT_TRUE(Crosses(level, hardlyLevel));
  EXPECT_TRUE(Crosses(hardlyLevel, level));
}

TEST(NurGetCrossTenFrom2Lin, MeasuresThatPartingByTheSizeOfTheCoordinates) {
  const auto parting = [](double at) {
    return Crosses({{at, 0.0}, {at, 10.0}}, {{at - 1e-10, 0.0}, {at + 1e-10, 10.0}});
  };
  EXPECT_TRUE(parting(1.0));
  EXPECT_FALSE(parting(500000.0));
}

TEST(NurGetCrossTenFrom2Lin, FindsACrossingHoweverFinelyOneLineIsDivided) {
  // A line that climbs by 20 micrometres over 40 metres crosses level ground of millimetre pieces as it does a whole
  // one.
  const Segment design = {{-1e-5, -20.0}, {1e-5, 20.0}};
  EXPECT_TRUE(Crosses(design, {{0.0, -20.0}, {0.0, 20.0}}));
  int crossings = 0;
  for (int i = -20000; i < 20000; ++i) {
    if (Crosses(design, {{0.0, i / 1000.0}, {0.0, (i + 1) / 1000.0}})) ++crossings;
  }
  EXPECT_GE(crossings, 1);
}

TEST(NurGetCrossTenFrom2Lin, FindsNoCrossingOfSegmentsWithoutALength) {
  const Segment level = {{0.0, 0.0}, {0.0, 10.0}};
  for (const TamWorld2& point : {TamWorld2{0.0, 0.0}, TamWorld2{0.0, 5.0}, TamWorld2{0.0, 10.0}}) {
    EXPECT_FALSE(Crosses(level, {point, point}));
    EXPECT_FALSE(Crosses({point, point}, level));
    EXPECT_FALSE(Crosses({point, point}, {point, point}));
  }
}

using Coordinates = std::array<double, 8>;

Outcome CrossOf(const Coordinates& of, double limit = kLimit) {
  return Cross({{of[0], of[1]}, {of[2], of[3]}}, {{of[4], of[5]}, {of[6], of[7]}}, limit);
}

// Every coordinate may be replaced by zero, which is how an unset one would read: the segments touch all the same.
constexpr Coordinates kThroughTheOrigin = {0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 1.0, -1.0};

TEST(NurGetCrossTenFrom2Lin, RefusesUnsetCoordinates) {
  ASSERT_TRUE(CrossOf(kThroughTheOrigin).crosses);
  for (std::size_t i = 0; i < kThroughTheOrigin.size(); ++i) {
    Coordinates coordinates = kThroughTheOrigin;
    coordinates[i] = 0.0;
    ASSERT_TRUE(CrossOf(coordinates).crosses) << i;
    coordinates[i] = kNurUnsetReal;
    EXPECT_FALSE(CrossOf(coordinates).crosses) << i;
    EXPECT_EQ(CrossOf(coordinates).at, kUntouched) << i;
  }
}

TEST(NurGetCrossTenFrom2Lin, RefusesCoordinatesBeyondTheLimit) {
  for (const double sign : {1.0, -1.0}) {
    const double limit = sign * kLimit;
    const double beyond = std::nextafter(limit, sign * kInfinity);
    // A cross whose arms end at the limit, each way round.
    const Coordinates inside = {limit, sign, 0.0, sign, sign, limit, sign, 0.0};
    const Coordinates turned = {0.0, sign, limit, sign, sign, 0.0, sign, limit};
    ASSERT_TRUE(CrossOf(inside).crosses);
    ASSERT_TRUE(CrossOf(turned).crosses);
    for (std::size_t i = 0; i < inside.size(); ++i) {
      for (Coordinates coordinates : {inside, turned}) {
        if (std::abs(coordinates[i]) != kLimit) continue;
        coordinates[i] = beyond;
        EXPECT_FALSE(CrossOf(coordinates).crosses) << i << ", " << sign;
        EXPECT_EQ(CrossOf(coordinates).at, kUntouched) << i << ", " << sign;
      }
    }
  }
}

TEST(NurGetCrossTenFrom2Lin, TakesTheLimitThatItIsGiven) {
  const Coordinates coordinates = {0.0, 1.0, 10.0, 1.0, 1.0, 0.0, 1.0, 10.0};
  EXPECT_TRUE(CrossOf(coordinates, 10.0).crosses);
  EXPECT_FALSE(CrossOf(coordinates, 9.9999).crosses);
}

TEST(NurGetCrossTenFrom2Lin, RefusesWhatIsNoNumber) {
  for (const double value : {std::nan(""), kInfinity, -kInfinity}) {
    for (std::size_t i = 0; i < kThroughTheOrigin.size(); ++i) {
      Coordinates coordinates = kThroughTheOrigin;
      coordinates[i] = value;
      EXPECT_FALSE(CrossOf(coordinates, kInfinity).crosses && std::isnan(value)) << i;
      EXPECT_FALSE(CrossOf(coordinates).crosses) << i << ", " << value;
    }
  }
}

TEST(NurGetCrossTenFrom2Lin, MayGiveTheCrossingIntoOneOfTheEnds) {
  TamWorld2 from = {0.0, 0.0};
  std::uint16_t flag = 0;
  EXPECT_NE(NurGetCrossTenFrom2Lin(from.x, from.y, 4.0, 2.0, 0.0, 2.0, 4.0, 0.0, from.x, from.y, flag, kLimit), 0);
  EXPECT_EQ(from, (TamWorld2{2.0, 1.0}));
}

TEST(NurGetCrossTenFrom2Lin, KeepsItsPrecisionFarFromTheOrigin) {
  const double far = 100000.0;
  const std::optional<TamWorld2> crossing =
      Crossing({{far, far}, {far + 0.004, far + 0.002}}, {{far, far + 0.002}, {far + 0.004, far}});
  ASSERT_TRUE(crossing.has_value());
  EXPECT_NEAR(crossing->x, far + 0.002, 1e-10);
  EXPECT_NEAR(crossing->y, far + 0.001, 1e-10);
}

}  // namespace
