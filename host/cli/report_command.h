#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn report` to the command line: a page for the browser with every cross section of a design.
void AddReportCommand(CLI::App& app);

}  // namespace vorn_cli
