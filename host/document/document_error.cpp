#include "host/document/document_error.h"

namespace vorn_host {

void ThrowFileError(const std::filesystem::path& path, const char* what, std::error_code reason) {
  throw DocumentError(path.string() + ": " + what + ": " + (reason ? reason.message() : "unknown reason"));
}

}  // namespace vorn_host
