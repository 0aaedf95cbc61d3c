#include "vorn/framework/define_manager.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "tests/support/settings.h"
#include "vorn/platform/code_page_932.h"

namespace {

VornDefineManager& Manager() { return VornDefineManager::GetInstance(); }

/// What the process begins with: every test of settings begins with the ordinary edition, whatever that is.
const VornDefineManager kAtStart = Manager();

class DefineManagerTest : public test_support::SettingsTest {};

TEST_F(DefineManagerTest, IsOneObjectForTheProcess) {
  EXPECT_EQ(&VornDefineManager::GetInstance(), &VornDefineManager::GetInstance());
  EXPECT_TRUE(std::has_virtual_destructor_v<VornDefineManager>);
}

TEST_F(DefineManagerTest, ServesTheOrdinaryEditionAtStart) {
  EXPECT_EQ(kAtStart.GetInfoConstRegKeyRoot(), u8"情報化施工"_cp932);
  EXPECT_EQ(kAtStart.GetLandXmlRegKeyRoot(), u8"LandXML書込み"_cp932);
}

TEST_F(DefineManagerTest, ServesTheTotalStationEditionWithTheFlagSet) {
  Manager().SetTSFlag(true);
  EXPECT_EQ(Manager().GetInfoConstRegKeyRoot(), u8"情報化施工_TS"_cp932);
  EXPECT_EQ(Manager().GetLandXmlRegKeyRoot(), u8"LandXML書込み_TS"_cp932);
}

TEST_F(DefineManagerTest, ComesBackToTheOrdinaryEdition) {
  Manager().SetTSFlag(true);
  Manager().SetTSFlag(false);
  EXPECT_EQ(Manager().GetInfoConstRegKeyRoot(), u8"情報化施工"_cp932);
  EXPECT_EQ(Manager().GetLandXmlRegKeyRoot(), u8"LandXML書込み"_cp932);
}

TEST_F(DefineManagerTest, OpensTheSettingsOfTheEdition) {
  struct Row {
    bool totalStation;
    bool (*open)(WexKey*);
    std::string_view name;
  };
  for (const Row& row : {
           Row{false, VornGetBaseRegKey, u8"情報化施工"_cp932},
           Row{true, VornGetBaseRegKey, u8"情報化施工_TS"_cp932},
           Row{false, VornGetLandXmlBaseRegKey, u8"LandXML書込み"_cp932},
           Row{true, VornGetLandXmlBaseRegKey, u8"LandXML書込み_TS"_cp932},
       }) {
    Manager().SetTSFlag(row.totalStation);
    EXPECT_FALSE(HasKey(row.name));
    WexKey key;
    EXPECT_TRUE(row.open(&key));
    EXPECT_TRUE(key.IsOpen());
    EXPECT_TRUE(HasKey(row.name));
  }
}

TEST_F(DefineManagerTest, TellsWhenTheSettingsCannotBeOpened) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>(), "App");
  WexKey key;
  EXPECT_FALSE(VornGetBaseRegKey(&key));
  EXPECT_FALSE(VornGetLandXmlBaseRegKey(&key));
}

}  // namespace
