#include "vorn/archive/archive_record.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "tests/archive/full_records.h"

namespace archive_test {
namespace {

using test_support::LoadingArchive;
using test_support::Stored;

bool IsFrom(const char* version, const char* first) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  const CString tag(version);
  return ArchiveRecord(ar, tag).IsFrom(first);
}

bool IsAfter(const char* version, const char* last) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  const CString tag(version);
  return ArchiveRecord(ar, tag).IsAfter(last);
}

TEST(ArchiveRecord, ComparesStoreVersionsWithTheirOwnNumberIncludedOrNot) {
  EXPECT_TRUE(IsFrom("05.00", "05.00"));
  EXPECT_TRUE(IsFrom("05.01", "05.00"));
  EXPECT_FALSE(IsFrom("04.99", "05.00"));
  EXPECT_FALSE(IsAfter("05.00", "05.00"));
  EXPECT_TRUE(IsAfter("05.01", "05.00"));
  EXPECT_FALSE(IsAfter("04.99", "05.00"));
}

// Not as numbers, and not as words.
TEST(ArchiveRecord, ComparesStoreVersionsAsTextsByteByByte) {
  EXPECT_TRUE(IsFrom("10.00", "06.00"));
  EXPECT_TRUE(IsFrom("6.00", "10.00"));
  EXPECT_FALSE(IsFrom("010.00", "06.00"));
  EXPECT_FALSE(IsFrom("05.0", "05.00"));
  EXPECT_TRUE(IsAfter("05.000", "05.00"));
  EXPECT_FALSE(IsFrom("05.A0", "05.a0"));
  EXPECT_TRUE(IsFrom("05.a0", "05.A0"));
  EXPECT_TRUE(IsFrom("\x90", "06.00"));
  EXPECT_FALSE(IsFrom("", "01.10"));
}

/// A record with a field of each kind.
struct Fields {
  std::uint32_t always = 0;
  std::uint32_t readSince = 0;
  std::uint32_t onlyFrom = 0;

  void Serialize(CArchive& ar, const CString& tag) {
    ArchiveRecord record(ar, tag);
    record.ExtensionTable();
    record.Field(always);
    record.ReadSince("05.00", readSince);
    record.Reserved(std::uint16_t{0xABCD});
    record.OnlyFrom("05.00", onlyFrom);
  }
};

class ArchiveRecordFields : public InStoreVersion {};
IN_EVERY_STORE_VERSION(ArchiveRecordFields);

TEST_P(ArchiveRecordFields, AreWrittenByTheirConditions) {
  EXPECT_TRUE(HasBytes(StoredAs(Fields{1, 2, 3}, GetParam()), {{"table", EmptyTable()},
                                                               {"always", U32(1)},
                                                               {"read since", U32(2)},
                                                               {"reserved", U16(0xABCD)},
                                                               {"only from", U32(3), Written().IsFrom("05.00")}}));
}

TEST_P(ArchiveRecordFields, AreReadByTheirConditionsAndKeepTheirValueOtherwise) {
  const bool isNew = Read().IsFrom("05.00");
  Fields fields{7, 8, 9};
  ReadInto(fields,
           ExpectedBytes{{"table", TableOf(1, 2)},
                         {"always", U32(1)},
                         {"read since", U32(2), isNew},
                         {"reserved", U16(0x1234)},
                         {"only from", U32(3), isNew}}
               .All(),
           GetParam());
  EXPECT_EQ(fields.always, 1u);
  EXPECT_EQ(fields.readSince, isNew ? 2u : 8u);
  EXPECT_EQ(fields.onlyFrom, isNew ? 3u : 9u);
}

TEST(ArchiveRecord, OfNoStoreVersionReadsWhatItWrites) {
  const auto transfer = [](CArchive& ar, std::uint32_t& value) {
    ArchiveRecord record(ar);
    record.ExtensionTable();
    record.Field(value);
  };
  std::uint32_t value = 7;
  const Bytes bytes = Stored([&](CArchive& ar) { transfer(ar, value); });
  EXPECT_TRUE(HasBytes(bytes, {{"table", EmptyTable()}, {"value", U32(7)}}));
  LoadingArchive ar(bytes);
  std::uint32_t loaded = 0;
  transfer(*ar, loaded);
  EXPECT_EQ(loaded, 7u);
}

}  // namespace
}  // namespace archive_test
