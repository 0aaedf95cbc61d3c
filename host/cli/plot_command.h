#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn plot` to the command line: draws a cross section as SVG.
void AddPlotCommand(CLI::App& app);

}  // namespace vorn_cli
