#include <gtest/gtest.h>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"
#include "tests/allocation_failure/setters.h"
#include "tests/support/settings.h"

// What road and survey data keep when memory runs out while they are assigned, joined and taken from settings.

namespace {

using allocation_test::ExpectNoAllocation;
using allocation_test::ExpectOldOrNew;
using allocation_test::ExpectTaken;
using allocation_test::FailEachAllocation;
using allocation_test::FullSet;
using allocation_test::kLayer;
using allocation_test::kNewName;
using allocation_test::kSurface;
using allocation_test::StateOf;

VornRoadGmData FullRoad(const char* name) {
  VornRoadGmData road;
  road.GetRoadInfo().SetName(name);
  road.GetRoadInfo().SetText1(name);
  road.SetText(name);
  road.GetStructureType().SetJobName(name);
  VornAlignment alignment;
  alignment.SetName(name);
  alignment.SetMemo2(name);
  alignment.GetXSections().SetRefAlign(name);
  alignment.GetXSections().GetXSectionArray().Add(model_test::SectionAt(20.0));
  road.GetAlignments().Add(alignment);
  return road;
}

VornCrsArray FullSystems(const char* name) {
  VornCrsData system;
  system.SetName(name);
  system.SetAuxText(name);
  system.SetAuxCode(5);
  VornCrsArray systems;
  systems.Add(system);
  systems.Add(system);
  return systems;
}

VornGmPntArray GroundPoints(int count) {
  VornGmPntArray points;
  points.SetSize(count);
  for (int i = 0; i < count; ++i) {
    points[i].SetNumber(static_cast<std::uint16_t>(i));
    points[i].SetName(kSurface);
  }
  return points;
}

VornLinearXMLData FullData(const char* name) {
  VornLinearXMLData data;
  VornInfoConstrcut& info = data.GetInfoConstrcut();
  info.SetCrsArray(FullSystems(name));
  info.SetRoadGm(FullRoad(name));
  VornCtrlPoints& points = info.GetCtrlPoints();
  points.SetName(name);
  points.GetCtrlPos().SetSize(2);
  points.GetCtrlPos()[1].SetName(name);
  points.GetCtrlPos()[1].SetNumber(1);
  points.GetBenchMarks().SetSize(1);
  points.GetBenchMarks()[0].SetName(name);
  points.GetGmPnts()[0].SetName(name);
  points.GetGmPnts()[0].SetName2(name);
  points.GetGmPnts()[0].SetPoints(GroundPoints(2));
  VornRoadCenterData& center = data.GetRoadCenter();
  center.SetCrsArray(FullSystems(name));
  center.GetProject().SetName(name);
  center.GetProject().SetText(name);
  center.GetProject().GetCreators().SetSize(1);
  center.GetProject().GetCreators()[0].SetName(name);
  center.GetProject().GetCreators()[0].SetText(name);
  center.SetRoadGm(FullRoad(name));
  data.GetLandXml().GetProject().SetName(name);
  data.GetLandXml().GetProject().SetDesc(name);
  data.GetLandXml().GetAlignments().SetSize(1);
  data.GetLandXml().GetAlignments()[0].SetName(name);
  data.GetLandXml().GetAlignments()[0].SetText(name);
  data.GetLandXml().GetTexts().AddTail(CString(name));
  return data;
}

template <typename Object>
void ExpectAssignedWholly(const Object& object, const Object& other) {
  ExpectOldOrNew(object, [&](Object& changing) { changing = other; });
  ExpectOldOrNew(Object(), [&](Object& changing) { changing = other; });
}

TEST(RoadDataWithoutMemory, AreAssignedOrNot) {
  const VornLinearXMLData data = FullData(kSurface);
  const VornLinearXMLData other = FullData(kNewName);
  ExpectAssignedWholly(data, other);
  const VornInfoConstrcut& info = data.GetInfoConstrcut();
  const VornInfoConstrcut& otherInfo = other.GetInfoConstrcut();
  ExpectAssignedWholly(info, otherInfo);
  ExpectAssignedWholly(info.GetCrsArray()[0], otherInfo.GetCrsArray()[0]);
  ExpectAssignedWholly(info.GetCtrlPoints(), otherInfo.GetCtrlPoints());
  ExpectAssignedWholly(info.GetCtrlPoints().GetCtrlPos()[1], otherInfo.GetCtrlPoints().GetCtrlPos()[1]);
  ExpectAssignedWholly(info.GetCtrlPoints().GetGmPnts()[0], otherInfo.GetCtrlPoints().GetGmPnts()[0]);
  ExpectAssignedWholly(info.GetRoadGm(), otherInfo.GetRoadGm());
  ExpectAssignedWholly(info.GetRoadGm().GetRoadInfo(), otherInfo.GetRoadGm().GetRoadInfo());
  ExpectAssignedWholly(info.GetRoadGm().GetAlignments()[0], otherInfo.GetRoadGm().GetAlignments()[0]);
  ExpectAssignedWholly(data.GetRoadCenter(), other.GetRoadCenter());
  ExpectAssignedWholly(data.GetRoadCenter().GetProject(), other.GetRoadCenter().GetProject());
  ExpectAssignedWholly(data.GetLandXml(), other.GetLandXml());
  ExpectAssignedWholly(data.GetLandXml().GetProject(), other.GetLandXml().GetProject());
  ExpectAssignedWholly(data.GetLandXml().GetAlignments()[0], other.GetLandXml().GetAlignments()[0]);
}

TEST(RoadDataWithoutMemory, TakeCommonDataOrNot) {
  const VornLinearXMLData data = FullData(kSurface);
  const VornLinearXMLData other = FullData(kNewName);
  ExpectOldOrNew(data.GetInfoConstrcut(),
                 [&](VornInfoConstrcut& changing) { changing.SetCommonData(other.GetRoadCenter()); });
  ExpectOldOrNew(data.GetRoadCenter(),
                 [&](VornRoadCenterData& changing) { changing.SetCommonData(other.GetInfoConstrcut()); });
}

TEST(SurveyPointsWithoutMemory, AreComposedOrNot) {
  ExpectOldOrNew(GroundPoints(2), [](VornGmPntArray& points) { points.Composition(GroundPoints(5)); });
}

TEST(RoadDataWithoutMemory, TakeTextsOrNot) {
  const CString text(kNewName);
  const VornLinearXMLData data = FullData(kSurface);
  ExpectTaken(VornRoadInfo(), text, &VornRoadInfo::SetName, &VornRoadInfo::SetText1, &VornRoadInfo::SetText2);
  ExpectTaken(VornRoadGmData(), text, &VornRoadGmData::SetText);
  ExpectTaken(VornAlignment(), text, &VornAlignment::SetName, &VornAlignment::SetCrsName, &VornAlignment::SetAuxText,
              &VornAlignment::SetMemo1, &VornAlignment::SetMemo2, &VornAlignment::SetMemo3);
  ExpectTaken(VornCrsData(), text, &VornCrsData::SetName, &VornCrsData::SetVerticalDatum, &VornCrsData::SetAuxText);
  ExpectTaken(VornCtrlPoint(), text, &VornCtrlPoint::SetName);
  ExpectTaken(VornBenchMark(), text, &VornBenchMark::SetName);
  ExpectTaken(VornGmPnt(), text, &VornGmPnt::SetName);
  ExpectTaken(VornGmPnts(), text, &VornGmPnts::SetName, &VornGmPnts::SetName2);
  ExpectTaken(VornCtrlPoints(), text, &VornCtrlPoints::SetName);
  ExpectTaken(VornProjectData(), text, &VornProjectData::SetName, &VornProjectData::SetText);
  ExpectTaken(VornCreatorInfoData(), text, &VornCreatorInfoData::SetName, &VornCreatorInfoData::SetText);
  ExpectTaken(VornLandXMLProject(), text, &VornLandXMLProject::SetName, &VornLandXMLProject::SetDesc);
  ExpectTaken(VornLandXMLAlignment(), text, &VornLandXMLAlignment::SetName, &VornLandXMLAlignment::SetText);
  ExpectTaken(data.GetInfoConstrcut(), kNewName, &VornInfoConstrcut::SetStoreVersion);
  ExpectTaken(data.GetRoadCenter(), kNewName, &VornRoadCenterData::SetStoreVersion);
}

TEST(RoadDataWithoutMemory, TakePartsOrNot) {
  const VornLinearXMLData data = FullData(kSurface);
  ExpectTaken(VornLinearXMLData(), data.GetInfoConstrcut(), &VornLinearXMLData::SetInfoConstrcut);
  ExpectTaken(VornLinearXMLData(), data.GetRoadCenter(), &VornLinearXMLData::SetRoadCenter);
  ExpectTaken(VornLinearXMLData(), data.GetLandXml(), &VornLinearXMLData::SetLandXml);

  const VornInfoConstrcut& info = data.GetInfoConstrcut();
  VornFormCtrl ctrl;
  ctrl.GetNames().fill(CString(kNewName));
  ExpectTaken(VornInfoConstrcut(), info.GetCrsArray(), &VornInfoConstrcut::SetCrsArray);
  ExpectTaken(VornInfoConstrcut(), info.GetCtrlPoints(), &VornInfoConstrcut::SetCtrlPoints);
  ExpectTaken(VornInfoConstrcut(), info.GetRoadGm(), &VornInfoConstrcut::SetRoadGm);
  ExpectTaken(VornInfoConstrcut(), ctrl, &VornInfoConstrcut::SetFormCtrl);
  const VornCtrlPoints& points = info.GetCtrlPoints();
  ExpectTaken(VornCtrlPoints(), points.GetCtrlPos(), &VornCtrlPoints::SetCtrlPos);
  ExpectTaken(VornCtrlPoints(), points.GetBenchMarks(), &VornCtrlPoints::SetBenchMarks);
  ExpectTaken(VornCtrlPoints(), points.GetGmPnts(), &VornCtrlPoints::SetGmPnts);
  ExpectTaken(VornGmPnts(), points.GetGmPnts()[0].GetPoints(), &VornGmPnts::SetPoints);

  const VornRoadCenterData& center = data.GetRoadCenter();
  ExpectTaken(VornRoadCenterData(), center.GetProject(), &VornRoadCenterData::SetProject);
  ExpectTaken(VornRoadCenterData(), center.GetCrsArray(), &VornRoadCenterData::SetCrsArray);
  ExpectTaken(VornRoadCenterData(), points.GetGmPnts(), &VornRoadCenterData::SetGmPnts);
  ExpectTaken(VornRoadCenterData(), center.GetRoadGm(), &VornRoadCenterData::SetRoadGm);
  ExpectTaken(VornProjectData(), center.GetProject().GetCreators(), &VornProjectData::SetCreators);

  const VornLandXMLData& landXml = data.GetLandXml();
  VornLandXMLCgPointsArray cgPoints;
  cgPoints.SetSize(2);
  ExpectTaken(VornLandXMLData(), landXml.GetProject(), &VornLandXMLData::SetProject);
  ExpectTaken(VornLandXMLData(), cgPoints, &VornLandXMLData::SetCgPoints);
  ExpectTaken(VornLandXMLData(), landXml.GetAlignments(), &VornLandXMLData::SetAlignments);
  ExpectTaken(VornLandXMLData(), landXml.GetTexts(), &VornLandXMLData::SetTexts);
}

TEST(RoadDataWithoutMemory, TakePartsOfARoadOrNot) {
  const VornRoadGmData road = FullRoad(kSurface);
  VornFileInfoArray infos;
  infos.SetSize(2);
  infos[1].SetNote(kNewName);
  ExpectTaken(VornRoadGmData(), road.GetRoadInfo(), &VornRoadGmData::SetRoadInfo);
  ExpectTaken(VornRoadGmData(), road.GetAlignments(), &VornRoadGmData::SetAlignments);
  ExpectTaken(VornRoadGmData(), infos, &VornRoadGmData::SetFileInfos);
  ExpectTaken(VornRoadGmData(), road.GetStructureType(), &VornRoadGmData::SetStructureType);
  ExpectTaken(VornAlignment(), FullSet(), &VornAlignment::SetXSections);
  ExpectTaken(road.GetAlignments()[0], FullSet(), &VornAlignment::SetXSections);
  VornRoadInfo other;
  other.SetTraffic(77);
  ExpectNoAllocation(road.GetRoadInfo(), [&](VornRoadInfo& info) { info.SetDesignInfo(other); });
}

TEST(RoadDataWithoutMemory, GetTheNamesOfNewControlItems) {
  VornFormCtrl ctrl;
  ctrl.GetNames().fill(CString(kNewName));
  ExpectNoAllocation(ctrl, [](VornFormCtrl& changing) { changing.Init(); });
}

using RoadSettingsWithoutMemory = test_support::SettingsTest;

TEST_F(RoadSettingsWithoutMemory, AreTakenOrNot) {
  VornInfoConstrcut stored;
  WexKey root;
  ASSERT_TRUE(VornGetBaseRegKey(&root));
  WexKey key;
  ASSERT_TRUE(key.Create(&root, VornFormCtrl::kSettingsKey));
  for (const VornFormCtrl::ItemName& item : VornFormCtrl::kItemNames) item.setting.Store(key, kLayer);
  for (const VornIntegerSetting& setting : VornFormCtrl::kMarkSettings) setting.Store(key, 2);
  ExpectOldOrNew(VornInfoConstrcut(), [](VornInfoConstrcut& info) { info.LoadRegistry(); });
  VornRoadGmData road;
  road.GetRoadInfo().SetTraffic(77);
  road.StoreRegistry();
  ExpectOldOrNew(VornRoadGmData(), [](VornRoadGmData& loading) { loading.LoadRegistry(); });
  ExpectOldOrNew(VornLinearXMLData(), [](VornLinearXMLData& loading) { loading.LoadRegistry(); });
}

/// A store in memory keeps each value when it comes: some of them are there when memory runs out, each as it was or as
/// it was to be, and storing again stores all.
TEST_F(RoadSettingsWithoutMemory, AreStoredValueByValue) {
  WexKey root;
  ASSERT_TRUE(VornGetBaseRegKey(&root));
  VornFormCtrl old;
  old.GetNames().fill(CString(kSurface));
  old.GetMarks().fill(VornFormCtrl::CtrlMarkType::Capitals);
  VornFormCtrl stored;
  stored.GetNames().fill(CString(kNewName));
  stored.GetMarks().fill(VornFormCtrl::CtrlMarkType::SmallLetters);
  VornFormCtrl loaded;
  FailEachAllocation([&] { old.StoreRegistry(&root); }, [&] { stored.StoreRegistry(&root); },
                     [&] {
                       loaded.LoadRegistry(&root);
                       for (const CString& name : loaded.GetNames()) EXPECT_TRUE(name == kSurface || name == kNewName);
                       stored.StoreRegistry(&root);
                       loaded.LoadRegistry(&root);
                       EXPECT_EQ(StateOf(loaded), StateOf(stored));
                     });
  loaded.LoadRegistry(&root);
  EXPECT_EQ(StateOf(loaded), StateOf(stored));

  VornRoadGmData road;
  road.GetRoadInfo().SetTraffic(77);
  VornRoadGmData again;
  FailEachAllocation([] { VornRoadGmData().StoreRegistry(); }, [&] { road.StoreRegistry(); },
                     [&] {
                       again.LoadRegistry();
                       EXPECT_TRUE(again.GetRoadInfo().GetTraffic() == 1 || again.GetRoadInfo().GetTraffic() == 77);
                     });
  again.LoadRegistry();
  EXPECT_EQ(again.GetRoadInfo().GetTraffic(), 77);
}

}  // namespace
