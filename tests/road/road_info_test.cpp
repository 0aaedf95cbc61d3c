#include "vorn/road/road_info.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

#include "vorn/platform/code_page_932.h"

namespace {

using Classificat = VornRoadInfo::Classificat;
using ClassRiver = VornRoadInfo::ClassRiver;
using DesignSpeed = VornRoadInfo::DesignSpeed;
using Type = VornStructureType::Type;

/// By value.
constexpr std::array kClasses = {
    u8"第1種第1級"_cp932, u8"第1種第2級"_cp932, u8"第1種第3級"_cp932, u8"第1種第4級"_cp932, u8"第2種第1級"_cp932,
    u8"第2種第2級"_cp932, u8"第3種第1級"_cp932, u8"第3種第2級"_cp932, u8"第3種第3級"_cp932, u8"第3種第4級"_cp932,
    u8"第3種第5級"_cp932, u8"第4種第1級"_cp932, u8"第4種第2級"_cp932, u8"第4種第3級"_cp932, u8"第4種第4級"_cp932,
};

/// In km/h, by value.
constexpr std::array kSpeeds = {120, 100, 80, 60, 50, 40, 30, 20};

template <typename Enum>
Enum As(std::size_t value) {
  return static_cast<Enum>(value);
}

VornRoadInfo Full() {
  VornRoadInfo info;
  info.SetName("road");
  info.SetClassificat(Classificat::Type3Class2);
  info.SetClassRiver(ClassRiver::Class2);
  info.SetDesignSpeed(DesignSpeed::Kmh50);
  info.SetTraffic(4);
  info.SetText1("text 1");
  info.SetText2("text 2");
  info.Side(5);
  info.SingleLane(true);
  return info;
}

// --- data ------------------------------------------------------------------------------------------------------------

static_assert(!std::is_polymorphic_v<VornRoadInfo> && std::is_nothrow_move_constructible_v<VornRoadInfo>);

TEST(RoadInfo, StartsUnset) {
  const VornRoadInfo info;
  EXPECT_EQ(info.GetName(), "");
  EXPECT_EQ(static_cast<int>(info.GetClassificat()), -1);
  EXPECT_EQ(static_cast<int>(info.GetClassRiver()), 0);
  EXPECT_EQ(static_cast<int>(info.GetSpeed()), -1);
  EXPECT_EQ(info.GetTraffic(), 1);
  EXPECT_EQ(info.GetText1(), "");
  EXPECT_EQ(info.GetText2(), "");
  EXPECT_EQ(info.Side(), 0);
  EXPECT_FALSE(info.SingleLane());
}

TEST(RoadInfo, CopiesAllItsMembers) {
  VornRoadInfo info;
  info = Full();
  EXPECT_EQ(info.GetName(), "road");
  EXPECT_EQ(info.GetClassificat(), Classificat::Type3Class2);
  EXPECT_EQ(info.GetClassRiver(), ClassRiver::Class2);
  EXPECT_EQ(info.GetSpeed(), DesignSpeed::Kmh50);
  EXPECT_EQ(info.GetTraffic(), 4);
  EXPECT_EQ(info.GetText1(), "text 1");
  EXPECT_EQ(info.GetText2(), "text 2");
  EXPECT_EQ(info.Side(), 5);
  EXPECT_TRUE(info.SingleLane());
}

// --- classes ---------------------------------------------------------------------------------------------------------

TEST(RoadInfo, GivesEachRoadClassItsText) {
  ASSERT_EQ(kClasses.size(), 15u);
  for (std::size_t i = 0; i < kClasses.size(); ++i) {
    EXPECT_EQ(VornRoadInfo::GetClassificatRoad(As<Classificat>(i)), kClasses[i]) << i;
    VornRoadInfo info;
    info.SetClassificat(As<Classificat>(i));
    EXPECT_EQ(info.GetClassificatRoad(), kClasses[i]) << i;
  }
}

TEST(RoadInfo, GivesUnknownClassesNoText) {
  for (const int value : {-1, 15, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(VornRoadInfo::GetClassificatRoad(static_cast<Classificat>(value)), "") << value;
  }
  for (const int value : {-1, 2, 3, 14}) {
    EXPECT_EQ(VornRoadInfo::GetClassificatRiver(static_cast<ClassRiver>(value)), "") << value;
  }
}

TEST(RoadInfo, GivesEachRiverClassItsText) {
  EXPECT_EQ(VornRoadInfo::GetClassificatRiver(As<ClassRiver>(0)), u8"1級"_cp932);
  EXPECT_EQ(VornRoadInfo::GetClassificatRiver(As<ClassRiver>(1)), u8"2級"_cp932);
  EXPECT_EQ(Full().GetClassificatRiver(), u8"2級"_cp932);
}

TEST(RoadInfo, TakesEachRoadClassByItsText) {
  for (std::size_t i = 0; i < kClasses.size(); ++i) {
    VornRoadInfo info;
    EXPECT_TRUE(info.SetClassificatRoad(kClasses[i]));
    EXPECT_EQ(info.GetClassificat(), As<Classificat>(i));
  }
}

TEST(RoadInfo, KeepsItsRoadClassWhenATextIsUnknown) {
  for (const std::string_view text :
       {std::string_view(""), u8"第5種第1級"_cp932, u8"第３種第２級"_cp932, u8"1級"_cp932}) {
    VornRoadInfo info = Full();
    EXPECT_FALSE(info.SetClassificatRoad(text));
    EXPECT_EQ(info.GetClassificat(), Classificat::Type3Class2);
  }
}

TEST(RoadInfo, TakesEachRiverClassByItsText) {
  VornRoadInfo info;
  EXPECT_TRUE(info.SetClassificatRiver(u8"2級"_cp932));
  EXPECT_EQ(static_cast<int>(info.GetClassRiver()), 1);
  EXPECT_TRUE(info.SetClassificatRiver(u8"1級"_cp932));
  EXPECT_EQ(static_cast<int>(info.GetClassRiver()), 0);
}

TEST(RoadInfo, TakesAnEmptyTextForARiverClassWithoutText) {
  VornRoadInfo info;
  EXPECT_TRUE(info.SetClassificatRiver(""));
  EXPECT_EQ(static_cast<int>(info.GetClassRiver()), 2);
}

TEST(RoadInfo, KeepsItsRiverClassWhenATextIsUnknown) {
  VornRoadInfo info = Full();
  EXPECT_FALSE(info.SetClassificatRiver(u8"3級"_cp932));
  EXPECT_FALSE(info.SetClassificatRiver(kClasses[0]));
  EXPECT_EQ(info.GetClassRiver(), ClassRiver::Class2);
}

TEST(RoadInfo, CountsTheRiverClassInRiverWorksOnly) {
  const VornRoadInfo info = Full();
  for (int type = -1; type <= 9; ++type) {
    const bool isRiver = type == 1 || type == 3;
    EXPECT_EQ(info.Class(static_cast<Type>(type)), isRiver ? u8"2級"_cp932 : u8"第3種第2級"_cp932) << type;
  }
}

// --- design speed ----------------------------------------------------------------------------------------------------

TEST(RoadInfo, GivesEachDesignSpeedInKilometresPerHour) {
  for (std::size_t i = 0; i < kSpeeds.size(); ++i) {
    VornRoadInfo info;
    EXPECT_EQ(info.GetSpeed(As<DesignSpeed>(i)), kSpeeds[i]) << i;
    info.SetDesignSpeed(As<DesignSpeed>(i));
    EXPECT_EQ(info.Speed(), kSpeeds[i]) << i;
  }
}

TEST(RoadInfo, HasNoSpeedForAnUnknownDesignSpeed) {
  const VornRoadInfo info;
  for (const int value : {-1, 8, 100}) EXPECT_EQ(info.GetSpeed(static_cast<DesignSpeed>(value)), -1) << value;
  EXPECT_EQ(info.Speed(), -1);
}

TEST(RoadInfo, TakesEachDesignSpeedInKilometresPerHour) {
  for (std::size_t i = 0; i < kSpeeds.size(); ++i) {
    VornRoadInfo info;
    EXPECT_TRUE(info.SetSpeed(kSpeeds[i]));
    EXPECT_EQ(info.GetSpeed(), As<DesignSpeed>(i));
  }
  VornRoadInfo info;
  EXPECT_TRUE(info.SetSpeed(20));
  EXPECT_EQ(static_cast<int>(info.GetSpeed()), 7);
}

TEST(RoadInfo, KeepsItsDesignSpeedWhenASpeedIsNone) {
  for (const int kmh : {70, 0, -1, 119, 121}) {
    VornRoadInfo info = Full();
    EXPECT_FALSE(info.SetSpeed(kmh)) << kmh;
    EXPECT_EQ(info.GetSpeed(), DesignSpeed::Kmh50) << kmh;
  }
}

// --- design conditions -----------------------------------------------------------------------------------------------

void ExpectDesignOfFull(const VornRoadInfo& info) {
  EXPECT_EQ(info.GetName(), "other");
  EXPECT_EQ(info.GetText1(), "");
  EXPECT_EQ(info.GetText2(), "");
  EXPECT_EQ(info.GetClassificat(), Classificat::Type3Class2);
  EXPECT_EQ(info.GetClassRiver(), ClassRiver::Class2);
  EXPECT_EQ(info.GetSpeed(), DesignSpeed::Kmh50);
  EXPECT_EQ(info.GetTraffic(), 4);
  EXPECT_EQ(info.Side(), 5);
  EXPECT_TRUE(info.SingleLane());
}

TEST(RoadInfo, TakesAndGivesDesignConditionsWithoutTheTexts) {
  VornRoadInfo taken;
  taken.SetName("other");
  taken.SetDesignInfo(Full());
  ExpectDesignOfFull(taken);
  VornRoadInfo given;
  given.SetName("other");
  Full().GetDesignInfo(given);
  ExpectDesignOfFull(given);
}

TEST(RoadInfo, TakesDesignConditionsFromItself) {
  VornRoadInfo info = Full();
  info.SetDesignInfo(info);
  info.GetDesignInfo(info);
  EXPECT_EQ(info.GetName(), "road");
  EXPECT_EQ(info.GetTraffic(), 4);
}

TEST(RoadInfo, IsAsNewUntilNameClassSpeedOrTrafficChange) {
  EXPECT_TRUE(VornRoadInfo().IsInit());
  const auto isInitAfter = [](auto change) {
    VornRoadInfo info;
    change(info);
    return info.IsInit();
  };
  EXPECT_FALSE(isInitAfter([](VornRoadInfo& info) { info.SetName("x"); }));
  EXPECT_FALSE(isInitAfter([](VornRoadInfo& info) { info.SetClassificat(As<Classificat>(0)); }));
  EXPECT_FALSE(isInitAfter([](VornRoadInfo& info) { info.SetDesignSpeed(As<DesignSpeed>(0)); }));
  EXPECT_FALSE(isInitAfter([](VornRoadInfo& info) { info.SetTraffic(0); }));
  EXPECT_TRUE(isInitAfter([](VornRoadInfo& info) {
    info.SetClassRiver(ClassRiver::Class2);
    info.SetText1("x");
    info.SetText2("x");
    info.Side(1);
    info.SingleLane(true);
  }));
}

}  // namespace
