#include "vorn/platform/counted_archive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "tests/archive/expected_bytes.h"
#include "vorn/platform/carray.h"

namespace {

using archive_test::ExpectedBytes;
using archive_test::HasBytes;
using archive_test::U32;
using test_support::ArchiveRefusal;
using test_support::Bytes;
using test_support::LoadingArchive;
using test_support::Stored;
using testing::ElementsAre;

using Numbers = CArray<std::uint32_t>;

void Serialize(CArchive& ar, Numbers& numbers) {
  SerializeCounted(ar, numbers, [&](std::uint32_t& number) { ar.IsLoading() ? ar >> number : ar << number; });
}

std::vector<std::uint32_t> Items(const Numbers& numbers) { return {numbers.begin(), numbers.end()}; }

Numbers Counting(std::uint32_t count) {
  Numbers numbers;
  for (std::uint32_t i = 0; i < count; ++i) numbers.Add(i);
  return numbers;
}

TEST(CountedArchive, StoresTheCountAndTheElements) {
  Numbers numbers = Counting(3);
  EXPECT_TRUE(HasBytes(Stored([&](CArchive& ar) { Serialize(ar, numbers); }),
                       {{"count", U32(3)}, {"0", U32(0)}, {"1", U32(1)}, {"2", U32(2)}}));
  EXPECT_EQ(numbers.GetSize(), 3);
}

TEST(CountedArchive, StoresAnEmptyArrayAsItsCount) {
  Numbers numbers;
  EXPECT_TRUE(HasBytes(Stored([&](CArchive& ar) { Serialize(ar, numbers); }), {{"count", U32(0)}}));
}

TEST(CountedArchive, LoadsAnyNumberOfElementsInOrder) {
  for (const std::uint32_t count : {0u, 1u, 7u, 8u, 9u, 16u, 17u, 1000u}) {
    Numbers numbers = Counting(count);
    LoadingArchive ar(Stored([&](CArchive& out) { Serialize(out, numbers); }));
    Numbers loaded = Counting(40);
    Serialize(*ar, loaded);
    EXPECT_EQ(Items(loaded), Items(numbers));
    EXPECT_EQ(ar->Remaining(), 0u);
  }
}

TEST(CountedArchive, RefusesACountThatTheBytesCannotBackBeforeItTouchesTheArray) {
  for (const std::uint32_t count : {3u, 0x40000000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    LoadingArchive ar(ExpectedBytes({{"count", U32(count)}, {"0", U32(1)}, {"1", U32(2)}}).All());
    Numbers numbers = Counting(2);
    EXPECT_EQ(ArchiveRefusal([&] { Serialize(*ar, numbers); }), CArchiveException::endOfFile) << count;
    EXPECT_THAT(Items(numbers), ElementsAre(0u, 1u));
  }
}

TEST(CountedArchive, LeavesTheElementsThatWereReadWhole) {
  LoadingArchive ar(ExpectedBytes({{"count", U32(3)}, {"0", U32(5)}, {"1", U32(6)}, {"2", U32(7)}}).All());
  Numbers numbers;
  const auto refuseSeven = [&](std::uint32_t& number) {
    *ar >> number;
    if (number == 7) throw CArchiveException(CArchiveException::badIndex);
  };
  EXPECT_EQ(ArchiveRefusal([&] { SerializeCounted(*ar, numbers, refuseSeven); }), CArchiveException::badIndex);
  EXPECT_THAT(Items(numbers), ElementsAre(5u, 6u));
}

/// Counts what it is asked to make room for.
class Watched : public Numbers {
 public:
  void Reserve(int size) {
    reserved.push_back(size);
    Numbers::Reserve(size);
  }
  std::vector<int> reserved;
};

TEST(CountedArchive, NeverMakesRoomForMoreThanTheCount) {
  for (const std::uint32_t count : {1u, 7u, 8u, 9u, 15u, 17u, 1000u}) {
    Numbers numbers = Counting(count);
    LoadingArchive ar(Stored([&](CArchive& out) { Serialize(out, numbers); }));
    Watched loaded;
    SerializeCounted(*ar, loaded, [&](std::uint32_t& number) { *ar >> number; });
    ASSERT_FALSE(loaded.reserved.empty());
    for (const int room : loaded.reserved) EXPECT_LE(room, static_cast<int>(count));
  }
}

/// Loads numbers that each take 16 bytes, and says so.
void LoadLong(CArchive& ar, Watched& numbers) {
  const auto load = [&](std::uint32_t& number) {
    std::uint32_t rest = 0;
    ar >> number >> rest >> rest >> rest;
  };
  SerializeCounted(ar, numbers, load, 16);
}

Bytes LongNumbers(std::uint32_t announced, std::uint32_t count) {
  ExpectedBytes bytes = {{"count", U32(announced)}};
  for (std::uint32_t i = 0; i < 4 * count; ++i) bytes.Add({"", U32(i / 4)});
  return bytes.All();
}

TEST(CountedArchive, RefusesACountThatTheShortestElementsCannotBack) {
  for (const std::uint32_t count : {11u, 40u, 0xFFFFFFFFu}) {
    LoadingArchive ar(LongNumbers(count, 10));
    Watched numbers;
    EXPECT_EQ(ArchiveRefusal([&] { LoadLong(*ar, numbers); }), CArchiveException::endOfFile) << count;
    EXPECT_TRUE(numbers.reserved.empty());
  }
}

TEST(CountedArchive, LoadsAsManyOfTheShortestElementsAsTheBytesHold) {
  for (const std::uint32_t count : {1u, 7u, 8u, 9u, 17u, 1000u}) {
    LoadingArchive ar(LongNumbers(count, count));
    Watched loaded;
    LoadLong(*ar, loaded);
    EXPECT_EQ(Items(loaded), Items(Counting(count)));
    for (const int room : loaded.reserved) EXPECT_LE(room, static_cast<int>(count));
  }
}

TEST(CountedArchive, MakesRoomOnceForAsManyElementsAsNearlyEveryArrayHas) {
  for (const std::uint32_t count : {1u, 9u, 1000u, 8192u}) {
    LoadingArchive ar(LongNumbers(count, count));
    Watched loaded;
    LoadLong(*ar, loaded);
    EXPECT_THAT(loaded.reserved, ElementsAre(static_cast<int>(count)));
  }
}

// Both the old room and the new one are there while an array grows.
TEST(CountedArchive, DoesNotGrowAgainWhenAnArrayOfKnownShortestElementsIsMoreThanHalfRead) {
  // Behind what is believed at once, 32 KiB of elements: smaller arrays do not grow at all.
  for (std::uint32_t count = 16'385; count < 120'000; count += 1'977) {
    LoadingArchive ar(LongNumbers(count, count));
    Watched loaded;
    LoadLong(*ar, loaded);
    ASSERT_GE(loaded.reserved.size(), 2u);
    EXPECT_LE(2 * loaded.reserved[loaded.reserved.size() - 2], static_cast<int>(count));
    EXPECT_EQ(loaded.reserved.back(), static_cast<int>(count));
  }
}

}  // namespace
