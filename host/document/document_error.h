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
  /// An error with that sentence.
  explicit DocumentError(const std::string& message) : std::runtime_error(message) {}
};

/// Throws a `DocumentError` for what could not be done with a file: "design.xml: cannot be opened: Permission denied".
[[noreturn]] void ThrowFileError(const std::filesystem::path& path, const char* what, std::error_code reason);

}  // namespace vorn_host
