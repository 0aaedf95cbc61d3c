// The system registry is part of Windows alone.
#ifdef _WIN32

#include "host/settings/registry_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/settings/user_settings.h"
#include "tests/host/tool.h"
#include "vorn/framework/define_manager.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/wex_key.h"

namespace vorn_host {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kRoot = "Software\\vorn-test\\store";
constexpr const wchar_t* kRootUtf16 = L"Software\\vorn-test\\store";
constexpr const wchar_t* kTestKeys = L"Software\\vorn-test";

/// A value as another program stores it, below the root of the test's store.
template <typename Unit, std::size_t kSize>
void StoreForeign(const wchar_t* key, const wchar_t* name, DWORD type, const Unit (&data)[kSize],
                  std::size_t size = sizeof(data)) {
  const std::wstring path = std::wstring(kRootUtf16) + key;
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), name, type, data, static_cast<DWORD>(size)),
            ERROR_SUCCESS);
}

/// The kind and the bytes of a value below the root of the test's store.
struct StoredValue {
  DWORD type = REG_NONE;
  std::vector<std::uint8_t> bytes;
  bool operator==(const StoredValue&) const = default;
};

StoredValue StoredAt(const wchar_t* key, const wchar_t* name) {
  const std::wstring path = std::wstring(kRootUtf16) + key;
  StoredValue value;
  value.bytes.resize(1000);
  auto size = static_cast<DWORD>(value.bytes.size());
  EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name, RRF_RT_ANY | RRF_NOEXPAND, &value.type,
                         value.bytes.data(), &size),
            ERROR_SUCCESS);
  value.bytes.resize(size);
  return value;
}

bool IsStored(const wchar_t* path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

class RegistryStoreTest : public testing::Test {
 protected:
  RegistryStoreTest() { RegDeleteTreeW(HKEY_CURRENT_USER, kTestKeys); }
  ~RegistryStoreTest() override { RegDeleteTreeW(HKEY_CURRENT_USER, kTestKeys); }

  [[nodiscard]] RegistryStore Open() {
    return RegistryStore(kRoot, [this](const std::string& problem) { m_problems.push_back(problem); });
  }

  std::vector<std::string> m_problems;
  RegistryStore m_store = Open();
};

TEST_F(RegistryStoreTest, NamesItsPlace) {
  EXPECT_EQ(m_store.Place(), "HKEY_CURRENT_USER\\Software\\vorn-test\\store");
}

TEST_F(RegistryStoreTest, ReadingAndCreatingKeysLeavesNoTraces) {
  EXPECT_TRUE(m_store.KeyExists(""));
  EXPECT_FALSE(m_store.KeyExists("Grid"));
  EXPECT_EQ(m_store.ReadInt("Grid", "Size"), std::nullopt);
  EXPECT_TRUE(m_store.CreateKey("Vendor\\Grid"));
  EXPECT_TRUE(m_store.KeyExists("vendor\\grid"));
  EXPECT_TRUE(m_store.KeyExists("Vendor"));
  EXPECT_EQ(m_store.ReadInt("Vendor\\Grid", "Size"), std::nullopt);
  EXPECT_THAT(m_store.Entries(), IsEmpty());
  EXPECT_FALSE(IsStored(kTestKeys));
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(RegistryStoreTest, WritesToExistingKeysOnly) {
  EXPECT_FALSE(m_store.WriteInt("Grid", "Size", 1));
  EXPECT_THAT(m_problems, ElementsAre(m_store.Place() + ": Grid.Size cannot be written: there is no such key"));
  EXPECT_FALSE(IsStored(kTestKeys));
  m_store.CreateKey("Grid");
  EXPECT_TRUE(m_store.WriteInt("Grid", "Size", 1));
  EXPECT_TRUE(m_store.WriteInt("", "Top", 2)) << "the store itself is a key";
}

TEST_F(RegistryStoreTest, KeepsIntegersAsNumbersAndTextsAsUtf16) {
  m_store.CreateKey(u8"情報化施工"_cp932);
  EXPECT_TRUE(m_store.WriteInt(u8"情報化施工"_cp932, u8"幅"_cp932, -2));
  EXPECT_TRUE(m_store.WriteString(u8"情報化施工"_cp932, "Name", u8"道a"_cp932));
  EXPECT_EQ(StoredAt(L"\\情報化施工", L"幅"), (StoredValue{REG_DWORD, {0xFE, 0xFF, 0xFF, 0xFF}}));
  EXPECT_EQ(StoredAt(L"\\情報化施工", L"Name"), (StoredValue{REG_SZ, {0x53, 0x90, 0x61, 0x00, 0x00, 0x00}}));
}

TEST_F(RegistryStoreTest, AnotherObjectFindsTheValues) {
  m_store.CreateKey("Grid");
  m_store.WriteInt("Grid", "Least", INT32_MIN);
  m_store.WriteInt("Grid", "Most", INT32_MAX);
  m_store.WriteString("Grid", "Name", u8"第1種"_cp932);
  m_store.WriteString("Grid", "Empty", "");
  const RegistryStore other = Open();
  EXPECT_EQ(other.ReadInt("grid", "least"), INT32_MIN);
  EXPECT_EQ(other.ReadInt("Grid", "Most"), INT32_MAX);
  EXPECT_EQ(other.ReadString("GRID", "NAME"), CString(u8"第1種"_cp932));
  EXPECT_EQ(other.ReadString("Grid", "Empty"), CString());
}

TEST_F(RegistryStoreTest, TellsIntegersFromTexts) {
  m_store.CreateKey("Grid");
  m_store.WriteInt("Grid", "Number", 3);
  m_store.WriteString("Grid", "Text", "3");
  EXPECT_EQ(m_store.ReadString("Grid", "Number"), std::nullopt);
  EXPECT_EQ(m_store.ReadInt("Grid", "Text"), std::nullopt);
  m_store.WriteString("Grid", "Number", "three");
  EXPECT_EQ(m_store.ReadInt("Grid", "Number"), std::nullopt);
  EXPECT_EQ(m_store.ReadString("Grid", "Number"), CString("three")) << "a value takes the place of one of another kind";
}

TEST_F(RegistryStoreTest, GoesThroughEverythingThatIsStored) {
  m_store.CreateKey("A\\B");
  m_store.WriteInt("", "Top", 1);
  m_store.WriteString("A\\B", "Name", u8"道路中心"_cp932);
  StoreForeign(L"\\A", L"Wide", REG_QWORD, {std::uint64_t{5}});
  EXPECT_THAT(m_store.Entries(), ElementsAre(SettingsEntry{{}, "Top", 1, "1"},
                                             SettingsEntry{{"A"}, "Wide", std::nullopt, "a value of type 11"},
                                             SettingsEntry{{"A", "B"}, "Name", "道路中心", "\"道路中心\""}));
  EXPECT_THAT(m_problems, IsEmpty());
}

TEST_F(RegistryStoreTest, FindsAValueWhateverItsKind) {
  StoreForeign(L"\\A", L"Wide", REG_QWORD, {std::uint64_t{5}});
  const std::optional<SettingsEntry> found = m_store.Find({"a"}, "wide");
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->value, std::nullopt);
  EXPECT_EQ(m_store.Find({"A"}, "Absent"), std::nullopt);
  EXPECT_EQ(m_store.Find({"Absent"}, "Wide"), std::nullopt);
  EXPECT_THAT(m_problems, IsEmpty()) << "what is not there is no problem";
}

TEST_F(RegistryStoreTest, ReadsTextsOfOtherProgramsWithAndWithoutTheirEnd) {
  StoreForeign(L"\\A", L"Open", REG_SZ, L"abc", 3 * sizeof(wchar_t));
  StoreForeign(L"\\A", L"Twice", REG_SZ, L"abc\0def");
  StoreForeign(L"\\A", L"Nothing", REG_SZ, L"", 0);
  StoreForeign(L"\\A", L"Short", REG_DWORD, {std::uint16_t{7}});
  EXPECT_EQ(m_store.ReadString("A", "Open"), CString("abc"));
  EXPECT_EQ(m_store.ReadString("A", "Twice"), CString("abc")) << "it ends at the first NUL";
  EXPECT_EQ(m_store.ReadString("A", "Nothing"), CString());
  EXPECT_EQ(m_store.ReadInt("A", "Short"), std::nullopt) << "no integer of 32 bits";
}

TEST_F(RegistryStoreTest, ReadsLongTexts) {
  const std::string text(20'000, 'x');
  m_store.CreateKey("A");
  EXPECT_TRUE(m_store.WriteString("A", "Long", text));
  EXPECT_EQ(m_store.ReadString("A", "Long"), CString(text));
}

TEST_F(RegistryStoreTest, ReportsAKeyThatCannotBeMade) {
  const std::string tooLong(300, 'k');
  m_store.CreateKey(tooLong);
  EXPECT_FALSE(m_store.WriteInt(tooLong, "Size", 1));
  ASSERT_EQ(m_problems.size(), 1u);
  EXPECT_THAT(m_problems[0], AllOf(StartsWith(m_store.Place() + "\\kkk"), HasSubstr(": cannot be written: ")));
  EXPECT_FALSE(m_store.WriteInt(tooLong, "Size", 1));
  EXPECT_EQ(m_problems.size(), 1u) << "the same again";
}

// --- the library's settings ------------------------------------------------------------------------------------------

class UserRegistry : public RegistryStoreTest {
 protected:
  ~UserRegistry() override {
    WexSetApplicationStore(nullptr, "");
    VornDefineManager::GetInstance().SetTSFlag(false);
  }
};

TEST_F(UserRegistry, HoldsTheSettingsOfTheLibraryOnceInstalled) {
  const auto store = InstallUserSettings({"vorn-test", "store"}, nullptr);
  ASSERT_NE(store, nullptr);
  EXPECT_EQ(store->Place(), m_store.Place());
  WexKey key;
  ASSERT_TRUE(VornGetBaseRegKey(&key));
  EXPECT_TRUE(key.SetInt("Size", 1));
  VornDefineManager::GetInstance().SetTSFlag(true);
  ASSERT_TRUE(VornGetBaseRegKey(&key));
  EXPECT_EQ(key.GetInt("Size", 0), 0) << "the total-station edition has settings of its own";
  EXPECT_TRUE(key.SetInt("Size", 2));
  EXPECT_THAT(m_store.Entries(), ElementsAre(SettingsEntry{{"情報化施工"}, "Size", 1, "1"},
                                             SettingsEntry{{"情報化施工_TS"}, "Size", 2, "2"}));
}

// --- the tool --------------------------------------------------------------------------------------------------------

/// Runs `vorn settings` on the registry of whoever runs the tests, and leaves it as it was.
class RegistryTool : public host_test::ToolTest {
 protected:
  RegistryTool() : m_former(m_store.Find({"情報化施工", "RoadInfo"}, "speed")) {}
  ~RegistryTool() override {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, L"Software\\vorn\\vorn\\情報化施工\\RoadInfo", L"speed");
    if (!m_former || !m_former->value) return;
    m_store.CreateKey(u8"情報化施工\\RoadInfo"_cp932);
    m_store.WriteInt(u8"情報化施工\\RoadInfo"_cp932, "speed", std::get<std::int32_t>(*m_former->value));
  }

 private:
  RegistryStore m_store{"Software\\vorn\\vorn", nullptr};
  std::optional<SettingsEntry> m_former;
};

TEST_F(RegistryTool, StoresASettingThatLaterRunsFind) {
  EXPECT_EQ(Output({"settings", "set", "RoadInfo.speed", "3"}),
            "RoadInfo.speed      3 (60 km/h), stored; the default is 0 (120 km/h)\n");
  EXPECT_EQ(OutputJson({"settings", "get", "RoadInfo.speed", "--json"})["value"], 3);
  EXPECT_THAT(Output({"settings", "list"}),
              AllOf(HasSubstr("HKEY_CURRENT_USER\\Software\\vorn\\vorn"), HasSubstr("情報化施工\n")));
}

}  // namespace
}  // namespace vorn_host

#endif  // _WIN32
