#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn_host {

/// The encodings that documents are written in.
enum class TextEncoding { Utf8, ShiftJis };

/// As an XML declaration names it: "UTF-8", "Shift_JIS".
[[nodiscard]] std::string_view EncodingName(TextEncoding encoding);
/// The encoding of a name, without regard to case: UTF-8, Shift_JIS and the common names of code page 932.
[[nodiscard]] std::optional<TextEncoding> ParseEncoding(std::string_view name);

/// A document's text in UTF-8, without a byte-order mark.
struct DecodedText {
  std::string utf8;
  /// What the document calls its encoding.
  std::string encodingName;
};

/// Turns the bytes of an XML document into UTF-8: UTF-8 and UTF-16 by byte-order mark, otherwise by the XML
/// declaration. Throws `DocumentError` for an encoding that is not known and for bytes that are none of it.
/// @param name stands for the file in messages
[[nodiscard]] DecodedText DecodeDocument(std::string bytes, const std::string& name);

/// UTF-8 text of a finished document as Shift_JIS (code page 932). A character that it cannot hold is an error that
/// names the line and the character, or with lossy becomes 〓 and is counted.
[[nodiscard]] std::string EncodeShiftJis(std::string_view utf8, const std::string& name, bool lossy,
                                         std::size_t& replaced);

/// Line and column (in characters) of a byte position, from 1.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;
};
[[nodiscard]] TextPosition PositionAt(std::string_view utf8, std::size_t offset);

/// A character as messages show it: "é (U+00E9)".
[[nodiscard]] std::string DescribeCharacter(char32_t codePoint);

/// The code-page-932 text of the model as UTF-8, for messages and reports; what is no valid text becomes U+FFFD.
[[nodiscard]] std::string ToUtf8(std::string_view cp932);
/// UTF-8 text (a command-line argument) for the model; none when code page 932 cannot hold it.
[[nodiscard]] std::optional<std::string> FromUtf8(std::string_view utf8);

}  // namespace vorn_host
