#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vorn_host {

/// The letters A to Z in lower case; all other characters stay.
[[nodiscard]] constexpr char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
/// The same for a text.
[[nodiscard]] std::string AsciiLower(std::string_view text);

/// The encodings that documents are written in.
enum class TextEncoding { Utf8, ShiftJis };

/// As an XML declaration names it: "UTF-8", "Shift_JIS".
[[nodiscard]] std::string_view EncodingName(TextEncoding encoding);
/// The encoding of a name, without regard to case: UTF-8, Shift_JIS and the common names of code page 932.
[[nodiscard]] std::optional<TextEncoding> ParseEncoding(std::string_view name);

/// A document's text in UTF-8, without a byte-order mark.
struct DecodedText {
  std::string utf8;  ///< the text
  /// What the document calls its encoding.
  std::string encodingName;
};

/// Turns the bytes of an XML document into UTF-8: UTF-8 and UTF-16 by byte-order mark, otherwise by the XML
/// declaration. Throws `DocumentError` for an encoding that is not known and for bytes that are none of it.
/// @param name stands for the file in messages
[[nodiscard]] DecodedText DecodeDocument(std::string bytes, const std::string& name);

/// UTF-8 text of a finished document as Shift_JIS (code page 932). A character that it cannot hold is an
/// `UnmappableText` that names the line and the character, or with lossy becomes 〓 and is counted.
[[nodiscard]] std::string EncodeShiftJis(std::string_view utf8, const std::string& name, bool lossy,
                                         std::size_t& replaced);

/// Line and column (in characters) of a byte position, from 1.
struct TextPosition {
  std::size_t line = 1;    ///< from 1
  std::size_t column = 1;  ///< in characters, from 1
};
/// Where a byte lies.
[[nodiscard]] TextPosition PositionAt(std::string_view utf8, std::size_t offset);

/// "line 2, column 5".
[[nodiscard]] std::string Describe(const TextPosition& position);
/// How many characters a UTF-8 text has.
[[nodiscard]] std::size_t CountCharacters(std::string_view utf8);

/// Throws a `DocumentError` for bytes that do not even begin like markup: a picture, an archive.
/// @param name stands for the file
void RequireMarkup(std::string_view text, const std::string& name);

/// A character as messages show it: "é (U+00E9)".
[[nodiscard]] std::string DescribeCharacter(char32_t codePoint);

/// 〓, which stands for a character that cannot be held, in both encodings.
inline constexpr std::string_view kGetaMark932 = "\x81\xAC";
/// The same in UTF-8.
inline constexpr std::string_view kGetaMarkUtf8 = "\xE3\x80\x93";

/// The byte-order mark of UTF-8.
inline constexpr std::string_view kUtf8ByteOrderMark = "\xEF\xBB\xBF";
/// Whether a byte of UTF-8 text continues a character rather than beginning one.
[[nodiscard]] constexpr bool IsUtf8Continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

/// What XML takes for white space.
inline constexpr std::string_view kXmlBlanks = " \t\r\n";
/// The text without white space at its ends.
[[nodiscard]] std::string_view WithoutBlanks(std::string_view text);

/// Whether a text is the same bytes in every encoding here, as nearly all text of a document is.
[[nodiscard]] inline bool IsAscii(std::string_view text) {
  std::uint64_t bits = 0;
  for (; text.size() >= sizeof bits; text.remove_prefix(sizeof bits)) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data(), sizeof eight);
    bits |= eight;
  }
  for (const char c : text) bits |= static_cast<unsigned char>(c);
  return (bits & 0x8080808080808080U) == 0;
}

/// Text that did not go through a conversion, as the cursors and writers on one document collect it.
struct TextProblems {
  /// A text that did not go through.
  struct Problem {
    std::string what;           ///< "é (U+00E9)"
    std::ptrdiff_t offset = 0;  ///< of the element, in the text that was parsed; -1 when there is none
  };

  std::optional<Problem> first;  ///< the first one; none when all went through
  std::size_t count = 0;         ///< how many there were

  /// Adds one.
  void Add(std::string what, std::ptrdiff_t offset) {
    if (!first) first = Problem{std::move(what), offset};
    ++count;
  }
  /// Adds those of a text that follows.
  void Append(TextProblems&& following) {
    if (!first) first = std::move(following.first);
    count += following.count;
  }
};

/// Text of the model as UTF-8 for a document: the text itself where it is ASCII, otherwise converted into `buffer`.
/// Bytes that are no text become 〓 and are reported.
[[nodiscard]] std::string_view ModelTextToUtf8(std::string_view cp932, std::string& buffer, TextProblems& problems);

/// The code-page-932 text of the model as UTF-8, for messages and reports; what is no valid text becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::string_view cp932);
/// UTF-8 text (a command-line argument) for the model; none when code page 932 cannot hold it.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

}  // namespace vorn_host
