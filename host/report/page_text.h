#pragma once

#include <string>
#include <string_view>

namespace vorn_host {

/// What a page holds as text only, however hostile it is. None of these can end the script element it stands in.

/// Bytes as base64 with padding.
[[nodiscard]] std::string Base64(std::string_view bytes);
/// The bytes of a number in hexadecimal digits, such as a checksum that CMake computes.
[[nodiscard]] std::string BytesOfHex(std::string_view digits);
/// Text deflated in the zlib format.
[[nodiscard]] std::string Deflated(std::string_view text);
/// JSON that may stand in a script element: `<` only occurs in texts, where it is written as an escape.
[[nodiscard]] std::string ScriptJson(std::string_view json);

}  // namespace vorn_host
