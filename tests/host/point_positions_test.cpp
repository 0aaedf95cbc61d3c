#include "host/editing/point_positions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "host/document/input_values.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests

constexpr VornLocation kLeft = VornLocation::Left;
constexpr VornLocation kRight = VornLocation::Right;

/// Computes the positions of a form with the centre line at height 10, as an edition reads its values.
void Place(VornBuildForm& form) {
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(NurReal(10.0), dist, height);
}

VornBuildForm Placed(VornBuildForm form) {
  Place(form);
  return form;
}

/// The farthest that a point lies from where it has to, once the positions are computed from values as the document
/// has them.
double LargestError(const VornBuildForm& wanted) {
  VornBuildForm form = wanted;
  for (VornComposedPnt& point : form.GetComposedPntArray()) {
    const std::string text = point.GetTextData().GetString();
    point.GetTextVal(text);
  }
  Place(form);
  double largest = 0.0;
  for (int i = 0; i < form.GetComposedPntArray().GetSize(); ++i) {
    const TamWorld2 a = form.GetComposedPntArray()[i].Pos();
    const TamWorld2 b = wanted.GetComposedPntArray()[i].Pos();
    largest = std::max(largest, std::hypot(a.x - b.x, a.y - b.y));
  }
  return largest;
}

VornComposedPnt& PointOf(VornBuildForm& form, int index) { return form.GetComposedPntArray()[index]; }

void MoveTo(VornComposedPnt& point, double dist, double height) {
  point.SetCLDist(dist);
  point.SetGh(height);
}

class PointPositions : public testing::Test {
 private:
  EditionScope m_scope{Edition::V41};
};

class PointPositions20 : public testing::Test {
 private:
  EditionScope m_scope{Edition::V20};
};

TEST_F(PointPositions, ValuesThatLeadToThePositionsStay) {
  VornBuildForm form = Placed(Form(
      "A", {Center(), Point("L1", kLeft, DataType::Percent, 3.5, -2.0), Point("L2", kLeft, DataType::Rate, -4.0, 1.5),
            Point("R1", kRight, DataType::WidthHeight, 3.5, -0.07)}));
  const VornBuildForm before = form;
  EXPECT_EQ(ExpressPositions(form), 0);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(PointOf(form, i).GetX(), before.GetComposedPntArray()[i].GetX()) << i;
    EXPECT_EQ(PointOf(form, i).GetY(), before.GetComposedPntArray()[i].GetY()) << i;
    EXPECT_EQ(PointOf(form, i).GetDataType(), before.GetComposedPntArray()[i].GetDataType()) << i;
  }
}

TEST_F(PointPositions, ADisplacementWithinRoundingIsNoChange) {
  VornBuildForm form = Placed(RoadForm("A"));
  MoveTo(PointOf(form, 1), -3.50004, 9.93005);
  EXPECT_EQ(ExpressPositions(form), 0);
  MoveTo(PointOf(form, 1), -3.5002, 9.93);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_NEAR(PointOf(form, 1).GetX().Value(), 3.5002, 1e-9);
}

TEST_F(PointPositions, APercentPointKeepsItsReading) {
  VornBuildForm form = Placed(RoadForm("A"));
  MoveTo(PointOf(form, 2), 4.0, 9.9);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_EQ(PointOf(form, 2).GetDataType(), DataType::Percent);
  EXPECT_NEAR(PointOf(form, 2).GetX().Value(), 4.0, 1e-9);
  EXPECT_NEAR(PointOf(form, 2).GetY().Value(), -2.5, 1e-9);
}

TEST_F(PointPositions, ARatioPointKeepsItsReading) {
  VornBuildForm form = Placed(Form("A", {Center(), Point("L1", kLeft, DataType::Rate, -4.0, 1.5)}));
  MoveTo(PointOf(form, 1), -3.0, 8.0);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_EQ(PointOf(form, 1).GetDataType(), DataType::Rate);
  EXPECT_NEAR(PointOf(form, 1).GetX().Value(), -2.0, 1e-9);
  EXPECT_NEAR(PointOf(form, 1).GetY().Value(), 1.5, 1e-9);
}

TEST_F(PointPositions, APointOnASlopeThatIsCutKeepsItsPercentOrRatioExactly) {
  // A third of the way: neither the width nor the rise has few decimals.
  VornBuildForm form = Placed(Form("A", {Center(), Point("L1", kLeft, DataType::Percent, 10.0, -2.345),
                                         Point("R1", kRight, DataType::Rate, -4.0, 1.3)}));
  MoveTo(PointOf(form, 1), -10.0 / 3.0, 10.0 - 0.2345 / 3.0);
  MoveTo(PointOf(form, 2), 5.2 / 3.0, 10.0 - 4.0 / 3.0);
  EXPECT_EQ(ExpressPositions(form), 2);
  EXPECT_EQ(PointOf(form, 1).GetY().Value(), -2.345);
  EXPECT_EQ(PointOf(form, 2).GetY().Value(), 1.3);
}

TEST_F(PointPositions, AVerticalWallHasAWidthOfNothing) {
  for (const DataType type : {DataType::Percent, DataType::Rate, DataType::WidthHeight}) {
    VornBuildForm form = Placed(Form("A", {Center(), Point("L1", kLeft, type, 2.0, 3.0)}));
    MoveTo(PointOf(form, 1), 0.0, 6.5);
    EXPECT_EQ(ExpressPositions(form), 1);
    EXPECT_LT(LargestError(form), 2e-4);
  }
}

TEST_F(PointPositions, APointBackTowardsTheCentreIsReached) {
  for (const VornLocation side : {kLeft, kRight}) {
    for (const DataType type : {DataType::Percent, DataType::Rate, DataType::WidthHeight}) {
      const double outward = side == kLeft ? -1.0 : 1.0;
      VornBuildForm form =
          Placed(Form("A", {Center(), Point("1", side, type, 5.0, 1.0), Point("2", side, type, 1.0, 1.0)}));
      MoveTo(PointOf(form, 2), PointOf(form, 1).Pos().x - outward * 2.0, PointOf(form, 1).Pos().y - 3.0);
      EXPECT_EQ(ExpressPositions(form), 1);
      EXPECT_LT(LargestError(form), 2e-4) << static_cast<int>(type);
    }
  }
}

TEST_F(PointPositions, PointsBehindAMovedOneStayWhereTheyAre) {
  VornBuildForm form = Placed(Form("A", {Center(), Point("L1", kLeft, DataType::Percent, 3.5, -2.0),
                                         Point("L2", kLeft, DataType::Rate, -4.0, 1.5)}));
  const TamWorld2 toe = PointOf(form, 2).Pos();
  MoveTo(PointOf(form, 1), -4.0, 9.0);
  EXPECT_EQ(ExpressPositions(form), 2);
  EXPECT_EQ(PointOf(form, 2).Pos(), toe);
  EXPECT_LT(LargestError(form), 2e-4);
}

TEST_F(PointPositions, InterleavedSidesStartAgainAtTheStart) {
  VornBuildForm form = Placed(Form(
      "A",
      {Center(1.0), Point("L1", kLeft, DataType::Percent, 3.5, -2.0), Point("R1", kRight, DataType::Percent, 3.5, -2.0),
       Point("L2", kLeft, DataType::WidthHeight, 5.0, -1.0), Point("R2", kRight, DataType::Rate, -1.0, 4.0)}));
  EXPECT_EQ(ExpressPositions(form), 0);
  MoveTo(PointOf(form, 3), -9.0, 8.0);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_EQ(PointOf(form, 3).GetX().Value(), 10.0);
  EXPECT_LT(LargestError(form), 2e-4);
}

TEST_F(PointPositions, AMovedCentreHoldsItsDistance) {
  VornBuildForm form = Placed(RoadForm("A"));
  for (VornComposedPnt& point : form.GetComposedPntArray()) point.SetCLDist(point.GetCLDist().Value() + 0.25);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_EQ(PointOf(form, 0).GetX().Value(), 0.25);
  EXPECT_EQ(PointOf(form, 0).GetY().Value(), 0.0);
  EXPECT_LT(LargestError(form), 2e-4);
}

TEST_F(PointPositions, RoundingsDoNotAddUp) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> step(0.01, 3.0);
  for (const DataType type : {DataType::Percent, DataType::Rate, DataType::WidthHeight}) {
    VornBuildForm form = Form("A", {Center()});
    double dist = 0.0;
    double height = 10.0;
    PointOf(form, 0).SetCLDist(0.0);
    PointOf(form, 0).SetGh(height);
    for (int i = 0; i < 200; ++i) {
      VornComposedPnt point = Point("L", kLeft, type, 1.0, 1.0);
      MoveTo(point, dist -= step(random), height -= step(random));
      form.GetComposedPntArray().Add(point);
    }
    (void)ExpressPositions(form);
    EXPECT_LT(LargestError(form), 2e-4) << static_cast<int>(type);
  }
}

TEST_F(PointPositions, NothingIsAFormWithoutPoints) {
  VornBuildForm form;
  EXPECT_EQ(ExpressPositions(form), 0);
  EXPECT_TRUE(IsPlaced(form));
}

TEST_F(PointPositions, AFormIsPlacedWhenAllItsPointsHavePositions) {
  VornBuildForm form = RoadForm("A");
  EXPECT_FALSE(IsPlaced(form));
  Place(form);
  EXPECT_TRUE(IsPlaced(form));
  PointOf(form, 2).SetGh(NurReal());
  EXPECT_FALSE(IsPlaced(form));
}

TEST_F(PointPositions, OnlyAStartBesideTheCentreLineMayLackItsPosition) {
  VornBuildForm form = RoadForm("A");
  Place(form);
  PointOf(form, 0).SetGh(NurReal());
  EXPECT_FALSE(IsPlaced(form));
  PointOf(form, 0).SetLocation(VornLocation::Left);
  EXPECT_TRUE(IsPlaced(form));
}

TEST_F(PointPositions20, ValuesThatLeadToThePositionsStay) {
  VornBuildForm form = Placed(Form(
      "A", {Point20("CL", VornLocation::Center, SlopeType::Unset, 0.5, 0.0),
            Point20("L1", kLeft, SlopeType::Percent, 3.5, -2.0), Point20("L2", kLeft, SlopeType::Rate, -4.0, 1.5)}));
  EXPECT_EQ(ExpressPositions(form), 0);
  EXPECT_EQ(PointOf(form, 2).GetSlopeType(), SlopeType::Rate);
}

TEST_F(PointPositions20, AMovedPointIsAPercentageOrARatio) {
  for (const SlopeType type : {SlopeType::Percent, SlopeType::Rate}) {
    for (const VornLocation side : {kLeft, kRight}) {
      const double outward = side == kLeft ? -1.0 : 1.0;
      VornBuildForm form = Placed(Form(
          "A", {Point20("CL", VornLocation::Center, SlopeType::Unset, 0.0, 0.0), Point20("1", side, type, 2.0, 1.0)}));
      MoveTo(PointOf(form, 1), outward * 3.1234, 8.7654);
      EXPECT_EQ(ExpressPositions(form), 1);
      EXPECT_LT(LargestError(form), 2e-4) << static_cast<int>(type);
    }
  }
}

TEST_F(PointPositions20, AVerticalWallIsARatio) {
  VornBuildForm form = Placed(Form("A", {Point20("CL", VornLocation::Center, SlopeType::Unset, 0.0, 0.0),
                                         Point20("L1", kLeft, SlopeType::Percent, 2.0, 1.0)}));
  MoveTo(PointOf(form, 1), 0.0, 12.5);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_EQ(PointOf(form, 1).GetSlopeType(), SlopeType::Rate);
  EXPECT_LT(LargestError(form), 2e-4);
}

TEST_F(PointPositions20, APointOnThePointBeforeItIsAPercentageOfNoWidth) {
  VornBuildForm form = Placed(Form("A", {Point20("CL", VornLocation::Center, SlopeType::Unset, 0.0, 0.0),
                                         Point20("L1", kLeft, SlopeType::Rate, 2.0, 1.0)}));
  MoveTo(PointOf(form, 1), 0.0, 10.0);
  EXPECT_EQ(ExpressPositions(form), 1);
  EXPECT_LT(LargestError(form), 2e-4);
}

}  // namespace
}  // namespace vorn_host
