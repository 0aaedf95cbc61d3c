#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn datums` to the command line: shows the vertical datums.
void AddDatumsCommand(CLI::App& app);

}  // namespace vorn_cli
