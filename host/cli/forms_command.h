#pragma once

#include <CLI/CLI.hpp>

namespace vorn_cli {

/// Adds `vorn forms` to the command line: lists the build forms of a document with what their work types tell.
void AddFormsCommand(CLI::App& app);

}  // namespace vorn_cli
