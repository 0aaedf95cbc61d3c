#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn report` to the command line: a page for the browser with every cross section of a design.
/// @param exitCode receives the command's exit code once it has run
void AddReportCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
