#include <gtest/gtest.h>

#include <memory>

#include "tests/allocation_failure/failing_allocation.h"
#include "vorn/platform/wex_key.h"

// What settings keys and the store in memory keep when memory runs out.

namespace {

using allocation_test::FailEachAllocation;

// Too long to be held without an allocation.
constexpr const char* kOldKey = "a key that is there from the beginning";
constexpr const char* kNewKey = "a key of its own\\a key below that one\\a key at the very end";
constexpr const char* kName = "the name of a value that is kept";
constexpr const char* kOldText = "a text that is there from the beginning";
constexpr const char* kNewText = "a text that comes after the other one, and takes more";

/// A store with one key, and that open.
class SettingsWithoutMemory : public testing::Test {
 protected:
  SettingsWithoutMemory() { WexSetApplicationStore(m_store, "App"); }
  ~SettingsWithoutMemory() override { WexSetApplicationStore(nullptr, ""); }

  /// Opens the key that is there, and gives it its old text.
  void Prepare() {
    ASSERT_TRUE(m_key.Create(nullptr, kOldKey));
    ASSERT_TRUE(m_key.SetString(kName, kOldText));
  }
  /// Whether the key is the one that was there, with its old text.
  void ExpectOldKey() {
    EXPECT_TRUE(m_key.IsOpen());
    EXPECT_EQ(m_key.GetString(kName, ""), kOldText);
  }

  std::shared_ptr<WexMemoryStore> m_store = std::make_shared<WexMemoryStore>();
  WexKey m_key;
};

TEST_F(SettingsWithoutMemory, KeepTheirText) {
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(m_key.SetString(kName, kNewText)); },
                     [&] { ExpectOldKey(); });
  EXPECT_EQ(m_key.GetString(kName, ""), kNewText);
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(m_key.SetInt(kName, 5)); }, [&] { ExpectOldKey(); });
  EXPECT_EQ(m_key.GetInt(kName, 0), 5);
  constexpr const char* kNewName = "the name of a value that comes later";
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(m_key.SetInt(kNewName, 5)); },
                     [&] {
                       ExpectOldKey();
                       EXPECT_EQ(m_key.GetInt(kNewName, -1), -1);
                     });
  EXPECT_EQ(m_key.GetInt(kNewName, -1), 5);
}

TEST_F(SettingsWithoutMemory, StayWhenTheyAreRead) {
  constexpr const char* kNumber = "the name of a number that is kept";
  const auto prepare = [&] {
    Prepare();
    ASSERT_TRUE(m_key.SetInt(kNumber, 5));
  };
  const auto expectAll = [&] {
    ExpectOldKey();
    EXPECT_EQ(m_key.GetInt(kNumber, 7), 5);
  };
  FailEachAllocation(
      prepare, [&] { EXPECT_EQ(m_key.GetString(kName, kNewText), kOldText); }, expectAll);
  FailEachAllocation(
      prepare, [&] { EXPECT_EQ(m_key.GetString(kNumber, kNewText), kNewText); }, expectAll);
  FailEachAllocation(
      prepare, [&] { EXPECT_EQ(m_key.GetInt(kNumber, 7), 5); }, expectAll);
  FailEachAllocation(
      prepare, [&] { EXPECT_TRUE(m_store->KeyExists("App\\a key that is there from the beginning")); }, expectAll);
}

TEST_F(SettingsWithoutMemory, LeaveAClosedKeyClosed) {
  const auto close = [&] { m_key.Close(); };
  const auto expectClosed = [&] { EXPECT_FALSE(m_key.IsOpen()); };
  FailEachAllocation(
      close, [&] { EXPECT_FALSE(m_key.Open(nullptr, kNewKey)); }, expectClosed);
  FailEachAllocation(
      close, [&] { EXPECT_TRUE(m_key.Create(nullptr, kNewKey)); }, expectClosed);
  FailEachAllocation(
      close, [&] { EXPECT_TRUE(m_key.Open(nullptr, kNewKey)); }, expectClosed);
  EXPECT_TRUE(m_key.IsOpen());
}

TEST_F(SettingsWithoutMemory, LeaveAnOpenKeyWhereItWas) {
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(m_key.Create(nullptr, kNewKey)); }, [&] { ExpectOldKey(); });
  EXPECT_EQ(m_key.GetString(kName, ""), "");
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(m_key.Open(nullptr, kNewKey)); }, [&] { ExpectOldKey(); });
  EXPECT_EQ(m_key.GetString(kName, ""), "");
  FailEachAllocation([&] { Prepare(); }, [&] { EXPECT_TRUE(WexGetApplicationSubKey(&m_key, kNewKey, &m_key)); },
                     [&] { ExpectOldKey(); });
  EXPECT_EQ(m_key.GetString(kName, ""), "");
}

TEST_F(SettingsWithoutMemory, MakeAllKeysOfAPathOrNone) {
  CString outer("the name that a path begins with");
  CString path;
  const auto prepare = [&] {
    outer += 'x';  // another path each time: a store forgets no key
    path = outer + "\\the name that a path ends with";
  };
  FailEachAllocation(
      prepare, [&] { EXPECT_TRUE(m_store->CreateKey(path.View())); },
      [&] { EXPECT_FALSE(m_store->KeyExists(outer.View())); });
  EXPECT_TRUE(m_store->KeyExists(outer.View()));
  EXPECT_TRUE(m_store->KeyExists(path.View()));
}

TEST_F(SettingsWithoutMemory, LeaveTheApplicationsStore) {
  const auto other = std::make_shared<WexMemoryStore>();
  Prepare();
  const auto set = [&] { WexSetApplicationStore(other, "a path of the application that takes memory"); };
  FailEachAllocation([] {}, set,
                     [&] {
                       EXPECT_TRUE(m_key.Open(nullptr, kOldKey));
                       ExpectOldKey();
                     });
  EXPECT_FALSE(m_key.Open(nullptr, kOldKey));
}

}  // namespace
