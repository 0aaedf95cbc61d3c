#include "host/document/design_path.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/host/documents.h"
#include "vorn/platform/code_page_932.h"

namespace vorn_host {
namespace {

std::string NameOf(const std::string& cp932) { return NameText(CString(cp932.c_str())); }

std::string Kanji(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += CString(u8"路"_cp932).GetString();
  return text;
}

TEST(NameText, IsTheWholeNameUpTo200Bytes) {
  EXPECT_EQ(NameOf(""), "");
  EXPECT_EQ(NameOf(std::string(200, 'x')), std::string(200, 'x'));
  EXPECT_EQ(NameOf(Kanji(100)), ToUtf8(Kanji(100)));
}

TEST(NameText, IsTheBeginningOfALongerOne) {
  EXPECT_EQ(NameOf(std::string(201, 'x')), std::string(200, 'x') + "...");
  EXPECT_EQ(NameOf(Kanji(101)), ToUtf8(Kanji(100)) + "...");
}

TEST(NameText, EndsBeforeACharacterThatHasNoRoomAsAWhole) {
  EXPECT_EQ(NameOf("x" + Kanji(100)), "x" + ToUtf8(Kanji(99)) + "...");
  EXPECT_EQ(NameOf("x" + Kanji(99) + "yz"), "x" + ToUtf8(Kanji(99)) + "y...");
}

}  // namespace
}  // namespace vorn_host
