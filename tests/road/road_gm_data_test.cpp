#include "vorn/road/road_gm_data.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/settings.h"
#include "vorn/platform/code_page_932.h"

namespace {

using Classificat = VornRoadInfo::Classificat;
using DesignSpeed = VornRoadInfo::DesignSpeed;
using Type = VornStructureType::Type;

static_assert(std::has_virtual_destructor_v<VornRoadGmData>);
static_assert(std::is_nothrow_move_constructible_v<VornRoadGmData>);

VornStructureType Work(Type type) {
  VornStructureType structure;
  structure.SetType(type);
  return structure;
}

/// Road data whose class, speed and traffic are none of the settings' defaults.
VornRoadGmData Road() {
  VornRoadGmData road;
  road.GetRoadInfo().SetName("road");
  road.GetRoadInfo().SetClassificat(Classificat::Type4Class4);
  road.GetRoadInfo().SetDesignSpeed(DesignSpeed::Kmh20);
  road.GetRoadInfo().SetTraffic(9);
  return road;
}

void ExpectRoadInfo(const VornRoadGmData& road, int classificat, int speed, int traffic) {
  EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetClassificat()), classificat);
  EXPECT_EQ(static_cast<int>(road.GetRoadInfo().GetSpeed()), speed);
  EXPECT_EQ(road.GetRoadInfo().GetTraffic(), traffic);
}

// --- data ------------------------------------------------------------------------------------------------------------

TEST(RoadGmData, StartsEmptyInTheNewestEdition) {
  const VornRoadGmData road;
  EXPECT_TRUE(road.GetRoadInfo().IsInit());
  EXPECT_EQ(road.GetOption(), 0);
  EXPECT_TRUE(road.GetAlignments().IsEmpty());
  EXPECT_EQ(static_cast<int>(road.GetSchemaVersion()), 2);
  EXPECT_TRUE(road.GetFileInfos().IsEmpty());
  EXPECT_EQ(road.GetStructureType().GetTypeStr(), "");
  EXPECT_EQ(road.GetOption2(), 0);
  EXPECT_EQ(road.GetText(), "");
}

TEST(RoadGmData, CopiesAllItsMembers) {
  VornRoadGmData road = Road();
  road.SetOption(3);
  road.GetAlignments().SetSize(2);
  road.SetSchemaVersion(VornSchema::Version40);
  road.GetFileInfos().SetSize(3);
  road.SetStructureType(Work(Type::Other));
  road.SetOption2(4);
  road.SetText("text");
  VornRoadGmData copy;
  copy = road;
  const VornRoadGmData moved = std::move(copy);
  EXPECT_EQ(moved.GetRoadInfo().GetName(), "road");
  EXPECT_EQ(moved.GetOption(), 3);
  EXPECT_EQ(moved.GetAlignments().GetSize(), 2);
  EXPECT_EQ(moved.GetSchemaVersion(), VornSchema::Version40);
  EXPECT_EQ(moved.GetFileInfos().GetSize(), 3);
  EXPECT_EQ(moved.GetStructureType().GetType(), Type::Other);
  EXPECT_EQ(moved.GetOption2(), 4);
  EXPECT_EQ(moved.GetText(), "text");
}

TEST(RoadGmData, TakesWholeParts) {
  VornRoadGmData road;
  road.SetRoadInfo(Road().GetRoadInfo());
  VornAlignmentsArray alignments;
  alignments.SetSize(2);
  road.SetAlignments(alignments);
  VornFileInfoArray fileInfos;
  fileInfos.SetSize(1);
  road.SetFileInfos(fileInfos);
  road.SetXSectType(VornXSectType());
  ExpectRoadInfo(road, 14, 7, 9);
  EXPECT_EQ(road.GetAlignments().GetSize(), 2);
  EXPECT_EQ(road.GetFileInfos().GetSize(), 1);
}

// --- texts and speeds ------------------------------------------------------------------------------------------------

TEST(RoadGmData, GivesRoadClassesTheSameTextsAsTheRoad) {
  for (int value = -1; value <= 15; ++value) {
    const auto classificat = static_cast<Classificat>(value);
    EXPECT_EQ(VornRoadGmData::GetClassificatStr(classificat), VornRoadInfo::GetClassificatRoad(classificat));
  }
  EXPECT_EQ(VornRoadGmData::GetClassificatStr(Classificat::Type1Class1), u8"第1種第1級"_cp932);
}

TEST(RoadGmData, GivesDesignSpeedsAndZeroForAnUnknownOne) {
  constexpr int kSpeeds[] = {120, 100, 80, 60, 50, 40, 30, 20};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(VornRoadGmData::GetDesignSpeedVal(static_cast<DesignSpeed>(i)), kSpeeds[i]);
  for (const int value : {-1, 8, 1000}) {
    EXPECT_EQ(VornRoadGmData::GetDesignSpeedVal(static_cast<DesignSpeed>(value)), 0) << value;
  }
}

// --- comparison ------------------------------------------------------------------------------------------------------

TEST(RoadGmData, IsOfTheSameTypeInTheSameEditionAndWork) {
  VornRoadGmData road;
  road.SetSchemaVersion(VornSchema::Version40);
  road.SetStructureType(Work(Type::RoadPavement));
  EXPECT_TRUE(road.IsSameType(VornSchema::Version40, Work(Type::RoadPavement)));
  EXPECT_FALSE(road.IsSameType(VornSchema::Version40, Work(Type::Other)));
  EXPECT_FALSE(road.IsSameType(VornSchema::Version41, Work(Type::RoadPavement)));
}

TEST(RoadGmData, IsOfTheSameTypeAsAStructureThatNamesNoWork) {
  VornRoadGmData road;
  road.SetStructureType(Work(Type::RoadPavement));
  EXPECT_TRUE(road.IsSameType(VornSchema::Version41, VornStructureType()));
  EXPECT_FALSE(road.IsSameType(VornSchema::Version20, VornStructureType()));
}

TEST(RoadGmData, ComparesWorkByItsTypeNotByItsName) {
  VornStructureType unknown;
  unknown.SetType(CString("no such work"));
  VornRoadGmData road;
  EXPECT_TRUE(road.IsSameType(VornSchema::Version41, unknown)) << "an empty name and an unknown one are both no type";
  road.SetStructureType(Work(Type::Other));
  EXPECT_FALSE(road.IsSameType(VornSchema::Version41, unknown));
}

TEST(RoadGmData, ComparesNameClassSpeedAndTrafficOfTheRoad) {
  const auto isEqualAfter = [](auto change) {
    VornRoadGmData other = Road();
    change(other);
    return Road().CompareRoadInfo(other);
  };
  EXPECT_FALSE(isEqualAfter([](VornRoadGmData& road) { road.GetRoadInfo().SetName("Road"); }));
  EXPECT_FALSE(isEqualAfter([](VornRoadGmData& road) { road.GetRoadInfo().SetClassificat(Classificat::Unset); }));
  EXPECT_FALSE(isEqualAfter([](VornRoadGmData& road) { road.GetRoadInfo().SetDesignSpeed(DesignSpeed::Unset); }));
  EXPECT_FALSE(isEqualAfter([](VornRoadGmData& road) { road.GetRoadInfo().SetTraffic(1); }));
  EXPECT_TRUE(isEqualAfter([](VornRoadGmData& road) {
    road.GetRoadInfo().SetClassRiver(VornRoadInfo::ClassRiver::Class2);
    road.GetRoadInfo().SetText1("x");
    road.GetRoadInfo().Side(1);
    road.GetRoadInfo().SingleLane(true);
    road.SetOption(1);
    road.SetText("x");
  }));
}

TEST(RoadGmData, AsksItsAlignmentsForTheSystemsInUse) {
  VornRoadGmData road;
  road.GetAlignments().SetSize(1);
  EXPECT_FALSE(road.IsUsedCrsName(""));
  road.GetAlignments()[0].SetCrsName("crs");
  EXPECT_TRUE(road.IsUsedCrsName("crs"));
  EXPECT_FALSE(road.IsUsedCrsName(""));
}

// --- settings --------------------------------------------------------------------------------------------------------

class RoadSettings : public test_support::SettingsTest, public testing::WithParamInterface<bool> {
 protected:
  RoadSettings() { VornDefineManager::GetInstance().SetTSFlag(GetParam()); }

  static std::string_view Root() { return GetParam() ? u8"情報化施工_TS"_cp932 : u8"情報化施工"_cp932; }
  static CString RoadInfoPath() { return PathOf(Root()) + CString("\\RoadInfo"); }
};
INSTANTIATE_TEST_SUITE_P(Editions, RoadSettings, testing::Bool(),
                         [](const auto& info) { return info.param ? "TotalStation" : "Ordinary"; });

TEST_P(RoadSettings, StoresThreeIntegers) {
  Road().StoreRegistry();
  EXPECT_EQ(m_store->ReadInt(RoadInfoPath().View(), "classificat"), 14);
  EXPECT_EQ(m_store->ReadInt(RoadInfoPath().View(), "speed"), 7);
  EXPECT_EQ(m_store->ReadInt(RoadInfoPath().View(), "traffic"), 9);
}

TEST_P(RoadSettings, LoadsWhatWasStored) {
  Road().StoreRegistry();
  VornRoadGmData road;
  road.GetRoadInfo().SetName("kept");
  road.LoadRegistry();
  ExpectRoadInfo(road, 14, 7, 9);
  EXPECT_EQ(road.GetRoadInfo().GetName(), "kept");
}

TEST_P(RoadSettings, AreReadAndKeptTogether) {
  const std::string root = "create App\\" + std::string(Root());
  const std::string subKey = "App\\" + std::string(Root()) + "\\RoadInfo";
  const auto storing = std::make_shared<test_support::RecordingStore>();
  WexSetApplicationStore(storing, "App");
  Road().StoreRegistry();
  EXPECT_EQ(storing->Calls(), (std::vector<std::string>{"begin", root, "create " + subKey, "set classificat",
                                                        "set speed", "set traffic", "end"}));
  const auto loading = std::make_shared<test_support::RecordingStore>();
  WexSetApplicationStore(loading, "App");
  VornRoadGmData().LoadRegistry();
  EXPECT_EQ(loading->Calls(), (std::vector<std::string>{"begin", root, "open " + subKey, "get classificat", "get speed",
                                                        "get traffic", "end"}));
}

TEST_P(RoadSettings, LoadsDefaultsWhenThereIsNoSubKey) {
  VornRoadGmData road = Road();
  road.LoadRegistry();
  ExpectRoadInfo(road, 0, 0, 1);
  EXPECT_FALSE(m_store->KeyExists(RoadInfoPath().View())) << "loading makes no sub-key";
}

TEST_P(RoadSettings, LoadsDefaultsForMissingValues) {
  ASSERT_TRUE(m_store->CreateKey(RoadInfoPath().View()));
  m_store->WriteInt(RoadInfoPath().View(), "speed", 3);
  VornRoadGmData road = Road();
  road.LoadRegistry();
  ExpectRoadInfo(road, 0, 3, 1);
}

TEST_P(RoadSettings, LoadsDefaultsForValuesOfTheOtherKind) {
  ASSERT_TRUE(m_store->CreateKey(RoadInfoPath().View()));
  for (const char* name : {"classificat", "speed", "traffic"}) {
    m_store->WriteString(RoadInfoPath().View(), name, "5");
  }
  VornRoadGmData road = Road();
  road.LoadRegistry();
  ExpectRoadInfo(road, 0, 0, 1);
}

TEST_P(RoadSettings, TakesUnknownValuesAsTheyStand) {
  ASSERT_TRUE(m_store->CreateKey(RoadInfoPath().View()));
  m_store->WriteInt(RoadInfoPath().View(), "classificat", 99);
  m_store->WriteInt(RoadInfoPath().View(), "speed", -5);
  VornRoadGmData road;
  road.LoadRegistry();
  ExpectRoadInfo(road, 99, -5, 1);
}

TEST_P(RoadSettings, KeepsTheEditionsApart) {
  Road().StoreRegistry();
  VornDefineManager::GetInstance().SetTSFlag(!GetParam());
  VornRoadGmData road;
  road.LoadRegistry();
  ExpectRoadInfo(road, 0, 0, 1);
}

TEST_P(RoadSettings, ChangesNothingWhenTheSettingsCannotBeOpened) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>(), "App");
  VornRoadGmData road = Road();
  road.LoadRegistry();
  ExpectRoadInfo(road, 14, 7, 9);
  road.StoreRegistry();
}

TEST_P(RoadSettings, StoresNothingWhenTheSubKeyCannotBeMade) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>(PathOf(Root()).View()), "App");
  VornRoadGmData road = Road();
  road.StoreRegistry();
  road.LoadRegistry();
  ExpectRoadInfo(road, 0, 0, 1);
}

}  // namespace
