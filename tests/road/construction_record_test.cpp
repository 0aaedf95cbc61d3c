#include <gtest/gtest.h>

#include <string>

#include "tests/road/full_road_records.h"

namespace road_test {

VornInfoConstrcut FullInfo() {
  VornInfoConstrcut info;
  info.SetCrsArray(FullCrsArray(1));
  info.SetCtrlPoints(FullCtrlPoints(2));
  info.SetRoadGm(FullRoad());
  info.SetFormCtrl(FullFormCtrl());
  return info;
}

ExpectedBytes InfoBytes(const Layout& at) {
  return {
      {"systems", CrsArrayBytes(1)},
      {"points", CtrlPointsBytes(2, false)},
      {"road", RoadBytes(at, kFormControl)},
      {"form control", FormCtrlBytes(at)},
  };
}

void ExpectInfo(const VornInfoConstrcut& info, const Layout& at) {
  ExpectCrsArray(info.GetCrsArray(), 1);
  ExpectCtrlPoints(info.GetCtrlPoints(), 2, false);
  EXPECT_EQ(info.GetCtrlPoints().GetGmPnts().GetSize(), 1) << "the one of a new object";
  ExpectRoad(info.GetRoadGm(), at, kFormControl);
  ExpectFormCtrl(info.GetFormCtrl(), at);
}

VornRoadCenterData FullCenter() {
  VornRoadCenterData center;
  center.SetProject(FullProject());
  center.SetCrsArray(FullCrsArray(5));
  center.SetGmPnts(FullGroups(6));
  center.SetRoadGm(FullRoad());
  return center;
}

ExpectedBytes CenterBytes(const Layout& at) {
  return {
      {"version", Text(at.version)},          {"project", ProjectBytes()},
      {"systems", CrsArrayBytes(5)},          {"groups", GroupsBytes(6)},
      {"road", RoadBytes(at, kRoadGeometry)},
  };
}

void ExpectCenter(const VornRoadCenterData& center, const Layout& at) {
  EXPECT_EQ(center.GetStoreVersion(), at.version);
  ExpectProject(center.GetProject());
  ExpectCrsArray(center.GetCrsArray(), 5);
  ExpectGroups(center.GetGmPnts(), 6);
  ExpectRoad(center.GetRoadGm(), at, kRoadGeometry);
}

VornLinearXMLData FullData() {
  VornLinearXMLData data;
  data.SetSave();
  data.SetInfoConstrcut(FullInfo());
  data.SetRoadCenter(FullCenter());
  data.SetLandXml(FullLandXml());
  return data;
}

namespace {

ExpectedBytes VersionedInfoBytes(const Layout& at) { return {{"version", Text(at.version)}, {"info", InfoBytes(at)}}; }

}  // namespace

ExpectedBytes DataBytes(const Layout& info, const Layout& center, std::string_view landXml) {
  return {
      {"info", VersionedInfoBytes(info)},
      {"center", CenterBytes(center)},
      {"land xml", LandXmlBytes(landXml)},
  };
}

void ExpectData(const VornLinearXMLData& data, const Layout& info, const Layout& center, std::string_view landXml) {
  EXPECT_EQ(data.GetInfoConstrcut().GetStoreVersion(), info.version);
  ExpectInfo(data.GetInfoConstrcut(), info);
  ExpectCenter(data.GetRoadCenter(), center);
  ExpectLandXml(data.GetLandXml(), landXml);
  EXPECT_FALSE(data.IsSave());
}

namespace {

class ConstructionArchive : public InStoreVersion {};
IN_EVERY_ROAD_VERSION(ConstructionArchive);

// --- construction information ----------------------------------------------------------------------------------------

TEST_P(ConstructionArchive, WritesTheInformationWithoutAVersionAsGiven) {
  VornInfoConstrcut info = FullInfo();
  EXPECT_TRUE(HasBytes(StoredWith(info, GetParam()), InfoBytes(Written())));
  EXPECT_EQ(info.GetStoreVersion(), "05.00") << "the given version is not kept";
}

TEST_P(ConstructionArchive, ReadsTheInformationWithoutAVersionAsGiven) {
  VornInfoConstrcut info;
  ReadWith(info, InfoBytes(Read()).All(), GetParam());
  ExpectInfo(info, Read());
  EXPECT_EQ(info.GetStoreVersion(), "05.00");
}

TEST_P(ConstructionArchive, WritesTheInformationInTheLibrarysVersion) {
  VornInfoConstrcut info = FullInfo();
  info.SetStoreVersion(GetParam());
  EXPECT_TRUE(HasBytes(StoredWith(info), VersionedInfoBytes(Written())));
  EXPECT_EQ(info.GetStoreVersion(), GetParam());
}

TEST_P(ConstructionArchive, ReadsTheInformationInAnyVersionUpToTheLibrarys) {
  VornInfoConstrcut info;
  info.SetStoreVersion("06.50");
  ReadWith(info, VersionedInfoBytes(Read()).All());
  ExpectInfo(info, Read());
  EXPECT_EQ(info.GetStoreVersion(), GetParam());
  EXPECT_EQ(info.GetLibVersion(), "06.50");
}

TEST_P(ConstructionArchive, RefusesTheInformationOfANewerLibrary) {
  VornInfoConstrcut info;
  const Bytes bytes = VersionedInfoBytes(Read()).All();
  if (Tag().Compare("05.00") <= 0) {
    ReadWith(info, bytes);
    ExpectInfo(info, Read());
    return;
  }
  EXPECT_TRUE(IsRefusedAsNewer(info, bytes));
  EXPECT_EQ(info.GetStoreVersion(), GetParam());
  EXPECT_TRUE(info.GetCrsArray().IsEmpty());
}

TEST(ConstructionArchive, RefusesVersion0550AndReads0400) {
  VornInfoConstrcut info;
  EXPECT_TRUE(IsRefusedAsNewer(info, VersionedInfoBytes({"05.50"}).All()));
  ReadWith(info, VersionedInfoBytes({"04.00"}).All());
  ExpectInfo(info, {"04.00"});
}

TEST(ConstructionArchive, ComparesItsVersionsAsTexts) {
  for (const char* version : {"05.001", "05.01", "5", "6.0", "A"}) {
    VornInfoConstrcut info;
    EXPECT_TRUE(IsRefusedAsNewer(info, Text(version).bytes)) << version;
    VornRoadCenterData center;
    EXPECT_TRUE(IsRefusedAsNewer(center, Text(version).bytes, "05.00")) << version;
  }
}

TEST(ConstructionArchive, WritesTheLibrarysVersionAfterAnOlderOneWasRead) {
  VornInfoConstrcut info;
  ReadWith(info, VersionedInfoBytes({"04.00"}).All());
  EXPECT_EQ(info.GetStoreVersion(), "04.00");
  static_cast<void>(StoredWith(info));
  EXPECT_EQ(info.GetStoreVersion(), "05.00");
}

TEST(ConstructionArchive, LeavesTheGroupsOfGroundPointsToTheRoadCentre) {
  VornInfoConstrcut info;
  info.GetCtrlPoints().SetGmPnts(FullGroups(7));
  ReadWith(info, VersionedInfoBytes({"05.00"}).All());
  ExpectGroups(info.GetCtrlPoints().GetGmPnts(), 7);
}

// --- road centre -----------------------------------------------------------------------------------------------------

TEST_P(ConstructionArchive, WritesTheRoadCentreInTheLibrarysVersionWhateverIsGiven) {
  for (const char* tag : {"01.00", "05.00", "99.99", ""}) {
    VornRoadCenterData center = FullCenter();
    center.SetStoreVersion(GetParam());
    EXPECT_TRUE(HasBytes(StoredWith(center, tag), CenterBytes(Written())));
    EXPECT_EQ(center.GetStoreVersion(), GetParam());
  }
}

TEST_P(ConstructionArchive, ReadsTheRoadCentreInItsOwnVersionWhateverIsGiven) {
  for (const char* tag : {"01.00", "05.00", "99.99", ""}) {
    VornRoadCenterData center;
    center.SetStoreVersion("06.50");
    ReadWith(center, CenterBytes(Read()).All(), tag);
    ExpectCenter(center, Read());
  }
}

TEST_P(ConstructionArchive, RefusesTheRoadCentreOfANewerLibrary) {
  VornRoadCenterData center;
  const Bytes bytes = CenterBytes(Read()).All();
  if (Tag().Compare("05.00") <= 0) {
    ReadWith(center, bytes, "99.99");
    ExpectCenter(center, Read());
    return;
  }
  EXPECT_TRUE(IsRefusedAsNewer(center, bytes, "99.99"));
  EXPECT_EQ(center.GetStoreVersion(), GetParam());
  EXPECT_EQ(center.GetProject().GetName(), "");
}

// --- all together ----------------------------------------------------------------------------------------------------

TEST_P(ConstructionArchive, WritesAllPartsInTheirOwnVersions) {
  const Layout newest{"05.00", Way::Written};
  EXPECT_TRUE(HasBytes(StoredWith(FullData(), GetParam()), DataBytes(newest, newest, "01.11")));
  const Layout given = Written();
  VornLinearXMLData data = FullData();
  data.GetInfoConstrcut().SetStoreVersion(GetParam());
  data.GetRoadCenter().SetStoreVersion(GetParam());
  EXPECT_TRUE(HasBytes(StoredWith(data, "05.00"), DataBytes(given, given, "01.11")));
}

TEST_P(ConstructionArchive, ReadsAllPartsInTheirOwnVersions) {
  VornLinearXMLData data;
  data.GetInfoConstrcut().SetStoreVersion("06.50");
  ReadWith(data, DataBytes(Read(), {"05.00"}, "01.10").All(), GetParam());
  ExpectData(data, Read(), {"05.00"}, "01.10");
}

TEST(ConstructionArchive, DoesNotArchiveTheMarkToSave) {
  VornLinearXMLData marked;
  marked.SetSave();
  EXPECT_EQ(StoredWith(marked, "05.00"), StoredWith(VornLinearXMLData(), "05.00"));
  ReadWith(marked, StoredWith(VornLinearXMLData(), "05.00"), "05.00");
  EXPECT_TRUE(marked.IsSave());
}

TEST(ConstructionArchive, ComesBackFromItsOwnBytes) {
  VornLinearXMLData data = FullData();
  const Bytes bytes = StoredWith(data, "05.00");
  VornLinearXMLData loaded;
  ReadWith(loaded, bytes, "05.00");
  EXPECT_EQ(StoredWith(loaded, "05.00"), bytes);
}

TEST(ConstructionArchive, RefusesAllTogetherWhenAnyPartIsNewer) {
  VornLinearXMLData data;
  EXPECT_TRUE(IsRefusedAsNewer(data, DataBytes({"05.50"}, {"05.00"}, "01.11").All(), "05.00"));
  data = VornLinearXMLData();
  EXPECT_TRUE(IsRefusedAsNewer(data, DataBytes({"05.00"}, {"05.50"}, "01.11").All(), "05.00"));
  ExpectInfo(data.GetInfoConstrcut(), {"05.00"});
  data = VornLinearXMLData();
  EXPECT_TRUE(IsRefusedAsNewer(data, DataBytes({"05.00"}, {"05.00"}, "01.12").All(), "05.00"));
  ExpectCenter(data.GetRoadCenter(), {"05.00"});
}

}  // namespace
}  // namespace road_test
