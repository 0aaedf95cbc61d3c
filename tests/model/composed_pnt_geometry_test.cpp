// Where a composed point lies, computed from its input values.

#include <gtest/gtest.h>

#include <vector>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"
#include "vorn/model/composed_pnt.h"

namespace {

using model_test::PointWith;
using test_support::EditionScope;

using DataType = VornComposedPnt::DataType;
using SlopeType = VornComposedPnt::SlopeType;

VornComposedPnt PointAtPosition(double clDist, double gh) {
  VornComposedPnt point;
  point.SetCLDist(clDist);
  point.SetGh(gh);
  return point;
}

void ExpectPosition(const VornComposedPnt& point, double clDist, double gh) {
  EXPECT_DOUBLE_EQ(point.GetCLDist().Value(), clDist);
  EXPECT_DOUBLE_EQ(point.GetGh().Value(), gh);
}

TEST(ComposedPntGeometry, GivesThePositionAsDistanceAndHeight) {
  EXPECT_EQ(PointAtPosition(-3.0, 12.0).Pos(), (TamWorld2{-3.0, 12.0}));
}

TEST(ComposedPntGeometry, GivesThePositionAsHeightAndDistance) {
  EXPECT_EQ(PointAtPosition(-3.0, 12.0).HeightAndDist(), (TamWorld2{12.0, -3.0}));
}

TEST(ComposedPntGeometry, ShiftsByTheInputValuesOfAnotherPoint) {
  VornComposedPnt point = PointAtPosition(1.0, 10.0);
  VornComposedPnt other = PointWith(VornLocation::Left, DataType::Rate, 2.0, -0.5);
  other.SetCLDist(100.0);
  other.SetGh(200.0);
  point.Shift(other);
  ExpectPosition(point, 3.0, 9.5);
}

TEST(ComposedPntGeometry, MovesByAnOffset) {
  VornComposedPnt point = PointAtPosition(1.0, 10.0);
  point.ApplyOffset(-2.5, 0.25);
  ExpectPosition(point, -1.5, 10.25);
}

// --- from the previous point ---------------------------------------------------------------------------------------

struct Step {
  VornLocation side;
  double x;
  double y;
  double clDist;  ///< expected, from (-5, 10)
  double gh;      ///< expected
};

/// The step from the previous point as a width and a height difference.
const std::vector<Step> kWidthHeightSteps = {
    {VornLocation::Right, 2.0, 1.5, -3.0, 11.5},  {VornLocation::Left, 2.0, 1.5, -7.0, 11.5},
    {VornLocation::Center, 2.0, -1.5, -3.0, 8.5}, {VornLocation::Unset, 2.0, 1.5, -3.0, 11.5},
    {VornLocation::Left, -2.0, 1.5, -3.0, 11.5},
};
/// As a width and a grade in percent.
const std::vector<Step> kPercentSteps = {
    {VornLocation::Right, 4.0, 2.5, -1.0, 10.1},  {VornLocation::Left, 4.0, 2.5, -9.0, 10.1},
    {VornLocation::Center, 4.0, -2.5, -1.0, 9.9}, {VornLocation::Unset, 4.0, 2.5, -1.0, 10.1},
    {VornLocation::Right, -4.0, 2.5, -9.0, 10.1}, {VornLocation::Left, -4.0, -2.5, -1.0, 9.9},
};
/// As a height difference and a slope ratio: a positive ratio runs outward on either side, a negative one inward.
const std::vector<Step> kRateSteps = {
    {VornLocation::Left, 2.0, 1.5, -8.0, 12.0},   {VornLocation::Left, 2.0, -1.5, -2.0, 12.0},
    {VornLocation::Right, 2.0, 1.5, -2.0, 12.0},  {VornLocation::Right, 2.0, -1.5, -8.0, 12.0},
    {VornLocation::Left, -2.0, 1.5, -8.0, 8.0},   {VornLocation::Right, -2.0, 1.5, -2.0, 8.0},
    {VornLocation::Center, 2.0, 1.5, -2.0, 12.0}, {VornLocation::Unset, -2.0, -1.5, -8.0, 8.0},
    {VornLocation::Left, 2.0, 0.05, -5.1, 12.0},  {VornLocation::Right, 2.0, 0.05, -4.9, 12.0},
    {VornLocation::Left, 2.0, 0.0, -5.0, 12.0},   {VornLocation::Right, 2.0, 0.0, -5.0, 12.0},
};

template <typename Compute>
void ExpectSteps(const std::vector<Step>& steps, DataType dataType, SlopeType slopeType, Compute compute) {
  const VornComposedPnt previous = PointAtPosition(-5.0, 10.0);
  for (const Step& step : steps) {
    SCOPED_TRACE(testing::Message() << "side " << static_cast<int>(step.side) << ", x " << step.x << ", y " << step.y);
    VornComposedPnt point = PointWith(step.side, dataType, step.x, step.y);
    point.SetSlopeType(slopeType);
    compute(point, previous);
    ExpectPosition(point, step.clDist, step.gh);
  }
}

constexpr auto kRegulate = [](VornComposedPnt& point, const VornComposedPnt& previous) { point.Regulate(previous); };

class ComposedPntGeometryInLaterEdition : public model_test::InEdition {};
class ComposedPntGeometryInEarlyEdition : public model_test::InEdition {};
class ComposedPntGeometryInEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, ComposedPntGeometryInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ComposedPntGeometryInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, ComposedPntGeometryInEdition, testing::ValuesIn(model_test::kEditions),
                         model_test::InEdition::Name);

TEST_P(ComposedPntGeometryInLaterEdition, TheDataTypeTellsHowTheInputIsRead) {
  for (const SlopeType ignored : {SlopeType::Unset, SlopeType::Percent, SlopeType::Rate}) {
    ExpectSteps(kWidthHeightSteps, DataType::WidthHeight, ignored, kRegulate);
    ExpectSteps(kWidthHeightSteps, DataType::Unset, ignored, kRegulate);
    ExpectSteps(kWidthHeightSteps, static_cast<DataType>(3), ignored, kRegulate);
    ExpectSteps(kPercentSteps, DataType::Percent, ignored, kRegulate);
    ExpectSteps(kRateSteps, DataType::Rate, ignored, kRegulate);
  }
}

TEST_P(ComposedPntGeometryInEarlyEdition, TheSlopeTypeTellsHowTheInputIsRead) {
  for (const DataType ignored : {DataType::Unset, DataType::WidthHeight, DataType::Percent, DataType::Rate}) {
    ExpectSteps(kPercentSteps, ignored, SlopeType::Unset, kRegulate);
    ExpectSteps(kPercentSteps, ignored, SlopeType::Percent, kRegulate);
    ExpectSteps(kRateSteps, ignored, SlopeType::Rate, kRegulate);
  }
}

TEST_P(ComposedPntGeometryInEdition, EachReadingCanBeAskedForByItself) {
  ExpectSteps(kWidthHeightSteps, DataType::Rate, SlopeType::Rate,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateWD(previous); });
  ExpectSteps(kPercentSteps, DataType::Rate, SlopeType::Rate,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateRoad(previous); });
  ExpectSteps(kRateSteps, DataType::Percent, SlopeType::Percent,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateSlope(previous); });
}

constexpr double kUnset = kNurUnsetReal;

/// What remains of a step when an input value is unset: the unset one counts as nothing.
const std::vector<Step> kHalfWidthHeightSteps = {
    {VornLocation::Right, kUnset, 1.5, -5.0, 11.5},    {VornLocation::Left, kUnset, 1.5, -5.0, 11.5},
    {VornLocation::Right, 2.0, kUnset, -3.0, 10.0},    {VornLocation::Left, 2.0, kUnset, -7.0, 10.0},
    {VornLocation::Right, kUnset, kUnset, -5.0, 10.0}, {VornLocation::Left, kUnset, kUnset, -5.0, 10.0},
};
const std::vector<Step> kHalfPercentSteps = {
    {VornLocation::Right, kUnset, 2.5, -5.0, 10.0},    {VornLocation::Left, kUnset, 2.5, -5.0, 10.0},
    {VornLocation::Right, 4.0, kUnset, -1.0, 10.0},    {VornLocation::Left, 4.0, kUnset, -9.0, 10.0},
    {VornLocation::Right, kUnset, kUnset, -5.0, 10.0}, {VornLocation::Left, kUnset, kUnset, -5.0, 10.0},
};
const std::vector<Step> kHalfRateSteps = {
    {VornLocation::Right, kUnset, 1.5, -5.0, 10.0},    {VornLocation::Left, kUnset, 1.5, -5.0, 10.0},
    {VornLocation::Right, 2.0, kUnset, -5.0, 12.0},    {VornLocation::Left, 2.0, kUnset, -5.0, 12.0},
    {VornLocation::Right, kUnset, kUnset, -5.0, 10.0}, {VornLocation::Left, kUnset, kUnset, -5.0, 10.0},
};

TEST_P(ComposedPntGeometryInEdition, AnUnsetInputCountsAsNothing) {
  ExpectSteps(kHalfWidthHeightSteps, DataType::Rate, SlopeType::Rate,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateWD(previous); });
  ExpectSteps(kHalfPercentSteps, DataType::Rate, SlopeType::Rate,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateRoad(previous); });
  ExpectSteps(kHalfRateSteps, DataType::Percent, SlopeType::Percent,
              [](VornComposedPnt& point, const VornComposedPnt& previous) { point.RegulateSlope(previous); });
}

TEST_P(ComposedPntGeometryInEdition, AnUnsetPositionOfThePreviousPointCountsAsNothing) {
  const VornComposedPnt previous;
  VornComposedPnt point = PointWith(VornLocation::Left, DataType::WidthHeight, 2.0, 1.5);
  point.RegulateWD(previous);
  ExpectPosition(point, -2.0, 1.5);
  point.RegulateRoad(previous);
  ExpectPosition(point, -2.0, 0.03);
  point.RegulateSlope(previous);
  ExpectPosition(point, -3.0, 2.0);
}

TEST(ComposedPntGeometry, PlacesACenterPointAtItsInputAboveTheOffset) {
  VornComposedPnt point = PointWith(VornLocation::Center, DataType::WidthHeight, 0.5, -0.25);
  point.RegulateCenter(100.0);
  ExpectPosition(point, 0.5, 99.75);
}

TEST(ComposedPntGeometry, PlacesACenterPointWithoutWhatIsUnset) {
  VornComposedPnt point = PointWith(VornLocation::Center, DataType::WidthHeight, 0.5, kUnset);
  point.RegulateCenter(100.0);
  ExpectPosition(point, 0.5, 100.0);
  point.SetY(-0.25);
  point.RegulateCenter(NurReal());
  ExpectPosition(point, 0.5, -0.25);
  // The distance is the input value itself, so it stays unset; the height does not depend on it.
  point.SetX(kUnset);
  point.RegulateCenter(100.0);
  EXPECT_FALSE(point.GetCLDist().IsSet());
  EXPECT_EQ(point.GetGh(), 99.75);
}

TEST(ComposedPntGeometry, LeavesOtherPointsWhereTheyAre) {
  for (const VornLocation side : {VornLocation::Left, VornLocation::Right, VornLocation::Unset}) {
    VornComposedPnt point = PointAtPosition(1.0, 2.0);
    point.SetLocation(side);
    point.RegulateCenter(100.0);
    ExpectPosition(point, 1.0, 2.0);
  }
}

// --- slope values --------------------------------------------------------------------------------------------------

VornComposedPnt SlopeOf(VornLocation side, NurReal x, NurReal y) {
  return PointWith(side, DataType::WidthHeight, x, y);
}

void ExpectSlope(const VornComposedPnt& point, double ratio, double percent) {
  EXPECT_DOUBLE_EQ(point.GetRatio().Value(), ratio);
  EXPECT_DOUBLE_EQ(point.GetPercent().Value(), percent);
}

TEST(ComposedPntSlope, IsDerivedFromWidthAndHeight) {
  VornComposedPnt point = SlopeOf(VornLocation::Right, 3.0, -1.5);
  point.CalcSlopeVal(false, false);
  ExpectSlope(point, -2.0, -50.0);
}

TEST(ComposedPntSlope, IsNegatedOnTheLeftWhenAsked) {
  for (const VornLocation side : {VornLocation::Unset, VornLocation::Center, VornLocation::Left, VornLocation::Right}) {
    VornComposedPnt point = SlopeOf(side, 3.0, 1.5);
    point.CalcSlopeVal(true, true);
    const double sign = side == VornLocation::Left ? -1.0 : 1.0;
    ExpectSlope(point, sign * 2.0, sign * 50.0);
  }
  VornComposedPnt point = SlopeOf(VornLocation::Left, 3.0, 1.5);
  point.CalcSlopeVal(true, false);
  ExpectSlope(point, 2.0, 50.0);
}

TEST(ComposedPntSlope, IsNotDerivedWhenAnInputIsUnset) {
  for (VornComposedPnt point :
       {SlopeOf(VornLocation::Right, NurReal(), 1.0), SlopeOf(VornLocation::Right, 1.0, NurReal())}) {
    point.CalcSlopeVal(true, false);
    EXPECT_FALSE(point.GetRatio().IsSet());
    EXPECT_FALSE(point.GetPercent().IsSet());
  }
}

TEST(ComposedPntSlope, KeepsWhatIsSetUnlessForced) {
  VornComposedPnt point = SlopeOf(VornLocation::Right, 3.0, 1.5);
  point.SetRatio(7.0);
  point.CalcSlopeVal(false, false);
  ExpectSlope(point, 7.0, 50.0);

  point.SetPercent(8.0);
  point.GetRatio().Unset();
  point.CalcSlopeVal(false, false);
  ExpectSlope(point, 2.0, 8.0);

  point.SetRatio(7.0);
  point.CalcSlopeVal(false, false);
  ExpectSlope(point, 7.0, 8.0);

  point.CalcSlopeVal(true, false);
  ExpectSlope(point, 2.0, 50.0);
}

TEST(ComposedPntSlope, IsZeroOverAlmostNothing) {
  for (const double nothing : {0.0, 0.0001, -0.0001}) {
    VornComposedPnt level = SlopeOf(VornLocation::Left, 3.0, nothing);
    level.CalcSlopeVal(true, true);
    EXPECT_EQ(level.GetRatio(), 0.0);
    VornComposedPnt upright = SlopeOf(VornLocation::Left, nothing, 3.0);
    upright.CalcSlopeVal(true, true);
    EXPECT_EQ(upright.GetPercent(), 0.0);
  }
}

TEST(ComposedPntSlope, IsDerivedFromLittleMoreThanNothing) {
  VornComposedPnt level = SlopeOf(VornLocation::Right, 3.0, 0.00011);
  level.CalcSlopeVal(true, false);
  EXPECT_DOUBLE_EQ(level.GetRatio().Value(), 3.0 / 0.00011);
  VornComposedPnt upright = SlopeOf(VornLocation::Right, -0.00011, 3.0);
  upright.CalcSlopeVal(true, false);
  EXPECT_DOUBLE_EQ(upright.GetPercent().Value(), 3.0 / -0.00011 * 100.0);
}

}  // namespace
