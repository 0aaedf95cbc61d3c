#include "vorn/platform/cstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <string>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

namespace {

TEST(CString, TakesTextFromAnything) {
  EXPECT_TRUE(CString().IsEmpty());
  EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
  EXPECT_EQ(CString("abc"), "abc");
  EXPECT_EQ(CString("abc", 2), "ab");
  EXPECT_EQ(CString(std::string_view("a\0b", 3)).GetLength(), 3);
  EXPECT_EQ(CString(u8"盛土"_cp932).GetLength(), 4);
  CString text("abc");
  text = static_cast<const char*>(nullptr);
  EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, Concatenates) {
  CString text("a");
  text += "b";
  text += 'c';
  text += std::string_view("d");
  text += CString("e");
  text += static_cast<const char*>(nullptr);
  EXPECT_EQ(text, "abcde");
  EXPECT_EQ("x" + text + "y" + CString("z"), "xabcdeyz");
}

TEST(CString, TakesANullPointerForAnEmptyText) {
  constexpr const char* kNull = nullptr;
  CString text("abc");
  EXPECT_TRUE(CString(kNull).IsEmpty());
  EXPECT_TRUE(CString(kNull, 3).IsEmpty());
  EXPECT_TRUE(CString() == kNull);
  EXPECT_TRUE(kNull == CString());
  EXPECT_FALSE(text == kNull);
  EXPECT_TRUE(text != kNull);
  EXPECT_EQ((text + kNull).View(), "abc");
  EXPECT_EQ((kNull + text).View(), "abc");
  text += kNull;
  EXPECT_EQ(text.View(), "abc");
  text = kNull;
  EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, GivesItsBytesToBeWritten) {
  for (const int length : {0, 1, 15, 16, 300}) {
    for (const char* before : {"", "abc", "a text in memory of its own"}) {
      CString text(before);
      const std::string written(static_cast<std::size_t>(length), 'x');
      std::copy(written.begin(), written.end(), text.GetBufferSetLength(length));
      EXPECT_EQ(text.View(), written);
      EXPECT_EQ(text.GetString()[length], '\0');
    }
  }
  CString text("kept");
  EXPECT_EQ(std::string_view(text.GetBufferSetLength(40), 4), "kept") << "what it held stays";
  (void)text.GetBufferSetLength(3);
  EXPECT_EQ(text, "kep");
  text = "kept";
  EXPECT_THROW((void)text.GetBufferSetLength(-1), CInvalidArgException);
  EXPECT_EQ(text, "kept");
}

TEST(CString, ReadsAndWritesBytes) {
  CString text("abc");
  EXPECT_EQ(text.GetAt(0), 'a');
  EXPECT_EQ(text[2], 'c');
  text.SetAt(1, 'x');
  EXPECT_EQ(text, "axc");
}

TEST(CString, RefusesPositionsOutsideTheText) {
  CString text("abc");
  EXPECT_THROW((void)text.GetAt(-1), CInvalidArgException);
  EXPECT_THROW((void)text.GetAt(3), CInvalidArgException);
  EXPECT_THROW((void)CString().GetAt(0), CInvalidArgException);
  EXPECT_THROW(text.SetAt(3, 'x'), CInvalidArgException);
  EXPECT_THROW(text.SetAt(-1, 'x'), CInvalidArgException);
}

TEST(CString, ComparesUnsignedBytes) {
  EXPECT_EQ(CString("abc").Compare("abc"), 0);
  EXPECT_LT(CString("abc").Compare("abd"), 0);
  EXPECT_LT(CString("ab").Compare("abc"), 0);
  EXPECT_GT(CString("\x81").Compare("z"), 0);
  EXPECT_NE(CString("A").Compare("a"), 0);
  EXPECT_LT(CString("a"), CString("b"));
  EXPECT_NE(CString("a"), CString("b"));
}

TEST(CString, ComparesWithoutCaseOfSingleByteLettersOnly) {
  EXPECT_EQ(CString("AbC").CompareNoCase("aBc"), 0);
  EXPECT_LT(CString("ABC").CompareNoCase("abd"), 0);
  EXPECT_GT(CString("ABD").CompareNoCase("abc"), 0);
  EXPECT_LT(CString("AB").CompareNoCase("abc"), 0);
  EXPECT_GT(CString("abc").CompareNoCase("AB"), 0);
  EXPECT_LT(CString("_").CompareNoCase("A"), 0);
  EXPECT_EQ(CString(u8"盛土A"_cp932).CompareNoCase(u8"盛土a"_cp932), 0);
  // ア and チ differ only in the case of their trail bytes, and so do Ａ and ａ as a person sees them.
  EXPECT_LT(CString("\x83\x41").CompareNoCase("\x83\x61"), 0);
  EXPECT_GT(CString("\x83\x61").CompareNoCase("\x83\x41"), 0);
  EXPECT_NE(CString(u8"Ａ"_cp932).CompareNoCase(u8"ａ"_cp932), 0);
  EXPECT_NE(CString("\x83").CompareNoCase("\x83\x41"), 0);
  EXPECT_EQ(CString("\x83").CompareNoCase("\x83"), 0);
}

TEST(CString, FindsFromAPositionOn) {
  const CString text("abcabc");
  EXPECT_EQ(text.Find("bc"), 1);
  EXPECT_EQ(text.Find("bc", 1), 1);
  EXPECT_EQ(text.Find("bc", 2), 4);
  EXPECT_EQ(text.Find("bc", 5), -1);
  EXPECT_EQ(text.Find("abcabcd"), -1);
  EXPECT_EQ(text.Find("", 6), 6);
  EXPECT_EQ(text.Find("a", 7), -1);
  EXPECT_EQ(text.Find("a", -1), -1);
}

TEST(CString, FindsNoMatchThatBeginsInsideACharacter) {
  const CString text(u8"表ソ\\能\\"_cp932);
  EXPECT_EQ(text.Find("\\"), 4);
  EXPECT_EQ(text.Find("\\", 1), 4);
  EXPECT_EQ(text.Find("\\", 5), 7);
  EXPECT_EQ(text.ReverseFind('\\'), 7);
  EXPECT_EQ(CString(u8"表ソ"_cp932).Find("\\"), -1);
  EXPECT_EQ(CString(u8"表ソ"_cp932).ReverseFind('\\'), -1);
  // The trail byte of one character and the lead byte of the next look like a third.
  EXPECT_EQ(CString("\x81\x83\x83\x41").Find("\x83\x83"), -1);
  EXPECT_EQ(CString("\x81\x83\x83\x83").Find("\x83\x83"), 2);
}

TEST(CString, FindsTheLastSingleByte) {
  EXPECT_EQ(CString("a/b/c").ReverseFind('/'), 3);
  EXPECT_EQ(CString("/").ReverseFind('/'), 0);
  EXPECT_EQ(CString("abc").ReverseFind('/'), -1);
  EXPECT_EQ(CString().ReverseFind('/'), -1);
  EXPECT_EQ(CString("abc").ReverseFind('\0'), -1) << "the terminator is no part of the text";
  EXPECT_EQ(CString(std::string_view("a\0bc", 4)).ReverseFind('\0'), 1);
  // A lead byte is no character of its own unless it stands alone.
  EXPECT_EQ(CString("\x83\x41").ReverseFind('\x83'), -1);
  EXPECT_EQ(CString("\x83\x41\x83").ReverseFind('\x83'), 2);
}

TEST(CString, FindsASingleByteFromAPositionOn) {
  const CString text(u8"a表\\能\\"_cp932);
  EXPECT_EQ(text.Find('a'), 0);
  EXPECT_EQ(text.Find('a', 1), -1);
  EXPECT_EQ(text.Find('\\'), 3);
  EXPECT_EQ(text.Find('\\', 4), 6);
  EXPECT_EQ(text.Find('\\', 7), -1);
  EXPECT_EQ(text.Find('\\', 8), -1);
  EXPECT_EQ(text.Find('\\', -1), -1);
}

// A run of bytes that can all begin a character has to be read from its beginning. A long one must not be read anew for
// every place that could match: at this size that takes minutes.
class LongLeadByteRun : public testing::Test {
 protected:
  static constexpr std::size_t kBytes = std::size_t{1} << 20;
  static constexpr int kSize = static_cast<int>(kBytes);
  /// Of the processor's time, as other programs may keep it busy; far more than needed, for builds that check every
  /// access.
  static constexpr std::clock_t kLimit = 5 * CLOCKS_PER_SEC;

  ~LongLeadByteRun() override { EXPECT_LT(std::clock() - m_start, kLimit); }

  static std::string Repeated(std::string_view pair) {
    std::string text;
    while (text.size() < kBytes) text += pair;
    return text;
  }

 private:
  std::clock_t m_start = std::clock();
};

TEST_F(LongLeadByteRun, IsSearchedForCharacters) {
  // Both bytes of this character can begin one.
  constexpr std::string_view kCharacter = u8"削"_cp932;
  ASSERT_EQ(kCharacter, "\x8D\xED");
  const std::string run = Repeated(kCharacter);
  EXPECT_EQ(CString(run).Find(kCharacter), 0);
  EXPECT_EQ(CString(run).Find(kCharacter, 1), 2);
  EXPECT_EQ(CString(run).Find(kCharacter, kSize - 3), kSize - 2);
  EXPECT_EQ(CString(run).Find(kCharacter, kSize - 1), -1);
  EXPECT_EQ(CString(run).Find("\xED\x8D"), -1);
  EXPECT_EQ(CString(run).Find("\xED\x8D", 1), -1);
  EXPECT_EQ(CString(run).Find('\xED'), -1);
  EXPECT_EQ(CString(run).Find("\xED\x8D", kSize - 3), -1);
  EXPECT_EQ(CString(run + "\xED\x8D").Find("\xED\x8D"), kSize);
  EXPECT_EQ(CString(run + "a").Find('a'), kSize);
  EXPECT_EQ(CString(run + "\x83"
                          "a")
                .Find('a'),
            -1);
}

TEST_F(LongLeadByteRun, IsSearchedForTheLastSingleByte) {
  const std::string run = Repeated("\x8D\xED");
  EXPECT_EQ(CString(run).ReverseFind('\xED'), -1);
  EXPECT_EQ(CString(run).ReverseFind('\x8D'), -1);
  // Behind whole characters a lone byte stands alone.
  EXPECT_EQ(CString(run + "\xED").ReverseFind('\xED'), kSize);
  EXPECT_EQ(CString("\xED" + run).ReverseFind('\xED'), kSize);
  EXPECT_EQ(CString("\xED" + run).ReverseFind('\x8D'), -1);
  EXPECT_EQ(CString("a" + run).ReverseFind('a'), 0);
  EXPECT_EQ(CString(run + "a").ReverseFind('a'), kSize);
  EXPECT_EQ(CString(run + "\x83"
                          "a")
                .ReverseFind('a'),
            -1);
}

TEST_F(LongLeadByteRun, OfOneByteIsSearchedToo) {
  const std::string run = Repeated("\x83\x83");
  EXPECT_EQ(CString(run).ReverseFind('\x83'), -1);
  EXPECT_EQ(CString(run + "\x83").ReverseFind('\x83'), kSize);
  EXPECT_EQ(CString(run).Find("\x83\x83", 1), 2);
  EXPECT_EQ(CString(run + "\x83\x41").Find("\x83\x41"), kSize);
  EXPECT_EQ(CString("\x83" + run + "\x41").Find("\x83\x41"), kSize);
  EXPECT_EQ(CString(run + "\x41").Find("\x83\x41"), -1);
}

TEST(CString, CutsPartsToTheText) {
  constexpr int kHuge = std::numeric_limits<int>::max();
  constexpr int kNegative = std::numeric_limits<int>::min();
  const CString text("abcde");
  EXPECT_EQ(text.Left(2), "ab");
  EXPECT_EQ(text.Left(kHuge), "abcde");
  EXPECT_EQ(text.Left(kNegative), "");
  EXPECT_EQ(text.Right(2), "de");
  EXPECT_EQ(text.Right(kHuge), "abcde");
  EXPECT_EQ(text.Right(-1), "");
  EXPECT_EQ(text.Mid(3), "de");
  EXPECT_EQ(text.Mid(5), "");
  EXPECT_EQ(text.Mid(kHuge), "");
  EXPECT_EQ(text.Mid(-1), "abcde");
  EXPECT_EQ(text.Mid(1, 2), "bc");
  EXPECT_EQ(text.Mid(4, kHuge), "e");
  EXPECT_EQ(text.Mid(kHuge, kHuge), "");
  EXPECT_EQ(text.Mid(-1, 1), "a");
  EXPECT_EQ(text.Mid(1, -1), "");
}

TEST(CString, TrimsAsciiWhiteSpaceOnly) {
  EXPECT_EQ(CString(" \t\r\n\v\fa b \n").Trim(), "a b");
  EXPECT_EQ(CString("  a ").TrimLeft(), "a ");
  EXPECT_EQ(CString("  a ").TrimRight(), "  a");
  EXPECT_EQ(CString(" \t ").Trim(), "");
  EXPECT_EQ(CString("").Trim(), "");
  EXPECT_EQ(CString(u8"　土　"_cp932).Trim(), u8"　土　"_cp932);
}

TEST(CString, FoldsSingleByteLettersOnly) {
  EXPECT_EQ(CString("abcXYZ[`{@").MakeUpper(), "ABCXYZ[`{@");
  EXPECT_EQ(CString("abcXYZ[`{@").MakeLower(), "abcxyz[`{@");
  // ア and チ share a lead byte; their trail bytes are A and a.
  EXPECT_EQ(CString("a\x83\x41\x83\x61").MakeUpper(), "A\x83\x41\x83\x61");
  EXPECT_EQ(CString("A\x83\x41\x83\x61").MakeLower(), "a\x83\x41\x83\x61");
  EXPECT_EQ(CString(u8"Ａａｱ"_cp932).MakeLower(), u8"Ａａｱ"_cp932);
}

TEST(CString, NeverFoldsTheTrailByteOfAnyCharacter) {
  for (unsigned pair = 0x8000; pair < 0x10000; ++pair) {
    const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 0xFF)};
    const std::string_view text(bytes, 2);
    if (code_page_932::CharacterLength(text, 0) != 2) continue;
    EXPECT_EQ(CString(text).MakeUpper(), text);
    EXPECT_EQ(CString(text).MakeLower(), text);
    EXPECT_NE(CString(text).Find(text.substr(1)), 1);
  }
}

}  // namespace
