#include "host/document/text_encoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "tests/host/documents.h"

namespace vorn_host {
namespace {

using host_test::ErrorOf;
using host_test::U8;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string DecodeError(const std::string& bytes) {
  return ErrorOf([&] { (void)DecodeDocument(bytes, "a.xml"); });
}

/// UTF-16 bytes of a text within the basic plane, and of the pairs that stand in it.
std::string Utf16(std::u16string_view text, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

std::string Declared(std::string_view encoding, std::string_view content) {
  return "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>\n<a>" + std::string(content) + "</a>";
}

// --- names ---------------------------------------------------------------------------------------------------------

TEST(EncodingNames, AreThoseOfXmlDeclarations) {
  EXPECT_EQ(EncodingName(TextEncoding::Utf8), "UTF-8");
  EXPECT_EQ(EncodingName(TextEncoding::ShiftJis), "Shift_JIS");
}

TEST(EncodingNames, OfCodePage932AreManyAndIgnoreCase) {
  for (const char* name : {"Shift_JIS", "shift_jis", "SHIFT-JIS", "sjis", "x-sjis", "MS_Kanji", "csShiftJIS",
                           "Windows-31J", "windows-31j", "csWindows31J", "CP932", "MS932"}) {
    EXPECT_EQ(ParseEncoding(name), TextEncoding::ShiftJis) << name;
  }
}

TEST(EncodingNames, OfUtf8IncludeItsAsciiPart) {
  for (const char* name : {"UTF-8", "utf-8", "utf8", "US-ASCII", "ascii"}) {
    EXPECT_EQ(ParseEncoding(name), TextEncoding::Utf8) << name;
  }
}

TEST(EncodingNames, ThatAreNotKnownGiveNone) {
  for (const char* name : {"", "EUC-JP", "ISO-2022-JP", "latin1", "Shift_JIS "}) {
    EXPECT_EQ(ParseEncoding(name), std::nullopt) << name;
  }
}

// --- reading -------------------------------------------------------------------------------------------------------

TEST(DecodeDocument, TakesUtf8AsItIs) {
  const std::string text = Declared("UTF-8", U8(u8"路面 𠮷"));
  const DecodedText decoded = DecodeDocument(text, "a.xml");
  EXPECT_EQ(decoded.utf8, text);
  EXPECT_EQ(decoded.encodingName, "UTF-8");
}

TEST(DecodeDocument, TakesAnUndeclaredDocumentForUtf8) {
  const std::string text = "<a>" + U8(u8"路面") + "</a>";
  EXPECT_EQ(DecodeDocument(text, "a.xml").utf8, text);
  EXPECT_EQ(DecodeDocument(text, "a.xml").encodingName, "UTF-8");
  EXPECT_EQ(DecodeDocument("<?xml version='1.0'?><a/>", "a.xml").encodingName, "UTF-8");
}

TEST(DecodeDocument, DropsTheByteOrderMarkOfUtf8) {
  const DecodedText decoded = DecodeDocument("\xEF\xBB\xBF<a>" + U8(u8"路") + "</a>", "a.xml");
  EXPECT_EQ(decoded.utf8, "<a>" + U8(u8"路") + "</a>");
  EXPECT_EQ(decoded.encodingName, "UTF-8");
}

TEST(DecodeDocument, BelievesTheByteOrderMarkMoreThanTheDeclaration) {
  const std::string text = Declared("Shift_JIS", U8(u8"路面"));
  EXPECT_EQ(DecodeDocument("\xEF\xBB\xBF" + text, "a.xml").utf8, text);
}

TEST(DecodeDocument, ReadsUtf16InBothByteOrdersWithAndWithoutAMark) {
  const std::string expected = "<a>" + U8(u8"路面é𠮷") + "</a>";
  for (const bool bigEndian : {false, true}) {
    for (const bool mark : {false, true}) {
      const std::string bytes = Utf16(mark ? u"\uFEFF<a>路面é𠮷</a>" : u"<a>路面é𠮷</a>", bigEndian);
      const DecodedText decoded = DecodeDocument(bytes, "a.xml");
      EXPECT_EQ(decoded.utf8, expected) << bigEndian << mark;
      EXPECT_EQ(decoded.encodingName, "UTF-16");
    }
  }
}

TEST(DecodeDocument, ReadsCodePage932UnderEachOfItsNames) {
  for (const char* name : {"Shift_JIS", "SHIFT-JIS", "sjis", "x-sjis", "MS_Kanji", "csShiftJIS", "Windows-31J",
                           "csWindows31J", "CP932", "ms932"}) {
    const std::string bytes = Declared(name, std::string(u8"路面①㈱ｱ表"_cp932));
    const DecodedText decoded = DecodeDocument(bytes, "a.xml");
    EXPECT_EQ(decoded.utf8, Declared(name, U8(u8"路面①㈱ｱ表")));
    EXPECT_EQ(decoded.encodingName, name);
  }
}

TEST(DecodeDocument, UnderstandsADeclarationInSingleQuotes) {
  const std::string bytes = "<?xml version='1.0' encoding='Shift_JIS' standalone='yes'?><a>\x98\x48</a>";
  EXPECT_THAT(DecodeDocument(bytes, "a.xml").utf8, HasSubstr(U8(u8"路")));
}

TEST(DecodeDocument, RefusesAnUnknownEncodingAndNamesTheKnownOnes) {
  EXPECT_THAT(DecodeError(Declared("EUC-JP", "")),
              AllOf(StartsWith("a.xml: line 1:"), HasSubstr("EUC-JP"), HasSubstr("Shift_JIS"), HasSubstr("UTF-8")));
}

TEST(DecodeDocument, RefusesADocumentThatOnlyCallsItselfUtf16) {
  EXPECT_THAT(DecodeError(Declared("UTF-16", "")), HasSubstr("line 1: the bytes are not UTF-16"));
}

TEST(DecodeDocument, NamesLineAndColumnOfBytesThatAreNotUtf8) {
  EXPECT_THAT(DecodeError(Declared("UTF-8", "\n" + U8(u8"路面") + "\x98\x48")),
              HasSubstr("a.xml: line 3, column 3: the bytes are not UTF-8, which the document declares"));
  EXPECT_THAT(DecodeError("\xEF\xBB\xBF<a>\xFF</a>"), HasSubstr("line 1, column 4"));
}

TEST(DecodeDocument, SaysOfAnUndeclaredDocumentThatItDeclaresNoEncoding) {
  EXPECT_THAT(DecodeError("<a>\x98\x48</a>"), AllOf(HasSubstr("line 1, column 4"), HasSubstr("declares no other")));
}

TEST(DecodeDocument, RefusesEveryKindOfDamagedUtf8) {
  for (const char* damage :
       {"\x80", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\xE8\xB7", "\xE8", "\xF0\xA0\xAE", "\xC3(", "\xFE", "\xFF"}) {
    EXPECT_THAT(DecodeError(std::string("<a>") + damage), HasSubstr("line 1, column 4"))
        << testing::PrintToString(damage);
  }
}

TEST(DecodeDocument, NamesLineAndColumnOfBytesThatAreNotShiftJis) {
  EXPECT_THAT(DecodeError(Declared("Shift_JIS", "\n\x98\x48\x81 ")),
              HasSubstr("a.xml: line 3, column 2: the bytes are not Shift_JIS, which the document declares"));
  EXPECT_THAT(DecodeError(Declared("Windows-31J", "\x81")), HasSubstr("line 2"));
}

TEST(DecodeDocument, NamesLineAndColumnOfBytesThatAreNotUtf16) {
  const std::string unpaired = Utf16(u"<a>\n路", false) + std::string("\x00\xD8x\x00", 4);
  EXPECT_THAT(DecodeError(unpaired), HasSubstr("line 2, column 2: the bytes are not UTF-16"));
  const std::string lowAlone = Utf16(u"<a>", true) + std::string("\xDC\x00", 2);
  EXPECT_THAT(DecodeError(lowAlone), HasSubstr("line 1, column 4: the bytes are not UTF-16"));
  const std::string oddLength = Utf16(u"<a></a>", false) + "x";
  EXPECT_THAT(DecodeError(oddLength), HasSubstr("line 1, column 8: the bytes are not UTF-16"));
}

// --- writing -------------------------------------------------------------------------------------------------------

TEST(EncodeShiftJis, GivesCodePage932) {
  std::size_t replaced = 0;
  EXPECT_EQ(EncodeShiftJis(U8(u8"路面①～ｱ"), "a.xml", false, replaced), u8"路面①～ｱ"_cp932);
  EXPECT_EQ(replaced, 0u);
}

TEST(EncodeShiftJis, NamesLineAndCharacterThatItCannotHold) {
  std::size_t replaced = 0;
  const auto encode = [&] { (void)EncodeShiftJis(U8(u8"一\n二é"), "a.xml", false, replaced); };
  EXPECT_EQ(ErrorOf(encode), U8(u8"a.xml: line 2: Shift_JIS cannot hold é (U+00E9)"));
  EXPECT_THROW(encode(), UnmappableText);
}

TEST(EncodeShiftJis, ReplacesAndCountsWhenLossy) {
  std::size_t replaced = 1;
  EXPECT_EQ(EncodeShiftJis(U8(u8"aéb𠮷c"), "a.xml", true, replaced), u8"a〓b〓c"_cp932);
  EXPECT_EQ(replaced, 3u) << "it adds to what was counted before";
}

// --- messages ------------------------------------------------------------------------------------------------------

TEST(PositionAt, CountsLinesAndCharactersFromOne) {
  const std::string text = U8(u8"ab\n路面x\n");
  EXPECT_EQ(Describe(PositionAt(text, text.find('x'))), "line 2, column 3");
  EXPECT_EQ(PositionAt(text, 0).line, 1u);
  EXPECT_EQ(PositionAt(text, 0).column, 1u);
  EXPECT_EQ(PositionAt(text, 2).column, 3u);
  EXPECT_EQ(PositionAt(text, text.find('x')).line, 2u);
  EXPECT_EQ(PositionAt(text, text.find('x')).column, 3u);
  EXPECT_EQ(PositionAt(text, text.size()).line, 3u);
  EXPECT_EQ(PositionAt(text, 1000).line, 3u);
}

TEST(DescribeCharacter, ShowsTheCharacterAndItsNumber) {
  EXPECT_EQ(DescribeCharacter(U'é'), U8(u8"é (U+00E9)"));
  EXPECT_EQ(DescribeCharacter(U'𠮷'), U8(u8"𠮷 (U+20BB7)"));
  EXPECT_EQ(DescribeCharacter(U'\u0007'), "(U+0007)") << "a control character has no picture";
}

TEST(ModelText, GoesToUtf8AndBack) {
  EXPECT_EQ(ToUtf8(u8"盛土工 ①"_cp932), U8(u8"盛土工 ①"));
  EXPECT_EQ(FromUtf8(U8(u8"盛土工 ①")), std::string(u8"盛土工 ①"_cp932));
}

TEST(ModelText, ShowsBytesThatAreNoCharacterAsTheReplacementCharacter) {
  EXPECT_EQ(ToUtf8("a\x81"), U8(u8"a\uFFFD"));
  EXPECT_EQ(ToUtf8("\x81 b"), U8(u8"\uFFFD b"));
}

TEST(ModelText, HoldsNoCharacterOutsideCodePage932) { EXPECT_EQ(FromUtf8(U8(u8"é")), std::nullopt); }

}  // namespace
}  // namespace vorn_host
