#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace vorn_host {

/// Whether XML has no form for a character, not even by its number: no document can hold it.
[[nodiscard]] constexpr bool IsControlCharacter(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

/// Of eight bytes of text, not zero when one of them lies below the blank: a control character or a line's end.
[[nodiscard]] constexpr std::uint64_t BelowBlank(std::uint64_t eight) {
  return (eight - 0x2020202020202020U) & ~eight & 0x8080808080808080U;
}

/// Whether a text is ASCII from the blank on, as nearly all text of a model is: it stands in a document as it is. Eight
/// bytes at a time.
[[nodiscard]] inline bool IsPlainAscii(std::string_view text) {
  for (std::uint64_t eight = 0; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
    std::memcpy(&eight, text.data(), sizeof eight);
    if (((eight & 0x8080808080808080U) | BelowBlank(eight)) != 0) return false;
  }
  return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<signed char>(byte) >= 0x20; });
}

}  // namespace vorn_host
