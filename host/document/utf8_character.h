#pragma once

#include <cstddef>
#include <string_view>

#include "host/document/text_encoding.h"

namespace vorn_host {

/// Where the character that begins there ends. A byte that begins none stands for itself.
[[nodiscard]] constexpr std::size_t EndOfCharacter(std::string_view utf8, std::size_t begin) {
  const auto lead = static_cast<unsigned char>(utf8[begin]);
  const std::size_t longest = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  std::size_t end = begin + 1;
  while (end < utf8.size() && end - begin < longest && IsUtf8Continuation(utf8[end])) ++end;
  return end;
}

}  // namespace vorn_host
