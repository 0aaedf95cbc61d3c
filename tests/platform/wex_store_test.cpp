#include "vorn/platform/wex_store.h"

#include <gtest/gtest.h>

#include "vorn/platform/code_page_932.h"

namespace {

TEST(WexMemoryStore, HoldsNoKeyButTheStoreItselfAtFirst) {
  const WexMemoryStore store;
  EXPECT_TRUE(store.KeyExists(""));
  EXPECT_FALSE(store.KeyExists("Vendor"));
}

TEST(WexMemoryStore, CreatesTheKeysAbove) {
  WexMemoryStore store;
  EXPECT_TRUE(store.CreateKey("Vendor\\Product\\Grid"));
  EXPECT_TRUE(store.KeyExists("Vendor"));
  EXPECT_TRUE(store.KeyExists("Vendor\\Product"));
  EXPECT_TRUE(store.KeyExists("Vendor\\Product\\Grid"));
  EXPECT_FALSE(store.KeyExists("Product"));
}

TEST(WexMemoryStore, SplitsAPathBetweenCharactersOnly) {
  WexMemoryStore store;
  store.CreateKey(u8"表\\能"_cp932);
  EXPECT_TRUE(store.KeyExists(u8"表"_cp932));
  EXPECT_FALSE(store.KeyExists("\x95"));
}

TEST(WexMemoryStore, WritesToExistingKeysOnly) {
  WexMemoryStore store;
  EXPECT_FALSE(store.WriteInt("Grid", "Size", 1));
  EXPECT_FALSE(store.WriteString("Grid", "Name", "x"));
  store.CreateKey("Grid");
  EXPECT_TRUE(store.WriteInt("Grid", "Size", 1));
  EXPECT_EQ(store.ReadInt("Grid", "Size"), 1);
}

TEST(WexMemoryStore, IgnoresTheCaseOfNames) {
  WexMemoryStore store;
  store.CreateKey("Grid");
  store.WriteInt("GRID", "Size", 1);
  store.WriteInt("grid", "SIZE", 2);
  EXPECT_EQ(store.ReadInt("Grid", "size"), 2);
}

TEST(WexMemoryStore, KeepsTheLastKindWritten) {
  WexMemoryStore store;
  store.CreateKey("Grid");
  store.WriteInt("Grid", "Size", 1);
  store.WriteString("Grid", "Size", "large");
  EXPECT_EQ(store.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_EQ(store.ReadString("Grid", "Size"), "large");
  EXPECT_EQ(store.ReadString("Grid", "Other"), std::nullopt);
  EXPECT_EQ(store.ReadString("Other", "Size"), std::nullopt);
}

}  // namespace
