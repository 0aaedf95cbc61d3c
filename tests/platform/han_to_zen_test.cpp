#include <gtest/gtest.h>

#include <string>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

namespace {

std::string Encoded(char32_t codePoint) {
  const std::uint16_t code = code_page_932::Encode(codePoint).value();
  return {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
}

TEST(HanToZen, WidensEveryAsciiCharacter) {
  EXPECT_EQ(SilString::HanToZen(" "), u8"　"_cp932);
  for (char byte = '!'; byte <= '~'; ++byte) {
    const char32_t fullWidth = U'！' + static_cast<char32_t>(byte - '!');
    EXPECT_EQ(SilString::HanToZen(std::string_view(&byte, 1)), Encoded(fullWidth)) << byte;
  }
  EXPECT_EQ(SilString::HanToZen("\"'\\~"), "\xFA\x57\xFA\x56\x81\x5F\x81\x60");
}

TEST(HanToZen, WidensEveryHalfWidthKana) {
  constexpr std::u32string_view kFull =
      U"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラ"
      U"リルレロワン゛゜";
  ASSERT_EQ(kFull.size(), 0xDFu - 0xA1u + 1);
  for (std::size_t i = 0; i < kFull.size(); ++i) {
    const char byte = static_cast<char>(0xA1 + i);
    EXPECT_EQ(SilString::HanToZen(std::string_view(&byte, 1)), Encoded(kFull[i]));
  }
}

TEST(HanToZen, JoinsALetterAndItsSoundMark) {
  EXPECT_EQ(SilString::HanToZen(u8"ｶﾞｷﾞｸﾞｹﾞｺﾞ"_cp932), u8"ガギグゲゴ"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ｻﾞｼﾞｽﾞｾﾞｿﾞ"_cp932), u8"ザジズゼゾ"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞ"_cp932), u8"ダヂヅデド"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ"_cp932), u8"バビブベボ"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ"_cp932), u8"パピプペポ"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ｳﾞ"_cp932), u8"ヴ"_cp932);
}

TEST(HanToZen, LeavesAMarkAloneThatNoLetterTakes) {
  EXPECT_EQ(SilString::HanToZen(u8"ﾞﾟ"_cp932), u8"゛゜"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ｱﾞﾜﾞｦﾞｶﾟﾅﾟ"_cp932), u8"ア゛ワ゛ヲ゛カ゜ナ゜"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"ｶﾞﾞﾊﾟﾟ"_cp932), u8"ガ゛パ゜"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"カﾞ"_cp932), u8"カ゛"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"Aﾞ"_cp932), u8"Ａ゛"_cp932);
}

TEST(HanToZen, DoesNotLookBehindTheText) {
  const std::string_view text = u8"ｶﾞ"_cp932;
  EXPECT_EQ(SilString::HanToZen(text.substr(0, 1)), u8"カ"_cp932);
}

TEST(HanToZen, JoinsExactlyTheLettersThatHaveAVoicedForm) {
  const std::string_view voiceable = u8"ｳｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾊﾋﾌﾍﾎ"_cp932;
  const std::string_view semiVoiceable = u8"ﾊﾋﾌﾍﾎ"_cp932;
  for (int byte = 0xA1; byte <= 0xDF; ++byte) {
    const char letter = static_cast<char>(byte);
    const auto joins = [&](char mark) { return SilString::HanToZen(std::string{letter, mark}).GetLength() == 2; };
    EXPECT_EQ(joins('\xDE'), voiceable.find(letter) != std::string_view::npos) << byte;
    EXPECT_EQ(joins('\xDF'), semiVoiceable.find(letter) != std::string_view::npos) << byte;
  }
}

TEST(HanToZen, LeavesDoubleByteCharactersUntouched) {
  EXPECT_EQ(SilString::HanToZen(u8"表ソ能"_cp932), u8"表ソ能"_cp932);
  EXPECT_EQ(SilString::HanToZen(u8"No.1 盛土ｶﾞA"_cp932), u8"Ｎｏ．１　盛土ガＡ"_cp932);
}

TEST(HanToZen, ChangesNothingWhenDoneAgain) {
  for (int first = 0; first <= 0xFF; ++first) {
    for (int second = 0; second <= 0xFF; ++second) {
      const std::string text{static_cast<char>(first), static_cast<char>(second), '2'};
      const CString full = SilString::HanToZen(text);
      EXPECT_EQ(SilString::HanToZen(full.View()), full) << first << ' ' << second;
    }
  }
}

TEST(HanToZen, CopiesOtherBytes) {
  EXPECT_EQ(SilString::HanToZen("\t\r\n\x7F"), "\t\r\n\x7F");
  EXPECT_EQ(SilString::HanToZen("\x80\xA0\xFD\xFE\xFF"), "\x80\xA0\xFD\xFE\xFF");
  EXPECT_EQ(SilString::HanToZen("A\x81"), std::string(u8"Ａ"_cp932) + "\x81");
  EXPECT_EQ(SilString::HanToZen("\x81\n"), "\x81\n");
  EXPECT_EQ(SilString::HanToZen(std::string_view("\0", 1)), std::string_view("\0", 1));
  EXPECT_EQ(SilString::HanToZen(""), "");
}

}  // namespace
