#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <string>
#include <vector>

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

/// What a command that writes a design tells of it; both the text and the JSON are made from it.
struct RewriteSummary {
  std::string out;
  std::string encoding;  ///< empty when a project is written
  StoredSummary stored;
  int sections = 0;
  std::size_t replacedInReading = 0;
  std::size_t replacedInWriting = 0;
  std::vector<vorn_host::UnreadValue> notUnderstood;
  std::vector<vorn_host::CarriedContent::Row> carried;
  std::vector<vorn_host::CarriedContent::Row> unplaced;

  /// What was written.
  void PrintHead(TextReport& report, const std::string& edition) const;
  /// What of the design's texts and values was read or written otherwise than it stands.
  void PrintDoubts(TextReport& report) const;
  /// What got lost with its place, notes, and what was carried over.
  void PrintTail(TextReport& report, const std::vector<std::string>& notes = {}) const;
  /// Adds the members up to what was not understood.
  void AddHead(Json& json) const;
  /// Adds the members from what was carried over.
  void AddTail(Json& json) const;
};

/// What the design is going to be in a file. Throws a usage error where an option is given that only the other kind
/// has.
[[nodiscard]] vorn_host::DesignKind KindToWrite(const CLI::App& command, const std::string& out);

/// Writes the design. Throws `DocumentError`.
RewriteSummary WriteDesign(vorn_host::DesignFile file, const std::string& out,
                           const vorn_host::DesignFile::WriteOptions& options);

/// Prints what projects have to do with it.
void PrintStored(TextReport& report, const StoredSummary& summary);
/// Adds the members that tell of it.
void AddStored(Json& json, const StoredSummary& summary);

}  // namespace vorn_cli
