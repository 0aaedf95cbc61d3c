#include "vorn/platform/wex_key.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/settings.h"
#include "vorn/platform/code_page_932.h"

namespace {

class WexKeyTest : public testing::Test {
 protected:
  WexKeyTest() { WexSetApplicationStore(m_store, "Vendor\\Product"); }
  ~WexKeyTest() override { WexSetApplicationStore(nullptr, ""); }

  std::shared_ptr<WexMemoryStore> m_store = std::make_shared<WexMemoryStore>();
};

TEST_F(WexKeyTest, StartsClosedAndGivesDefaults) {
  WexKey key;
  EXPECT_FALSE(key.IsOpen());
  EXPECT_EQ(key.GetInt("Size", 7), 7);
  EXPECT_EQ(key.GetString("Name", "none"), "none");
  EXPECT_FALSE(key.SetInt("Size", 1));
  EXPECT_FALSE(key.SetString("Name", "x"));
}

TEST_F(WexKeyTest, OpensExistingKeysOnly) {
  WexKey key;
  EXPECT_FALSE(key.Open(nullptr, "Grid"));
  EXPECT_FALSE(key.IsOpen());
  EXPECT_TRUE(key.Create(nullptr, "Grid"));
  EXPECT_TRUE(key.IsOpen());
  EXPECT_TRUE(m_store->KeyExists("Vendor\\Product\\Grid"));

  WexKey again;
  EXPECT_TRUE(again.Open(nullptr, "Grid"));
  EXPECT_FALSE(again.Open(nullptr, "Other"));
  EXPECT_FALSE(again.IsOpen());
}

TEST_F(WexKeyTest, RemembersValues) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  EXPECT_TRUE(key.SetInt("Size", -5));
  EXPECT_TRUE(key.SetString("Name", u8"断面"_cp932.data()));
  key.Close();
  EXPECT_FALSE(key.IsOpen());

  WexKey again;
  ASSERT_TRUE(again.Open(nullptr, "Grid"));
  EXPECT_EQ(again.GetInt("Size", 0), -5);
  EXPECT_EQ(again.GetString("Name", ""), u8"断面"_cp932);
  EXPECT_EQ(again.GetInt("Missing", 3), 3);
  EXPECT_EQ(again.GetString("Missing", nullptr), "");
}

TEST_F(WexKeyTest, GivesTheDefaultForAValueOfTheOtherKind) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  key.SetInt("Size", 12);
  key.SetString("Name", "12");
  EXPECT_EQ(key.GetString("Size", "none"), "none");
  EXPECT_EQ(key.GetInt("Name", 7), 7);
}

TEST_F(WexKeyTest, OpensBelowAParent) {
  WexKey parent;
  WexKey child;
  EXPECT_FALSE(child.Create(&parent, "Colour"));
  ASSERT_TRUE(parent.Create(nullptr, "Grid"));
  EXPECT_TRUE(child.Create(&parent, "Colour"));
  EXPECT_TRUE(m_store->KeyExists("Vendor\\Product\\Grid\\Colour"));
  EXPECT_TRUE(child.Open(&parent, "Colour"));
  EXPECT_FALSE(child.Open(&parent, "Other"));
}

TEST_F(WexKeyTest, OpensBelowItself) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  ASSERT_TRUE(key.Create(&key, "Colour"));
  EXPECT_TRUE(key.SetInt("Red", 1));
  EXPECT_EQ(m_store->ReadInt("Vendor\\Product\\Grid\\Colour", "Red"), 1);
}

TEST_F(WexKeyTest, TakesAnEmptySubKeyForTheParent) {
  WexKey key;
  EXPECT_FALSE(key.Open(nullptr, ""));
  ASSERT_TRUE(key.Create(nullptr, nullptr));
  key.SetInt("Size", 1);
  EXPECT_EQ(m_store->ReadInt("Vendor\\Product", "Size"), 1);
}

TEST_F(WexKeyTest, ApplicationSubKeyIsCreatedWhenNeeded) {
  WexKey key;
  EXPECT_TRUE(WexGetApplicationSubKey(&key, "Grid", nullptr));
  key.SetInt("Size", 4);
  WexKey again;
  EXPECT_TRUE(WexGetApplicationSubKey(&again, "Grid", nullptr));
  EXPECT_EQ(again.GetInt("Size", 0), 4);
  WexKey child;
  EXPECT_TRUE(WexGetApplicationSubKey(&child, "Colour", &again));
  EXPECT_TRUE(m_store->KeyExists("Vendor\\Product\\Grid\\Colour"));
  EXPECT_FALSE(WexGetApplicationSubKey(nullptr, "Grid", nullptr));
}

TEST_F(WexKeyTest, TellsWhatItsStoreDoesNotTake) {
  WexSetApplicationStore(std::make_shared<test_support::RefusingStore>("App"), "App");
  WexKey key;
  ASSERT_TRUE(key.Open(nullptr, ""));
  EXPECT_FALSE(key.SetInt("Size", 1));
  EXPECT_FALSE(key.SetString("Name", "x"));
  EXPECT_TRUE(key.IsOpen());
}

TEST_F(WexKeyTest, GroupEnclosesCallsOnItsStore) {
  const auto store = std::make_shared<test_support::RecordingStore>();
  WexSetApplicationStore(store, "");
  WexKey key;
  {
    const WexKeyGroup outer(nullptr);
    ASSERT_TRUE(key.Open(nullptr, "Grid"));
    const WexKeyGroup inner(&key);
    WexSetApplicationStore(nullptr, "");
    key.SetInt("Size", 1);
  }
  EXPECT_EQ(store->Calls(), (std::vector<std::string>{"begin", "open Grid", "begin", "set Size", "end", "end"}))
      << "a group ends in the store it began in";
}

TEST_F(WexKeyTest, GroupOfAClosedKeyIsNone) {
  const auto store = std::make_shared<test_support::RecordingStore>();
  WexSetApplicationStore(store, "");
  const WexKey closed;
  { const WexKeyGroup group(&closed); }
  EXPECT_TRUE(store->Calls().empty());
}

TEST_F(WexKeyTest, ValuesInMemoryAreKeptAtOnceInAGroupToo) {
  const WexKeyGroup group(nullptr);
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  EXPECT_TRUE(key.SetInt("Size", 9));
  EXPECT_EQ(m_store->ReadInt("Vendor\\Product\\Grid", "Size"), 9);
}

TEST_F(WexKeyTest, StaysInTheStoreItWasOpenedIn) {
  WexKey key;
  ASSERT_TRUE(key.Create(nullptr, "Grid"));
  WexSetApplicationStore(nullptr, "");
  EXPECT_TRUE(key.SetInt("Size", 9));
  EXPECT_EQ(m_store->ReadInt("Vendor\\Product\\Grid", "Size"), 9);
  WexKey other;
  EXPECT_FALSE(other.Open(nullptr, "Grid"));
  EXPECT_TRUE(other.Create(nullptr, "Grid"));
}

}  // namespace
