#include "vorn/types/hoso_type.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tests/support/archive_bytes.h"
#include "vorn/platform/code_page_932.h"

namespace {

using test_support::ArchiveRefusal;
using test_support::Bytes;
using test_support::LoadingArchive;
using test_support::Stored;
using test_support::TruncationOverlooked;
using testing::ElementsAre;

const CString kTag("06.00");

/// The keys under which the pavement settings travel.
constexpr std::int32_t kPaveIDKey = 1;
constexpr std::int32_t kScaleIDKey = 2;
constexpr std::int32_t kFirstKindIDKey = 100;
constexpr std::int32_t kFirstFurtherIDKey = 200;
constexpr int kFurtherCount = 6;

Bytes StoredRecord(VornHosoType& settings) {
  return Stored([&](CArchive& ar) { settings.Serialize(ar, kTag); });
}

void Load(VornHosoType& settings, const Bytes& bytes) {
  LoadingArchive ar(bytes);
  settings.Serialize(*ar, kTag);
  EXPECT_EQ(ar->Remaining(), 0u);
}

Bytes StoredTable(DovDataTable table) {
  return Stored([&](CArchive& ar) { table.Serialize(ar); });
}

/// A table with a value of its own under every key that the pavement settings have.
DovDataTable FullTable() {
  DovDataTable table;
  table.SetAt(kPaveIDKey, 11);
  table.SetAt(kScaleIDKey, 12);
  for (int i = 0; i < VornTsHosoType::kKindCount; ++i) table.SetAt(kFirstKindIDKey + i, 1000 + i);
  for (int i = 0; i < kFurtherCount; ++i) table.SetAt(kFirstFurtherIDKey + i, 2000 + i);
  return table;
}

VornTsHosoType FullSettings() {
  VornTsHosoType settings;
  Load(settings, StoredTable(FullTable()));
  return settings;
}

/// Every key with 0.
DovDataTable ZeroTable() {
  DovDataTable table;
  for (const std::int32_t key : {kPaveIDKey, kScaleIDKey}) table.SetAt(key, 0);
  for (int i = 0; i < VornTsHosoType::kKindCount; ++i) table.SetAt(kFirstKindIDKey + i, 0);
  for (int i = 0; i < kFurtherCount; ++i) table.SetAt(kFirstFurtherIDKey + i, 0);
  return table;
}

/// One settings class of a host: an integer under a key, and a note of what is asked of it.
class HostType : public VornHosoType {
 public:
  std::int32_t value = 0;
  int gets = 0;
  int sets = 0;

 protected:
  void GetDataTable(DovDataTable& table) override {
    ++gets;
    EXPECT_TRUE(table.IsEmpty()) << "a fresh table";
    table.SetAt(7, value);
  }
  void SetDataTable(DovDataTable& table) override {
    ++sets;
    table.Lookup(7, value);
  }
};

// --- the base --------------------------------------------------------------------------------------------------------

TEST(HosoType, StoresItsSettingsAsOneTable) {
  HostType settings;
  settings.value = 5;
  EXPECT_THAT(StoredRecord(settings), ElementsAre(1, 0, 0, 0, 7, 0, 0, 0, 1, 5, 0, 0, 0));
  EXPECT_EQ(settings.gets, 1);
  EXPECT_EQ(settings.sets, 0);
}

TEST(HosoType, LoadsItsSettingsFromOneTable) {
  HostType settings;
  Load(settings, {1, 0, 0, 0, 7, 0, 0, 0, 1, 5, 0, 0, 0});
  EXPECT_EQ(settings.value, 5);
  EXPECT_EQ(settings.gets, 0);
  EXPECT_EQ(settings.sets, 1);
}

TEST(HosoType, KeepsASettingThatItsTableDoesNotHold) {
  HostType settings;
  settings.value = 5;
  Load(settings, {0, 0, 0, 0});
  EXPECT_EQ(settings.value, 5);
}

TEST(HosoType, HasTheSameRecordForEveryStoreVersion) {
  VornTsHosoType full = FullSettings();
  for (const char* tag : {"", "01.10", "03.00", "06.00", "99.99"}) {
    const Bytes bytes = Stored([&](CArchive& ar) { full.Serialize(ar, tag); });
    EXPECT_EQ(bytes, StoredTable(FullTable())) << tag;
    VornTsHosoType loaded;
    LoadingArchive ar(bytes);
    loaded.Serialize(*ar, tag);
    EXPECT_EQ(loaded.GetPaveID(), 11u) << tag;
  }
}

TEST(HosoType, SetsNothingWhenItsTableCannotBeRead) {
  HostType settings;
  LoadingArchive ar({1, 0, 0, 0, 7, 0, 0, 0, 9, 5, 0, 0, 0});
  EXPECT_EQ(ArchiveRefusal([&] { settings.Serialize(*ar, kTag); }), CArchiveException::badIndex);
  EXPECT_EQ(settings.sets, 0);
}

TEST(HosoType, IsServedThroughItsBase) {
  VornTsHosoType settings;
  VornHosoType& base = settings;
  Load(base, StoredTable(FullTable()));
  EXPECT_EQ(settings.GetScaleID(), 12u);
  static_assert(std::is_abstract_v<VornHosoType> && std::has_virtual_destructor_v<VornHosoType>);
}

// --- cross-section type ----------------------------------------------------------------------------------------------

TEST(XSectType, IsStoredAsAnEmptyTable) {
  VornXSectType type;
  EXPECT_THAT(StoredRecord(type), ElementsAre(0, 0, 0, 0));
}

TEST(XSectType, ReadsPastWhateverItsTableHolds) {
  VornXSectType type;
  Load(type, StoredTable(FullTable()));
  EXPECT_THAT(StoredRecord(type), ElementsAre(0, 0, 0, 0));
}

TEST(XSectType, FindsTheEndOfTheArchiveWhereverItIsCut) {
  const auto load = [](CArchive& ar) { VornXSectType().Serialize(ar, kTag); };
  EXPECT_EQ(TruncationOverlooked({0, 0, 0, 0}, load), -1);
}

// --- pavement settings -----------------------------------------------------------------------------------------------

TEST(TsHosoType, StartsWithNothingSet) {
  VornTsHosoType settings;
  EXPECT_EQ(settings.GetPaveID(), 0u);
  EXPECT_EQ(settings.GetScaleID(), 0u);
  for (int i = 0; i < 14; ++i) EXPECT_EQ(settings.GetKindID(i), 0u) << i;
  EXPECT_EQ(StoredRecord(settings), StoredTable(ZeroTable()));
}

TEST(TsHosoType, KeepsFourteenKinds) {
  VornTsHosoType settings;
  settings.SetPaveID(0xFFFFFFFF);
  settings.SetScaleID(2);
  for (int i = 0; i < 14; ++i) settings.SetKindID(i, 0x80000000u + static_cast<std::uint32_t>(i));
  EXPECT_EQ(settings.GetPaveID(), 0xFFFFFFFF);
  EXPECT_EQ(settings.GetScaleID(), 2u);
  for (int i = 0; i < 14; ++i) EXPECT_EQ(settings.GetKindID(i), 0x80000000u + static_cast<std::uint32_t>(i)) << i;
}

TEST(TsHosoType, LoadsEverySettingFromItsKey) {
  const VornTsHosoType settings = FullSettings();
  EXPECT_EQ(settings.GetPaveID(), 11u);
  EXPECT_EQ(settings.GetScaleID(), 12u);
  for (int i = 0; i < 14; ++i) EXPECT_EQ(settings.GetKindID(i), 1000u + static_cast<std::uint32_t>(i)) << i;
}

TEST(TsHosoType, StoresEverySettingUnderItsKey) {
  VornTsHosoType settings = FullSettings();
  const Bytes bytes = StoredRecord(settings);
  EXPECT_EQ(bytes, StoredTable(FullTable()));
  EXPECT_EQ(bytes.size(), 4u + 22 * 9);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 22),
            (Bytes{22, 0, 0, 0, 1, 0, 0, 0, 1, 11, 0, 0, 0, 2, 0, 0, 0, 1, 12, 0, 0, 0}));
}

TEST(TsHosoType, CarriesNumbersOfAllThirtyTwoBits) {
  VornTsHosoType settings;
  settings.SetPaveID(0xFFFFFFFF);
  settings.SetKindID(13, 0x80000000);
  VornTsHosoType loaded;
  Load(loaded, StoredRecord(settings));
  EXPECT_EQ(loaded.GetPaveID(), 0xFFFFFFFF);
  EXPECT_EQ(loaded.GetKindID(13), 0x80000000);
}

TEST(TsHosoType, CopiesEverySetting) {
  const VornTsHosoType full = FullSettings();
  VornTsHosoType copy(full);
  VornTsHosoType assigned;
  assigned = full;
  EXPECT_EQ(StoredRecord(copy), StoredTable(FullTable()));
  EXPECT_EQ(StoredRecord(assigned), StoredTable(FullTable()));
}

TEST(TsHosoType, InitiateSetsEverythingToZero) {
  VornTsHosoType settings = FullSettings();
  settings.Initiate();
  EXPECT_EQ(StoredRecord(settings), StoredTable(ZeroTable()));
}

TEST(TsHosoType, LoadsWhatATableDoesNotHoldAsZero) {
  VornTsHosoType settings = FullSettings();
  DovDataTable table;
  table.SetAt(kScaleIDKey, 5);
  Load(settings, StoredTable(table));
  DovDataTable expected = ZeroTable();
  expected.SetAt(kScaleIDKey, 5);
  EXPECT_EQ(StoredRecord(settings), StoredTable(expected));
}

TEST(TsHosoType, IgnoresUnknownKeysAndValuesOfOtherTypes) {
  VornTsHosoType settings;
  DovDataTable table = FullTable();
  table.SetAt(kPaveIDKey, 3.5);
  table.SetAt(kScaleIDKey, CString("12"));
  for (const std::int32_t key : {-1, 0, 3, 99, 114, 199, 206}) table.SetAt(key, 77);
  Load(settings, StoredTable(table));
  DovDataTable expected = FullTable();
  expected.SetAt(kPaveIDKey, 0);
  expected.SetAt(kScaleIDKey, 0);
  EXPECT_EQ(StoredRecord(settings), StoredTable(expected));
}

TEST(TsHosoType, KeepsItsSettingsWhenStored) {
  VornTsHosoType settings = FullSettings();
  (void)StoredRecord(settings);
  EXPECT_EQ(StoredRecord(settings), StoredTable(FullTable()));
}

TEST(TsHosoType, KeepsWhatItHoldsWhenItsTableCannotBeRead) {
  VornTsHosoType settings = FullSettings();
  LoadingArchive ar({1, 0, 0, 0, 1, 0, 0, 0, 9, 5, 0, 0, 0});
  EXPECT_EQ(ArchiveRefusal([&] { settings.Serialize(*ar, kTag); }), CArchiveException::badIndex);
  EXPECT_EQ(StoredRecord(settings), StoredTable(FullTable()));
}

TEST(TsHosoType, FindsTheEndOfTheArchiveWhereverItIsCut) {
  const auto load = [](CArchive& ar) { VornTsHosoType().Serialize(ar, kTag); };
  EXPECT_EQ(TruncationOverlooked(StoredTable(FullTable()), load), -1);
}

TEST(TsHosoType, IsValidWherePavementScaleAndKindAreSet) {
  for (int valid = 0; valid < 14; ++valid) {
    VornTsHosoType settings;
    settings.SetPaveID(1);
    settings.SetScaleID(0x80000000);
    settings.SetKindID(valid, 3);
    for (int i = 0; i < 14; ++i) EXPECT_EQ(settings.IsValid(i), i == valid) << i;
  }
}

TEST(TsHosoType, IsNotValidWithoutPavementOrScaleWhateverTheKind) {
  for (const auto& [pave, scale] : {std::pair(0u, 0u), {0u, 2u}, {1u, 0u}}) {
    VornTsHosoType settings;
    settings.SetPaveID(pave);
    settings.SetScaleID(scale);
    for (int i = 0; i < 14; ++i) {
      settings.SetKindID(i, 0xFFFFFFFF);
      EXPECT_FALSE(settings.IsValid(i)) << i;
    }
  }
}

#if GTEST_HAS_DEATH_TEST && !defined(NDEBUG)
TEST(TsHosoTypeDeathTest, StopsADebugBuildAtAKindOutsideTheFourteen) {
  VornTsHosoType settings;
  for (const int index : {-1, 14}) {
    EXPECT_DEATH((void)settings.GetKindID(index), "");
    EXPECT_DEATH(settings.SetKindID(index, 1), "");
    EXPECT_DEATH((void)(settings.SetPaveID(1), settings.SetScaleID(1), settings.IsValid(index)), "");
  }
}
#endif

// --- pavement layer categories ---------------------------------------------------------------------------------------

struct Work {
  std::string_view name;
  std::int32_t category;
};

constexpr Work kWorks[] = {
    {u8"基層"_cp932, 3},
    {u8"表層"_cp932, 1},
    {u8"オーバーレイ"_cp932, 1},
    {u8"ｵｰﾊﾞｰﾚｲ"_cp932, 1},
    {u8"路上再生"_cp932, 1},
    {u8"路面切削"_cp932, 1},
    {u8"歩道舗装工"_cp932, 1},
    {u8"取合舗装工"_cp932, 1},
    {u8"路肩舗装工"_cp932, 1},
    {u8"歩道舗装修繕"_cp932, 1},
    {u8"舗装補修"_cp932, 1},
    {u8"コンクリート版工"_cp932, 1},
    {u8"下層路盤工"_cp932, 6},
    {u8"透水性舗装工（路盤工）"_cp932, 6},
    {u8"粒度調整路盤工"_cp932, 4},
    {u8"セメント"_cp932, 5},
    {u8"アスファルト安定処理"_cp932, 2},
    {u8"中間層"_cp932, 2},
    {u8"歩道路盤工"_cp932, 7},
    {u8"取合舗装路盤工"_cp932, 7},
    {u8"路肩舗装路盤工"_cp932, 7},
    {u8"路盤工"_cp932, 7},
};

std::int32_t CategoryOf(const CString& text) { return VornTsHosoType::XSectTypeToMsdoPaveIdx(text); }

CString operator+(const CString& a, std::string_view b) { return CString(a) += b; }

TEST(PavementCategory, IsKnownForEveryWorkAnywhereInAText) {
  EXPECT_EQ(std::size(kWorks), 22u);
  for (const Work& work : kWorks) {
    EXPECT_EQ(CategoryOf(work.name), work.category) << testing::PrintToString(work.name);
    EXPECT_EQ(CategoryOf(CString("x") + work.name), work.category) << testing::PrintToString(work.name);
    EXPECT_EQ(CategoryOf(CString(work.name) + "x"), work.category) << testing::PrintToString(work.name);
  }
}

TEST(PavementCategory, IsThatOfTheFirstWorkInTheListNotInTheText) {
  for (std::size_t first = 0; first < std::size(kWorks); ++first) {
    for (std::size_t later = first + 1; later < std::size(kWorks); ++later) {
      const CString text = CString(kWorks[later].name) + "-" + kWorks[first].name;
      EXPECT_EQ(CategoryOf(text), kWorks[first].category) << first << ", " << later;
    }
  }
}

TEST(PavementCategory, IsThatOfTheLongerCourseNameBeforeTheBaseCourseInIt) {
  EXPECT_EQ(CategoryOf(u8"下層路盤工"_cp932), 6);
  EXPECT_EQ(CategoryOf(u8"粒度調整路盤工"_cp932), 4);
  EXPECT_EQ(CategoryOf(u8"透水性舗装工（路盤工）"_cp932), 6);
}

TEST(PavementCategory, IsSevenForABaseCourseOfNoOtherName) {
  EXPECT_EQ(CategoryOf(u8"上層路盤工"_cp932), 7);
  EXPECT_EQ(CategoryOf(u8"透水性舗装工(路盤工)"_cp932), 7) << "widths are not converted";
}

TEST(PavementCategory, IsOneForASurfaceCourseThatNamesABaseCourseToo) {
  EXPECT_EQ(CategoryOf(u8"路盤工と表層"_cp932), 1);
  EXPECT_EQ(CategoryOf(u8"下層路盤工、表層"_cp932), 1);
}

TEST(PavementCategory, IsMinusOneForATextWithoutAnyWork) {
  for (const std::string_view text :
       {std::string_view(), u8"盛土工"_cp932, u8"路盤"_cp932, u8"路 盤工"_cp932, u8"舗装工"_cp932, u8"ｾﾒﾝﾄ"_cp932,
        u8"ｱｽﾌｧﾙﾄ安定処理"_cp932, u8"ｺﾝｸﾘｰﾄ版工"_cp932, std::string_view("pavement")}) {
    EXPECT_EQ(CategoryOf(text), -1) << testing::PrintToString(text);
  }
}

TEST(PavementCategory, TakesAMatchThatBeginsInsideACharacter) {
  CString text("\x81");  // swallows the first byte of the name as its second
  text += u8"基層"_cp932;
  ASSERT_EQ(text.Find(u8"基層"_cp932), -1);
  EXPECT_EQ(CategoryOf(text), 3);
}

TEST(PavementCategory, LooksBehindANulByte) {
  CString text(std::string_view("a\0", 2));
  text += u8"表層"_cp932;
  EXPECT_EQ(CategoryOf(text), 1);
}

}  // namespace
