#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn datums` to the command line: shows the vertical datums.
/// @param exitCode receives the command's exit code once it has run
void AddDatumsCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
