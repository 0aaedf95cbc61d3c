#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn sample` to the command line: writes a realistic synthetic document.
/// @param exitCode receives the command's exit code once it has run
void AddSampleCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
