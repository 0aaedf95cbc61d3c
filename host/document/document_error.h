#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vorn_host {

/// A file that cannot be read or written. The message is one plain sentence for the user: it names the file, the
/// place in it and the reason.
class DocumentError : public std::runtime_error {
 public:
  /// An error with that sentence, of which the middle is left out where it is longer than any path and what is said of
  /// it: names in a file can be of any length.
  explicit DocumentError(const std::string& message);
};

/// A character that the encoding of the model or of the file cannot hold. Reading or writing with `lossy` replaces it
/// with 〓.
class UnmappableText : public DocumentError {
 public:
  using DocumentError::DocumentError;
};

/// A document whose edition is not recognised.
class UnknownEdition : public DocumentError {
 public:
  /// @param canBeAssumed whether it can be read with `ReadOptions::assume`: it has elements of a design
  UnknownEdition(const std::string& message, bool canBeAssumed)
      : DocumentError(message), m_canBeAssumed(canBeAssumed) {}

  /// Whether the document can be read as one of an edition that the user names.
  [[nodiscard]] bool CanBeAssumed() const { return m_canBeAssumed; }

 private:
  bool m_canBeAssumed;
};

/// Throws a `DocumentError` for what could not be done with a file: "design.xml: cannot be opened: Permission denied".
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const char* what, std::error_code reason);

}  // namespace vorn_host
