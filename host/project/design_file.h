#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/document/design_document.h"
#include "host/project/project.h"

namespace vorn_host {

/// Whether a file name is that of a project: it ends with ".vorn", in letters of either case.
[[nodiscard]] bool IsProjectName(const std::filesystem::path& path);

/// Whether there is a file that holds a design: one that begins as a project or a document does. Throws `DocumentError`
/// when there is a file that cannot be read.
[[nodiscard]] bool HoldsDesign(const std::filesystem::path& path);

/// Why nothing else may be written in a file's place: it holds a design, or is named like a project or the backup of
/// one. None where it may.
/// @param what is to be written, "the drawing"
[[nodiscard]] std::optional<std::string> ReasonToKeep(const std::filesystem::path& path, const std::string& what);

/// The two kinds of file that hold a design.
enum class DesignKind { Document, Project };

/// What a design is written as into that file: as a project where it or the file that it leads to is named like one, or
/// is one and not named otherwise (".xml"). Throws `DocumentError` when the file is a project and named like a
/// document, since a document in its place would lose all its road data, and when a link is named like a project and
/// leads to a document or to a file named like one, which would become a project.
[[nodiscard]] DesignKind KindToWrite(const std::filesystem::path& path);

/// A file with a design, whichever of the two kinds it is: a document, or a project, whose design then is worked on as
/// a document.
struct DesignFile {
  /// How a design is written.
  struct WriteOptions {
    DesignDocument::WriteOptions document;  ///< for a document
    /// For a project: the store version to write. Without one, that of the project that was read, when it can be
    /// written, else the newest.
    std::string storeVersion;
    /// `KindToWrite` of the file, when it has been looked at already.
    std::optional<DesignKind> kind;
  };
  /// What writing a design did.
  struct WriteReport {
    DesignDocument::WriteReport document;  ///< of a document
    /// Empty when a document was written.
    std::string storeVersion;
    /// What the store version could not hold.
    std::vector<Project::Loss> losses;
    /// Where the file that a project replaced is kept now, whatever it was; empty when there was none.
    std::filesystem::path formerFile;
    /// Whether a document was written of a project that holds more than the design.
    bool roadDataLeft = false;
  };

  /// Reads a project when the file is named or begins like one, else a document. Throws `DocumentError`.
  [[nodiscard]] static DesignFile Read(const std::filesystem::path& path, const DesignDocument::ReadOptions& options);

  /// Writes a project or a document (`KindToWrite`), whole or not at all. A design that was read from a document
  /// becomes a new project; what a project holds besides the design is not part of a document. The design is written
  /// from where it is and not needed afterwards. Throws `DocumentError`.
  WriteReport Write(const std::filesystem::path& path, const WriteOptions& options) &&;

  DesignDocument design;  ///< the design itself
  /// The project that the design was read from.
  std::optional<Project> project;
};

}  // namespace vorn_host
