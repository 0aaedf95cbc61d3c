#pragma once

#include <CLI/CLI.hpp>
#include <memory>

#include "host/settings/settings_store.h"

namespace vorn_cli {

/// `vorn settings`: lists, shows and changes the user's settings. The store is the one that the library uses; null when
/// there is no place for settings.
/// @param exitCode receives the command's exit code once it has run: a value that cannot be stored is told by the store
void AddSettingsCommand(CLI::App& app, int& exitCode, std::shared_ptr<vorn_host::SettingsStore> store);

}  // namespace vorn_cli
