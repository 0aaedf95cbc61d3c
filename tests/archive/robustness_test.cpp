#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "tests/archive/full_records.h"
#include "tests/archive/small_disk.h"

// Damaged archives of a cross-section set: an archive exception or a model that can be used, nothing else.

namespace archive_test {
namespace {

using test_support::ArchiveRefusal;
using test_support::LoadingArchive;
using Cause = CArchiveException::Cause;

/// A set with one section in which every record occurs.
ExpectedBytes SmallSet(const Layout& at) {
  const bool isNew = at.IsAfter("03.00");
  return {
      {"extension table", EmptyTable()},    {"alignment name", Text("A")},
      {"vertical name", Text("V")},         {"project phase", Text("P"), isNew},
      {"alignment", Bool(true), isNew},     {"section count", U32(1)},
      {"sections[0]", SectionBytes(at, 3)}, {"next target serial", U32(886), at.IsFrom("05.00")},
      {"target count", U32(1), isNew},      {"targets[0]", TargetBytes(at, 8), isNew},
  };
}

/// Why reading is refused; `none` when a set was read, which then can be written.
Cause Outcome(const Bytes& bytes, const CString& tag) {
  VornXSections set;
  const Cause cause = ArchiveRefusal([&] {
    LoadingArchive ar(bytes);
    set.Serialize(*ar, tag);
  });
  // What was read until then is a model as any other.
  static_cast<void>(StoredAs(set, tag.View()));
  return cause;
}

class DamagedArchive : public InStoreVersion {};
IN_EVERY_STORE_VERSION(DamagedArchive);

TEST_P(DamagedArchive, IsReadWhenNothingIsDamaged) {
  EXPECT_EQ(Outcome(SmallSet(Read()).All(), Tag()), CArchiveException::none);
}

TEST_P(DamagedArchive, EndsTooEarlyWhereverItIsTruncated) {
  const Bytes whole = SmallSet(Read()).All();
  for (std::size_t kept = 0; kept < whole.size(); ++kept) {
    const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept));
    ASSERT_EQ(Outcome(bytes, Tag()), CArchiveException::endOfFile) << kept;
  }
}

TEST_P(DamagedArchive, IsRefusedOrReadWhicheverByteChanges) {
  const Bytes whole = SmallSet(Read()).All();
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const int changed : {0x00, 0x7F, 0x80, 0xFF, whole[i] ^ 0x01}) {
      Bytes bytes = whole;
      bytes[i] = static_cast<std::uint8_t>(changed);
      // Anything but an archive exception ends the test.
      ASSERT_NO_THROW(Outcome(bytes, Tag())) << "byte " << i << " as " << changed;
    }
  }
}

TEST_P(DamagedArchive, DoesNotBelieveCountsThatItsBytesCannotBack) {
  const ExpectedBytes table = SmallSet(Read());
  int counts = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (!table.Fields()[i].name.ends_with("count")) continue;
    ++counts;
    for (const std::uint32_t count : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0x40000000u, 0x10000u}) {
      ASSERT_EQ(Outcome(With(table, i, U32(count).bytes), Tag()), CArchiveException::endOfFile)
          << table.Fields()[i].name << ' ' << count;
    }
  }
  EXPECT_GE(counts, 7);
}

TEST_P(DamagedArchive, DoesNotBelieveLengthsPastItsEnd) {
  const ExpectedBytes table = SmallSet(Read());
  const Bytes medium = {0xFF, 0xFD, 0xFF};
  const Bytes endless = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
  const Bytes longest = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F};
  int texts = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (table.Fields()[i].value.type != "text") continue;
    ++texts;
    for (const Bytes& length : {medium, endless, longest}) {
      ASSERT_EQ(Outcome(With(table, i, length), Tag()), CArchiveException::endOfFile) << table.Fields()[i].name;
    }
  }
  EXPECT_GE(texts, 15);
}

TEST_P(DamagedArchive, DoesNotBelieveTablesThatItsBytesCannotBack) {
  const ExpectedBytes table = SmallSet(Read());
  int tables = 0;
  for (std::size_t i = 0; i < table.Fields().size(); ++i) {
    if (table.Fields()[i].value.type != "table") continue;
    ++tables;
    for (const std::uint32_t count : {0xFFFFFFFFu, 0x7FFFFFFFu, 0x10000u}) {
      ASSERT_EQ(Outcome(With(table, i, U32(count).bytes), Tag()), CArchiveException::endOfFile)
          << table.Fields()[i].name;
    }
  }
  EXPECT_GE(tables, 12);
}

TEST_P(DamagedArchive, IsRefusedOrReadInAnotherVersionThanItsOwn) {
  const Bytes whole = SmallSet(Read()).All();
  for (const char* version : kStoreVersions) EXPECT_NO_THROW(Outcome(whole, version)) << version;
}

TEST_P(DamagedArchive, ReportsADiskThatFillsUpWhileItIsWritten) {
  VornXSections set;
  set.GetXSectionArray().Add(FullSection(3));
  const CString tag = Tag();
  const std::size_t size = StoredAs(set, GetParam()).size();
  for (const std::uint32_t bufferSize : {0u, 100u, 4096u}) {
    for (std::size_t room = 0; room < size; room += 37) {
      SmallDisk disk(room);
      CArchive ar(&disk, CArchive::store, bufferSize);
      const auto write = [&] {
        set.Serialize(ar, tag);
        ar.Close();
      };
      ASSERT_THROW(write(), CFileException) << bufferSize << ' ' << room;
      ASSERT_THROW(ar.Close(), CArchiveException);
    }
  }
}

}  // namespace
}  // namespace archive_test
