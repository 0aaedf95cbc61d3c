#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn export` to the command line: writes the cross sections for CAD and for other programs.
/// @param exitCode receives the command's exit code once it has run
void AddExportCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
