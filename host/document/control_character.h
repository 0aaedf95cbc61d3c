#pragma once

namespace vorn_host {

/// Whether XML has no form for a character, not even by its number: no document can hold it.
[[nodiscard]] constexpr bool IsControlCharacter(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

}  // namespace vorn_host
