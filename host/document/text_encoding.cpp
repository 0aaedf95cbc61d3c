#include "host/document/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "host/document/document_error.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {

namespace {

/// The names that documents give to code page 932 and its kin, in lower case.
constexpr std::array<std::string_view, 10> kShiftJisNames = {"shift_jis", "shift-jis",  "sjis",        "x-sjis",
                                                             "ms_kanji",  "csshiftjis", "windows-31j", "cswindows31j",
                                                             "cp932",     "ms932"};

std::string At(std::string_view utf8, std::size_t offset) { return Describe(PositionAt(utf8, offset)); }

/// The value of the encoding pseudo-attribute of an XML declaration at the beginning; empty without one.
std::string DeclaredEncoding(std::string_view text) {
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  const std::size_t name = declaration.find("encoding");
  if (name == std::string_view::npos) return {};
  const std::size_t open = declaration.find_first_of("\"'", name);
  if (open == std::string_view::npos) return {};
  const std::size_t close = declaration.find(declaration[open], open + 1);
  if (close == std::string_view::npos) return {};
  return std::string(declaration.substr(open + 1, close - open - 1));
}

void AppendUtf8(char32_t c, std::string& out) {
  const auto put = [&](unsigned byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

/// Length of the UTF-8 sequence at a position; 0 when it is none.
std::size_t SequenceLength(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  const unsigned first = byte(at);
  const auto continues = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
    return byte(at + i) >= low && byte(at + i) <= high;
  };
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool second = continues(1, first == 0xE0 ? 0xA0 : 0x80, first == 0xED ? 0x9F : 0xBF);
    return second && continues(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool second = continues(1, first == 0xF0 ? 0x90 : 0x80, first == 0xF4 ? 0x8F : 0xBF);
    return second && continues(2) && continues(3) ? 4 : 0;
  }
  return 0;
}

void RequireUtf8(std::string_view text, const std::string& name, bool declared) {
  for (std::size_t at = 0; at < text.size();) {
    std::uint64_t eight = 0;
    const bool whole = at + sizeof eight <= text.size();
    if (whole) std::memcpy(&eight, text.data() + at, sizeof eight);
    if (whole && (eight & 0x8080808080808080U) == 0) {
      at += sizeof eight;
      continue;
    }
    const std::size_t length = SequenceLength(text, at);
    if (length == 0) {
      throw DocumentError(name + ": " + At(text, at) + ": the bytes are not UTF-8, which the document " +
                          (declared ? "declares" : "has to be in, as it declares no other encoding"));
    }
    at += length;
  }
}

std::string FromUtf16(std::string_view bytes, bool bigEndian, const std::string& name) {
  const auto unit = [&](std::size_t at) -> char32_t {
    const auto low = static_cast<unsigned char>(bytes[at + (bigEndian ? 1 : 0)]);
    const auto high = static_cast<unsigned char>(bytes[at + (bigEndian ? 0 : 1)]);
    return static_cast<char32_t>(high << 8 | low);
  };
  std::string utf8;
  utf8.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    const bool whole = at + 1 < bytes.size();
    char32_t c = whole ? unit(at) : 0xDC00;
    if (c >= 0xD800 && c <= 0xDBFF && at + 3 < bytes.size()) {
      const char32_t low = unit(at + 2);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    if (c >= 0xD800 && c <= 0xDFFF) {
      throw DocumentError(name + ": " + At(utf8, utf8.size()) + ": the bytes are not UTF-16");
    }
    AppendUtf8(c, utf8);
  }
  return utf8;
}

std::string FromShiftJis(std::string_view bytes, const std::string& name) {
  std::string utf8;
  utf8.reserve(bytes.size() + bytes.size() / 2);
  if (!code_page_932::AppendAsUtf8(bytes, utf8)) {
    throw DocumentError(name + ": " + At(utf8, utf8.size()) +
                        ": the bytes are not Shift_JIS, which the document declares");
  }
  return utf8;
}

/// @param stopped why the conversion stopped at that byte
[[noreturn]] void ThrowNotInShiftJis(std::string_view utf8, std::size_t at, const code_page_932::Conversion& stopped,
                                     const std::string& name) {
  const bool isCharacter = stopped.fault == code_page_932::Conversion::Fault::kUnmappable;
  throw UnmappableText(name + ": line " + std::to_string(PositionAt(utf8, at).line) + ": Shift_JIS cannot hold " +
                       (isCharacter ? DescribeCharacter(stopped.codePoint) : "a byte that is not UTF-8"));
}

/// Appends text of the model. Bytes that are no text are replaced.
/// @return how often they were
std::size_t AppendModelText(std::string_view cp932, std::string_view replacement, std::string& utf8) {
  for (std::size_t replaced = 0;; ++replaced) {
    const auto done = code_page_932::AppendAsUtf8(cp932, utf8);
    if (done) return replaced;
    utf8 += replacement;
    cp932.remove_prefix(done.position + std::max<std::size_t>(done.length, 1));
  }
}

}  // namespace

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = AsciiLower(c);
  return lower;
}

std::string_view EncodingName(TextEncoding encoding) {
  return encoding == TextEncoding::ShiftJis ? "Shift_JIS" : "UTF-8";
}

std::optional<TextEncoding> ParseEncoding(std::string_view name) {
  const std::string lower = AsciiLower(name);
  if (lower == "utf-8" || lower == "utf8" || lower == "us-ascii" || lower == "ascii") return TextEncoding::Utf8;
  const bool shiftJis = std::find(kShiftJisNames.begin(), kShiftJisNames.end(), lower) != kShiftJisNames.end();
  return shiftJis ? std::optional(TextEncoding::ShiftJis) : std::nullopt;
}

DecodedText DecodeDocument(std::string bytes, const std::string& name) {
  if (bytes.starts_with(kUtf8ByteOrderMark)) {
    bytes.erase(0, kUtf8ByteOrderMark.size());
    RequireUtf8(bytes, name, true);
    return {std::move(bytes), "UTF-8"};
  }
  const std::string_view text = bytes;
  if (text.starts_with("\xFF\xFE")) return {FromUtf16(text.substr(2), false, name), "UTF-16"};
  if (text.starts_with("\xFE\xFF")) return {FromUtf16(text.substr(2), true, name), "UTF-16"};
  if (text.starts_with(std::string_view("<\0", 2))) return {FromUtf16(text, false, name), "UTF-16"};
  if (text.starts_with(std::string_view("\0<", 2))) return {FromUtf16(text, true, name), "UTF-16"};

  RequireMarkup(text, name);
  const std::string declared = DeclaredEncoding(text);
  if (declared.empty()) {
    RequireUtf8(text, name, false);
    return {std::move(bytes), "UTF-8"};
  }
  if (AsciiLower(declared).starts_with("utf-16")) {
    throw DocumentError(name + ": line 1: the bytes are not " + declared + ", which the document declares");
  }
  const auto encoding = ParseEncoding(declared);
  if (!encoding) {
    throw DocumentError(name + ": line 1: the encoding \"" + declared +
                        "\" is not supported; UTF-8, UTF-16, Shift_JIS and Windows-31J are");
  }
  if (*encoding == TextEncoding::ShiftJis) return {FromShiftJis(text, name), declared};
  RequireUtf8(text, name, true);
  return {std::move(bytes), declared};
}

std::string EncodeShiftJis(std::string_view utf8, const std::string& name, bool lossy, std::size_t& replaced) {
  std::string bytes;
  bytes.reserve(utf8.size());
  std::size_t at = 0;
  while (true) {
    const code_page_932::Conversion done = code_page_932::AppendFromUtf8(utf8.substr(at), bytes);
    if (done) return bytes;
    at += done.position;
    if (!lossy) ThrowNotInShiftJis(utf8, at, done, name);
    bytes += kGetaMark932;
    ++replaced;
    at += done.length;
  }
}

TextPosition PositionAt(std::string_view utf8, std::size_t offset) {
  const std::string_view before = utf8.substr(0, std::min(offset, utf8.size()));
  TextPosition position;
  position.line += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
  position.column += CountCharacters(before.substr(lineStart));
  return position;
}

std::string Describe(const TextPosition& position) {
  return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

std::size_t CountCharacters(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return !IsUtf8Continuation(c); }));
}

void RequireMarkup(std::string_view text, const std::string& name) {
  const std::size_t first = text.find_first_not_of(kXmlBlanks);
  if (first == std::string_view::npos || text[first] != '<') {
    throw DocumentError(name + ": this is not an XML document");
  }
}

std::string DescribeCharacter(char32_t codePoint) {
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(codePoint));
  std::string text;
  if (codePoint >= 0x20 && codePoint != 0x7F) {
    AppendUtf8(codePoint, text);
    text += ' ';
  }
  return text + "(" + code.data() + ")";
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kXmlBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kXmlBlanks) + 1 - first);
}

std::string_view ModelTextToUtf8(std::string_view cp932, std::string& buffer, TextProblems& problems) {
  if (IsAscii(cp932)) return cp932;
  buffer.clear();
  for (std::size_t replaced = AppendModelText(cp932, kGetaMarkUtf8, buffer); replaced > 0; --replaced) {
    problems.Add("bytes that are no character of code page 932", -1);
  }
  return buffer;
}

std::string ToUtf8(std::string_view cp932) {
  constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
  std::string utf8;
  AppendModelText(cp932, kReplacementCharacter, utf8);
  return utf8;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
  std::string cp932;
  if (!code_page_932::AppendFromUtf8(utf8, cp932)) return std::nullopt;
  return cp932;
}

}  // namespace vorn_host
