#include "host/document/document_error.h"

#include "host/document/path_text.h"

namespace vorn_host {

void ThrowFileError(const std::filesystem::path& path, const char* what, std::error_code reason) {
  throw DocumentError(Utf8Text(path) + ": " + what + ": " + (reason ? reason.message() : "unknown reason"));
}

}  // namespace vorn_host
