#include "host/document/document_error.h"

#include "host/document/path_text.h"
#include "host/document/text_encoding.h"

namespace vorn_host {

namespace {

std::string Shortened(const std::string& message) {
  constexpr std::size_t kLongest = 6000;
  constexpr std::size_t kBeginning = 5000;
  constexpr std::size_t kEnd = 500;
  if (message.size() <= kLongest) return message;
  std::size_t first = kBeginning;
  while (first > 0 && IsUtf8Continuation(message[first])) --first;
  std::size_t last = message.size() - kEnd;
  while (last < message.size() && IsUtf8Continuation(message[last])) ++last;
  return message.substr(0, first) + " ... " + message.substr(last);
}

}  // namespace

DocumentError::DocumentError(const std::string& message) : std::runtime_error(Shortened(message)) {}

void ThrowFileError(const std::filesystem::path& path, const char* what, std::error_code reason) {
  throw DocumentError(Utf8Text(path) + ": " + what + ": " + (reason ? reason.message() : "unknown reason"));
}

}  // namespace vorn_host
