#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn check` to the command line: tells everything that is wrong in a document.
/// @param exitCode receives the command's exit code once it has run
void AddCheckCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
