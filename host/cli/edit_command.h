#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn edit` to the command line: edits the cross sections of a document, step by step.
/// @param exitCode receives the command's exit code once it has run
void AddEditCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
