#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vorn/platform/code_page_932_table.h"

/// Code page 932, the encoding of every text in the model and its archive: one byte for ASCII and half-width
/// katakana, a lead and a trail byte for everything else. Trail bytes overlap ASCII letters and the backslash, so
/// whoever looks for a byte has to ask `IsCharacterStart`.
namespace code_page_932 {

/// The byte at a position inside the text.
[[nodiscard]] constexpr unsigned char Byte(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

/// Whether a byte begins a character of two bytes.
[[nodiscard]] constexpr bool IsLeadByte(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

/// Whether a byte can end a character of two bytes.
[[nodiscard]] constexpr bool IsTrailByte(unsigned char byte) { return byte >= 0x40 && byte <= 0xFC && byte != 0x7F; }

/// Bytes of the character that starts at a position inside the text: 1 or 2. A lead byte without a trail byte stands
/// alone.
[[nodiscard]] constexpr std::size_t CharacterLength(std::string_view text, std::size_t at) {
  const bool pair = at + 1 < text.size() && IsLeadByte(Byte(text, at)) && IsTrailByte(Byte(text, at + 1));
  return pair ? 2 : 1;
}

/// Whether a character starts at the position, that is, whether it is not the trail byte of one; the end of the text
/// counts as a start. Looks only at the bytes just before the position.
[[nodiscard]] constexpr bool IsCharacterStart(std::string_view text, std::size_t at) {
  if (at >= text.size() || !IsTrailByte(Byte(text, at))) return true;
  // A byte that is no lead byte always ends a character, and the lead bytes after it pair up from there.
  std::size_t runStart = at;
  while (runStart > 0 && IsLeadByte(Byte(text, runStart - 1))) --runStart;
  return (at - runStart) % 2 == 0;
}

/// The first code point that stands for the user-defined area, rows F0 to F9.
inline constexpr char32_t kUserDefinedFirst = 0xE000;
/// How many code points stand for it.
inline constexpr char32_t kUserDefinedCount = 1880;
/// Trail bytes of a row.
inline constexpr std::size_t kRowLength = 188;

/// The bytes of a character: below 0x100 one byte, else lead byte * 0x100 + trail byte; none when code page 932 does
/// not hold it.
///
/// Six characters that other Japanese tables use for the same sign are taken too (the wave dash U+301C for ～, the
/// minus U+2212 for －), so a document written elsewhere does not lose them; they read back as the sign held here.
[[nodiscard]] constexpr std::optional<std::uint16_t> Encode(char32_t codePoint) {
  if (codePoint < 0x80) return static_cast<std::uint16_t>(codePoint);
  if (codePoint - kUserDefinedFirst < kUserDefinedCount) {
    const auto index = static_cast<unsigned>(codePoint - kUserDefinedFirst);
    const unsigned column = index % kRowLength;
    const unsigned trail = 0x40 + column + (column >= 0x3F ? 1 : 0);
    return static_cast<std::uint16_t>((0xF0 + index / kRowLength) << 8 | trail);
  }
  std::size_t first = 0;
  std::size_t last = detail::kCodePoints.size();
  while (first < last) {
    const std::size_t middle = (first + last) / 2;
    const char32_t candidate = detail::kCodePoints[middle];
    if (candidate == codePoint) return static_cast<std::uint16_t>(detail::kBytes[middle]);
    if (candidate < codePoint) {
      first = middle + 1;
    } else {
      last = middle;
    }
  }
  return std::nullopt;
}

/// The character of a single byte; none for a lead byte.
[[nodiscard]] std::optional<char32_t> Decode(unsigned char single);
/// The character of a lead and a trail byte; none when there is no such character.
[[nodiscard]] std::optional<char32_t> Decode(unsigned char lead, unsigned char trail);

/// How a conversion ended, and where to take it up again: at `position + length` of the input, once the caller has
/// put in place of the fault whatever it likes (〓, say).
struct Conversion {
  /// What a conversion stopped at.
  enum class Fault : std::uint8_t {
    kNone,        ///< everything is converted
    kInvalid,     ///< the bytes at the position are no character of the input's encoding
    kUnmappable,  ///< the character at the position has no form in code page 932
  };

  Fault fault = Fault::kNone;  ///< why the conversion ended
  std::size_t position = 0;    ///< input bytes converted; the input's size when there is no fault
  std::size_t length = 0;      ///< input bytes of the fault
  char32_t codePoint = 0;      ///< the character that could not be held (`kUnmappable` only)

  /// Whether everything is converted.
  explicit operator bool() const { return fault == Fault::kNone; }
};

/// Appends the text as UTF-8, up to the first fault. O(n).
[[nodiscard]] Conversion AppendAsUtf8(std::string_view cp932, std::string& utf8);
/// Appends UTF-8 text as code page 932, up to the first fault. O(n).
[[nodiscard]] Conversion AppendFromUtf8(std::string_view utf8, std::string& cp932);

/// The text of a `u8""_cp932` literal before its conversion.
template <std::size_t kSize>
struct Utf8Literal {
  char8_t text[kSize];  ///< the bytes of the literal, in UTF-8

  /// Takes a literal.
  consteval Utf8Literal(const char8_t (&literal)[kSize]) {  // NOLINT(google-explicit-constructor)
    for (std::size_t i = 0; i < kSize; ++i) text[i] = literal[i];
  }
};

namespace detail {

/// Room for a literal's bytes; no character takes more of them here than in UTF-8.
template <std::size_t kSize>
struct LiteralBytes {
  std::array<char, kSize> bytes{};  ///< the converted bytes
  std::size_t length = 0;           ///< how many they are

  /// Converts while compiling.
  consteval explicit LiteralBytes(const Utf8Literal<kSize>& literal) {
    for (std::size_t at = 0; at + 1 < kSize;) Append(Next(literal, at));
  }

 private:
  static consteval char32_t Next(const Utf8Literal<kSize>& literal, std::size_t& at) {
    const char32_t first = literal.text[at++];
    if (first < 0x80) return first;
    const int more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    char32_t codePoint = first & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) codePoint = codePoint << 6 | (literal.text[at++] & 0x3Fu);
    return codePoint;
  }

  consteval void Append(char32_t codePoint) {
    const std::optional<std::uint16_t> encoded = Encode(codePoint);
    if (!encoded) throw "a character of this literal has no form in code page 932";
    if (*encoded >= 0x100) bytes[length++] = static_cast<char>(*encoded >> 8);
    bytes[length++] = static_cast<char>(*encoded & 0xFF);
  }
};

/// With its type told, as g++ otherwise takes some of them for data that may change, and linkers of Windows then find
/// them twice.
template <Utf8Literal kLiteral>
inline constexpr LiteralBytes<sizeof(kLiteral.text)> kLiteralBytes{kLiteral};

}  // namespace detail
}  // namespace code_page_932

/// Japanese text in a source file, converted while compiling: `u8"盛土工"_cp932` is the same bytes with every compiler
/// and every setting of its character sets. A NUL follows the text; a character that code page 932 does not hold does
/// not compile.
template <code_page_932::Utf8Literal kLiteral>
[[nodiscard]] consteval std::string_view operator""_cp932() {
  constexpr const auto& kEncoded = code_page_932::detail::kLiteralBytes<kLiteral>;
  return {kEncoded.bytes.data(), kEncoded.length};
}
