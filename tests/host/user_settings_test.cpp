#include "host/settings/user_settings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "host/document/atomic_file.h"
#include "tests/host/temporary_directory.h"
#include "vorn/framework/define_manager.h"

#ifndef _WIN32

namespace vorn_host {
namespace {

namespace fs = std::filesystem;

/// Gives a variable of the environment its former value back.
class Environment {
 public:
  explicit Environment(const char* name) : m_name(name) {
    if (const char* value = std::getenv(name)) m_former = value;
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() { m_former ? Set(*m_former) : Unset(); }

  void Set(const std::string& value) const { setenv(m_name, value.c_str(), 1); }
  void Unset() const { unsetenv(m_name); }

 private:
  const char* m_name;
  std::optional<std::string> m_former;
};

class UserSettings : public testing::Test {
 protected:
  ~UserSettings() override {
    WexSetApplicationStore(nullptr, "");
    VornDefineManager::GetInstance().SetTSFlag(false);
  }

  Environment m_configuration{"XDG_CONFIG_HOME"};
  Environment m_home{"HOME"};
};

TEST_F(UserSettings, LieInTheConfigurationDirectory) {
  m_home.Set("/home/someone");
  m_configuration.Set("/etc/someone");
  EXPECT_EQ(UserConfigurationDirectory(), fs::path("/etc/someone"));
  EXPECT_EQ(OpenUserSettings({"company", "app"}, nullptr)->Place(), "/etc/someone/company/app.toml");
  m_configuration.Unset();
  EXPECT_EQ(UserConfigurationDirectory(), fs::path("/home/someone/.config"));
}

TEST_F(UserSettings, DoNotDependOnTheDirectoryThatTheProcessIsIn) {
  m_home.Set("/home/someone");
  for (const char* relative : {"", "settings", "./settings", "~"}) {
    m_configuration.Set(relative);
    EXPECT_EQ(UserConfigurationDirectory(), fs::path("/home/someone/.config")) << relative;
  }
}

TEST_F(UserSettings, LastAsLongAsTheProcessWhereThereIsNoPlace) {
  m_configuration.Unset();
  m_home.Unset();
  EXPECT_EQ(UserConfigurationDirectory(), std::nullopt);
  EXPECT_EQ(InstallUserSettings(kVornTool, nullptr), nullptr);
  WexKey key;
  ASSERT_TRUE(VornGetBaseRegKey(&key));
  EXPECT_TRUE(key.SetInt("Size", 1));
  EXPECT_EQ(key.GetInt("Size", 0), 1);
}

TEST_F(UserSettings, AreTheLibrarysOnceInstalled) {
  const host_test::TemporaryDirectory directory;
  m_configuration.Set(directory.Path().string());
  const auto store = InstallUserSettings(kVornTool, nullptr);
  WexKey key;
  ASSERT_TRUE(VornGetBaseRegKey(&key));
  EXPECT_TRUE(key.SetInt("Size", 1));
  VornDefineManager::GetInstance().SetTSFlag(true);
  ASSERT_TRUE(VornGetBaseRegKey(&key));
  EXPECT_EQ(key.GetInt("Size", 0), 0) << "the total-station edition has settings of its own";
  EXPECT_TRUE(key.SetInt("Size", 2));
  EXPECT_EQ(store->Place(), (directory / "vorn/vorn.toml").string());
  EXPECT_EQ(ReadFile(store->Place()), "[\"情報化施工\"]\nSize = 1\n\n[\"情報化施工_TS\"]\nSize = 2\n");
}

}  // namespace
}  // namespace vorn_host

#endif  // _WIN32
