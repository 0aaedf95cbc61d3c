#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "host/cli/progress.h"
#include "host/document/design_document.h"
#include "host/project/design_file.h"

namespace vorn_cli {

/// The design that a command reads, and how the command tells of it.
struct DesignSource {
  std::string file;                             ///< a document or project
  vorn_host::DesignDocument::ReadOptions read;  ///< how it is read
  bool json = false;                            ///< JSON for programs rather than text
};

/// FILE: the design that a command tells of. The options' values have to live as long as the command line; so here and
/// below.
void AddFileArgument(CLI::App& command, DesignSource& source);
/// `--assume`, `--lossy` and `--json`.
/// @returns `--json`
CLI::Option* AddReadOptions(CLI::App& command, DesignSource& source);
/// `--lossy`.
void AddLossyOption(CLI::App& command, DesignSource& source,
                    const char* description = "read characters outside code page 932 as 〓");
/// `--json`.
CLI::Option* AddJsonOption(CLI::App& command, bool& json);

/// A bar where the design takes long enough for one.
[[nodiscard]] Progress ProgressOf(const DesignSource& source);
/// Reads the design, as the first of so many steps. Throws `DocumentError`.
[[nodiscard]] vorn_host::DesignFile ReadDesign(const DesignSource& source, Progress& progress, int steps);

}  // namespace vorn_cli
