#include "vorn/framework/define_manager.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

#include "vorn/platform/code_page_932.h"

namespace {

VornDefineManager& Manager() { return VornDefineManager::GetInstance(); }

class DefineManagerTest : public testing::Test {
 protected:
  DefineManagerTest() { WexSetApplicationStore(m_store, "App"); }
  ~DefineManagerTest() override {
    Manager().SetTSFlag(false);
    WexSetApplicationStore(nullptr, "");
  }

  [[nodiscard]] bool HasKey(std::string_view name) const {
    return m_store->KeyExists((CString("App\\") + CString(name)).View());
  }

  std::shared_ptr<WexMemoryStore> m_store = std::make_shared<WexMemoryStore>();
};

/// A store in which no key exists or can be made.
class RefusingStore : public WexStore {
 public:
  [[nodiscard]] bool KeyExists(std::string_view) const override { return false; }
  bool CreateKey(std::string_view) override { return false; }
  [[nodiscard]] std::optional<std::int32_t> ReadInt(std::string_view, std::string_view) const override { return {}; }
  [[nodiscard]] std::optional<CString> ReadString(std::string_view, std::string_view) const override { return {}; }
  bool WriteInt(std::string_view, std::string_view, std::int32_t) override { return false; }
  bool WriteString(std::string_view, std::string_view, std::string_view) override { return false; }
};

TEST_F(DefineManagerTest, IsOneObjectForTheProcess) {
  EXPECT_EQ(&VornDefineManager::GetInstance(), &VornDefineManager::GetInstance());
  EXPECT_TRUE(std::has_virtual_destructor_v<VornDefineManager>);
}

TEST_F(DefineManagerTest, ServesTheOrdinaryEditionAtStart) {
  EXPECT_EQ(Manager().GetInfoConstRegKeyRoot(), u8"情報化施工"_cp932);
  EXPECT_EQ(Manager().GetLandXmlRegKeyRoot(), u8"LandXML書込み"_cp932);
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
  WexSetApplicationStore(std::make_shared<RefusingStore>(), "App");
  WexKey key;
  EXPECT_FALSE(VornGetBaseRegKey(&key));
  EXPECT_FALSE(VornGetLandXmlBaseRegKey(&key));
}

}  // namespace
