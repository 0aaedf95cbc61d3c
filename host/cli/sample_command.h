#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn sample` to the command line: writes a realistic synthetic document.
void AddSampleCommand(CLI::App& app);

}  // namespace vorn_cli
