#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn edit` to the command line: edits the cross sections of a document, step by step.
void AddEditCommand(CLI::App& app);

}  // namespace vorn_cli
