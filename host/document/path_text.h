#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vorn_host {

/// A path and its text in UTF-8, in which messages and command lines name files on every system. Left to itself, the
/// standard library takes the text of a path on Windows for that of a code page, which lacks most characters.
[[nodiscard]] inline std::filesystem::path Utf8Path(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

/// The text of a path.
[[nodiscard]] inline std::string Utf8Text(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

}  // namespace vorn_host
