#include "host/report/page_text.h"

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>

namespace vorn_host {

namespace {

constexpr std::string_view kBase64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::uint32_t HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<std::uint32_t>(digit - '0');
  if (digit >= 'a' && digit <= 'f') return static_cast<std::uint32_t>(digit - 'a' + 10);
  throw std::invalid_argument("not a hexadecimal digit");
}

}  // namespace

std::string Base64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const auto byteAt = [&](std::size_t i) {
      return i < bytes.size() ? static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) : 0u;
    };
    const std::uint32_t group = byteAt(at) << 16 | byteAt(at + 1) << 8 | byteAt(at + 2);
    const std::size_t present = bytes.size() - at;
    text += kBase64Digits[group >> 18];
    text += kBase64Digits[group >> 12 & 63];
    text += present > 1 ? kBase64Digits[group >> 6 & 63] : '=';
    text += present > 2 ? kBase64Digits[group & 63] : '=';
  }
  return text;
}

std::string BytesOfHex(std::string_view digits) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
    bytes += static_cast<char>(HexDigit(digits[at]) << 4 | HexDigit(digits[at + 1]));
  }
  return bytes;
}

std::string Deflated(std::string_view text) {
  uLongf size = compressBound(static_cast<uLong>(text.size()));
  std::string bytes(size, '\0');
  const int result =
      compress2(reinterpret_cast<Bytef*>(bytes.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
                static_cast<uLong>(text.size()), Z_DEFAULT_COMPRESSION);
  if (result != Z_OK) throw std::bad_alloc();  // the room is always enough, so memory is all that can be short
  bytes.resize(size);
  return bytes;
}

std::string ScriptJson(std::string_view json) {
  std::string text;
  text.reserve(json.size());
  for (const char byte : json) {
    if (byte == '<') {
      text += "\\u003c";
    } else {
      text += byte;
    }
  }
  return text;
}

}  // namespace vorn_host
