#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "host/settings/settings_store.h"

namespace vorn_host {

/// Names an application among those that keep settings for a user.
struct ApplicationName {
  std::string_view company;      ///< of the company
  std::string_view application;  ///< of the application
};

/// What the `vorn` tool keeps its settings under.
inline constexpr ApplicationName kVornTool{"vorn", "vorn"};

/// The directory that the user keeps settings in: XDG_CONFIG_HOME where that is an absolute path, otherwise .config in
/// HOME. None when neither is set.
[[nodiscard]] std::optional<std::filesystem::path> UserConfigurationDirectory();

/// Opens the user's settings of an application: the file `COMPANY/APPLICATION.toml` in the configuration directory, or
/// on Windows the key `Software\COMPANY\APPLICATION` of HKEY_CURRENT_USER. Null when there is no place for them.
[[nodiscard]] std::shared_ptr<SettingsStore> OpenUserSettings(const ApplicationName& name,
                                                              SettingsStore::ProblemHandler report);

/// Makes the user's settings those that the library reads and writes, and gives their store. For an application to call
/// when it starts. Without a place for them (null) the settings last as long as the process.
std::shared_ptr<SettingsStore> InstallUserSettings(const ApplicationName& name, SettingsStore::ProblemHandler report);

}  // namespace vorn_host
