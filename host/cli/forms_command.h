#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn forms` to the command line: lists the build forms of a document with what their work types tell.
/// @param exitCode receives the command's exit code once it has run
void AddFormsCommand(CLI::App& app, int& exitCode);

}  // namespace vorn_cli
