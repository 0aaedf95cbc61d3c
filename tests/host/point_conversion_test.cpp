#include "host/document/point_conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "host/document/edition_conversion.h"
#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using namespace host_test;  // NOLINT(google-build-using-namespace): the vocabulary of these tests
using testing::AllOf;
using testing::Le;

constexpr VornLocation kLeft = VornLocation::Left;
constexpr VornLocation kRight = VornLocation::Right;

/// Positions of all points as an edition reads them, the centre line at height 0.
std::vector<TamWorld2> PositionsIn(Edition edition, VornBuildForm form) {
  const EditionScope scope(edition);
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(0.0, dist, height);
  std::vector<TamWorld2> positions;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) positions.push_back(point.Pos());
  return positions;
}

double Distance(const TamWorld2& a, const TamWorld2& b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// The largest distance between equal points of two forms; of centre points only the start point counts.
double LargestDistance(const VornBuildForm& form, const std::vector<TamWorld2>& a, const std::vector<TamWorld2>& b) {
  EXPECT_EQ(a.size(), b.size());
  double largest = 0.0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    const bool counts = i == 0 || !form.GetComposedPntArray()[static_cast<int>(i)].IsCenter();
    if (counts) largest = std::max(largest, Distance(a[i], b[i]));
  }
  return largest;
}

/// A form with one point beside the centre.
VornBuildForm OnePoint(VornLocation side, DataType type, NurReal x, NurReal y) {
  return Form("A", {Center(), Point("P", side, type, x, y)});
}

/// What conversion makes of one point beside the centre.
VornComposedPnt Converted(VornLocation side, DataType type, NurReal x, NurReal y) {
  VornBuildForm form = OnePoint(side, type, x, y);
  ConvertPointsTo20(form);
  return form.GetComposedPntArray()[1];
}

/// How far a conversion moves any point of a form.
double Movement(const VornBuildForm& form) {
  VornBuildForm converted = form;
  ConvertPointsTo20(converted);
  return LargestDistance(form, PositionsIn(Edition::V41, form), PositionsIn(Edition::V20, converted));
}

MATCHER_P3(Reads, type, x, y, "") {
  return arg.GetSlopeType() == type && arg.GetX() == NurReal(x) && arg.GetY() == NurReal(y) &&
         arg.GetDataType() == (type == SlopeType::Rate ? DataType::Rate : DataType::Percent);
}

// --- towards edition 2.0 -------------------------------------------------------------------------------------------

TEST(PointsTo20, TurnWidthAndHeightIntoAGrade) {
  EXPECT_THAT(Converted(kRight, DataType::WidthHeight, 4.0, -0.08), Reads(SlopeType::Percent, 4.0, -2.0));
  EXPECT_THAT(Converted(kLeft, DataType::WidthHeight, 4.0, -0.08), Reads(SlopeType::Percent, 4.0, -2.0));
  EXPECT_THAT(Converted(kRight, DataType::WidthHeight, 3.0, 1.0), Reads(SlopeType::Percent, 3.0, 33.333));
}

TEST(PointsTo20, TurnAHeightWithoutAWidthIntoARatioOfZero) {
  EXPECT_THAT(Converted(kRight, DataType::WidthHeight, 0.0, 0.25), Reads(SlopeType::Rate, 0.25, 0.0));
  EXPECT_THAT(Converted(kLeft, DataType::WidthHeight, 0.0, -0.25), Reads(SlopeType::Rate, -0.25, 0.0));
  EXPECT_EQ(Movement(OnePoint(kLeft, DataType::WidthHeight, 0.0, -0.25)), 0.0);
}

TEST(PointsTo20, KeepInwardPointsInward) {
  for (const VornLocation side : {kLeft, kRight}) {
    EXPECT_THAT(Converted(side, DataType::WidthHeight, -2.0, 0.5), Reads(SlopeType::Percent, -2.0, 25.0));
    EXPECT_LE(Movement(OnePoint(side, DataType::WidthHeight, -2.0, 0.5)), 1e-9);
    EXPECT_LE(Movement(OnePoint(side, DataType::Rate, 5.0, -1.5)), 1e-9);
    EXPECT_LE(Movement(OnePoint(side, DataType::Rate, -5.0, -0.25)), 1e-3);
  }
}

TEST(PointsTo20, LeaveGradesAndRatiosThatTheEditionCanHold) {
  EXPECT_THAT(Converted(kLeft, DataType::Percent, 3.5, -2.125), Reads(SlopeType::Percent, 3.5, -2.125));
  EXPECT_THAT(Converted(kLeft, DataType::Rate, 5.0, 1.5), Reads(SlopeType::Rate, 5.0, 1.5));
  VornBuildForm form = Form(
      "A", {Center(), Point("L1", kLeft, DataType::Percent, 3.5, -2.0), Point("L2", kLeft, DataType::Rate, -5.0, 1.8)});
  EXPECT_EQ(ConvertPointsTo20(form).convertedPoints, 0);
}

TEST(PointsTo20, WriteARatioThatOneDecimalCannotHoldAsAGrade) {
  EXPECT_THAT(Converted(kRight, DataType::Rate, -4.0, 1.25), Reads(SlopeType::Percent, 5.0, -80.0));
  EXPECT_LE(Movement(OnePoint(kRight, DataType::Rate, -4.0, 1.25)), 1e-9);
  EXPECT_LE(Movement(OnePoint(kLeft, DataType::Rate, 12.345, 1.333)), 2e-4);
}

TEST(PointsTo20, CountThePointsThatReadOtherwiseThanBefore) {
  VornBuildForm form = Form("A", {Center(), Point("L1", kLeft, DataType::Percent, 3.5, -2.0),
                                  Point("L2", kLeft, DataType::WidthHeight, 1.0, -0.5),
                                  Point("R1", kRight, DataType::WidthHeight, 0.0, -0.5)});
  EXPECT_EQ(ConvertPointsTo20(form).convertedPoints, 2);
}

TEST(PointsTo20, TakeAMissingDataTypeForWidthAndHeight) {
  EXPECT_THAT(Converted(kRight, DataType::Unset, 4.0, 0.4), Reads(SlopeType::Percent, 4.0, 10.0));
}

TEST(PointsTo20, LeaveCentrePointsAlone) {
  VornBuildForm form = Form("A", {Center(0.5, -0.3), Point("R1", kRight, DataType::WidthHeight, 4.0, -0.08)});
  ConvertPointsTo20(form);
  const VornComposedPnt& center = form.GetComposedPntArray()[0];
  EXPECT_EQ(center.GetX(), NurReal(0.5));
  EXPECT_EQ(center.GetY(), NurReal(-0.3));
  EXPECT_EQ(PositionsIn(Edition::V20, form)[1].x, 4.5);
  EXPECT_NEAR(PositionsIn(Edition::V20, form)[1].y, -0.38, 1e-9);
}

TEST(PointsTo20, PlaceWhatFollowsWhereTheRoundedCentrePointComesToLie) {
  // Edition 2.0 writes the centre's height with three decimals; the point beside it stays where it was.
  VornBuildForm form = Form("A", {Center(0.0, 0.1236), Point("R1", kRight, DataType::WidthHeight, 1.0, 0.0)});
  ConvertPointsTo20(form);
  EXPECT_THAT(form.GetComposedPntArray()[1], Reads(SlopeType::Percent, 1.0, -0.04));
}

TEST(PointsTo20, FollowEachSideFromTheStartPointWhenTheSidesAlternate) {
  const VornBuildForm form = Form(
      "A", {Center(), Point("L1", kLeft, DataType::WidthHeight, 3.0, 0.1),
            Point("R1", kRight, DataType::WidthHeight, 4.0, 0.2), Point("L2", kLeft, DataType::WidthHeight, 5.0, 0.3),
            Point("L3", kLeft, DataType::WidthHeight, 1.0, 0.4)});
  EXPECT_LE(Movement(form), 2e-4);
}

TEST(PointsTo20, KeepWhatLiesBetweenThePointsWhenTheFormHasNoCentre) {
  VornBuildForm form = Form(
      "A", {Point("R1", kRight, DataType::WidthHeight, 2.0, 0.2), Point("R2", kRight, DataType::WidthHeight, 0.0, -0.4),
            Point("R3", kRight, DataType::WidthHeight, 3.0, 0.3)});
  EXPECT_LE(Movement(form), 1e-9);
  ConvertPointsTo20(form);
  EXPECT_THAT(form.GetComposedPntArray()[0], Reads(SlopeType::Percent, 2.0, 10.0));
}

TEST(PointsTo20, LeaveAPointWithoutValuesWithoutValues) {
  const VornComposedPnt point = Converted(kRight, DataType::WidthHeight, NurReal(), NurReal());
  EXPECT_FALSE(point.GetX().IsSet());
  EXPECT_FALSE(point.GetY().IsSet());
  EXPECT_EQ(point.GetSlopeType(), SlopeType::Percent);
}

TEST(PointsTo20, LeaveAValueUnsetThatCountsAsZero) {
  const VornComposedPnt flat = Converted(kRight, DataType::WidthHeight, 3.0, NurReal());
  EXPECT_EQ(flat.GetX(), NurReal(3.0));
  EXPECT_FALSE(flat.GetY().IsSet());
  const VornComposedPnt grade = Converted(kRight, DataType::Percent, NurReal(), 2.0);
  EXPECT_FALSE(grade.GetX().IsSet());
  EXPECT_EQ(grade.GetY(), NurReal(2.0));
  EXPECT_THAT(Converted(kRight, DataType::WidthHeight, NurReal(), 0.5), Reads(SlopeType::Rate, 0.5, 0.0));
}

TEST(PointsTo20, DoNotAddUpTheirErrorsAlongAForm) {
  VornBuildForm form = Form("A", {Center()});
  for (int i = 0; i < 200; ++i) {
    // Each of these grades is rounded, and always the same way.
    form.GetComposedPntArray().Add(Point("R" + std::to_string(i), kRight, DataType::WidthHeight, 30.0, 0.0101));
  }
  EXPECT_LE(Movement(form), 3e-4);
}

TEST(PointsTo20, ReportTheLargestDisplacementAndItsPoint) {
  VornBuildForm form = Form("A", {Center(), Point("R1", kRight, DataType::WidthHeight, 10.0, 1.0),
                                  Point("R2", kRight, DataType::WidthHeight, 47.0, 0.0101),
                                  Point("L1", kLeft, DataType::WidthHeight, 3.0, 1.0)});
  const std::vector<TamWorld2> before = PositionsIn(Edition::V41, form);
  const PointDisplacement displacement = ConvertPointsTo20(form);
  const std::vector<TamWorld2> after = PositionsIn(Edition::V20, form);
  EXPECT_EQ(displacement.largestAt, 2);
  EXPECT_GT(displacement.largest, 1e-5);
  EXPECT_NEAR(displacement.largest, Distance(before[2], after[2]), 1e-9);
  EXPECT_NEAR(displacement.largest, LargestDistance(form, before, after), 1e-9);
}

TEST(PointsTo20, ReportWhatTheDecimalsDoToTheCentrePoint) {
  VornBuildForm form = Form("A", {Point("CL", VornLocation::Center, DataType::WidthHeight, 0.0, 0.1236),
                                  Point("R1", kRight, DataType::WidthHeight, 3.0, 0.0)});
  const PointDisplacement displacement = ConvertPointsTo20(form);
  EXPECT_EQ(displacement.largestAt, 0);
  EXPECT_NEAR(displacement.largest, 0.0004, 1e-9);
  EXPECT_EQ(displacement.farPoints, 0);
}

TEST(PointsTo20, CountThePointsThatMoveByMoreThanAMillimetre) {
  VornBuildForm form = Form("A", {Center(), Point("R1", kRight, DataType::WidthHeight, 700.0, 0.0025)});
  const PointDisplacement displacement = ConvertPointsTo20(form);
  EXPECT_GT(displacement.largest, 1e-3);
  EXPECT_EQ(displacement.farPoints, 1);
}

TEST(PointsTo20, ReportNoDisplacementWhereThereIsNone) {
  VornBuildForm form = RoadForm("A");
  const PointDisplacement displacement = ConvertPointsTo20(form);
  EXPECT_NEAR(displacement.largest, 0.0, 1e-12);
  VornBuildForm empty;
  EXPECT_EQ(ConvertPointsTo20(empty).largestAt, -1);
}

// --- from edition 2.0 ----------------------------------------------------------------------------------------------

TEST(PointsFrom20, TakeTheSlopeTypeForTheDataType) {
  VornBuildForm form =
      Form("A", {Point20("CL", VornLocation::Center, SlopeType::Unset, 0.1, 0.2),
                 Point20("L1", kLeft, SlopeType::Percent, 3.5, -2.0), Point20("L2", kLeft, SlopeType::Rate, 5.0, 1.5),
                 Point20("R1", kRight, SlopeType::Unset, 4.0, 1.0)});
  const std::vector<TamWorld2> before = PositionsIn(Edition::V20, form);
  ConvertPointsFrom20(form);
  const auto& points = form.GetComposedPntArray();
  EXPECT_EQ(points[0].GetDataType(), DataType::WidthHeight);
  EXPECT_EQ(points[1].GetDataType(), DataType::Percent);
  EXPECT_EQ(points[2].GetDataType(), DataType::Rate);
  EXPECT_EQ(points[3].GetDataType(), DataType::Percent) << "a missing slope type reads as a grade in 2.0";
  EXPECT_EQ(LargestDistance(form, before, PositionsIn(Edition::V41, form)), 0.0);
}

TEST(PointsFrom20, ForgetADataTypeThatTheyBrought) {
  VornBuildForm form = Form("A", {Center(), Point("R1", kRight, DataType::WidthHeight, 4.0, 1.0)});
  ConvertPointsFrom20(form);
  EXPECT_EQ(form.GetComposedPntArray()[1].GetDataType(), DataType::Percent);
}

// --- on any form ---------------------------------------------------------------------------------------------------

/// Forms of every shape: long and short, wide and narrow, smooth and steep, with the sides in any order.
class RandomForms {
 public:
  VornBuildForm Next(bool withCenter) {
    VornBuildForm form;
    form.SetName("F", false);
    if (withCenter) form.GetComposedPntArray().Add(Center(Value(2.0), Value(3.0)));
    const int count = 2 + static_cast<int>(m_chance(m_random) * 20.0);
    VornLocation side = kLeft;
    for (int i = 0; i < count; ++i) {
      if (m_chance(m_random) < 0.2) side = side == kLeft ? kRight : kLeft;
      form.GetComposedPntArray().Add(NextPoint(side, i));
    }
    return form;
  }

 private:
  VornComposedPnt NextPoint(VornLocation side, int number) {
    const std::string code = (side == kLeft ? "L" : "R") + std::to_string(number);
    switch (static_cast<int>(m_chance(m_random) * 5.0)) {
      case 0:
        return Point(code, side, DataType::Percent, Value(40.0), Value(300.0));
      case 1:
        return Point(code, side, DataType::Rate, Value(15.0), Value(3.0));
      case 2:
        return Point(code, side, DataType::WidthHeight, 0.0, Value(5.0));
      case 3:
        return Point(code, side, DataType::WidthHeight, Value(0.001), Value(30.0));
      default:
        return Point(code, side, DataType::WidthHeight, Value(40.0), Value(10.0));
    }
  }

  /// A value with as many decimals as any later edition writes.
  double Value(double limit) {
    std::uniform_real_distribution<double> range(-limit, limit);
    return std::round(range(m_random) * 1e4) / 1e4;
  }

  std::mt19937 m_random{20240401};
  std::uniform_real_distribution<double> m_chance{0.0, 1.0};
};

/// A document with the forms on sections of ten each.
DesignDocument DocumentOfForms(const std::vector<VornBuildForm>& forms) {
  DesignDocument document = DocumentOf(Edition::V41, {});
  for (std::size_t i = 0; i < forms.size(); ++i) {
    Vorn_XSectionArray& sections = document.sets[0].GetXSectionArray();
    if (i % 10 == 0) sections.Add(Section(static_cast<double>(i), {}));
    sections[sections.GetSize() - 1].GetBuildFormArray().Add(forms[i]);
  }
  return document;
}

/// The document as it is read from its own bytes.
DesignDocument ThroughBytes(DesignDocument document) { return ReadText(WriteText(document)); }

std::vector<VornBuildForm> FormsOf(const DesignDocument& document) {
  std::vector<VornBuildForm> forms;
  for (const VornXSection& section : document.sets[0].GetXSectionArray()) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) forms.push_back(form);
  }
  return forms;
}

class RandomPoints : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Forms, RandomPoints, testing::Values(true, false),
                         [](const auto& info) { return info.param ? "WithACentre" : "WithoutACentre"; });

TEST_P(RandomPoints, MoveLessThanAMillimetreOnTheWayTo20AndBackThroughFiles) {
  RandomForms random;
  std::vector<VornBuildForm> forms;
  for (int i = 0; i < 2000; ++i) forms.push_back(random.Next(GetParam()));

  DesignDocument document = ThroughBytes(DocumentOfForms(forms));
  const std::vector<VornBuildForm> start = FormsOf(document);
  ASSERT_EQ(start.size(), forms.size());

  const ConversionReport report = ConvertEdition(document, Edition::V20);
  DesignDocument in20 = ThroughBytes(std::move(document));
  ASSERT_EQ(in20.edition, Edition::V20);
  const std::vector<VornBuildForm> between = FormsOf(in20);

  ConvertEdition(in20, Edition::V41);
  const DesignDocument in41 = ThroughBytes(std::move(in20));
  const std::vector<VornBuildForm> end = FormsOf(in41);
  ASSERT_EQ(end.size(), forms.size());

  double largest = 0.0;
  for (std::size_t i = 0; i < forms.size(); ++i) {
    const std::vector<TamWorld2> wanted = PositionsIn(Edition::V41, start[i]);
    const double to20 = LargestDistance(forms[i], wanted, PositionsIn(Edition::V20, between[i]));
    const double andBack = LargestDistance(forms[i], wanted, PositionsIn(Edition::V41, end[i]));
    ASSERT_LE(to20, 1e-3) << "form " << i;
    ASSERT_LE(andBack, 1e-3) << "form " << i;
    largest = std::max(largest, to20);
  }
  // Without a centre the library places no start point, but the report counts its displacement too.
  EXPECT_NEAR(report.largestDisplacement, largest, GetParam() ? 1e-6 : 3e-4) << "the report tells the worst";
}

}  // namespace
}  // namespace vorn_host
