#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn crs` to the command line: shows the horizontal coordinate systems and the geodetic datums with their
/// codes.
void AddCrsCommand(CLI::App& app);

}  // namespace vorn_cli
