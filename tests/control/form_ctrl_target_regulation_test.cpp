#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/xml_tree.h"
#include "vorn/control/form_ctrl_target.h"
#include "vorn/model/build_form.h"

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;
using test_support::EditionScope;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kCenter = VornLocation::Center;
constexpr auto kLeft = VornLocation::Left;
constexpr auto kRight = VornLocation::Right;

constexpr ControlItem kAllItems[] = {ControlItem::Unset,     ControlItem::SlopeLength, ControlItem::Width,
                                     ControlItem::Height,    ControlItem::Thickness,   ControlItem::Depth,
                                     ControlItem::XSectArea, ControlItem::Length,      ControlItem::Area};
constexpr ControlItem kPairItems[] = {ControlItem::SlopeLength, ControlItem::Width, ControlItem::Thickness,
                                      ControlItem::Depth};
constexpr ControlItem kFreeItems[] = {ControlItem::Height, ControlItem::XSectArea, ControlItem::Length,
                                      ControlItem::Area};

VornFormCtrlTargetPnt Point(const char* code, VornLocation side, double offset, double elevation) {
  VornFormCtrlTargetPnt point;
  point.SetCode(code);
  point.SetSide(side);
  point.SetOffset(offset);
  point.SetElevation(elevation);
  return point;
}

VornFormCtrlTargetPnt PointAt(double station, bool xSectChg = false) {
  VornFormCtrlTargetPnt point;
  point.Set(station, "form", "L1", xSectChg);
  return point;
}

VornFormCtrlTargetPnt PointWithIDs(std::uint32_t section, std::uint32_t form, std::uint32_t serial = 0) {
  VornFormCtrlTargetPnt point;
  point.SetSectionID(section);
  point.SetBuildFormID(form);
  point.SetSerialID(serial);
  return point;
}

template <typename... Points>
VornFormCtrlTargetPntArray PointArray(const Points&... points) {
  VornFormCtrlTargetPntArray array;
  (array.Add(points), ...);
  return array;
}

template <typename... Points>
VornFormCtrlTarget Target(ControlItem item, const Points&... points) {
  VornFormCtrlTarget target;
  target.SetControlItem(item);
  (target.GetTargetPntArray().Add(points), ...);
  return target;
}

template <typename... Targets>
Vorn_FormCtrlTargetArray Collection(const Targets&... targets) {
  Vorn_FormCtrlTargetArray collection;
  (collection.Add(targets), ...);
  return collection;
}

std::vector<std::string> Codes(const VornFormCtrlTarget& target) {
  std::vector<std::string> codes;
  for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) codes.emplace_back(point.GetCode());
  return codes;
}

std::vector<double> Stations(const VornFormCtrlTargetPntArray& points) {
  std::vector<double> stations;
  for (const VornFormCtrlTargetPnt& point : points) stations.push_back(point.GetCumulativeDist().Value());
  return stations;
}
std::vector<double> Stations(const VornFormCtrlTarget& target) { return Stations(target.GetTargetPntArray()); }

std::vector<std::uint32_t> FormIDs(const VornFormCtrlTargetPntArray& points) {
  std::vector<std::uint32_t> ids;
  for (const VornFormCtrlTargetPnt& point : points) ids.push_back(point.GetBuildFormID());
  return ids;
}

/// Section, form and serial of every point.
std::vector<std::vector<std::uint32_t>> IDs(const VornFormCtrlTargetPntArray& points) {
  std::vector<std::vector<std::uint32_t>> ids;
  for (const VornFormCtrlTargetPnt& p : points) ids.push_back({p.GetSectionID(), p.GetBuildFormID(), p.GetSerialID()});
  return ids;
}

class RegulationTest : public testing::Test {
 protected:
  EditionScope m_edition{VornSchema::Version41};
};

// --- creating the points ---------------------------------------------------------------------------------------------

VornFormCtrlTarget TargetOnCodes(ControlItem item, const char* codes) {
  VornFormCtrlTarget target;
  target.SetControlItem(item);
  target.SetCode(codes);
  return target;
}

TEST_F(RegulationTest, SlopeLengthAndWidthGetAPointForEachOfTheirCodes) {
  m_edition.Select(VornSchema::Version20);
  for (const ControlItem item : {ControlItem::SlopeLength, ControlItem::Width}) {
    VornBuildForm form;
    VornFormCtrlTarget target = TargetOnCodes(item, "L1 R1");
    target.RegulatePnt(20.5, &form);
    EXPECT_THAT(Codes(target), ElementsAre("L1", "R1"));
    EXPECT_THAT(Stations(target), ElementsAre(20.5, 20.5));
    EXPECT_EQ(target.GetTargetPntArray()[0].GetBuildFormName(), "");
  }
}

TEST_F(RegulationTest, LaterEditionsHaveNoCodesToGiveToNewPoints) {
  VornBuildForm form;
  VornFormCtrlTarget target = TargetOnCodes(ControlItem::Width, "L1 R1");
  target.RegulatePnt(20.5, &form);
  EXPECT_THAT(Codes(target), ElementsAre("", ""));
  EXPECT_THAT(Stations(target), ElementsAre(20.5, 20.5));
}

TEST_F(RegulationTest, HeightGetsOnePointWithTheWholeCode) {
  VornComposedPnt composed;
  composed.SetCode("L1");
  VornBuildForm withPoint;
  withPoint.GetComposedPntArray().Add(composed);
  VornBuildForm withoutPoint;
  for (VornBuildForm* form : {&withPoint, &withoutPoint}) {
    for (const auto version : {VornSchema::Version20, VornSchema::Version41}) {
      m_edition.Select(version);
      VornFormCtrlTarget target = TargetOnCodes(ControlItem::Height, "L1");
      target.RegulatePnt(20.5, form);
      EXPECT_THAT(Codes(target), ElementsAre("L1"));
      EXPECT_THAT(Stations(target), ElementsAre(20.5));
    }
  }
}

TEST_F(RegulationTest, OtherItemsGetNoPoints) {
  m_edition.Select(VornSchema::Version20);
  VornBuildForm form;
  for (const ControlItem item :
       {ControlItem::Unset, ControlItem::Thickness, ControlItem::Depth, ControlItem::XSectArea, ControlItem::Length,
        ControlItem::Area, static_cast<ControlItem>(8), static_cast<ControlItem>(-2)}) {
    VornFormCtrlTarget target = TargetOnCodes(item, "L1 R1");
    target.RegulatePnt(20.5, &form);
    EXPECT_THAT(Codes(target), IsEmpty()) << static_cast<int>(item);
  }
}

TEST_F(RegulationTest, PointsAreMadeWithoutABuildFormToo) {
  m_edition.Select(VornSchema::Version20);
  VornFormCtrlTarget width = TargetOnCodes(ControlItem::Width, "L1 R1");
  width.RegulatePnt(20.5, nullptr);
  EXPECT_THAT(Codes(width), ElementsAre("L1", "R1"));
  EXPECT_THAT(Stations(width), ElementsAre(20.5, 20.5));
  VornFormCtrlTarget height = TargetOnCodes(ControlItem::Height, "L1");
  height.RegulatePnt(20.5, nullptr);
  EXPECT_THAT(Codes(height), ElementsAre("L1"));
  EXPECT_THAT(Stations(height), ElementsAre(20.5));
  VornFormCtrlTarget depth = TargetOnCodes(ControlItem::Depth, "L1 R1");
  depth.RegulatePnt(20.5, nullptr);
  EXPECT_THAT(Codes(depth), IsEmpty());
}

TEST_F(RegulationTest, ATargetWithAPointGetsNoMore) {
  m_edition.Select(VornSchema::Version20);
  VornBuildForm form;
  for (const ControlItem item : kAllItems) {
    VornFormCtrlTarget target = Target(item, PointAt(5.0));
    target.SetCode("L1 R1");
    target.RegulatePnt(20.5, &form);
    EXPECT_THAT(Stations(target), ElementsAre(5.0)) << static_cast<int>(item);
  }
}

// --- ordering a pair -------------------------------------------------------------------------------------------------

struct PairRow {
  const char* behaviour;
  ControlItem item;
  VornLocation side0;
  double offset0;
  double elevation0;
  VornLocation side1;
  double offset1;
  double elevation1;
  bool swapped;
  TargetPntType type;
};

class RegulatedPair : public RegulationTest, public testing::WithParamInterface<PairRow> {};

TEST_P(RegulatedPair, StandsInCanonicalOrderWithItsType) {
  const PairRow& row = GetParam();
  VornFormCtrlTarget target = Target(row.item, Point("first", row.side0, row.offset0, row.elevation0),
                                     Point("second", row.side1, row.offset1, row.elevation1));
  EXPECT_TRUE(target.Regulate());
  EXPECT_EQ(target.GetTargetPntType(), row.type);
  const VornFormCtrlTargetPnt& now0 = target.GetTargetPntArray()[0];
  const VornFormCtrlTargetPnt& now1 = target.GetTargetPntArray()[1];
  EXPECT_EQ(now0.GetCode(), row.swapped ? "second" : "first");
  EXPECT_EQ(now1.GetCode(), row.swapped ? "first" : "second");
  EXPECT_EQ(now0.GetElevation(), row.swapped ? row.elevation1 : row.elevation0);  // the whole point moves
  EXPECT_EQ(now1.GetOffset(), row.swapped ? row.offset0 : row.offset1);
}

const auto kBehaviour = [](const testing::TestParamInfo<PairRow>& row) { return std::string(row.param.behaviour); };

constexpr auto kSlope = ControlItem::SlopeLength;
constexpr auto kShoulderToe = TargetPntType::ShoulderToe;
constexpr auto kToeShoulder = TargetPntType::ToeShoulder;
INSTANTIATE_TEST_SUITE_P(
    SlopeLength, RegulatedPair,
    testing::Values(PairRow{"OuterPointFirstIsSwapped", kSlope, kLeft, -3, 10, kLeft, -1, 12, true, kShoulderToe},
                    PairRow{"InnerPointFirstStays", kSlope, kLeft, -1, 12, kLeft, -3, 10, false, kShoulderToe},
                    PairRow{"OuterPointHigherIsToeShoulder", kSlope, kRight, 1, 10, kRight, 3, 12, false, kToeShoulder},
                    PairRow{"TypeIsThatOfTheSwappedPair", kSlope, kRight, 3, 12, kRight, 1, 10, true, kToeShoulder},
                    PairRow{"LevelIsShoulderToe", kSlope, kRight, 1, 10, kRight, 3, 10, false, kShoulderToe},
                    PairRow{"EqualDistanceStays", kSlope, kRight, 2, 10, kRight, 2, 12, false, kToeShoulder},
                    PairRow{"SmallestDifferenceSwaps", kSlope, kRight, 2.0000001, 12, kRight, 2, 10, true,
                            kToeShoulder},
                    PairRow{"FirstOnTheCentreProceeds", kSlope, kCenter, 0, 12, kLeft, -3, 10, false, kShoulderToe},
                    PairRow{"SecondOnTheCentreProceeds", kSlope, kRight, 3, 10, kCenter, 0, 12, true, kShoulderToe},
                    PairRow{"BothOnTheCentreProceed", kSlope, kCenter, 0, 10, kCenter, 0, 12, false, kToeShoulder}),
    kBehaviour);

constexpr auto kWidth = ControlItem::Width;
constexpr auto kLeftRight = TargetPntType::LeftRight;
constexpr auto kInnerOuter = TargetPntType::InnerOuter;
INSTANTIATE_TEST_SUITE_P(
    Width, RegulatedPair,
    testing::Values(PairRow{"OuterPointFirstOnOneSideIsSwapped", kWidth, kRight, 5, 0, kRight, 2, 0, true, kInnerOuter},
                    PairRow{"OuterPointFirstOnTheLeftIsSwapped", kWidth, kLeft, -5, 0, kLeft, -2, 0, true, kInnerOuter},
                    PairRow{"InnerPointFirstStays", kWidth, kLeft, -2, 0, kLeft, -5, 0, false, kInnerOuter},
                    PairRow{"EqualDistanceStays", kWidth, kRight, 2, 0, kRight, 2, 0, false, kInnerOuter},
                    PairRow{"RightPointFirstIsSwapped", kWidth, kRight, 1, 0, kLeft, -5, 0, true, kLeftRight},
                    PairRow{"LeftPointFirstStays", kWidth, kLeft, -5, 0, kRight, 1, 0, false, kLeftRight},
                    PairRow{"CentreAndRightAreLeftRight", kWidth, kRight, 5, 0, kCenter, 0, 0, true, kLeftRight},
                    PairRow{"EqualOffsetsOnTwoSidesStay", kWidth, kRight, 0, 0, kLeft, 0, 0, false, kLeftRight}),
    kBehaviour);

constexpr auto kThickness = ControlItem::Thickness;
constexpr auto kLowerUpper = TargetPntType::LowerUpper;
INSTANTIATE_TEST_SUITE_P(
    Thickness, RegulatedPair,
    testing::Values(PairRow{"UpperPointFirstIsSwapped", kThickness, kLeft, -1, 12, kRight, 1, 10, true, kLowerUpper},
                    PairRow{"LowerPointFirstStays", kThickness, kLeft, -1, 10, kRight, 1, 12, false, kLowerUpper},
                    PairRow{"LevelStays", kThickness, kLeft, -1, 10, kRight, 1, 10, false, kLowerUpper}),
    kBehaviour);

constexpr auto kDepth = ControlItem::Depth;
constexpr auto kUpperLower = TargetPntType::UpperLower;
INSTANTIATE_TEST_SUITE_P(
    Depth, RegulatedPair,
    testing::Values(PairRow{"LowerPointFirstIsSwapped", kDepth, kLeft, -1, 10, kRight, 1, 12, true, kUpperLower},
                    PairRow{"UpperPointFirstStays", kDepth, kLeft, -1, 12, kRight, 1, 10, false, kUpperLower},
                    PairRow{"LevelStays", kDepth, kLeft, -1, 10, kRight, 1, 10, false, kUpperLower}),
    kBehaviour);

TEST_F(RegulationTest, ASlopeAcrossTheCentreLineHasNoCanonicalForm) {
  for (const auto& [side0, side1] :
       {std::pair(kLeft, kRight), std::pair(kRight, kLeft), std::pair(VornLocation::Unset, kRight)}) {
    VornFormCtrlTarget target =
        Target(ControlItem::SlopeLength, Point("first", side0, -3, 10), Point("second", side1, 1, 12));
    EXPECT_FALSE(target.Regulate());
    EXPECT_THAT(Codes(target), ElementsAre("first", "second"));
    EXPECT_EQ(target.GetTargetPntType(), TargetPntType::Unset);
  }
}

TEST_F(RegulationTest, APairNeedsExactlyTwoPoints) {
  const VornFormCtrlTargetPnt point = Point("L1", kLeft, -1, 10);
  for (const ControlItem item : kPairItems) {
    for (VornFormCtrlTarget target : {Target(item), Target(item, point), Target(item, point, point, point)}) {
      EXPECT_FALSE(target.Regulate()) << static_cast<int>(item) << " with " << target.GetTargetPntArray().GetSize();
      EXPECT_EQ(target.GetTargetPntType(), TargetPntType::Unset);
    }
  }
}

TEST_F(RegulationTest, OtherItemsAreCanonicalAsTheyAre) {
  const VornFormCtrlTargetPnt outer = Point("outer", kRight, 5, 10);
  const VornFormCtrlTargetPnt inner = Point("inner", kRight, 2, 12);
  for (const ControlItem item : kFreeItems) {
    VornFormCtrlTarget pair = Target(item, outer, inner);
    pair.SetTargetPntType(TargetPntType::TargetPnt);
    EXPECT_TRUE(pair.Regulate());
    EXPECT_THAT(Codes(pair), ElementsAre("outer", "inner"));
    EXPECT_EQ(pair.GetTargetPntType(), TargetPntType::TargetPnt);
    EXPECT_TRUE(Target(item).Regulate());
    EXPECT_TRUE(Target(item, outer, inner, outer).Regulate());
  }
}

TEST_F(RegulationTest, AnUnknownItemHasNoCanonicalForm) {
  const VornFormCtrlTargetPnt point = Point("L1", kLeft, -1, 10);
  for (const int item : {-2, -1, 8})
    EXPECT_FALSE(Target(static_cast<ControlItem>(item), point, point).Regulate()) << item;
}

TEST_F(RegulationTest, ARegulatedThicknessOrDepthIsNotValid) {
  for (const ControlItem item : {ControlItem::Thickness, ControlItem::Depth}) {
    VornFormCtrlTarget target = Target(item, PointAt(20), PointAt(20));
    target.SetCode("L1 L1");
    target.SetWorkType(VornFormCtrlTarget::WorkType::CutWork);
    target.SetTargetScope("scope");
    target.SetTargetRegio("region");
    target.SetTargetPntType(TargetPntType::TargetPnt);
    EXPECT_TRUE(target.IsEnable());
    EXPECT_TRUE(target.Regulate());
    EXPECT_FALSE(target.IsEnable());
  }
}

// --- removing duplicates ---------------------------------------------------------------------------------------------

std::vector<std::uint32_t> Serials(const Vorn_FormCtrlTargetArray& targets) {
  std::vector<std::uint32_t> serials;
  for (const VornFormCtrlTarget& target : targets) serials.push_back(target.GetSerialID());
  return serials;
}

VornFormCtrlTargetPnt PointWithCode(const char* code) { return Point(code, kLeft, -1, 10); }

TEST_F(RegulationTest, TheFirstOfDuplicateTargetsStays) {
  const VornFormCtrlTarget width = Target(ControlItem::Width, PointWithCode("L1"), PointWithCode("L2"));
  const VornFormCtrlTarget height = Target(ControlItem::Height, PointWithCode("L1"), PointWithCode("L2"));
  Vorn_FormCtrlTargetArray targets = Collection(width, height, width, width, height, width);
  targets.Regulate();
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1));
}

TEST_F(RegulationTest, TargetsThatDifferInItemOrCodesAllStay) {
  Vorn_FormCtrlTargetArray targets =
      Collection(Target(ControlItem::Width, PointWithCode("L1"), PointWithCode("L2")),
                 Target(ControlItem::Depth, PointWithCode("L1"), PointWithCode("L2")),
                 Target(ControlItem::Width, PointWithCode("L2"), PointWithCode("L1")),
                 Target(ControlItem::Width, PointWithCode("l1"), PointWithCode("L2")), Target(ControlItem::Width));
  targets.Regulate();
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(RegulationTest, TargetsAreComparedByTheirCodesOfTheEdition) {
  const VornFormCtrlTarget byText = TargetOnCodes(ControlItem::Width, "L1 L2");
  const VornFormCtrlTarget byOtherText = TargetOnCodes(ControlItem::Width, "L1 R2");
  Vorn_FormCtrlTargetArray targets = Collection(byText, byOtherText, byText);
  m_edition.Select(VornSchema::Version20);
  targets.Regulate();
  EXPECT_THAT(Serials(targets), ElementsAre(0, 1));
  m_edition.Select(VornSchema::Version41);  // without points all of them have the same, empty codes
  targets.Regulate();
  EXPECT_THAT(Serials(targets), ElementsAre(0));
}

TEST_F(RegulationTest, WhatStaysIsMovedAsAWhole) {
  VornFormCtrlTarget last = Target(ControlItem::Height, PointWithCode("R1"));
  last.SetTargetScope("scope");
  const VornFormCtrlTarget width = Target(ControlItem::Width, PointWithCode("L1"), PointWithCode("L2"));
  Vorn_FormCtrlTargetArray targets = Collection(width, width, last);
  targets.Regulate();
  ASSERT_EQ(targets.GetSize(), 2);
  EXPECT_EQ(targets[1].GetTargetScope(), "scope");
  EXPECT_EQ(targets[1].GetCode(), "R1");
  EXPECT_EQ(targets[1].tagName(), "tsf:FormCtrlTarget");
}

TEST_F(RegulationTest, AnEmptyCollectionStaysEmpty) {
  Vorn_FormCtrlTargetArray targets;
  targets.Regulate();
  EXPECT_TRUE(targets.IsEmpty());
}

// --- stations --------------------------------------------------------------------------------------------------------

TEST_F(RegulationTest, GivesTheStationToEveryPoint) {
  VornFormCtrlTarget target = Target(ControlItem::Length, PointAt(1), PointAt(2, true));
  target.RegulateDist(20.5);
  EXPECT_THAT(Stations(target), ElementsAre(20.5, 20.5));
  target.RegulateDist(NurReal());
  EXPECT_THAT(Stations(target), Each(kNurUnsetReal));
}

Vorn_FormCtrlTargetArray OneOfEachItem() {
  Vorn_FormCtrlTargetArray targets;
  for (const ControlItem item : kAllItems) targets.Add(Target(item, PointAt(100), PointAt(100, true), PointAt(50)));
  return targets;
}

bool SpansSections(const VornFormCtrlTarget& target) {
  return target.GetControlItem() == ControlItem::Length || target.GetControlItem() == ControlItem::Area;
}

TEST_F(RegulationTest, LengthsAndAreasKeepTheirOwnStations) {
  Vorn_FormCtrlTargetArray targets = OneOfEachItem();
  targets.RegulateDist(20.5);
  for (const VornFormCtrlTarget& target : targets) {
    if (SpansSections(target)) {
      EXPECT_THAT(Stations(target), ElementsAre(100, 100, 50));
    } else {
      EXPECT_THAT(Stations(target), Each(20.5));
    }
  }
}

TEST_F(RegulationTest, ChangingAStationLeavesLengthsAndAreasAlone) {
  Vorn_FormCtrlTargetArray targets = OneOfEachItem();
  targets.ChangeDist(100, 120, false);
  for (const VornFormCtrlTarget& target : targets) {
    EXPECT_THAT(Stations(target), ElementsAre(SpansSections(target) ? 100 : 120, 100, 50));
  }
}

TEST_F(RegulationTest, ChangingTheStationOfLengthsAndAreasLeavesTheOthersAlone) {
  Vorn_FormCtrlTargetArray targets = OneOfEachItem();
  targets.ChangeDistH(100, 120, true);
  for (const VornFormCtrlTarget& target : targets) {
    EXPECT_THAT(Stations(target), ElementsAre(100, SpansSections(target) ? 120 : 100, 50));
  }
}

VornFormCtrlTargetPntArray PointsAround100() {
  VornFormCtrlTargetPntArray points;
  for (const double station : {100.0, 100.0000009, 99.9999991, 100.0000011, 99.9999989, 50.0}) {
    points.Add(PointAt(station, false));
  }
  points.Add(PointAt(100.0, true));
  return points;
}

TEST_F(RegulationTest, MovesThePointsWithinAMillionthOfTheStationAndWithTheFlag) {
  VornFormCtrlTargetPntArray points = PointsAround100();
  points.ChangeDist(100.0, 120.5, false);
  EXPECT_THAT(Stations(points), ElementsAre(120.5, 120.5, 120.5, 100.0000011, 99.9999989, 50.0, 100.0));
}

TEST_F(RegulationTest, LeavesAPointThatIsAMillionthAway) {
  VornFormCtrlTargetPntArray points = PointArray(PointAt(1e-6), PointAt(-1e-6), PointAt(0.99e-6));
  points.ChangeDist(0.0, 120.5, false);
  EXPECT_THAT(Stations(points), ElementsAre(1e-6, -1e-6, 120.5));
}

TEST_F(RegulationTest, APointWithoutAStationMovesWithStationZero) {
  VornFormCtrlTargetPntArray points = PointArray(PointAt(kNurUnsetReal), PointAt(0.0), PointAt(50.0));
  points.ChangeDist(50.0, 60.0, false);
  EXPECT_THAT(Stations(points), ElementsAre(kNurUnsetReal, 0.0, 60.0));
  points.ChangeDist(0.0, 20.5, false);
  EXPECT_THAT(Stations(points), ElementsAre(20.5, 20.5, 60.0));

  VornFormCtrlTargetPntArray removed = PointArray(PointAt(kNurUnsetReal), PointAt(0.0), PointAt(50.0));
  removed.ChangeDist(0.0, kNurUnsetReal, false);
  EXPECT_THAT(Stations(removed), ElementsAre(50.0));
}

TEST_F(RegulationTest, MovesOnlyThePointsBehindAChangeOfShapeWhenAsked) {
  VornFormCtrlTargetPntArray points = PointsAround100();
  points.ChangeDist(100.0, 120.5, true);
  EXPECT_THAT(Stations(points), ElementsAre(100.0, 100.0000009, 99.9999991, 100.0000011, 99.9999989, 50.0, 120.5));
}

TEST_F(RegulationTest, AnUnsetStationRemovesThePoints) {
  VornFormCtrlTargetPntArray points = PointsAround100();
  points.ChangeDist(100.0, kNurUnsetReal, false);
  EXPECT_THAT(Stations(points), ElementsAre(100.0000011, 99.9999989, 50.0, 100.0));
  EXPECT_TRUE(points[3].GetXSectChg());
}

TEST_F(RegulationTest, RemovesNeighbouringPointsAtBothEnds) {
  VornFormCtrlTargetPntArray points;
  for (const double station : {100.0, 100.0, 50.0, 100.0, 100.0}) points.Add(PointAt(station));
  points.ChangeDist(100.0, kNurUnsetReal, false);
  EXPECT_THAT(Stations(points), ElementsAre(50.0));
}

TEST_F(RegulationTest, RemovesPointsThroughTheCollectionToo) {
  Vorn_FormCtrlTargetArray targets = OneOfEachItem();
  targets.ChangeDist(100, kNurUnsetReal, false);
  targets.ChangeDistH(50, kNurUnsetReal, false);
  for (const VornFormCtrlTarget& target : targets) {
    if (SpansSections(target)) {
      EXPECT_THAT(Stations(target), ElementsAre(100, 100));
    } else {
      EXPECT_THAT(Stations(target), ElementsAre(100, 50));
    }
  }
}

// --- identifiers -----------------------------------------------------------------------------------------------------

/// Applies an operation to the same points on their own, in a target, and in two targets of a collection; gives the
/// points after each.
template <typename Operation>
std::vector<VornFormCtrlTargetPntArray> AtEveryLevel(const VornFormCtrlTargetPntArray& points, Operation&& operation) {
  VornFormCtrlTargetPntArray own = points;
  operation(own);
  VornFormCtrlTarget target;
  target.GetTargetPntArray() = points;
  Vorn_FormCtrlTargetArray targets = Collection(target, target);
  operation(target);
  operation(targets);
  return {own, target.GetTargetPntArray(), targets[0].GetTargetPntArray(), targets[1].GetTargetPntArray()};
}

TEST_F(RegulationTest, SwapsBuildFormsInThePointsOfASection) {
  const auto points = PointArray(PointWithIDs(1, 7), PointWithIDs(1, 8), PointWithIDs(1, 9), PointWithIDs(2, 7));
  for (const auto& swapped : AtEveryLevel(points, [](auto& at) { at.SwapBuildFormID(1, 7, 8); })) {
    EXPECT_THAT(FormIDs(swapped), ElementsAre(8, 7, 9, 7));
  }
}

TEST_F(RegulationTest, RenumbersThePointsThatCarryAllThreeIdentifiers) {
  const auto points = PointArray(PointWithIDs(1, 2, 3), PointWithIDs(9, 2, 3), PointWithIDs(1, 9, 3),
                                 PointWithIDs(1, 2, 9), PointWithIDs(1, 2, 3));
  for (const auto& changed : AtEveryLevel(points, [](auto& at) { at.ChangeID(1, 2, 3, 4, 5, 6); })) {
    EXPECT_THAT(IDs(changed), ElementsAre(ElementsAre(4, 5, 6), ElementsAre(9, 2, 3), ElementsAre(1, 9, 3),
                                          ElementsAre(1, 2, 9), ElementsAre(4, 5, 6)));
  }
}

TEST_F(RegulationTest, TakesTheIdentifiersFromOneOfThePointsThemselves) {
  const auto points = PointArray(PointWithIDs(1, 7, 3), PointWithIDs(1, 7, 3), PointWithIDs(1, 8, 3));

  VornFormCtrlTargetPntArray swapped = points;
  swapped.SwapBuildFormID(1, swapped[0].GetBuildFormID(), swapped[2].GetBuildFormID());
  EXPECT_THAT(FormIDs(swapped), ElementsAre(8, 8, 7));

  VornFormCtrlTarget target;
  target.GetTargetPntArray() = points;
  Vorn_FormCtrlTargetArray targets = Collection(target, target);
  const VornFormCtrlTargetPnt& first = targets[0].GetTargetPntArray()[0];
  targets.ChangeID(first.GetSectionID(), first.GetBuildFormID(), first.GetSerialID(), 4, 5, 6);
  targets.SwapBuildFormID(first.GetSectionID(), first.GetBuildFormID(), 9);
  for (const VornFormCtrlTarget& changed : targets) {
    EXPECT_THAT(IDs(changed.GetTargetPntArray()),
                ElementsAre(ElementsAre(4, 9, 6), ElementsAre(4, 9, 6), ElementsAre(1, 8, 3)));
  }
}

}  // namespace
