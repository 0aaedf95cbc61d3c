#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn plot` to the command line: draws a cross section as SVG.
/// @param exitCode receives the command's exit code once it has run
void AddPlotCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
