#include "host/settings/known_settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "host/document/text_encoding.h"
#include "host/settings/settings_file.h"
#include "tests/host/temporary_directory.h"
#include "vorn/framework/define_manager.h"
#include "vorn/platform/wex_key.h"
#include "vorn/road/form_ctrl.h"
#include "vorn/road/road_gm_data.h"

namespace vorn_host {
namespace {

struct Expected {
  const char* key;
  const char* text;  ///< the default of a text; null for an integer
  std::int32_t number;
  std::int32_t min;
  std::int32_t max;
};

constexpr std::int32_t kMin = -2147483647 - 1;
constexpr std::int32_t kMax = 2147483647;
constexpr Expected kExpected[] = {
    {"RoadInfo.classificat", nullptr, 0, 0, 14},  {"RoadInfo.speed", nullptr, 0, 0, 7},
    {"RoadInfo.traffic", nullptr, 1, kMin, kMax}, {"FormCtrl.basec", "道路中心", 0, 0, 0},
    {"FormCtrl.basel", "道路端左", 0, 0, 0},      {"FormCtrl.baser", "道路端右", 0, 0, 0},
    {"FormCtrl.noril", "左法面", 0, 0, 0},        {"FormCtrl.norir", "右法面", 0, 0, 0},
    {"FormCtrl.widthrd", "道路面", 0, 0, 0},      {"FormCtrl.widthl", "左小段", 0, 0, 0},
    {"FormCtrl.widthr", "右小段", 0, 0, 0},       {"FormCtrl.otherl", "左その他", 0, 0, 0},
    {"FormCtrl.otherr", "右その他", 0, 0, 0},     {"FormCtrl.norimark", nullptr, 0, 0, 2},
    {"FormCtrl.widthmark", nullptr, 0, 0, 2},     {"FormCtrl.roadmark", nullptr, 0, 0, 2},
    {"FormCtrl.othermark", nullptr, 0, 0, 2}};

TEST(KnownSettings, HaveTheirNamesDefaultsAndRanges) {
  ASSERT_EQ(KnownSettings().size(), std::size(kExpected));
  for (std::size_t i = 0; i < KnownSettings().size(); ++i) {
    const KnownSetting& setting = KnownSettings()[i];
    const Expected& expected = kExpected[i];
    EXPECT_EQ(DottedName(setting), expected.key);
    if (expected.text != nullptr) {
      EXPECT_EQ(ToUtf8(std::get<VornTextSetting>(setting.kind).defaultValue), expected.text);
    } else {
      const auto& integer = std::get<IntegerSetting>(setting.kind);
      EXPECT_EQ(integer.defaultValue, expected.number) << expected.key;
      EXPECT_EQ(integer.min, expected.min) << expected.key;
      EXPECT_EQ(integer.max, expected.max) << expected.key;
    }
  }
}

TEST(KnownSettings, AreThoseThatTheLibraryStores) {
  const host_test::TemporaryDirectory directory;
  const auto store = std::make_shared<SettingsFile>(directory / "vorn.toml", nullptr);
  WexSetApplicationStore(store, "");
  WexKey root;
  ASSERT_TRUE(VornGetBaseRegKey(&root));
  VornRoadGmData().StoreRegistry();
  VornFormCtrl().StoreRegistry(&root);
  WexSetApplicationStore(nullptr, "");

  std::vector<std::string> stored;
  for (const SettingsEntry& entry : store->Entries()) stored.push_back(DottedName(entry));
  std::vector<std::string> known;
  for (const KnownSetting& setting : KnownSettings()) known.push_back("情報化施工." + DottedName(setting));
  EXPECT_THAT(stored, testing::UnorderedElementsAreArray(known));
}

TEST(KnownSettings, AreFoundWithoutRegardToCase) {
  EXPECT_EQ(FindKnownSetting("RoadInfo.speed"), &KnownSettings()[1]);
  EXPECT_EQ(FindKnownSetting("ROADINFO.Speed"), &KnownSettings()[1]);
  EXPECT_EQ(FindKnownSetting("speed"), nullptr);
  EXPECT_EQ(FindKnownSetting("FormCtrl.speed"), nullptr);
  EXPECT_EQ(FindKnownSetting(""), nullptr);
}

TEST(KnownSettings, EveryCodeOfTheRangeHasAMeaningOfItsOwnAndNoOtherHas) {
  for (const KnownSetting& setting : KnownSettings()) {
    const auto* integer = std::get_if<IntegerSetting>(&setting.kind);
    if (integer == nullptr || integer->meaning == nullptr) continue;
    std::set<std::string> meanings;
    for (std::int32_t code = integer->min; code <= integer->max; ++code) meanings.insert(integer->meaning(code));
    EXPECT_EQ(meanings.size(), static_cast<std::size_t>(integer->max - integer->min + 1)) << setting.Name();
    EXPECT_FALSE(meanings.contains("")) << setting.Name();
    for (const std::int32_t code : {kMin, -1, integer->max + 1, kMax}) EXPECT_EQ(integer->meaning(code), "") << code;
  }
}

TEST(KnownSettings, CodesMeanWhatTheyMean) {
  EXPECT_EQ(RoadClassMeaning(0), "第1種第1級");
  EXPECT_EQ(RoadClassMeaning(3), "第1種第4級");
  EXPECT_EQ(RoadClassMeaning(4), "第2種第1級");
  EXPECT_EQ(RoadClassMeaning(6), "第3種第1級");
  EXPECT_EQ(RoadClassMeaning(10), "第3種第5級");
  EXPECT_EQ(RoadClassMeaning(14), "第4種第4級");
  const char* speeds[] = {"120", "100", "80", "60", "50", "40", "30", "20"};
  for (int code = 0; code < 8; ++code) EXPECT_EQ(DesignSpeedMeaning(code), std::string(speeds[code]) + " km/h");
  EXPECT_EQ(MarkSeriesMeaning(0), "１２３４５");
  EXPECT_EQ(MarkSeriesMeaning(1), "ＡＢＣＤＥ");
  EXPECT_EQ(MarkSeriesMeaning(2), "ａｂｃｄｅ");
}

}  // namespace
}  // namespace vorn_host
