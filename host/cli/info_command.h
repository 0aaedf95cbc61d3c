#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn info` to the command line: shows what a document holds.
/// @param exitCode receives the command's exit code once it has run
void AddInfoCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
