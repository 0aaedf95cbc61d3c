#include "vorn/platform/dov_data_table.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tests/support/archive_bytes.h"
#include "vorn/platform/code_page_932.h"

namespace {

using test_support::ArchiveRefusal;
using test_support::Bytes;
using test_support::LoadingArchive;
using test_support::Stored;
using test_support::TruncationOverlooked;
using test_support::operator+;
using testing::ElementsAre;

/// The value of a key, or what it was before when the table does not hand it out.
template <typename T>
T ValueOr(const DovDataTable& table, std::int32_t key, T value) {
  table.Lookup(key, value);
  return value;
}

Bytes StoredTable(DovDataTable table) {
  return Stored([&](CArchive& ar) { table.Serialize(ar); });
}

DovDataTable Loaded(const Bytes& bytes) {
  LoadingArchive ar(bytes);
  DovDataTable table;
  table.Serialize(*ar);
  EXPECT_EQ(ar->Remaining(), 0u);
  return table;
}

DovDataTable OneOfEach() {
  DovDataTable table;
  table.SetAt(3, CString(u8"盛土"_cp932));
  table.SetAt(-1, -2);
  table.SetAt(2, 1.5);
  return table;
}

const Bytes kOneOfEach = {
    3,    0,    0,    0,                                                     // count
    0xFF, 0xFF, 0xFF, 0xFF, 1, 0xFE, 0xFF, 0xFF, 0xFF,                       // -1: -2
    2,    0,    0,    0,    2, 0,    0,    0,    0,    0,    0, 0xF8, 0x3F,  // 2: 1.5
    3,    0,    0,    0,    3, 4,    0x90, 0xB7, 0x93, 0x79,                 // 3: 盛土
};

// --- values ----------------------------------------------------------------------------------------------------------

TEST(DovDataTable, StartsEmpty) {
  const DovDataTable table;
  EXPECT_TRUE(table.IsEmpty());
  EXPECT_EQ(table.GetCount(), 0);
}

TEST(DovDataTable, KeepsValuesOfThreeTypesByKey) {
  const DovDataTable table = OneOfEach();
  EXPECT_FALSE(table.IsEmpty());
  EXPECT_EQ(table.GetCount(), 3);
  std::int32_t integer = 0;
  double real = 0;
  CString text;
  EXPECT_TRUE(table.Lookup(-1, integer));
  EXPECT_TRUE(table.Lookup(2, real));
  EXPECT_TRUE(table.Lookup(3, text));
  EXPECT_EQ(integer, -2);
  EXPECT_EQ(real, 1.5);
  EXPECT_EQ(text, u8"盛土"_cp932);
}

TEST(DovDataTable, LeavesTheOutputOfAMissingKeyUntouched) {
  const DovDataTable table = OneOfEach();
  std::int32_t integer = 7;
  double real = 7.5;
  CString text("kept");
  EXPECT_FALSE(table.Lookup(1, integer));
  EXPECT_FALSE(table.Lookup(1, real));
  EXPECT_FALSE(table.Lookup(1, text));
  EXPECT_EQ(integer, 7);
  EXPECT_EQ(real, 7.5);
  EXPECT_EQ(text, "kept");
}

TEST(DovDataTable, LeavesTheOutputForAnotherTypeUntouched) {
  const DovDataTable table = OneOfEach();
  std::int32_t integer = 7;
  double real = 7.5;
  CString text("kept");
  for (const std::int32_t key : {2, 3}) EXPECT_FALSE(table.Lookup(key, integer)) << key;
  for (const std::int32_t key : {-1, 3}) EXPECT_FALSE(table.Lookup(key, real)) << key;
  for (const std::int32_t key : {-1, 2}) EXPECT_FALSE(table.Lookup(key, text)) << key;
  EXPECT_EQ(integer, 7);
  EXPECT_EQ(real, 7.5);
  EXPECT_EQ(text, "kept");
}

TEST(DovDataTable, ReplacesTheValueOfAKeyWhateverItsType) {
  DovDataTable table;
  table.SetAt(1, 5);
  table.SetAt(1, 6);
  EXPECT_EQ(ValueOr(table, 1, 0), 6);
  table.SetAt(1, CString("text"));
  EXPECT_EQ(ValueOr(table, 1, 0), 0);
  EXPECT_EQ(ValueOr(table, 1, CString()), "text");
  EXPECT_EQ(table.GetCount(), 1);
}

TEST(DovDataTable, RemovesKeys) {
  DovDataTable table = OneOfEach();
  EXPECT_TRUE(table.RemoveKey(2));
  EXPECT_FALSE(table.RemoveKey(2));
  EXPECT_EQ(table.GetCount(), 2);
  EXPECT_EQ(ValueOr(table, 2, 0.0), 0.0);
  EXPECT_EQ(ValueOr(table, -1, 0), -2);
  table.RemoveAll();
  EXPECT_TRUE(table.IsEmpty());
}

TEST(DovDataTable, CopiesByValue) {
  DovDataTable table = OneOfEach();
  const DovDataTable copy(table);
  table.SetAt(-1, 5);
  EXPECT_EQ(ValueOr(copy, -1, 0), -2);
}

// --- storing ---------------------------------------------------------------------------------------------------------

TEST(DovDataTable, IsFourZeroBytesWhenEmpty) { EXPECT_THAT(StoredTable({}), ElementsAre(0, 0, 0, 0)); }

TEST(DovDataTable, StoresKeyTypeAndValueInAscendingOrderOfTheKeys) { EXPECT_EQ(StoredTable(OneOfEach()), kOneOfEach); }

TEST(DovDataTable, StoresTheSmallestAndTheLargestKey) {
  DovDataTable table;
  table.SetAt(INT32_MAX, 1);
  table.SetAt(0, 2);
  table.SetAt(INT32_MIN, 3);
  EXPECT_EQ(StoredTable(table), (Bytes{3, 0, 0, 0, 0, 0, 0,    0x80, 1,    3,    0, 0, 0, 0, 0, 0,
                                       0, 1, 2, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0x7F, 1, 1, 0, 0, 0}));
}

TEST(DovDataTable, IsStoredUnchanged) {
  DovDataTable table = OneOfEach();
  (void)Stored([&](CArchive& ar) { table.Serialize(ar); });
  EXPECT_EQ(StoredTable(table), kOneOfEach);
}

// --- loading ---------------------------------------------------------------------------------------------------------

TEST(DovDataTable, LoadsWhatWasStored) {
  EXPECT_EQ(StoredTable(Loaded(kOneOfEach)), kOneOfEach);
  EXPECT_TRUE(Loaded({0, 0, 0, 0}).IsEmpty());
}

TEST(DovDataTable, LoadsInPlaceOfWhatItHeld) {
  DovDataTable table;
  table.SetAt(99, 1);
  table.SetAt(2, CString("stale"));
  LoadingArchive ar(kOneOfEach);
  table.Serialize(*ar);
  EXPECT_EQ(StoredTable(table), kOneOfEach);
  LoadingArchive empty({0, 0, 0, 0});
  table.Serialize(*empty);
  EXPECT_TRUE(table.IsEmpty());
}

TEST(DovDataTable, EndsWhereItsLastValueEnds) {
  Bytes bytes = kOneOfEach;
  bytes.push_back(0xAB);
  LoadingArchive ar(bytes);
  DovDataTable table;
  table.Serialize(*ar);
  std::uint8_t next = 0;
  *ar >> next;
  EXPECT_EQ(next, 0xAB);
}

TEST(DovDataTable, LoadsKeysInAnyOrderAndTheLastOfEqualOnes) {
  const DovDataTable table =
      Loaded({3, 0, 0, 0, 5, 0, 0, 0, 1, 1, 0, 0, 0, 4, 0, 0, 0, 1, 2, 0, 0, 0, 5, 0, 0, 0, 3, 1, 'x'});
  EXPECT_EQ(table.GetCount(), 2);
  EXPECT_EQ(ValueOr(table, 4, 0), 2);
  EXPECT_EQ(ValueOr(table, 5, CString()), "x");
}

/// Loads over a table that holds something and tells why that failed, after a check that nothing was lost.
CArchiveException::Cause RefusalToLoad(const Bytes& bytes) {
  LoadingArchive ar(bytes);
  DovDataTable table = OneOfEach();
  const CArchiveException::Cause cause = ArchiveRefusal([&] { table.Serialize(*ar); });
  EXPECT_EQ(StoredTable(table), kOneOfEach) << "stays as it was";
  return cause;
}

TEST(DovDataTable, RefusesUnknownTypes) {
  for (int type = 0; type < 256; ++type) {
    if (type >= 1 && type <= 3) continue;
    Bytes bytes = {1, 0, 0, 0, 9, 0, 0, 0, static_cast<std::uint8_t>(type)};
    bytes.resize(40);
    EXPECT_EQ(RefusalToLoad(bytes), CArchiveException::badIndex) << type;
  }
}

TEST(DovDataTable, RefusesAnUnknownTypeBehindKnownOnes) {
  EXPECT_EQ(RefusalToLoad({2, 0, 0, 0, 9, 0, 0, 0, 1, 0, 0, 0, 0, 10, 0, 0, 0, 4, 0, 0, 0, 0}),
            CArchiveException::badIndex);
}

TEST(DovDataTable, FindsTheEndOfTheArchiveWhereverItIsCut) {
  EXPECT_EQ(TruncationOverlooked(kOneOfEach, [](CArchive& ar) { DovDataTable().Serialize(ar); }), -1);
  for (std::size_t kept = 0; kept < kOneOfEach.size(); ++kept) {
    const Bytes cut(kOneOfEach.begin(), kOneOfEach.begin() + static_cast<std::ptrdiff_t>(kept));
    EXPECT_EQ(RefusalToLoad(cut), CArchiveException::endOfFile) << kept;
  }
}

TEST(DovDataTable, BelievesACountOnlyAsFarAsItsBytesReach) {
  // Five of the smallest entries, empty texts: too few bytes for six.
  Bytes emptyTexts;
  for (std::uint8_t key = 1; key <= 5; ++key) emptyTexts = emptyTexts + Bytes{key, 0, 0, 0, 3, 0};
  for (const Bytes& count : {Bytes{6, 0, 0, 0}, Bytes{0xFF, 0xFF, 0xFF, 0xFF}, Bytes{0, 0, 0, 0x80}}) {
    LoadingArchive ar(count + emptyTexts);
    DovDataTable table;
    EXPECT_EQ(ArchiveRefusal([&] { table.Serialize(*ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(ar->Remaining(), emptyTexts.size()) << "no entry was tried";
    EXPECT_TRUE(table.IsEmpty());
  }
  EXPECT_EQ(Loaded(Bytes{5, 0, 0, 0} + emptyTexts).GetCount(), 5);
}

// --- the same bytes without a table ----------------------------------------------------------------------------------

// Key 7 twice, once with an integer and once with a text, around another key.
const Bytes kTextThenInteger = {3, 0, 0, 0, 7, 0, 0, 0, 3, 1, 'x', 8, 0, 0, 0,
                                1, 9, 0, 0, 0, 7, 0, 0, 0, 1, 5,   0, 0, 0};
const Bytes kIntegerThenText = {3, 0, 0, 0, 7, 0, 0, 0, 1, 5, 0, 0, 0, 8,  0,
                                0, 0, 1, 9, 0, 0, 0, 7, 0, 0, 0, 3, 1, 'x'};
constexpr std::int32_t kUntouched = -77;

/// What loading an integer without a table gives, after a check that a table would give the same.
std::int32_t LoadedInteger(const Bytes& bytes, std::int32_t key) {
  std::int32_t value = kUntouched;
  for (const auto reading : test_support::kReadings) {
    LoadingArchive ar(bytes, reading);
    value = kUntouched;
    const bool found = DovDataTable::LoadInteger(*ar, key, value);
    EXPECT_EQ(ar->Remaining(), 0u) << test_support::ToText(reading);
    std::int32_t held = kUntouched;
    EXPECT_EQ(found, Loaded(bytes).Lookup(key, held)) << test_support::ToText(reading);
    EXPECT_EQ(value, held) << test_support::ToText(reading);
  }
  return value;
}

/// Why a table is refused without one, after checks that the output stays and that a table refuses it alike.
CArchiveException::Cause RefusalToLoadInteger(const Bytes& bytes) {
  LoadingArchive ar(bytes);
  std::int32_t value = kUntouched;
  const CArchiveException::Cause cause = ArchiveRefusal([&] { DovDataTable::LoadInteger(*ar, 7, value); });
  EXPECT_EQ(value, kUntouched);
  EXPECT_EQ(cause, RefusalToLoad(bytes));
  LoadingArchive again(bytes);
  EXPECT_EQ(ArchiveRefusal([&] { DovDataTable::SerializeEmpty(*again); }), cause);
  return cause;
}

TEST(DovDataTable, StoresNothingAsAnEmptyTable) {
  EXPECT_EQ(Stored([](CArchive& ar) { DovDataTable::SerializeEmpty(ar); }), StoredTable({}));
}

TEST(DovDataTable, ForgetsATableUpToItsEnd) {
  for (const auto reading : test_support::kReadings) {
    for (const Bytes& table : {Bytes{0, 0, 0, 0}, kOneOfEach, kTextThenInteger}) {
      LoadingArchive ar(table + Bytes{0xAB}, reading);
      DovDataTable::SerializeEmpty(*ar);
      std::uint8_t next = 0;
      *ar >> next;
      EXPECT_EQ(next, 0xAB);
    }
  }
}

TEST(DovDataTable, StoresOneIntegerAsATableWithIt) {
  for (const std::int32_t key : {7, 0, -1, INT32_MIN, INT32_MAX}) {
    DovDataTable table;
    table.SetAt(key, -2);
    const Bytes bytes = Stored([&](CArchive& ar) { DovDataTable::StoreInteger(ar, key, -2); });
    EXPECT_EQ(bytes, StoredTable(table)) << key;
    EXPECT_EQ(LoadedInteger(bytes, key), -2) << key;
  }
}

TEST(DovDataTable, TakesTheIntegerOfAKeyAmongOthers) {
  EXPECT_EQ(LoadedInteger(kOneOfEach, -1), -2);
  EXPECT_EQ(LoadedInteger(kTextThenInteger, 8), 9);
}

TEST(DovDataTable, TakesNoIntegerFromAnEmptyTableFromOtherKeysOrFromOtherTypes) {
  EXPECT_EQ(LoadedInteger({0, 0, 0, 0}, 7), kUntouched);
  EXPECT_EQ(LoadedInteger(kOneOfEach, 7), kUntouched);
  EXPECT_EQ(LoadedInteger(kOneOfEach, 2), kUntouched) << "a real";
  EXPECT_EQ(LoadedInteger(kOneOfEach, 3), kUntouched) << "a text";
}

TEST(DovDataTable, TakesTheLastValueOfAKeyWhateverTheTypes) {
  EXPECT_EQ(LoadedInteger(kTextThenInteger, 7), 5);
  EXPECT_EQ(LoadedInteger(kIntegerThenText, 7), kUntouched);
  EXPECT_EQ(LoadedInteger({2, 0, 0, 0, 7, 0, 0, 0, 1, 5, 0, 0, 0, 7, 0, 0, 0, 1, 6, 0, 0, 0}, 7), 6);
}

TEST(DovDataTable, RefusesUnknownTypesWithoutATableToo) {
  for (int type = 0; type < 256; ++type) {
    if (type >= 1 && type <= 3) continue;
    Bytes bytes = {2, 0, 0, 0, 7, 0, 0, 0, 1, 5, 0, 0, 0, 9, 0, 0, 0, static_cast<std::uint8_t>(type)};
    bytes.resize(40);
    EXPECT_EQ(RefusalToLoadInteger(bytes), CArchiveException::badIndex) << type;
  }
}

TEST(DovDataTable, BelievesACountWithoutATableOnlyAsFarAsItsBytesReach) {
  const Bytes five = {7, 0, 0, 0, 1, 5, 0, 0, 0};
  for (const Bytes& count : {Bytes{2, 0, 0, 0}, Bytes{0xFF, 0xFF, 0xFF, 0xFF}, Bytes{0, 0, 0, 0x80}}) {
    EXPECT_EQ(RefusalToLoadInteger(count + five), CArchiveException::endOfFile);
    LoadingArchive ar(count + five);
    EXPECT_EQ(ArchiveRefusal([&] { DovDataTable::SerializeEmpty(*ar); }), CArchiveException::endOfFile);
    EXPECT_EQ(ar->Remaining(), five.size()) << "no entry was tried";
  }
}

TEST(DovDataTable, FindsTheEndOfTheArchiveWithoutATableToo) {
  for (const Bytes& whole : {kOneOfEach, kTextThenInteger, kIntegerThenText}) {
    EXPECT_EQ(TruncationOverlooked(whole, [](CArchive& ar) { DovDataTable::SerializeEmpty(ar); }), -1);
    for (std::size_t kept = 0; kept < whole.size(); ++kept) {
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept));
      EXPECT_EQ(RefusalToLoadInteger(cut), CArchiveException::endOfFile) << kept;
    }
  }
}

}  // namespace
