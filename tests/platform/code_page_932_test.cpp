#include "vorn/platform/code_page_932.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

using code_page_932::AppendAsUtf8;
using code_page_932::AppendFromUtf8;
using code_page_932::CharacterLength;
using code_page_932::Conversion;
using code_page_932::Decode;
using code_page_932::Encode;
using code_page_932::IsCharacterStart;
using code_page_932::IsLeadByte;
using code_page_932::IsTrailByte;

std::string Utf8(std::string_view cp932) {
  std::string utf8;
  EXPECT_TRUE(AppendAsUtf8(cp932, utf8));
  return utf8;
}

std::string Cp932(std::string_view utf8) {
  std::string cp932;
  EXPECT_TRUE(AppendFromUtf8(utf8, cp932));
  return cp932;
}

std::string_view Chars(std::u8string_view text) { return {reinterpret_cast<const char*>(text.data()), text.size()}; }

/// Every character of the code page: its bytes as a number, and its code point.
std::vector<std::pair<std::uint16_t, char32_t>> WholeCodePage() {
  std::vector<std::pair<std::uint16_t, char32_t>> all;
  for (unsigned single = 0; single < 0x100; ++single) {
    if (const auto c = Decode(static_cast<unsigned char>(single))) {
      all.emplace_back(static_cast<std::uint16_t>(single), *c);
    }
  }
  for (unsigned pair = 0x8000; pair < 0x10000; ++pair) {
    const auto lead = static_cast<unsigned char>(pair >> 8);
    const auto trail = static_cast<unsigned char>(pair & 0xFF);
    if (const auto c = Decode(lead, trail)) all.emplace_back(static_cast<std::uint16_t>(pair), *c);
  }
  return all;
}

std::string BytesOf(std::uint16_t code) {
  std::string bytes;
  if (code >= 0x100) bytes += static_cast<char>(code >> 8);
  bytes += static_cast<char>(code & 0xFF);
  return bytes;
}

TEST(CodePage932, HoldsEveryCellOnce) {
  std::size_t singles = 0;
  std::size_t pairs = 0;
  for (const auto& [code, codePoint] : WholeCodePage()) {
    if (code < 0x100) {
      ++singles;
      EXPECT_FALSE(IsLeadByte(static_cast<unsigned char>(code)));
    } else {
      ++pairs;
      EXPECT_TRUE(IsLeadByte(static_cast<unsigned char>(code >> 8)));
      EXPECT_TRUE(IsTrailByte(static_cast<unsigned char>(code & 0xFF)));
    }
    EXPECT_LT(codePoint, 0x10000u);
  }
  EXPECT_EQ(singles, 196u);
  EXPECT_EQ(pairs, 9604u);
}

TEST(CodePage932, EncodesEveryCharacterBackToItsBytesOrToThePreferredOfItsDuplicates) {
  std::map<char32_t, std::vector<std::uint16_t>> cells;
  for (const auto& [code, codePoint] : WholeCodePage()) cells[codePoint].push_back(code);

  for (const auto& [codePoint, codes] : cells) {
    const auto encoded = Encode(codePoint);
    ASSERT_TRUE(encoded) << std::hex << std::uint32_t{codePoint};
    if (codes.size() == 1) {
      EXPECT_EQ(*encoded, codes.front());
      continue;
    }
    // Duplicates: the original set's cell first, then row 87, then rows FA to FC, never rows ED and EE.
    const auto isSelected = [](std::uint16_t code) { return code >= 0xED00 && code < 0xEF00; };
    std::uint16_t preferred = 0;
    for (const std::uint16_t code : codes) {
      if (preferred == 0 && !isSelected(code)) preferred = code;
    }
    EXPECT_EQ(*encoded, preferred) << std::hex << std::uint32_t{codePoint};
  }
}

TEST(CodePage932, EncodesExactlyWhatItDecodesAndTheLookAlikesOfOtherTables) {
  std::map<char32_t, bool> decodable;
  for (const auto& [code, codePoint] : WholeCodePage()) decodable[codePoint] = true;
  const std::map<char32_t, std::uint16_t> lookAlikes = {{0x00A2, 0x8191}, {0x00A3, 0x8192}, {0x00AC, 0x81CA},
                                                        {0x2016, 0x8161}, {0x2212, 0x817C}, {0x301C, 0x8160}};
  for (char32_t codePoint = 0; codePoint < 0x11000; ++codePoint) {
    const auto encoded = Encode(codePoint);
    if (const auto alike = lookAlikes.find(codePoint); alike != lookAlikes.end()) {
      EXPECT_EQ(encoded, alike->second);
    } else {
      EXPECT_EQ(encoded.has_value(), decodable.count(codePoint) == 1) << std::hex << std::uint32_t{codePoint};
    }
  }
}

TEST(CodePage932, ConvertsEveryCharacterInBulkAsOneByOne) {
  for (const auto& [code, codePoint] : WholeCodePage()) {
    const std::string utf8 = Utf8(BytesOf(code));
    EXPECT_EQ(Cp932(utf8), BytesOf(*Encode(codePoint)));
  }
}

TEST(CodePage932, DecodesKnownCharacters) {
  EXPECT_EQ(Decode('A'), U'A');
  EXPECT_EQ(Decode(0x5C), U'\\');
  EXPECT_EQ(Decode(0x7E), U'~');
  EXPECT_EQ(Decode(0x80), char32_t{0x80});
  EXPECT_EQ(Decode(0xA0), char32_t{0xF8F0});
  EXPECT_EQ(Decode(0xB1), U'ｱ');
  EXPECT_EQ(Decode(0xFD), char32_t{0xF8F1});
  EXPECT_EQ(Decode(0xFF), char32_t{0xF8F3});
  EXPECT_EQ(Decode(0x81), std::nullopt);
  EXPECT_EQ(Decode(0x95, 0x5C), U'表');
  EXPECT_EQ(Decode(0x83, 0x5C), U'ソ');
  EXPECT_EQ(Decode(0x81, 0x60), U'～');
  EXPECT_EQ(Decode(0x87, 0x40), U'①');
  EXPECT_EQ(Decode(0xFB, 0xFC), U'髙');
  EXPECT_EQ(Decode(0xEE, 0xE0), U'髙');
  EXPECT_EQ(Decode(0xFC, 0x4B), U'黑');
  EXPECT_EQ(Decode(0xFC, 0x4C), std::nullopt);
  EXPECT_EQ(Decode(0x82, 0x40), std::nullopt);
  EXPECT_EQ(Decode(0x82, 0x7F), std::nullopt);
  EXPECT_EQ(Decode(0x82, 0xFD), std::nullopt);
  EXPECT_EQ(Decode(0x41, 0x41), std::nullopt);
}

TEST(CodePage932, MapsTheUserDefinedAreaByFormula) {
  EXPECT_EQ(Decode(0xF0, 0x40), char32_t{0xE000});
  EXPECT_EQ(Decode(0xF0, 0x7E), char32_t{0xE03E});
  EXPECT_EQ(Decode(0xF0, 0x80), char32_t{0xE03F});
  EXPECT_EQ(Decode(0xF1, 0x40), char32_t{0xE0BC});
  EXPECT_EQ(Decode(0xF9, 0xFC), char32_t{0xE757});
  EXPECT_EQ(Encode(0xE03E), 0xF07E);
  EXPECT_EQ(Encode(0xE03F), 0xF080);
  EXPECT_EQ(Encode(0xE757), 0xF9FC);
  EXPECT_EQ(Encode(0xE758), std::nullopt);
}

TEST(CodePage932, DoesNotHoldForeignLetters) {
  EXPECT_EQ(Encode(U'é'), std::nullopt);
  EXPECT_EQ(Encode(U'€'), std::nullopt);
  EXPECT_EQ(Encode(U'𠮷'), std::nullopt);
  EXPECT_EQ(Encode(0xD800), std::nullopt);
  EXPECT_EQ(Encode(0xFFFF), std::nullopt);
  EXPECT_EQ(Encode(0x110000), std::nullopt);
}

TEST(CodePage932Literal, HasTheBytesOfTheCodePage) {
  static_assert(u8"盛土工"_cp932 == "\x90\xB7\x93\x79\x8D\x48");
  static_assert(u8"ｱ表ソ－A"_cp932 == "\xB1\x95\x5C\x83\x5C\x81\x7C\x41");
  static_assert(u8"\uE000"_cp932 == "\xF0\x40");
  static_assert(u8""_cp932.empty());
  EXPECT_EQ(Utf8(u8"下層路盤工①髙"_cp932), Chars(u8"下層路盤工①髙"));
}

TEST(CodePage932Literal, IsFollowedByNul) {
  constexpr std::string_view kShrinking = u8"ｱｲｳ"_cp932;
  EXPECT_EQ(std::string(kShrinking.data()), kShrinking);
  EXPECT_EQ(u8""_cp932.data()[0], '\0');
}

TEST(CodePage932, MeasuresCharacters) {
  constexpr std::string_view kText = u8"A表ｱ"_cp932;
  EXPECT_EQ(CharacterLength(kText, 0), 1u);
  EXPECT_EQ(CharacterLength(kText, 1), 2u);
  EXPECT_EQ(CharacterLength(kText, 3), 1u);
  EXPECT_EQ(CharacterLength("\x95", 0), 1u);
  EXPECT_EQ(CharacterLength("\x95 ", 0), 1u);
  EXPECT_EQ(CharacterLength("\x95\x7F", 0), 1u);
}

TEST(CodePage932, FindsCharacterStartsFromAnywhereAsAWalkFromTheBeginningDoes) {
  // All texts of five of these bytes, whole or broken.
  constexpr std::string_view kBytes = "A\\\x20\x81\xE0\xB1\xFD";
  for (std::size_t number = 0; number < 7 * 7 * 7 * 7 * 7; ++number) {
    std::string text;
    for (std::size_t rest = number, i = 0; i < 5; ++i, rest /= 7) text += kBytes[rest % 7];
    std::vector<bool> starts(text.size() + 1);
    for (std::size_t at = 0; at <= text.size(); at += at < text.size() ? CharacterLength(text, at) : 1) {
      starts[at] = true;
    }
    for (std::size_t at = 0; at <= text.size(); ++at) {
      ASSERT_EQ(IsCharacterStart(text, at), starts[at]) << number << " at " << at;
    }
  }
}

TEST(CodePage932Conversion, KeepsAsciiOfEveryLengthAndPlace) {
  for (const std::string_view other : {Chars(u8"土"), Chars(u8"\u0080")}) {  // the latter has the least byte of all
    const std::string otherBytes = Cp932(other);
    for (std::size_t before = 0; before < 20; ++before) {
      for (std::size_t after = 0; after < 20; ++after) {
        const std::string cp932 = std::string(before, 'x') + otherBytes + std::string(after, 'y');
        const std::string utf8 = std::string(before, 'x') + std::string(other) + std::string(after, 'y');
        EXPECT_EQ(Utf8(cp932), utf8);
        EXPECT_EQ(Cp932(utf8), cp932);
      }
    }
  }
}

TEST(CodePage932Conversion, KeepsNulBytes) {
  EXPECT_EQ(Utf8(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
  EXPECT_EQ(Cp932(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
}

TEST(CodePage932Conversion, AppendsToWhatIsThere) {
  std::string utf8 = "before ";
  EXPECT_TRUE(AppendAsUtf8(u8"土"_cp932, utf8));
  EXPECT_EQ(utf8, "before " + std::string(Chars(u8"土")));
}

TEST(CodePage932Conversion, StopsAtBytesThatAreNoCharacter) {
  std::string utf8;
  const Conversion cell = AppendAsUtf8("ab\x82\x40z", utf8);
  EXPECT_FALSE(cell);
  EXPECT_EQ(cell.fault, Conversion::Fault::kInvalid);
  EXPECT_EQ(cell.position, 2u);
  EXPECT_EQ(cell.length, 2u);
  EXPECT_EQ(utf8, "ab");

  const Conversion dangling = AppendAsUtf8("abc\x82", utf8);
  EXPECT_EQ(dangling.position, 3u);
  EXPECT_EQ(dangling.length, 1u);

  const Conversion beforeSpace = AppendAsUtf8("\x82 ", utf8);
  EXPECT_EQ(beforeSpace.position, 0u);
  EXPECT_EQ(beforeSpace.length, 1u);
}

TEST(CodePage932Conversion, TellsInvalidUtf8FromUnmappableCharacters) {
  std::string cp932;
  const Conversion unmappable = AppendFromUtf8(Chars(u8"土é土"), cp932);
  EXPECT_EQ(unmappable.fault, Conversion::Fault::kUnmappable);
  EXPECT_EQ(unmappable.position, 3u);
  EXPECT_EQ(unmappable.length, 2u);
  EXPECT_EQ(unmappable.codePoint, U'é');
  EXPECT_EQ(cp932, u8"土"_cp932);

  const Conversion beyondFirstPlane = AppendFromUtf8(Chars(u8"𠮷"), cp932);
  EXPECT_EQ(beyondFirstPlane.fault, Conversion::Fault::kUnmappable);
  EXPECT_EQ(beyondFirstPlane.length, 4u);
  EXPECT_EQ(beyondFirstPlane.codePoint, U'𠮷');

  const Conversion invalid = AppendFromUtf8("abc\xFFz", cp932);
  EXPECT_EQ(invalid.fault, Conversion::Fault::kInvalid);
  EXPECT_EQ(invalid.position, 3u);
  EXPECT_EQ(invalid.length, 1u);
}

TEST(CodePage932Conversion, TellsTheFirstAndTheLastCharacterOfEachLengthFromBrokenUtf8) {
  const std::map<std::string, char32_t> characters = {
      {"\xC2\x81", 0x81},       {"\xDF\xBF", 0x7FF},           {"\xE0\xA0\x80", 0x800},        {"\xED\x9F\xBF", 0xD7FF},
      {"\xEF\xBF\xBF", 0xFFFF}, {"\xF0\x90\x80\x80", 0x10000}, {"\xF4\x8F\xBF\xBF", 0x10FFFF},
  };
  for (const auto& [text, codePoint] : characters) {
    std::string cp932;
    const Conversion result = AppendFromUtf8(text, cp932);
    EXPECT_EQ(result.fault, Conversion::Fault::kUnmappable);
    EXPECT_EQ(result.codePoint, codePoint);
    EXPECT_EQ(result.length, text.size());
  }
}

TEST(CodePage932Conversion, RefusesEveryKindOfBrokenUtf8) {
  const std::map<std::string, std::size_t> broken = {
      {"\x80", 1},              // a continuation byte alone
      {"\xC0\xAF", 1},          // overlong forms
      {"\xC1\xBF", 1},          //
      {"\xE0\x9F\xBF", 1},      //
      {"\xF0\x8F\xBF\xBF", 1},  //
      {"\xED\xA0\x80", 1},      // a surrogate
      {"\xF4\x90\x80\x80", 1},  // beyond the last code point
      {"\xF5\x80\x80\x80", 1},  //
      {"\xE5", 1},              // ends too early
      {"\xE5\x9C", 2},          //
      {"\xE5\x9Cx", 2},         //
      {"\xF0\xA0\xAE", 3},      //
  };
  for (const auto& [text, length] : broken) {
    std::string cp932;
    const Conversion result = AppendFromUtf8(text, cp932);
    EXPECT_EQ(result.fault, Conversion::Fault::kInvalid);
    EXPECT_EQ(result.position, 0u);
    EXPECT_EQ(result.length, length);
    EXPECT_TRUE(cp932.empty());
  }
}

TEST(CodePage932Conversion, GoesOnBehindAFault) {
  std::string_view rest = Chars(u8"aé盛é土");
  std::string cp932;
  for (Conversion result = AppendFromUtf8(rest, cp932); !result; result = AppendFromUtf8(rest, cp932)) {
    cp932 += u8"〓"_cp932;
    rest.remove_prefix(result.position + result.length);
  }
  EXPECT_EQ(cp932, u8"a〓盛〓土"_cp932);
}

}  // namespace
