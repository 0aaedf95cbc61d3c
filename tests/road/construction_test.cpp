#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tests/support/settings.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/road/linear_xml_data.h"

namespace {

static_assert(std::has_virtual_destructor_v<VornInfoConstrcut> && std::has_virtual_destructor_v<VornRoadCenterData>);
static_assert(std::has_virtual_destructor_v<VornLinearXMLData> &&
              std::is_nothrow_move_constructible_v<VornLinearXMLData>);

/// Fills what both sets have, and more of their road geometry.
template <typename Set>
Set Filled(const char* name, int n) {
  Set set;
  set.GetCrsArray().SetSize(n);
  set.GetCrsArray()[0].SetName(name);
  VornRoadGmData& road = set.GetRoadGm();
  road.GetRoadInfo().SetName(name);
  road.GetRoadInfo().SetClassificat(static_cast<VornRoadInfo::Classificat>(n));
  road.GetRoadInfo().SetDesignSpeed(static_cast<VornRoadInfo::DesignSpeed>(n + 1));
  road.GetRoadInfo().SetTraffic(n + 2);
  road.GetRoadInfo().SetClassRiver(static_cast<VornRoadInfo::ClassRiver>(n));
  road.GetRoadInfo().SetText1(name);
  road.GetRoadInfo().SetText2(name);
  road.GetRoadInfo().Side(n);
  road.GetRoadInfo().SingleLane(n > 3);
  road.GetAlignments().SetSize(n);
  road.GetAlignments()[0].SetName(name);
  road.GetAlignments()[0].SetMemo1(name);
  road.GetAlignments().SetCurrent(n);
  road.SetOption(n);
  road.SetOption2(n);
  road.SetText(name);
  road.GetFileInfos().SetSize(n);
  road.GetFileInfos()[0].SetNote(name);
  road.GetStructureType().SetType(name);
  road.GetStructureType().SetJobName(name);
  road.SetSchemaVersion(VornSchema::Version40);
  return set;
}

/// The common data are those of `Filled` with another name and number; all else is as it was.
template <typename Set>
void ExpectCommonData(const Set& set, const char* name, int n, const char* oldName, int oldN) {
  ASSERT_EQ(set.GetCrsArray().GetSize(), n);
  EXPECT_EQ(set.GetCrsArray()[0].GetName(), name);
  const VornRoadGmData& road = set.GetRoadGm();
  EXPECT_EQ(road.GetRoadInfo().GetName(), name);
  EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetClassificat()), n);
  EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetSpeed()), n + 1);
  EXPECT_EQ(road.GetRoadInfo().GetTraffic(), n + 2);
  ASSERT_EQ(road.GetAlignments().GetSize(), n);
  EXPECT_EQ(road.GetAlignments()[0].GetName(), name);
  EXPECT_EQ(road.GetAlignments()[0].GetMemo1(), name);
  EXPECT_EQ(road.GetAlignments().GetCurrent(), n);
  EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetClassRiver()), oldN);
  EXPECT_EQ(road.GetRoadInfo().GetText1(), oldName);
  EXPECT_EQ(road.GetRoadInfo().GetText2(), oldName);
  EXPECT_EQ(road.GetRoadInfo().Side(), oldN);
  EXPECT_EQ(road.GetRoadInfo().SingleLane(), oldN > 3);
  EXPECT_EQ(road.GetOption(), oldN);
  EXPECT_EQ(road.GetOption2(), oldN);
  EXPECT_EQ(road.GetText(), oldName);
  ASSERT_EQ(road.GetFileInfos().GetSize(), oldN);
  EXPECT_EQ(road.GetFileInfos()[0].GetNote(), oldName);
  EXPECT_EQ(road.GetStructureType().GetTypeStr(), oldName);
  EXPECT_EQ(road.GetStructureType().GetJobName(), oldName);
}

// --- construction information ----------------------------------------------------------------------------------------

TEST(InfoConstrcut, StartsInItsOwnVersion) {
  const VornInfoConstrcut info;
  EXPECT_EQ(info.GetStoreVersion(), "05.00");
  EXPECT_EQ(info.GetLibVersion(), "05.00");
  EXPECT_TRUE(info.GetCrsArray().IsEmpty());
  EXPECT_EQ(info.GetCtrlPoints().GetGmPnts().GetSize(), 1);
  EXPECT_TRUE(info.GetRoadGm().GetRoadInfo().IsInit());
  EXPECT_TRUE(info.GetFormCtrl().CompareFormCtrl(VornFormCtrl()));
}

TEST(InfoConstrcut, TakesTheVersionToWriteAsItIs) {
  VornInfoConstrcut info;
  info.SetStoreVersion("any");
  EXPECT_EQ(info.GetLibVersion(), "any");
  EXPECT_EQ(info.GetStoreVersion(), "05.00");
}

TEST(InfoConstrcut, CopiesAllItsMembers) {
  auto info = Filled<VornInfoConstrcut>("a", 3);
  info.SetStoreVersion("06.00");
  info.GetCtrlPoints().SetName("site");
  info.GetFormCtrl().SetValue(1.0);
  VornInfoConstrcut copy;
  copy = info;
  const VornInfoConstrcut moved = std::move(copy);
  EXPECT_EQ(moved.GetLibVersion(), "06.00");
  EXPECT_EQ(moved.GetCtrlPoints().GetName(), "site");
  EXPECT_EQ(moved.GetFormCtrl().GetValue(), 1.0);
  ExpectCommonData(moved, "a", 3, "a", 3);
}

TEST(InfoConstrcut, TakesWholeParts) {
  const auto source = Filled<VornInfoConstrcut>("a", 3);
  VornInfoConstrcut info;
  info.SetCrsArray(source.GetCrsArray());
  info.SetRoadGm(source.GetRoadGm());
  VornCtrlPoints points;
  points.SetName("site");
  info.SetCtrlPoints(points);
  VornFormCtrl formCtrl;
  formCtrl.SetValue(2.0);
  info.SetFormCtrl(formCtrl);
  ExpectCommonData(info, "a", 3, "a", 3);
  EXPECT_EQ(info.GetCtrlPoints().GetName(), "site");
  EXPECT_EQ(info.GetFormCtrl().GetValue(), 2.0);
}

TEST(InfoConstrcut, TakesTheCommonDataOfTheRoadCentreAndNothingElse) {
  auto info = Filled<VornInfoConstrcut>("mine", 2);
  info.GetCtrlPoints().SetName("site");
  info.GetFormCtrl().SetValue(1.0);
  info.GetRoadGm().SetSchemaVersion(VornSchema::Version41);
  info.SetCommonData(Filled<VornRoadCenterData>("other", 4));
  ExpectCommonData(info, "other", 4, "mine", 2);
  EXPECT_EQ(info.GetRoadGm().GetSchemaVersion(), VornSchema::Version41);
  EXPECT_EQ(info.GetCtrlPoints().GetName(), "site");
  EXPECT_EQ(info.GetFormCtrl().GetValue(), 1.0);
}

TEST(InfoConstrcut, LosesItsCommonDataToAnEmptyRoadCentre) {
  auto info = Filled<VornInfoConstrcut>("mine", 2);
  info.SetCommonData(VornRoadCenterData());
  EXPECT_TRUE(info.GetCrsArray().IsEmpty());
  EXPECT_TRUE(info.GetRoadGm().GetAlignments().IsEmpty());
  EXPECT_EQ(info.GetRoadGm().GetAlignments().GetCurrent(), -1);
  EXPECT_TRUE(info.GetRoadGm().GetRoadInfo().IsInit());
}

// --- road centre -----------------------------------------------------------------------------------------------------

TEST(RoadCenterData, StartsInItsOwnVersionWithoutGroundPoints) {
  const VornRoadCenterData center;
  EXPECT_EQ(center.GetStoreVersion(), "05.00");
  EXPECT_EQ(center.GetLibVersion(), "05.00");
  EXPECT_EQ(center.GetProject().GetName(), "");
  EXPECT_TRUE(center.GetCrsArray().IsEmpty());
  EXPECT_TRUE(center.GetGmPnts().IsEmpty());
  EXPECT_TRUE(center.GetRoadGm().GetRoadInfo().IsInit());
}

TEST(RoadCenterData, CopiesAllItsMembers) {
  auto center = Filled<VornRoadCenterData>("a", 3);
  center.SetStoreVersion("06.00");
  VornProjectData project;
  project.SetName("project");
  center.SetProject(project);
  VornGmPntsArray groups;
  groups.SetSize(2);
  center.SetGmPnts(groups);
  VornRoadCenterData copy;
  copy = center;
  const VornRoadCenterData moved = std::move(copy);
  EXPECT_EQ(moved.GetLibVersion(), "06.00");
  EXPECT_EQ(moved.GetProject().GetName(), "project");
  EXPECT_EQ(moved.GetGmPnts().GetSize(), 2);
  ExpectCommonData(moved, "a", 3, "a", 3);
}

TEST(RoadCenterData, TakesTheCommonDataOfTheConstructionInformationAndNothingElse) {
  auto center = Filled<VornRoadCenterData>("mine", 2);
  center.GetProject().SetName("project");
  center.GetGmPnts().SetSize(5);
  center.GetRoadGm().SetSchemaVersion(VornSchema::Version20);
  center.SetCommonData(Filled<VornInfoConstrcut>("other", 4));
  ExpectCommonData(center, "other", 4, "mine", 2);
  EXPECT_EQ(center.GetRoadGm().GetSchemaVersion(), VornSchema::Version20);
  EXPECT_EQ(center.GetProject().GetName(), "project");
  EXPECT_EQ(center.GetGmPnts().GetSize(), 5);
}

// --- all together ----------------------------------------------------------------------------------------------------

TEST(LinearXmlData, IsToBeSavedOnceMarkedUntilItIsAssigned) {
  VornLinearXMLData data;
  EXPECT_FALSE(data.IsSave());
  data.SetSave();
  data.SetSave();
  EXPECT_TRUE(data.IsSave());
  const VornLinearXMLData copy = data;
  EXPECT_TRUE(copy.IsSave());
  data = VornLinearXMLData();
  EXPECT_FALSE(data.IsSave());
}

TEST(LinearXmlData, CopiesAllItsMembers) {
  VornLinearXMLData data;
  data.SetInfoConstrcut(Filled<VornInfoConstrcut>("a", 1));
  data.SetRoadCenter(Filled<VornRoadCenterData>("b", 2));
  VornLandXMLData landXml;
  landXml.SetValue(3.0);
  data.SetLandXml(landXml);
  VornLinearXMLData copy;
  copy = data;
  const VornLinearXMLData moved = std::move(copy);
  ExpectCommonData(moved.GetInfoConstrcut(), "a", 1, "a", 1);
  ExpectCommonData(moved.GetRoadCenter(), "b", 2, "b", 2);
  EXPECT_EQ(moved.GetLandXml().GetValue(), 3.0);
}

// --- settings --------------------------------------------------------------------------------------------------------

class ConstructionSettings : public test_support::SettingsTest, public testing::WithParamInterface<bool> {
 protected:
  ConstructionSettings() { VornDefineManager::GetInstance().SetTSFlag(GetParam()); }

  static CString FormCtrlPath() {
    const CString root = GetParam() ? u8"情報化施工_TS"_cp932 : u8"情報化施工"_cp932;
    return PathOf(root.View()) + CString("\\FormCtrl");
  }
};
INSTANTIATE_TEST_SUITE_P(Editions, ConstructionSettings, testing::Bool(),
                         [](const auto& info) { return info.param ? "TotalStation" : "Ordinary"; });

TEST_P(ConstructionSettings, AreLoadedFromTheEditionsRoot) {
  ASSERT_TRUE(m_store->CreateKey(FormCtrlPath().View()));
  m_store->WriteString(FormCtrlPath().View(), "basec", "centre");
  VornInfoConstrcut info;
  info.LoadRegistry();
  EXPECT_EQ(info.GetFormCtrl().GetNames()[0], "centre");
  EXPECT_EQ(info.GetFormCtrl().GetNames()[1], u8"道路端左"_cp932);
  VornLinearXMLData data;
  data.LoadRegistry();
  EXPECT_EQ(data.GetInfoConstrcut().GetFormCtrl().GetNames()[0], "centre");
  EXPECT_FALSE(data.IsSave());
}

TEST_P(ConstructionSettings, AreThoseThatTheFormControlStored) {
  WexKey root;
  ASSERT_TRUE(VornGetBaseRegKey(&root));
  VornFormCtrl formCtrl;
  formCtrl.GetNames()[9] = "other";
  formCtrl.StoreRegistry(&root);
  VornInfoConstrcut info;
  info.LoadRegistry();
  EXPECT_EQ(info.GetFormCtrl().GetNames()[9], "other");
  VornDefineManager::GetInstance().SetTSFlag(!GetParam());
  info = VornInfoConstrcut();
  info.LoadRegistry();
  EXPECT_TRUE(info.GetFormCtrl().CompareFormCtrl(VornFormCtrl())) << "the other edition has none";
}

TEST_P(ConstructionSettings, ChangeNothingWhenTheyCannotBeOpened) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>(), "App");
  VornInfoConstrcut info;
  info.GetFormCtrl().GetNames()[0] = "kept";
  info.LoadRegistry();
  EXPECT_EQ(info.GetFormCtrl().GetNames()[0], "kept");
}

}  // namespace
