#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn convert` to the command line: writes a document in another edition or encoding.
void AddConvertCommand(CLI::App& app);

}  // namespace vorn_cli
