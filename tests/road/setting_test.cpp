#include "vorn/road/setting.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "tests/support/settings.h"

namespace {

using test_support::RefusingStore;
using test_support::SettingsTest;

constexpr VornIntegerSetting kSize = {"Size", 7};
constexpr VornTextSetting kName = {"Name", "none"};

class Setting : public SettingsTest {};

TEST_F(Setting, KeepsWhatIsStored) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  EXPECT_EQ(kSize.Load(key), 7);
  EXPECT_EQ(kName.Load(key), "none");
  EXPECT_TRUE(kSize.Store(key, -5));
  EXPECT_TRUE(kName.Store(key, "a name"));
  EXPECT_EQ(kSize.Load(key), -5);
  EXPECT_EQ(kName.Load(key), "a name");
}

TEST_F(Setting, HasItsDefaultInAClosedKeyAndStoresNothing) {
  WexKey closed;
  EXPECT_FALSE(kSize.Store(closed, -5));
  EXPECT_FALSE(kName.Store(closed, "a name"));
  EXPECT_EQ(kSize.Load(closed), 7);
  EXPECT_EQ(kName.Load(closed), "none");
}

TEST_F(Setting, TellsWhatTheStoreDoesNotTake) {
  WexSetApplicationStore(std::make_shared<RefusingStore>("App"), "App");
  WexKey key;
  ASSERT_TRUE(key.Open(nullptr, ""));
  EXPECT_FALSE(kSize.Store(key, -5));
  EXPECT_FALSE(kName.Store(key, "a name"));
  EXPECT_EQ(kName.Load(key), "none");
}

TEST_F(Setting, RefusesATextThatWouldBeCutShort) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  ASSERT_TRUE(kName.Store(key, "a name"));
  for (const std::string_view text : {std::string_view("\0", 1), std::string_view("cut\0short", 9)}) {
    EXPECT_FALSE(kName.Store(key, text));
    EXPECT_EQ(kName.Load(key), "a name");
  }
}

}  // namespace
