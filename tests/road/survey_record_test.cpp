#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tests/road/full_road_records.h"
#include "vorn/platform/code_page_932.h"

namespace road_test {

// --- coordinate reference systems ------------------------------------------------------------------------------------

VornCrsData FullCrs(int n) {
  VornCrsData crs;
  crs.SetName(Numbered("crs", n));
  crs.SetGeoDatum(static_cast<VornCrsData::GeoDatum>(100 + n));
  crs.SetVerticalDatum(Numbered("datum", n));
  crs.SetVerticalHeight(0.5 + n);
  crs.SetHorizonCoordinate(static_cast<VornCrsData::HorizonCoordinate>(200 + n));
  crs.SetAuxCode(-300 - n);
  crs.SetAuxText(Numbered("aux", n));
  return crs;
}

ExpectedBytes CrsBytes(int n) {
  return {
      {"name", Text(Numbered("crs", n).View())},
      {"datum", I32(100 + n)},
      {"vertical datum", Text(Numbered("datum", n).View())},
      {"vertical height", Real(0.5 + n)},
      {"coordinate", I32(200 + n)},
      {"aux code", I32(-300 - n)},
      {"aux text", Text(Numbered("aux", n).View())},
  };
}

void ExpectCrs(const VornCrsData& crs, int n) {
  EXPECT_EQ(crs.GetName(), Numbered("crs", n));
  EXPECT_EQ(static_cast<int>(crs.GetGeoDatum()), 100 + n);
  EXPECT_EQ(crs.VerticalDatum(), Numbered("datum", n));
  EXPECT_EQ(crs.GetVerticalHeight(), 0.5 + n);
  EXPECT_EQ(static_cast<int>(crs.GetHorizonCoordinate()), 200 + n);
  EXPECT_EQ(crs.GetAuxCode(), -300 - n);
  EXPECT_EQ(crs.GetAuxText(), Numbered("aux", n));
}

VornCrsArray FullCrsArray(int n) {
  VornCrsArray systems;
  systems.Add(FullCrs(n));
  systems.Add(FullCrs(n + 1));
  return systems;
}

ExpectedBytes CrsArrayBytes(int n) { return {{"count", I32(2)}, {"[0]", CrsBytes(n)}, {"[1]", CrsBytes(n + 1)}}; }

void ExpectCrsArray(const VornCrsArray& systems, int n) {
  ASSERT_EQ(systems.GetSize(), 2);
  ExpectCrs(systems[0], n);
  ExpectCrs(systems[1], n + 1);
}

namespace {

// --- points ----------------------------------------------------------------------------------------------------------

/// A control point or a bench mark.
template <typename Point>
Point FullPoint(int n) {
  Point point;
  point.SetNumber(static_cast<std::uint16_t>(60000 + n));
  if constexpr (std::is_same_v<Point, VornCtrlPoint>) {
    point.SetCtrlClass(static_cast<VornCtrlPoint::CtrlClass>(n));
  } else {
    point.SetBMClass(static_cast<VornBenchMark::BMClass>(n));
  }
  point.SetName(Numbered("point", n));
  return point;
}

ExpectedBytes PointBytes(int n) {
  return {
      {"number", U16(static_cast<std::uint16_t>(60000 + n))},
      {"class", I32(n)},
      {"name", Text(Numbered("point", n).View())},
  };
}

VornGmPnt FullGround(int n) {
  VornGmPnt point;
  point.SetNumber(static_cast<std::uint16_t>(50000 + n));
  point.SetName(Numbered("ground", n));
  return point;
}

ExpectedBytes GroundBytes(int n) {
  return {{"number", U16(static_cast<std::uint16_t>(50000 + n))}, {"name", Text(Numbered("ground", n).View())}};
}

VornGmPnts FullGroup(int n) {
  VornGmPnts group;
  group.SetName(Numbered("group", n));
  group.SetName2(Numbered("second", n));
  group.GetPoints().Add(FullGround(n));
  group.GetPoints().Add(FullGround(n + 10));
  return group;
}

ExpectedBytes GroupBytes(int n) {
  return {
      {"name", Text(Numbered("group", n).View())},
      {"name 2", Text(Numbered("second", n).View())},
      {"point count", I32(2)},
      {"points[0]", GroundBytes(n)},
      {"points[1]", GroundBytes(n + 10)},
  };
}

}  // namespace

VornGmPntsArray FullGroups(int n) {
  VornGmPntsArray groups;
  groups.Add(FullGroup(n));
  groups.Add(FullGroup(n + 1));
  return groups;
}

ExpectedBytes GroupsBytes(int n) { return {{"count", I32(2)}, {"[0]", GroupBytes(n)}, {"[1]", GroupBytes(n + 1)}}; }

void ExpectGroups(const VornGmPntsArray& groups, int n) {
  ASSERT_EQ(groups.GetSize(), 2);
  EXPECT_TRUE(groups[0].Compare(FullGroup(n)));
  EXPECT_TRUE(groups[1].Compare(FullGroup(n + 1)));
}

VornCtrlPoints FullCtrlPoints(int n) {
  VornCtrlPoints points;
  points.SetName(Numbered("site", n));
  points.GetCtrlPos().Add(FullPoint<VornCtrlPoint>(n));
  points.GetCtrlPos().Add(FullPoint<VornCtrlPoint>(n + 1));
  points.GetBenchMarks().Add(FullPoint<VornBenchMark>(n + 2));
  points.SetGmPnts(FullGroups(n));
  return points;
}

ExpectedBytes CtrlPointsBytes(int n, bool withGmPnts) {
  return {
      {"name", Text(Numbered("site", n).View())}, {"position count", I32(2)},   {"positions[0]", PointBytes(n)},
      {"positions[1]", PointBytes(n + 1)},        {"bench mark count", I32(1)}, {"bench marks[0]", PointBytes(n + 2)},
      {"groups", GroupsBytes(n), withGmPnts},
  };
}

void ExpectCtrlPoints(const VornCtrlPoints& points, int n, bool withGmPnts) {
  EXPECT_EQ(points.GetName(), Numbered("site", n));
  ASSERT_EQ(points.GetCtrlPos().GetSize(), 2);
  EXPECT_TRUE(points.GetCtrlPos()[0].Compare(FullPoint<VornCtrlPoint>(n)));
  EXPECT_TRUE(points.GetCtrlPos()[1].Compare(FullPoint<VornCtrlPoint>(n + 1)));
  ASSERT_EQ(points.GetBenchMarks().GetSize(), 1);
  EXPECT_TRUE(points.GetBenchMarks()[0].Compare(FullPoint<VornBenchMark>(n + 2)));
  if (withGmPnts) ExpectGroups(points.GetGmPnts(), n);
}

namespace {

// --- tests -----------------------------------------------------------------------------------------------------------

class SurveyArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(SurveyArchive);

TEST_P(SurveyArchive, WritesTheFieldsOfACoordinateSystem) {
  EXPECT_TRUE(HasBytes(StoredWith(FullCrs(3), GetParam()), CrsBytes(3)));
}

TEST_P(SurveyArchive, ReadsTheFieldsOfACoordinateSystem) {
  VornCrsData crs;
  ReadWith(crs, CrsBytes(3).All(), GetParam());
  ExpectCrs(crs, 3);
}

TEST_P(SurveyArchive, WritesAndReadsPoints) {
  EXPECT_TRUE(HasBytes(StoredWith(FullPoint<VornCtrlPoint>(3), GetParam()), PointBytes(3)));
  EXPECT_TRUE(HasBytes(StoredWith(FullPoint<VornBenchMark>(4), GetParam()), PointBytes(4)));
  EXPECT_TRUE(HasBytes(StoredWith(FullGround(5), GetParam()), GroundBytes(5)));
  VornCtrlPoint position;
  ReadWith(position, PointBytes(3).All(), GetParam());
  EXPECT_TRUE(position.Compare(FullPoint<VornCtrlPoint>(3)));
  VornBenchMark benchMark;
  ReadWith(benchMark, PointBytes(4).All(), GetParam());
  EXPECT_TRUE(benchMark.Compare(FullPoint<VornBenchMark>(4)));
  VornGmPnt ground;
  ReadWith(ground, GroundBytes(5).All(), GetParam());
  EXPECT_TRUE(ground.Compare(FullGround(5)));
}

TEST_P(SurveyArchive, WritesAndReadsArraysBehindTheirCounts) {
  EXPECT_TRUE(HasBytes(StoredWith(FullCrsArray(1), GetParam()), CrsArrayBytes(1)));
  EXPECT_TRUE(HasBytes(StoredWith(FullGroups(1), GetParam()), GroupsBytes(1)));
  VornCrsArray systems;
  ReadWith(systems, CrsArrayBytes(1).All(), GetParam());
  ExpectCrsArray(systems, 1);
  VornGmPntsArray groups;
  ReadWith(groups, GroupsBytes(1).All(), GetParam());
  ExpectGroups(groups, 1);
}

TEST_P(SurveyArchive, WritesTheControlPointsWithOrWithoutGroundPoints) {
  for (const bool withGmPnts : {false, true}) {
    EXPECT_TRUE(HasBytes(StoredWith(FullCtrlPoints(2), GetParam(), withGmPnts), CtrlPointsBytes(2, withGmPnts)));
  }
}

TEST_P(SurveyArchive, ReadsTheControlPointsWithOrWithoutGroundPoints) {
  for (const bool withGmPnts : {false, true}) {
    VornCtrlPoints points;
    ReadWith(points, CtrlPointsBytes(2, withGmPnts).All(), GetParam(), withGmPnts);
    ExpectCtrlPoints(points, 2, withGmPnts);
  }
}

TEST_P(SurveyArchive, KeepsTheOneEmptyGroupWhenGroundPointsAreNotPartOfIt) {
  VornCtrlPoints points;
  ReadWith(points, StoredWith(FullCtrlPoints(2), GetParam(), false), GetParam(), false);
  ASSERT_EQ(points.GetGmPnts().GetSize(), 1);
  EXPECT_TRUE(points.GetGmPnts()[0].Compare(VornGmPnts()));
}

TEST_P(SurveyArchive, ReplacesWhatWasThere) {
  VornCtrlPoints points = FullCtrlPoints(9);
  points.GetBenchMarks().SetSize(7);
  ReadWith(points, CtrlPointsBytes(2, true).All(), GetParam(), true);
  ExpectCtrlPoints(points, 2, true);
  ReadWith(points, StoredWith(VornCtrlPoints(), GetParam(), true), GetParam(), true);
  EXPECT_TRUE(points.GetCtrlPos().IsEmpty());
  EXPECT_TRUE(points.GetBenchMarks().IsEmpty());
  EXPECT_EQ(points.GetGmPnts().GetSize(), 1);
}

TEST(SurveyArchive, NeedsNoStoreVersion) {
  EXPECT_TRUE(
      HasBytes(StoredWith(FullCtrlPoints(2), static_cast<const char*>(nullptr), true), CtrlPointsBytes(2, true)));
}

TEST(SurveyArchive, TakesACountBelowOneForNoElements) {
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    VornCrsArray systems = FullCrsArray(1);
    ReadWith(systems, I32(count).bytes, "05.00");
    EXPECT_TRUE(systems.IsEmpty()) << count;
    VornGmPntArray points;
    points.SetSize(3);
    ReadWith(points, I32(count).bytes, "05.00");
    EXPECT_TRUE(points.IsEmpty()) << count;
  }
}

TEST(SurveyArchive, ReadsTheShortestRecordsThatThereAre) {
  using test_support::operator+;
  Bytes bytes = I32(100).bytes;
  for (int i = 0; i < 100; ++i) bytes = std::move(bytes) + U16(7).bytes + Text("").bytes;
  VornGmPntArray points;
  ReadWith(points, bytes, "05.00");
  EXPECT_EQ(points.GetSize(), 100);
}

TEST(SurveyArchive, DoesNotBelieveACountThatItsBytesCannotBack) {
  using test_support::operator+;
  for (const std::int32_t count : {2, 0x10000, std::numeric_limits<std::int32_t>::max()}) {
    VornGmPntArray points;
    points.SetSize(5);
    LoadingArchive ar(I32(count).bytes + U16(7).bytes + Text("").bytes);
    EXPECT_EQ(ArchiveRefusal([&] { points.Serialize(*ar, "05.00"); }), CArchiveException::endOfFile);
    EXPECT_EQ(points.GetSize(), 5) << "nothing is touched before the count is believed";
  }
}

TEST(SurveyArchive, KeepsTextInItsCodePage) {
  VornCrsData crs;
  crs.SetName(u8"平面"_cp932);
  VornCrsData loaded;
  ReadWith(loaded, StoredWith(crs, "05.00"), "05.00");
  EXPECT_EQ(loaded.GetName(), u8"平面"_cp932);
}

TEST(SurveyArchive, EndsTooEarlyWhereverItIsTruncated) {
  EXPECT_EQ(test_support::TruncationOverlooked(CtrlPointsBytes(2, true).All(),
                                               [](CArchive& ar) { VornCtrlPoints().Serialize(ar, "05.00", true); }),
            -1);
  EXPECT_EQ(test_support::TruncationOverlooked(CrsArrayBytes(2).All(),
                                               [](CArchive& ar) { VornCrsArray().Serialize(ar, "05.00"); }),
            -1);
}

}  // namespace
}  // namespace road_test
