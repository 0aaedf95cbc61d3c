#pragma once

#include <stdexcept>
#include <string>

namespace vorn_host {

/// A file that cannot be read or written. The message is one plain sentence for the user: it names the file, the
/// place in it and the reason.
class DocumentError : public std::runtime_error {
 public:
  explicit DocumentError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace vorn_host
