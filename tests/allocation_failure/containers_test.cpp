#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/allocation_failure/failing_allocation.h"
#include "tests/support/archive_bytes.h"
#include "vorn/platform/carray.h"
#include "vorn/platform/cfile.h"
#include "vorn/platform/counted_archive.h"
#include "vorn/platform/on_demand.h"

// What arrays, files in memory and members made on demand keep when memory runs out, and when they ask for none.

namespace {

using allocation_test::AllocationsOf;
using allocation_test::AllowAllocations;
using allocation_test::FailEachAllocation;
using testing::ElementsAre;

// Too long to be held without an allocation.
constexpr const char* kOld = "a text that is there from the beginning";
constexpr const char* kNew = "a text that comes after the other one";

// --- arrays ----------------------------------------------------------------------------------------------------------

TEST(CArrayMemory, IsNotAskedForWhileThereAreNoElements) {
  const CString item("a");
  EXPECT_EQ(AllocationsOf([&] {
              CStringArray array;
              array.SetSize(0);
              array.Reserve(0);
              array.ReserveMore(0);
              array.RemoveAll();
              array.RemoveAt(0, 0);
              array.InsertAt(0, item, 0);
              array.Copy(array);
              array.Append(array);
              array.Append(CStringArray());
              CStringArray copy(array);
              copy = array;
              const CStringArray moved(std::move(copy));
              EXPECT_TRUE(moved == array);
            }),
            0u);
}

TEST(CArrayMemory, IsThereForAsManyElementsMoreAsRoomWasMadeFor) {
  CArray<int> array;
  array.Add(0);
  array.ReserveMore(40);
  EXPECT_EQ(AllocationsOf([&] {
              for (int i = 0; i < 40; ++i) array.Add(i);
            }),
            0u);
  EXPECT_LE(AllocationsOf([&] {
              for (int i = 0; i < 10'000; ++i) {
                array.ReserveMore(1);
                array.Add(i);
              }
            }),
            20u);
  EXPECT_EQ(array.GetSize(), 10'041);
}

// --- counted elements ------------------------------------------------------------------------------------------------

TEST(CountedArchiveWithoutMemory, LeavesTheElementsThatWereLoadedWhole) {
  constexpr std::uint32_t kCount = 5000;  // more than room is made for at first
  const auto bytes = test_support::Stored([](CArchive& ar) {
    ar << kCount;
    for (std::uint32_t i = 0; i < kCount; ++i) ar << CString(kNew);
  });
  static_assert(kCount > 2 * kFirstCountedRoom<CString>);
  int mostLoaded = 0;
  // Room, then one allocation for each text: some of them in each room, and those around each growth.
  for (const std::ptrdiff_t succeeding : {0, 1, 2, 3, 100, 2048, 2049, 2050, 2051, 4097, 4098, 4099, 4100, 5000}) {
    test_support::LoadingArchive ar(bytes);
    CStringArray texts;
    texts.SetSize(3);
    const auto load = [&] { SerializeCounted(*ar, texts, [&](CString& text) { *ar >> text; }); };
    EXPECT_THROW(AllowAllocations(succeeding, load), std::bad_alloc) << succeeding;
    EXPECT_LE(texts.GetSize(), succeeding);
    EXPECT_GE(texts.GetSize(), succeeding > 0 ? succeeding - 5 : 0) << "nothing that was loaded whole is lost";
    for (const CString& text : texts) ASSERT_EQ(text, kNew) << succeeding;
    mostLoaded = std::max(mostLoaded, texts.GetSize());
  }
  EXPECT_GT(mostLoaded, 4096);
}

// --- files -----------------------------------------------------------------------------------------------------------

/// Writes bytes at a position without memory for them, and then with it.
void ExpectFull(std::int64_t position) {
  const test_support::Bytes old = {1, 2, 3};
  const test_support::Bytes added(100, 7);
  CMemFile file;
  int failures = 0;
  const auto write = [&] {
    try {
      file.Write(added.data(), 100);
    } catch (const CFileException& failure) {
      EXPECT_EQ(failure.m_cause, CFileException::diskFull);
      ++failures;
      throw;
    }
  };
  FailEachAllocation<CFileException>(
      [&] {
        file.Attach(old);
        file.Seek(position, CFile::begin);
      },
      write,
      [&] {
        EXPECT_EQ(file.Bytes(), old);
        EXPECT_EQ(file.GetPosition(), static_cast<std::uint64_t>(position));
      });
  EXPECT_GT(failures, 0);
  EXPECT_EQ(file.GetLength(), static_cast<std::uint64_t>(position + 100));
}

TEST(CMemFileWithoutMemory, IsFullAndAsItWasWhenAppendedTo) { ExpectFull(3); }
TEST(CMemFileWithoutMemory, IsFullAndAsItWasWhenWrittenOverItsEnd) { ExpectFull(1); }
TEST(CMemFileWithoutMemory, IsFullAndAsItWasWhenWrittenBehindItsEnd) { ExpectFull(50); }

// --- archives --------------------------------------------------------------------------------------------------------

TEST(CArchiveWithoutMemory, ForItsBufferLeavesTheFile) {
  const test_support::Bytes bytes = {1, 2, 3};
  for (const auto mode : {CArchive::load, CArchive::store}) {
    CMemFile file(bytes);
    file.Seek(1, CFile::begin);
    FailEachAllocation([] {}, [&] { const CArchive ar(&file, mode, 100); },
                       [&] {
                         EXPECT_EQ(file.Bytes(), bytes);
                         EXPECT_EQ(file.GetPosition(), 1u);
                       });
  }
}

/// Stores, in an archive with a buffer of 8 bytes, so many numbers that it goes to the file many times.
void StoreNumbers(CArchive& ar) {
  for (std::uint32_t i = 0; i < 100; ++i) ar << i << static_cast<std::uint8_t>(i);
  ar.Close();
}

TEST(CArchiveWithoutMemory, InTheFileGivesThatUp) {
  CMemFile whole;
  CArchive complete(&whole, CArchive::store, 8);
  StoreNumbers(complete);
  CMemFile file;
  std::optional<CArchive> ar;
  FailEachAllocation<CFileException>(
      [&] {
        ar.reset();
        file.Attach({});
        ar.emplace(&file, CArchive::store, 8);
      },
      [&] { StoreNumbers(*ar); },
      [&] {
        const test_support::Bytes taken = file.Bytes();
        EXPECT_LT(taken.size(), whole.Bytes().size());
        EXPECT_TRUE(std::equal(taken.begin(), taken.end(), whole.Bytes().begin()));
        const auto refused = CArchiveException::genericException;
        EXPECT_EQ(test_support::ArchiveRefusal([&] { *ar << std::uint64_t{5} << std::uint64_t{5}; }), refused);
        EXPECT_EQ(test_support::ArchiveRefusal([&] { ar->Close(); }), refused);
        EXPECT_EQ(file.Bytes(), taken);
      });
  EXPECT_EQ(file.Bytes(), whole.Bytes());
}

TEST(CArchiveMemory, IsAskedForByItsBufferAlone) {
  CMemFile stored(test_support::Bytes(500));  // so long that it need not grow
  EXPECT_EQ(AllocationsOf([&] {
              CArchive ar(&stored, CArchive::store, 8);
              StoreNumbers(ar);
            }),
            1u);
  test_support::StreamedFile loaded(stored.Detach());
  EXPECT_EQ(AllocationsOf([&] {
              CArchive ar(&loaded, CArchive::load, 8);
              for (std::uint32_t i = 0; i < 100; ++i) {
                EXPECT_EQ(ar.Load<std::uint32_t>(), i);
                EXPECT_EQ(ar.Load<std::uint8_t>(), i);
              }
              ar.Flush();
            }),
            1u);
  EXPECT_EQ(AllocationsOf([&] { const CArchive unbuffered(&loaded, CArchive::load, 0); }), 0u);
}

// --- members made on demand ------------------------------------------------------------------------------------------

using Member = OnDemand<std::string>;

TEST(OnDemandWithoutMemory, IsANewValueWhenItCannotBeMade) {
  Member member;
  FailEachAllocation([&] { member = Member(); }, [&] { (void)member.Change(); },
                     [&] { EXPECT_EQ(&member.Get(), &Member().Get()); });
}

TEST(OnDemandWithoutMemory, IsAsItWasWhenItCannotBeACopy) {
  Member source;
  source.Change() = kNew;
  Member member;
  FailEachAllocation(
      [&] {
        member = Member();
        member.Change() = kOld;
      },
      [&] { member = source; },
      [&] {
        EXPECT_EQ(member.Get(), kOld);
        EXPECT_EQ(source.Get(), kNew);
      });
  EXPECT_EQ(member.Get(), kNew);
}

TEST(OnDemandMemory, IsAskedForByNothingButAChange) {
  (void)Member().Get();  // the value that new ones share
  EXPECT_EQ(AllocationsOf([] {
              Member member;
              (void)member.Get();
              Member copy(member);
              copy = member;
              const Member moved(std::move(copy));
              EXPECT_TRUE(moved == member);
            }),
            0u);
  Member member;
  // Written down where the compiler has to keep it: it may leave out the allocation of what nobody looks at.
  std::string* volatile made = nullptr;
  EXPECT_EQ(AllocationsOf([&] { made = &member.Change(); }), 1u);
  EXPECT_EQ(AllocationsOf([&] { made = &member.Change(); }), 0u);
}

}  // namespace
