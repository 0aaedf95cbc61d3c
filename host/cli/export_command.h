#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn export` to the command line: writes the cross sections for CAD and for other programs.
void AddExportCommand(CLI::App& app);

}  // namespace vorn_cli
