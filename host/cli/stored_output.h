#pragma once

#include <string>

#include "host/cli/output.h"
#include "host/project/design_file.h"

namespace vorn_cli {

/// What a command that writes a design tells of projects, read or written.
struct StoredSummary {
  std::string fromStoreVersion;  ///< empty when a document was read
  std::string storeVersion;      ///< empty when a document was written
  std::vector<vorn_host::Project::Loss> notStored;
  std::string formerFile;     ///< where the file that a project replaced is kept; empty without one
  bool roadDataLeft = false;  ///< a document was written of a project that holds more than the design
};

/// Writes the design and notes what projects have to do with it.
vorn_host::DesignDocument::WriteReport WriteDesign(vorn_host::DesignFile file, const std::string& path,
                                                   const vorn_host::DesignFile::WriteOptions& options,
                                                   StoredSummary& summary);

void PrintStored(TextReport& report, const StoredSummary& summary);
/// Adds the members that tell of it.
void AddStored(Json& json, const StoredSummary& summary);

}  // namespace vorn_cli
