#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn info` to the command line: shows what a document holds.
void AddInfoCommand(CLI::App& app);

}  // namespace vorn_cli
