#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn convert` to the command line: writes a document in another edition or encoding.
/// @param exitCode receives the command's exit code once it has run
void AddConvertCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
