#include <gtest/gtest.h>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"
#include "tests/support/settings.h"

// What road and survey data keep when memory runs out while they are assigned, joined and taken from settings.

namespace {

using allocation_test::ExpectOldOrNew;
using allocation_test::FullSet;
using allocation_test::kLayer;
using allocation_test::kNewName;
using allocation_test::kSurface;

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

TEST(RoadDataWithoutMemory, TakeSectionsOrNot) {
  ExpectOldOrNew(VornAlignment(), [](VornAlignment& alignment) { alignment.SetXSections(FullSet()); });
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
}

}  // namespace
