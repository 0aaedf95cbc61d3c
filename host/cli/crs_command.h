#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn crs` to the command line: shows the horizontal coordinate systems and the geodetic datums with their
/// codes.
/// @param exitCode receives the command's exit code once it has run
void AddCrsCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
