#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/document/design_document.h"
#include "host/project/project.h"

namespace vorn_host {

/// Whether a file name is that of a project, ending with ".vorn" in letters of either case.
[[nodiscard]] bool IsProjectName(const std::filesystem::path& path);

/// A file with a design, whichever of the two kinds it is: a document, or a project, whose design then is worked on as
/// a document.
struct DesignFile {
  struct WriteOptions {
    DesignDocument::WriteOptions document;
    /// For a project only.
    std::string storeVersion{Project::kNewestStoreVersion};
  };
  struct WriteReport {
    DesignDocument::WriteReport document;
    /// What the store version could not hold.
    std::vector<Project::Loss> losses;
  };

  /// Reads a project when the file is named or begins like one, else a document. Throws `DocumentError`.
  [[nodiscard]] static DesignFile Read(const std::filesystem::path& path, const DesignDocument::ReadOptions& options);

  /// Writes a project when the file is named like one, else a document, whole or not at all. A design that was read
  /// from a document becomes a new project; what a project holds besides the design is not part of a document. The
  /// design is written from where it is and not needed afterwards. Throws `DocumentError`.
  WriteReport Write(const std::filesystem::path& path, const WriteOptions& options) &&;

  DesignDocument design;
  /// The project that the design was read from.
  std::optional<Project> project;
};

}  // namespace vorn_host
