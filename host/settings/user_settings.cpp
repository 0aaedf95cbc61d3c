#include "host/settings/user_settings.h"

#include <cstdlib>
#include <string>
#include <utility>

#ifdef _WIN32
#include "host/settings/registry_store.h"
#else
#include "host/settings/settings_file.h"
#endif
#include "vorn/platform/wex_key.h"

namespace vorn_host {

namespace fs = std::filesystem;

namespace {

/// The path that a variable of the environment holds; none when it is not set or not absolute.
std::optional<fs::path> AbsolutePathIn(const char* variable) {
  const char* value = std::getenv(variable);
  fs::path path = value != nullptr ? value : "";
  return path.is_absolute() ? std::optional(std::move(path)) : std::nullopt;
}

}  // namespace

std::optional<fs::path> UserConfigurationDirectory() {
  if (auto directory = AbsolutePathIn("XDG_CONFIG_HOME")) return directory;
  if (const auto home = AbsolutePathIn("HOME")) return *home / ".config";
  return std::nullopt;
}

std::shared_ptr<SettingsStore> OpenUserSettings(const ApplicationName& name, SettingsStore::ProblemHandler report) {
#ifdef _WIN32
  const std::string key = "Software\\" + std::string(name.company) + '\\' + std::string(name.application);
  return std::make_shared<RegistryStore>(key, std::move(report));
#else
  const std::optional<fs::path> directory = UserConfigurationDirectory();
  if (!directory) return nullptr;
  const std::string file = std::string(name.application) + ".toml";
  return std::make_shared<SettingsFile>(*directory / name.company / file, std::move(report));
#endif
}

std::shared_ptr<SettingsStore> InstallUserSettings(const ApplicationName& name, SettingsStore::ProblemHandler report) {
  std::shared_ptr<SettingsStore> store = OpenUserSettings(name, std::move(report));
  WexSetApplicationStore(store, "");  // the store is the application's own key
  return store;
}

}  // namespace vorn_host
