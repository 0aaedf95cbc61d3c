#include "vorn/platform/code_page_932.h"

#include <cstring>

#include "vorn/platform/code_page_932_decode_table.h"

namespace code_page_932 {
namespace {

/// Place of a row in the decode table by its lead byte, -1 where there is none.
constexpr auto kRowByLead = [] {
  std::array<int, 0x100> rows{};
  rows.fill(-1);
  for (std::size_t row = 0; row < detail::kRowLeads.size(); ++row) rows[detail::kRowLeads[row]] = static_cast<int>(row);
  return rows;
}();

/// Bytes of every character up to U+FFFF, 0 where code page 932 holds none. Files are converted by the million
/// characters, which a binary search for each would dominate.
class EncodeTable {
 public:
  EncodeTable() {
    for (std::size_t i = 0; i < detail::kCodePoints.size(); ++i) m_bytes[detail::kCodePoints[i]] = detail::kBytes[i];
    for (char32_t i = 0; i < kUserDefinedCount; ++i) m_bytes[kUserDefinedFirst + i] = *Encode(kUserDefinedFirst + i);
  }

  [[nodiscard]] std::uint16_t operator[](char32_t codePoint) const {
    return codePoint < m_bytes.size() ? m_bytes[codePoint] : std::uint16_t{0};
  }

  static const EncodeTable& Instance() {
    static const EncodeTable table;
    return table;
  }

 private:
  std::array<std::uint16_t, 0x10000> m_bytes{};
};

/// Length of the run of ASCII bytes that starts at a position.
std::size_t AsciiRun(std::string_view text, std::size_t at) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  const std::size_t start = at;
  for (std::uint64_t block = 0; at + sizeof block <= text.size(); at += sizeof block) {
    std::memcpy(&block, text.data() + at, sizeof block);
    if ((block & kHighBits) != 0) break;
  }
  while (at < text.size() && Byte(text, at) < 0x80) ++at;
  return at - start;
}

void AppendUtf8(char32_t codePoint, std::string& utf8) {
  const auto append = [&](char32_t bits) { utf8 += static_cast<char>(bits); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | codePoint >> 6);
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xE0 | codePoint >> 12);
    append(0x80 | (codePoint >> 6 & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

void AppendBytes(std::uint16_t bytes, std::string& cp932) {
  if (bytes >= 0x100) cp932 += static_cast<char>(bytes >> 8);
  cp932 += static_cast<char>(bytes & 0xFF);
}

struct Utf8Character {
  char32_t codePoint = 0;
  std::size_t length = 0;  ///< bytes of the character, or of the part of it that is there
  bool valid = false;
};

/// The character beyond ASCII that starts at a position. Overlong forms, surrogates and what lies beyond U+10FFFF are
/// refused at the first byte that gives them away.
Utf8Character ReadUtf8(std::string_view text, std::size_t at) {
  const unsigned char lead = Byte(text, at);
  if (lead < 0xC2 || lead > 0xF4) return {0, 1, false};
  const std::size_t size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t codePoint = lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if (at + i >= text.size() || Byte(text, at + i) < low || Byte(text, at + i) > high) return {0, i, false};
    codePoint = codePoint << 6 | (Byte(text, at + i) & 0x3Fu);
    low = 0x80;
    high = 0xBF;
  }
  return {codePoint, size, true};
}

}  // namespace

std::optional<char32_t> Decode(unsigned char single) {
  if (single <= 0x80) return single;
  if (single >= 0xA1 && single <= 0xDF) return char32_t{0xFF61} + (single - 0xA1u);
  if (single == 0xA0) return 0xF8F0;
  if (single >= 0xFD) return char32_t{0xF8F1} + (single - 0xFDu);
  return std::nullopt;
}

std::optional<char32_t> Decode(unsigned char lead, unsigned char trail) {
  if (!IsTrailByte(trail)) return std::nullopt;
  const std::size_t column = trail - (trail > 0x7F ? 0x41u : 0x40u);
  if (lead >= 0xF0 && lead <= 0xF9) {
    return kUserDefinedFirst + static_cast<char32_t>((lead - 0xF0u) * kRowLength + column);
  }
  const int row = kRowByLead[lead];
  if (row < 0) return std::nullopt;
  const char16_t codePoint = detail::kRows[static_cast<std::size_t>(row) * kRowLength + column];
  if (codePoint == 0) return std::nullopt;
  return codePoint;
}

Conversion AppendAsUtf8(std::string_view cp932, std::string& utf8) {
  std::size_t at = 0;
  while (at < cp932.size()) {
    if (const std::size_t run = AsciiRun(cp932, at); run > 0) {
      utf8.append(cp932.substr(at, run));
      at += run;
      continue;
    }
    const std::size_t length = CharacterLength(cp932, at);
    const auto codePoint = length == 1 ? Decode(Byte(cp932, at)) : Decode(Byte(cp932, at), Byte(cp932, at + 1));
    if (!codePoint) return {Conversion::Fault::kInvalid, at, length, 0};
    AppendUtf8(*codePoint, utf8);
    at += length;
  }
  return {Conversion::Fault::kNone, at, 0, 0};
}

Conversion AppendFromUtf8(std::string_view utf8, std::string& cp932) {
  const EncodeTable& table = EncodeTable::Instance();
  std::size_t at = 0;
  while (at < utf8.size()) {
    if (const std::size_t run = AsciiRun(utf8, at); run > 0) {
      cp932.append(utf8.substr(at, run));
      at += run;
      continue;
    }
    const Utf8Character character = ReadUtf8(utf8, at);
    if (!character.valid) return {Conversion::Fault::kInvalid, at, character.length, 0};
    const std::uint16_t bytes = table[character.codePoint];
    if (bytes == 0) return {Conversion::Fault::kUnmappable, at, character.length, character.codePoint};
    AppendBytes(bytes, cp932);
    at += character.length;
  }
  return {Conversion::Fault::kNone, at, 0, 0};
}

}  // namespace code_page_932
