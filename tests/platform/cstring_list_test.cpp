#include "vorn/platform/cstring_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/archive/expected_bytes.h"
#include "tests/support/boastful_file.h"

namespace {

using archive_test::HasBytes;
using archive_test::Text;
using archive_test::U16;
using archive_test::U32;
using test_support::ArchiveRefusal;
using test_support::Bytes;
using test_support::LoadingArchive;
using test_support::Stored;
using test_support::operator+;
using testing::ElementsAre;

std::vector<std::string> Items(const CStringList& list) {
  std::vector<std::string> items;
  for (const CString& text : list) items.emplace_back(text.GetString());
  return items;
}

CStringList List(std::initializer_list<const char*> texts) {
  CStringList list;
  for (const char* text : texts) list.AddTail(text);
  return list;
}

TEST(CStringList, StoresItsCountIn16BitsAndItsTexts) {
  CStringList list = List({"a", "", "bc"});
  EXPECT_TRUE(HasBytes(Stored([&](CArchive& ar) { list.Serialize(ar); }),
                       {{"count", U16(3)}, {"0", Text("a")}, {"1", Text("")}, {"2", Text("bc")}}));
}

TEST(CStringList, StoresALargeCountIn32Bits) {
  CStringList list;
  for (int i = 0; i < 0xFFFF; ++i) list.AddTail(CString());
  const Bytes bytes = Stored([&](CArchive& ar) { list.Serialize(ar); });
  const Bytes head = U16(0xFFFF).bytes + U32(0xFFFF).bytes;
  ASSERT_EQ(bytes.size(), head.size() + 0xFFFF);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 6), head);
  CStringList loaded;
  LoadingArchive ar(bytes);
  loaded.Serialize(*ar);
  EXPECT_EQ(loaded.GetCount(), 0xFFFF);
}

TEST(CStringList, AppendsWhatItLoads) {
  CStringList list = List({"old"});
  LoadingArchive ar(U16(2).bytes + Text("x").bytes + Text("y").bytes);
  list.Serialize(*ar);
  EXPECT_THAT(Items(list), ElementsAre("old", "x", "y"));
  EXPECT_EQ(ar->Remaining(), 0u);
}

TEST(CStringList, DoesNotBelieveACountThatItsBytesCannotBack) {
  for (const Bytes& count : {U16(2).bytes, U16(0xFFFE).bytes, U16(0xFFFF).bytes + U32(0xFFFFFFFF).bytes}) {
    CStringList list = List({"old"});
    LoadingArchive ar(count + Text("").bytes);
    EXPECT_EQ(ArchiveRefusal([&] { list.Serialize(*ar); }), CArchiveException::endOfFile);
    EXPECT_THAT(Items(list), ElementsAre("old"));
  }
}

TEST(CStringList, RefusesMoreTextsThanAListHolds) {
  for (const std::uint32_t count : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {  // behind the one that is there already
    test_support::BoastfulFile file(U16(0xFFFF).bytes + U32(count).bytes, std::uint64_t{1} << 40);
    CArchive ar(&file, CArchive::load);
    CStringList list = List({"old"});
    EXPECT_EQ(ArchiveRefusal([&] { list.Serialize(ar); }), CArchiveException::badIndex) << count;
    EXPECT_THAT(Items(list), ElementsAre("old"));
  }
}

TEST(CStringList, IsCopiedAndMoved) {
  CStringList list = List({"a"});
  CStringList copy = list;
  copy.AddTail("b");
  const CStringList moved = std::move(copy);
  EXPECT_THAT(Items(list), ElementsAre("a"));
  EXPECT_THAT(Items(moved), ElementsAre("a", "b"));
}

}  // namespace
