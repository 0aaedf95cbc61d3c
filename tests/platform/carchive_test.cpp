#include "vorn/platform/carchive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/archive_bytes.h"
#include "tests/support/boastful_file.h"
#include "vorn/platform/code_page_932.h"

namespace {

using test_support::ArchiveRefusal;
using test_support::BoastfulFile;
using test_support::Bytes;
using test_support::BytesOf;
using test_support::kReadings;
using test_support::LoadingArchive;
using test_support::Reading;
using test_support::Stored;
using test_support::StreamedFile;
using test_support::ToText;
using test_support::TruncationOverlooked;
using test_support::operator+;
using testing::ElementsAre;
using testing::IsEmpty;

enum class Colour : std::int32_t { Red = 0, Green = 1, None = -1 };

/// The bytes of one value.
template <typename T>
Bytes StoredValue(const T& value) {
  return Stored([&](CArchive& ar) { ar << value; });
}

/// The only value of an archive, however that is read.
template <typename T>
T LoadedValue(const Bytes& bytes) {
  const auto load = [&](Reading reading) {
    LoadingArchive ar(bytes, reading);
    T value{};
    *ar >> value;
    EXPECT_EQ(ar->Remaining(), 0u) << ToText(reading);
    return value;
  };
  const T value = load(test_support::kInPlace);
  const Bytes stored = StoredValue(value);
  for (const Reading reading : kReadings) EXPECT_EQ(StoredValue(load(reading)), stored) << ToText(reading);
  return value;
}

CString Text(std::size_t length, char byte = 'x') { return CString(std::string(length, byte)); }

CStringArray Texts(std::initializer_list<CString> items) {
  CStringArray texts;
  for (const CString& item : items) texts.Add(item);
  return texts;
}

COleDateTime DateTime(double dt, COleDateTime::DateTimeStatus status) {
  COleDateTime dateTime;
  dateTime.m_dt = dt;
  dateTime.m_status = status;
  return dateTime;
}

/// A file that takes a limited number of bytes: the write that goes beyond leaves a part of its bytes and fails.
class FullFile : public CMemFile {
 public:
  explicit FullFile(std::uint64_t room) : m_room(room) {}

  void Write(const void* bytes, std::uint32_t count) override {
    ++m_writes;
    const auto taken = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, m_room - GetLength()));
    CMemFile::Write(bytes, taken);
    if (taken < count) throw CFileException(CFileException::diskFull);
  }

  [[nodiscard]] int Writes() const { return m_writes; }

 private:
  std::uint64_t m_room;
  int m_writes = 0;
};

/// A file that hands out one byte at a time, as a slow line does.
class SlowFile : public StreamedFile {
 public:
  using StreamedFile::StreamedFile;
  std::uint32_t Read(void* bytes, std::uint32_t count) override { return CMemFile::Read(bytes, std::min(count, 1u)); }
};

/// A file whose device fails in reading and moving.
class BrokenFile : public StreamedFile {
 public:
  std::uint32_t Read(void*, std::uint32_t) override { throw CFileException(CFileException::hardIO); }
};

/// A file that can be read but not moved back.
class UnmovableFile : public CMemFile {
 public:
  using CMemFile::CMemFile;
  std::uint64_t Seek(std::int64_t, SeekPosition) override { throw CFileException(CFileException::badSeek); }
};

// --- what archives ---------------------------------------------------------------------------------------------------

template <typename T>
concept Storable = requires(CArchive& ar, T value) {
  ar << value;
};

TEST(CArchive, StoresNothingWhoseWidthDependsOnTheMachine) {
  static_assert(Storable<bool> && Storable<float> && Storable<CString> && Storable<Colour>);
  static_assert(!Storable<char> && !Storable<wchar_t>);
  static_assert(std::is_same_v<std::int64_t, long> || !Storable<long>);
  static_assert(!Storable<int*> && !Storable<void*>, "an address is no bool");
  enum class Small : std::uint8_t { One };
  static_assert(!Storable<Small>);
}

TEST(CArchive, StoresNumbersFromTheLowByteOn) {
  EXPECT_THAT(StoredValue(std::uint8_t{0xFE}), ElementsAre(0xFE));
  EXPECT_THAT(StoredValue(std::int16_t{-2}), ElementsAre(0xFE, 0xFF));
  EXPECT_THAT(StoredValue(std::uint16_t{0x1234}), ElementsAre(0x34, 0x12));
  EXPECT_THAT(StoredValue(std::int32_t{-2}), ElementsAre(0xFE, 0xFF, 0xFF, 0xFF));
  EXPECT_THAT(StoredValue(std::uint32_t{0x12345678}), ElementsAre(0x78, 0x56, 0x34, 0x12));
  EXPECT_THAT(StoredValue(std::int64_t{-2}), ElementsAre(0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF));
  EXPECT_THAT(StoredValue(std::uint64_t{0x123456789ABCDEF0}),
              ElementsAre(0xF0, 0xDE, 0xBC, 0x9A, 0x78, 0x56, 0x34, 0x12));
  EXPECT_THAT(StoredValue(-1.5f), ElementsAre(0x00, 0x00, 0xC0, 0xBF));
  EXPECT_THAT(StoredValue(1.1), ElementsAre(0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xF1, 0x3F));
}

template <typename T>
class CArchiveNumber : public testing::Test {};
using Numbers = testing::Types<std::uint8_t, std::int16_t, std::uint16_t, std::int32_t, std::uint32_t, std::int64_t,
                               std::uint64_t, float, double>;
TYPED_TEST_SUITE(CArchiveNumber, Numbers);

TYPED_TEST(CArchiveNumber, LoadsWhatWasStored) {
  using Limits = std::numeric_limits<TypeParam>;
  for (const TypeParam value : {Limits::min(), Limits::lowest(), Limits::max(), TypeParam{0}, TypeParam{1},
                                static_cast<TypeParam>(Limits::max() / 3), Limits::infinity()}) {
    const Bytes bytes = StoredValue(value);
    EXPECT_EQ(bytes.size(), sizeof(TypeParam));
    EXPECT_EQ(LoadedValue<TypeParam>(bytes), value);
  }
}

TYPED_TEST(CArchiveNumber, KeepsItsValueWhenTheArchiveEnds) {
  for (const Reading reading : kReadings) {
    for (std::size_t length = 0; length < sizeof(TypeParam); ++length) {
      LoadingArchive ar(Bytes(length, 0x11), reading);
      TypeParam value{7};
      EXPECT_EQ(ArchiveRefusal([&] { *ar >> value; }), CArchiveException::endOfFile) << length;
      EXPECT_EQ(value, TypeParam{7}) << length << ", " << ToText(reading);
    }
  }
}

TEST(CArchive, KeepsTheSignOfZeroAndWhatIsNoNumber) {
  EXPECT_TRUE(std::signbit(LoadedValue<double>(StoredValue(-0.0))));
  EXPECT_TRUE(std::isnan(LoadedValue<double>(StoredValue(std::numeric_limits<double>::quiet_NaN()))));
}

TEST(CArchive, LeavesNoPaddingBetweenValues) {
  const Bytes bytes = Stored([](CArchive& ar) {
    ar << std::uint8_t{1} << std::uint32_t{2} << true << std::uint16_t{3} << 1.0 << std::uint8_t{4};
  });
  EXPECT_THAT(bytes, ElementsAre(1, 2, 0, 0, 0, 1, 3, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 4));
}

TEST(CArchive, StoresABoolAsOneByte) {
  EXPECT_THAT(StoredValue(false), ElementsAre(0));
  EXPECT_THAT(StoredValue(true), ElementsAre(1));
}

TEST(CArchive, LoadsEveryByteButZeroAsTrue) {
  EXPECT_FALSE(LoadedValue<bool>({0}));
  for (int byte = 1; byte < 256; ++byte) EXPECT_TRUE(LoadedValue<bool>({static_cast<std::uint8_t>(byte)})) << byte;
}

TEST(CArchive, StoresARealAsItsDouble) {
  EXPECT_EQ(StoredValue(NurReal(1.1)), StoredValue(1.1));
  EXPECT_EQ(StoredValue(NurReal()), StoredValue(-1e-99));
  EXPECT_EQ(LoadedValue<NurReal>(StoredValue(-2.5)), NurReal(-2.5));
  EXPECT_FALSE(LoadedValue<NurReal>(StoredValue(NurReal())).IsSet());
}

TEST(CArchive, StoresAnIntegerWithUnsetAsFourBytes) {
  EXPECT_THAT(StoredValue(NurLong(-2)), ElementsAre(0xFE, 0xFF, 0xFF, 0xFF));
  EXPECT_THAT(StoredValue(NurLong()), ElementsAre(0, 0, 0, 0x80));
  EXPECT_EQ(LoadedValue<NurLong>({5, 0, 0, 0}), NurLong(5));
  EXPECT_FALSE(LoadedValue<NurLong>({0, 0, 0, 0x80}).IsSet());
}

TEST(CArchive, StoresAnEnumerationAsFourBytes) {
  EXPECT_THAT(StoredValue(Colour::Green), ElementsAre(1, 0, 0, 0));
  EXPECT_THAT(StoredValue(Colour::None), ElementsAre(0xFF, 0xFF, 0xFF, 0xFF));
  EXPECT_EQ(LoadedValue<Colour>({1, 0, 0, 0}), Colour::Green);
}

TEST(CArchive, TakesAnUnknownEnumerationValueAsItStands) {
  EXPECT_EQ(static_cast<int>(LoadedValue<Colour>({0x39, 0x30, 0, 0})), 12345);
}

// --- texts -----------------------------------------------------------------------------------------------------------

TEST(CArchive, StoresTheBytesOfATextBehindTheirNumber) {
  EXPECT_THAT(StoredValue(CString()), ElementsAre(0));
  EXPECT_THAT(StoredValue(CString("abc")), ElementsAre(3, 'a', 'b', 'c'));
  EXPECT_THAT(StoredValue(CString(u8"盛土"_cp932)), ElementsAre(4, 0x90, 0xB7, 0x93, 0x79));
  EXPECT_THAT(StoredValue(CString(std::string_view("a\0b", 3))), ElementsAre(3, 'a', 0, 'b'));
}

struct LengthForm {
  std::size_t length;
  Bytes prefix;
};

const LengthForm kLengthForms[] = {
    {0, {0}},
    {1, {1}},
    {254, {0xFE}},
    {255, {0xFF, 0xFF, 0x00}},
    {256, {0xFF, 0x00, 0x01}},
    {0xFFFD, {0xFF, 0xFD, 0xFF}},
    {0xFFFE, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
    {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
    {0x10000, {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}},
};

TEST(CArchive, LengthensTheLengthOfATextAtTheLimitsOfEachForm) {
  for (const LengthForm& form : kLengthForms) {
    const CString text = Text(form.length);
    const Bytes bytes = StoredValue(text);
    EXPECT_TRUE(bytes == form.prefix + BytesOf(text.View())) << form.length;
    EXPECT_TRUE(LoadedValue<CString>(bytes) == text) << form.length;
  }
}

TEST(CArchive, LoadsALengthInALongerFormThanItNeeds) {
  EXPECT_EQ(LoadedValue<CString>({0xFF, 2, 0, 'a', 'b'}), "ab");
  EXPECT_EQ(LoadedValue<CString>({0xFF, 0xFF, 0xFF, 2, 0, 0, 0, 'a', 'b'}), "ab");
}

TEST(CArchive, RefusesTextsOfWideCharacters) {
  for (const Reading reading : kReadings) {
    LoadingArchive ar({0xFF, 0xFE, 0xFF, 1, 'a', 0}, reading);
    CString text("kept");
    EXPECT_EQ(ArchiveRefusal([&] { *ar >> text; }), CArchiveException::badIndex) << ToText(reading);
    EXPECT_EQ(text, "kept") << ToText(reading);
  }
}

TEST(CArchive, KeepsATextWhoseBytesAreMissing) {
  for (const LengthForm& form : kLengthForms) {
    if (form.length == 0) continue;
    for (const Reading reading : kReadings) {
      LoadingArchive ar(form.prefix + Bytes(form.length - 1, 'x'), reading);
      CString text("kept");
      EXPECT_EQ(ArchiveRefusal([&] { *ar >> text; }), CArchiveException::endOfFile) << form.length;
      EXPECT_EQ(text, "kept") << form.length << ", " << ToText(reading);
    }
  }
}

TEST(CArchive, MakesNoRoomForATextThatTheArchiveCannotHold) {
  const Bytes hugeLengths[] = {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 'a'},
                               {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x10, 'a'},
                               {0xFF, 0xFD, 0xFF, 'a'}};
  for (const Bytes& bytes : hugeLengths) {
    BoastfulFile file(bytes, bytes.size());
    CArchive ar(&file, CArchive::load, 16);
    CString text("kept");
    EXPECT_EQ(ArchiveRefusal([&] { ar >> text; }), CArchiveException::endOfFile);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(file.LargestRead(), 16u) << "of the buffer, not of the text";
    EXPECT_EQ(ar.Remaining(), 1u);
  }
}

TEST(CArchive, RefusesATextLongerThanAnyTextMayBe) {
  for (const std::uint8_t highByte : {std::uint8_t{0x80}, std::uint8_t{0xFF}}) {
    BoastfulFile file({0xFF, 0xFF, 0xFF, 0, 0, 0, highByte}, std::uint64_t{1} << 40);
    CArchive ar(&file, CArchive::load, 16);
    CString text("kept");
    EXPECT_EQ(ArchiveRefusal([&] { ar >> text; }), CArchiveException::badIndex);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(file.LargestRead(), 16u);
  }
}

TEST(CArchive, FindsTheEndOfAFileThatClaimedMoreThanItHas) {
  for (const char* kept : {"kept", "kept in memory of its own"}) {
    BoastfulFile file({100, 'a', 'b'}, 1000);
    CArchive ar(&file, CArchive::load);
    CString text(kept);
    EXPECT_EQ(ArchiveRefusal([&] { ar >> text; }), CArchiveException::endOfFile);
    EXPECT_EQ(text, kept);
  }
}

// --- dates and lists -------------------------------------------------------------------------------------------------

TEST(CArchive, StoresTheStatusOfADateBeforeItsValue) {
  EXPECT_THAT(StoredValue(DateTime(1.5, COleDateTime::valid)), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F));
  EXPECT_THAT(StoredValue(DateTime(-2.0, COleDateTime::null)), ElementsAre(2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x00, 0xC0));
}

TEST(CArchive, LoadsDatesOfEveryStatus) {
  for (const auto status : {COleDateTime::error, COleDateTime::valid, COleDateTime::invalid, COleDateTime::null,
                            static_cast<COleDateTime::DateTimeStatus>(77)}) {
    const COleDateTime dateTime = DateTime(45000.25, status);
    EXPECT_EQ(LoadedValue<COleDateTime>(StoredValue(dateTime)), dateTime) << status;
  }
}

TEST(CArchive, KeepsADateWhoseBytesAreMissing) {
  const Bytes whole = StoredValue(DateTime(1.5, COleDateTime::null));
  for (std::size_t kept = 0; kept < whole.size(); ++kept) {
    LoadingArchive ar(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kept)), 3);
    COleDateTime dateTime = DateTime(7, COleDateTime::invalid);
    EXPECT_EQ(ArchiveRefusal([&] { *ar >> dateTime; }), CArchiveException::endOfFile) << kept;
    EXPECT_EQ(dateTime, DateTime(7, COleDateTime::invalid)) << kept;
  }
}

TEST(CArchive, LengthensCountsFrom0xFFFFOn) {
  const std::pair<std::uint32_t, Bytes> counts[] = {
      {0, {0, 0}},
      {1, {1, 0}},
      {0xFFFE, {0xFE, 0xFF}},
      {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0}},
      {0x10000, {0xFF, 0xFF, 0, 0, 1, 0}},
      {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
  };
  for (const auto& [count, bytes] : counts) {
    EXPECT_EQ(Stored([value = count](CArchive& ar) { ar.WriteCount(value); }), bytes) << count;
    EXPECT_EQ(LoadingArchive(bytes)->ReadCount(), count);
    EXPECT_EQ(TruncationOverlooked(bytes, [](CArchive& ar) { (void)ar.ReadCount(); }), -1) << count;
  }
}

TEST(CArchive, StoresAListAsItsCountAndItsTexts) {
  EXPECT_THAT(StoredValue(CStringArray()), ElementsAre(0, 0));
  EXPECT_THAT(StoredValue(Texts({"a", "", "bc"})), ElementsAre(3, 0, 1, 'a', 0, 2, 'b', 'c'));
}

TEST(CArchive, LoadsAListInPlaceOfWhatWasThere) {
  LoadingArchive ar({2, 0, 1, 'a', 0, 0, 0});
  CStringArray texts = Texts({"stale", "stale", "stale"});
  *ar >> texts;
  EXPECT_EQ(texts, Texts({"a", ""}));
  *ar >> texts;
  EXPECT_EQ(texts, CStringArray());
}

TEST(CArchive, StoresLongListsWithTheLongCount) {
  CStringArray texts;
  texts.SetSize(0xFFFF);
  const Bytes bytes = StoredValue(texts);
  EXPECT_TRUE(bytes == (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0, 0}) + Bytes(0xFFFF, 0));
  EXPECT_TRUE(LoadedValue<CStringArray>(bytes) == texts);
}

TEST(CArchive, BelievesTheCountOfAListOnlyAsFarAsItsBytesReach) {
  for (const Bytes& bytes : {Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0}, Bytes{3, 0, 0, 0}}) {
    LoadingArchive ar(bytes);
    CStringArray texts = Texts({"kept"});
    EXPECT_EQ(ArchiveRefusal([&] { *ar >> texts; }), CArchiveException::endOfFile);
    EXPECT_EQ(ar->Remaining(), 2u) << "no text was tried";
    EXPECT_EQ(texts, Texts({"kept"}));
  }
}

TEST(CArchive, KeepsAListWhoseTextsAreMissing) {
  LoadingArchive ar({2, 0, 1, 'a', 5, 'b'});
  CStringArray texts = Texts({"kept"});
  EXPECT_EQ(ArchiveRefusal([&] { *ar >> texts; }), CArchiveException::endOfFile);
  EXPECT_EQ(texts, Texts({"kept"}));
}

TEST(CArchive, RefusesMoreTextsThanAnArrayHolds) {
  for (const std::uint8_t highByte : Bytes{0x80, 0xFF}) {
    BoastfulFile file({0xFF, 0xFF, 0, 0, 0, highByte}, std::uint64_t{1} << 40);
    CArchive ar(&file, CArchive::load);
    CStringArray texts = Texts({"kept"});
    EXPECT_EQ(ArchiveRefusal([&] { ar >> texts; }), CArchiveException::badIndex);
    EXPECT_EQ(texts, Texts({"kept"}));
  }
}

// --- every kind of value, through every size of buffer ---------------------------------------------------------------

void StoreEverything(CArchive& ar) {
  ar << std::uint8_t{1} << std::int16_t{-2} << std::uint16_t{3} << std::int32_t{-4} << std::uint32_t{5}
     << std::int64_t{-6} << std::uint64_t{7} << 8.5f << -9.5 << true << NurReal(10.5) << NurLong(-11) << Colour::Green;
  ar << CString("twelve") << Text(300, '3') << DateTime(14.5, COleDateTime::null) << Texts({"a", "", "bc"});
  ar.WriteCount(16);
}

void LoadEverything(CArchive& ar) {
  std::uint8_t byte = 0;
  std::int16_t int16 = 0;
  std::uint16_t uint16 = 0;
  std::int32_t int32 = 0;
  std::uint32_t uint32 = 0;
  std::int64_t int64 = 0;
  std::uint64_t uint64 = 0;
  float single = 0;
  double real = 0;
  bool flag = false;
  NurReal nurReal;
  NurLong nurLong;
  Colour colour = Colour::None;
  CString shortText;
  CString longText;
  COleDateTime dateTime;
  CStringArray texts;
  ar >> byte >> int16 >> uint16 >> int32 >> uint32 >> int64 >> uint64 >> single >> real >> flag >> nurReal >> nurLong >>
      colour;
  ar >> shortText >> longText >> dateTime >> texts;
  const std::uint32_t count = ar.ReadCount();

  EXPECT_EQ(byte, 1);
  EXPECT_EQ(int16, -2);
  EXPECT_EQ(uint16, 3);
  EXPECT_EQ(int32, -4);
  EXPECT_EQ(uint32, 5u);
  EXPECT_EQ(int64, -6);
  EXPECT_EQ(uint64, 7u);
  EXPECT_EQ(single, 8.5f);
  EXPECT_EQ(real, -9.5);
  EXPECT_TRUE(flag);
  EXPECT_EQ(nurReal, NurReal(10.5));
  EXPECT_EQ(nurLong, NurLong(-11));
  EXPECT_EQ(colour, Colour::Green);
  EXPECT_EQ(shortText, "twelve");
  EXPECT_EQ(longText, Text(300, '3'));
  EXPECT_EQ(dateTime, DateTime(14.5, COleDateTime::null));
  EXPECT_EQ(texts, Texts({"a", "", "bc"}));
  EXPECT_EQ(count, 16u);
}

TEST(CArchive, StoresAndLoadsTheSameBytesThroughEveryBuffer) {
  const Bytes bytes = Stored(StoreEverything);
  for (std::uint32_t bufferSize = 0; bufferSize < 400; ++bufferSize) {
    ASSERT_EQ(Stored(StoreEverything, bufferSize), bytes) << bufferSize;
    LoadingArchive ar(bytes, bufferSize);
    LoadEverything(*ar);
    ASSERT_EQ(ar->Remaining(), 0u) << bufferSize;
    ASSERT_FALSE(HasFailure()) << bufferSize;
  }
}

TEST(CArchive, LoadsTheSameWhereTheFileHoldsIt) {
  LoadingArchive ar(Stored(StoreEverything));
  LoadEverything(*ar);
  EXPECT_EQ(ar->Remaining(), 0u);
}

TEST(CArchive, FindsItsEndWhereverItIsCut) {
  EXPECT_EQ(TruncationOverlooked(Stored(StoreEverything), LoadEverything), -1);
}

TEST(CArchive, LoadsFromAFileThatGivesLessThanItIsAskedFor) {
  for (const std::uint32_t bufferSize : {1u, 5u, 4096u}) {
    SlowFile file(Stored(StoreEverything));
    CArchive ar(&file, CArchive::load, bufferSize);
    LoadEverything(ar);
    EXPECT_EQ(ar.Remaining(), 0u);
  }
}

// --- raw bytes and what remains --------------------------------------------------------------------------------------

TEST(CArchive, ReadsFewerBytesOnlyAtTheEnd) {
  for (const Reading reading : kReadings) {
    SCOPED_TRACE(ToText(reading));
    LoadingArchive ar(Bytes{1, 2, 3, 4, 5, 6, 7}, reading);
    Bytes bytes(5, 0xEE);
    EXPECT_EQ(ar->Read(bytes.data(), 5), 5u);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(ar->Read(bytes.data(), 5), 2u);
    EXPECT_THAT(bytes, ElementsAre(6, 7, 3, 4, 5));
    EXPECT_EQ(ar->Read(bytes.data(), 5), 0u);
    EXPECT_EQ(ar->Read(bytes.data(), 0), 0u);
  }
}

TEST(CArchive, TakesWhatItsBufferHoldsBeforeALargeReadGoesToTheFile) {
  LoadingArchive ar(Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 4);
  Bytes bytes(1);
  ar->ReadExactly(bytes.data(), 1);
  EXPECT_EQ(ar.File().GetPosition(), 4u) << "three bytes are in the buffer";
  bytes.resize(8);
  ar->ReadExactly(bytes.data(), 8);
  EXPECT_THAT(bytes, ElementsAre(2, 3, 4, 5, 6, 7, 8, 9));
  EXPECT_EQ(ar->Remaining(), 1u);
}

TEST(CArchive, ReadsExactlyOrNotAtAll) {
  for (const Reading reading : kReadings) {
    SCOPED_TRACE(ToText(reading));
    LoadingArchive ar(Bytes{1, 2, 3}, reading);
    Bytes bytes(2);
    ar->ReadExactly(bytes.data(), 2);
    EXPECT_THAT(bytes, ElementsAre(1, 2));
    EXPECT_EQ(ArchiveRefusal([&] { ar->ReadExactly(bytes.data(), 2); }), CArchiveException::endOfFile);
  }
}

TEST(CArchive, WritesRawBytesInOrder) {
  for (const std::uint32_t bufferSize : {1u, 4u, 100u}) {
    const Bytes bytes = Stored(
        [](CArchive& ar) {
          ar.Write("ab", 2);
          ar.Write("", 0);
          ar.Write("cdefghijk", 9);
          ar.Write("l", 1);
        },
        bufferSize);
    EXPECT_EQ(bytes, BytesOf("abcdefghijkl")) << bufferSize;
  }
}

TEST(CArchive, ReadsAndWritesNothingWithoutMemory) {
  EXPECT_THAT(Stored([](CArchive& ar) { ar.Write(nullptr, 0); }), IsEmpty());
  EXPECT_EQ(LoadingArchive(Bytes{1})->Read(nullptr, 0), 0u);
}

TEST(CArchive, KnowsWhatRemainsWhereverTheBufferEnds) {
  for (const Reading reading : kReadings) {
    SCOPED_TRACE(ToText(reading));
    LoadingArchive ar(Bytes(10, 0), reading);
    for (std::uint64_t remaining = 10; remaining > 0; --remaining) {
      EXPECT_EQ(ar->Remaining(), remaining);
      std::uint8_t byte = 0;
      *ar >> byte;
    }
    EXPECT_EQ(ar->Remaining(), 0u);
  }
}

TEST(CArchive, RequiresNoMoreThanWhatRemains) {
  for (const Reading reading : kReadings) {
    SCOPED_TRACE(ToText(reading));
    LoadingArchive ar(Bytes(10, 0), reading);
    std::uint16_t word = 0;
    *ar >> word;
    for (const std::uint64_t bytes : {0u, 1u, 7u, 8u}) {
      EXPECT_EQ(ArchiveRefusal([&] { ar->RequireRemaining(bytes); }), CArchiveException::none) << bytes;
    }
    for (const std::uint64_t bytes : {std::uint64_t{9}, std::uint64_t{100}, ~std::uint64_t{0}}) {
      EXPECT_EQ(ArchiveRefusal([&] { ar->RequireRemaining(bytes); }), CArchiveException::endOfFile) << bytes;
    }
    EXPECT_EQ(ar->Remaining(), 8u) << "asking reads nothing";
  }
}

TEST(CArchive, HasNothingRemainingWhileStoringOrClosed) {
  CMemFile file(Bytes(10, 0));
  CArchive storing(&file, CArchive::store);
  EXPECT_EQ(storing.Remaining(), 0u);
  CArchive loading(&file, CArchive::load);
  EXPECT_EQ(loading.Remaining(), 10u);
  loading.Close();
  EXPECT_EQ(loading.Remaining(), 0u);
}

TEST(CArchive, HasNothingRemainingBehindTheEndOfTheFile) {
  CMemFile file(Bytes(10, 0));
  file.Seek(5, CFile::end);
  CArchive ar(&file, CArchive::load);
  EXPECT_EQ(ar.Remaining(), 0u);
}

// --- direction -------------------------------------------------------------------------------------------------------

TEST(CArchive, LoadsWhenTheLowBitOfItsModeIsSet) {
  CMemFile file;
  EXPECT_EQ(CArchive::store, 0);
  EXPECT_EQ(CArchive::load, 1);
  for (std::uint32_t mode = 0; mode < 8; ++mode) {
    const CArchive ar(&file, mode);
    EXPECT_EQ(ar.IsLoading(), mode % 2 == 1) << mode;
    EXPECT_EQ(ar.IsStoring(), mode % 2 == 0) << mode;
  }
}

template <typename T>
void RefusesBothWrongDirections(T value) {
  CMemFile file(Bytes(100, 0));
  {
    CArchive loading(&file, CArchive::load);
    EXPECT_EQ(ArchiveRefusal([&] { loading << value; }), CArchiveException::readOnly);
    std::uint8_t byte = 0;
    loading >> byte;  // now there are bytes in its buffer
    EXPECT_EQ(ArchiveRefusal([&] { loading << value; }), CArchiveException::readOnly);
  }
  file.SeekToBegin();
  {
    CArchive storing(&file, CArchive::store);
    EXPECT_EQ(ArchiveRefusal([&] { storing >> value; }), CArchiveException::writeOnly);
    storing << std::uint8_t{0};
    EXPECT_EQ(ArchiveRefusal([&] { storing >> value; }), CArchiveException::writeOnly);
  }
  EXPECT_EQ(file.Bytes(), Bytes(100, 0));
}

TEST(CArchive, RefusesTheWrongDirectionForEveryValue) {
  RefusesBothWrongDirections(std::uint8_t{1});
  RefusesBothWrongDirections(std::int16_t{1});
  RefusesBothWrongDirections(std::uint16_t{1});
  RefusesBothWrongDirections(std::int32_t{1});
  RefusesBothWrongDirections(std::uint32_t{1});
  RefusesBothWrongDirections(std::int64_t{1});
  RefusesBothWrongDirections(std::uint64_t{1});
  RefusesBothWrongDirections(1.0f);
  RefusesBothWrongDirections(1.0);
  RefusesBothWrongDirections(true);
  RefusesBothWrongDirections(NurReal(1.0));
  RefusesBothWrongDirections(NurLong(1));
  RefusesBothWrongDirections(Colour::Green);
  RefusesBothWrongDirections(CString());
  RefusesBothWrongDirections(CString("text"));
  RefusesBothWrongDirections(COleDateTime());
  RefusesBothWrongDirections(Texts({"a"}));
}

TEST(CArchive, RefusesTheWrongDirectionForRawBytesAndCounts) {
  CMemFile file(Bytes(100, 0));
  CArchive loading(&file, CArchive::load);
  CArchive storing(&file, CArchive::store);
  char byte = 'x';
  for (const std::uint32_t count : {0u, 1u}) {
    EXPECT_EQ(ArchiveRefusal([&] { loading.Write(&byte, count); }), CArchiveException::readOnly) << count;
    EXPECT_EQ(ArchiveRefusal([&] { storing.Read(&byte, count); }), CArchiveException::writeOnly) << count;
  }
  EXPECT_EQ(ArchiveRefusal([&] { loading.WriteCount(1); }), CArchiveException::readOnly);
  EXPECT_EQ(ArchiveRefusal([&] { (void)storing.ReadCount(); }), CArchiveException::writeOnly);
  EXPECT_EQ(byte, 'x');
}

// --- flushing and closing --------------------------------------------------------------------------------------------

TEST(CArchive, HandsItsBytesToTheFileWhenFlushedOrClosed) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  ar << std::uint8_t{1};
  EXPECT_THAT(file.Bytes(), IsEmpty());
  ar.Flush();
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
  ar.Flush();
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
  ar << std::uint8_t{2};
  ar.Close();
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 2));
}

TEST(CArchive, HandsItsBytesToTheFileWhenItGoes) {
  CMemFile file;
  { CArchive(&file, CArchive::store) << std::uint8_t{1}; }
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
}

TEST(CArchive, KeepsItsBytesWhenItGoesIfItsModeSaysSo) {
  CMemFile file;
  { CArchive(&file, CArchive::store | CArchive::bNoFlushOnDelete) << std::uint8_t{1}; }
  EXPECT_THAT(file.Bytes(), IsEmpty());
  CArchive ar(&file, CArchive::store | CArchive::bNoFlushOnDelete);
  ar << std::uint8_t{2};
  ar.Close();
  EXPECT_THAT(file.Bytes(), ElementsAre(2));
}

TEST(CArchive, LeavesTheFileBehindTheLastByteThatItLoaded) {
  const auto loadTwo = [](CArchive& ar) {
    std::uint16_t word = 0;
    ar >> word;
  };
  const auto leaves = [&](CMemFile& file, std::uint32_t bufferSize) {
    {
      CArchive ar(&file, CArchive::load, bufferSize);
      loadTwo(ar);
      ar.Flush();
      EXPECT_EQ(file.GetPosition(), 2u);
      EXPECT_EQ(ar.Remaining(), 5u);
      loadTwo(ar);
      ar.Close();
      EXPECT_EQ(file.GetPosition(), 4u);
    }
    {
      CArchive ar(&file, CArchive::load, bufferSize);
      loadTwo(ar);
    }
    EXPECT_EQ(file.GetPosition(), 6u);
  };
  for (const std::uint32_t bufferSize : {0u, 1u, 3u, 4096u}) {
    SCOPED_TRACE(bufferSize);
    CMemFile inPlace(Bytes{1, 2, 3, 4, 5, 6, 7});
    leaves(inPlace, bufferSize);
    StreamedFile streamed(Bytes{1, 2, 3, 4, 5, 6, 7});
    leaves(streamed, bufferSize);
  }
}

TEST(CArchive, AsksNothingOfTheFileWhenThereIsNothingToHandOver) {
  FullFile full(0);
  CArchive storing(&full, CArchive::store);
  storing.Flush();
  storing.Close();
  EXPECT_EQ(full.Writes(), 0);

  UnmovableFile unmovable(Bytes{1});
  CArchive loading(&unmovable, CArchive::load);
  loading.Flush();
  std::uint8_t byte = 0;
  loading >> byte;
  EXPECT_NO_THROW(loading.Close()) << "the file is where the archive is";
}

TEST(CArchive, BeginsWhereTheFileIs) {
  CMemFile file(Bytes{1, 2, 3});
  file.Seek(1, CFile::begin);
  std::uint8_t byte = 0;
  CArchive(&file, CArchive::load) >> byte;
  EXPECT_EQ(byte, 2);
  file.SeekToEnd();
  CArchive(&file, CArchive::store) << std::uint8_t{4};
  EXPECT_THAT(file.Bytes(), ElementsAre(1, 2, 3, 4));
}

TEST(CArchive, ClosesOnlyOnce) {
  CMemFile file;
  CArchive ar(&file, CArchive::store);
  ar << std::uint8_t{1};
  ar.Close();
  ar.Close();
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
}

TEST(CArchive, LeavesTheFileOpenAndUnusedOnceClosed) {
  auto file = std::make_unique<CMemFile>(Bytes{1, 2, 3});
  CArchive ar(file.get(), CArchive::load);
  std::uint8_t byte = 0;
  ar >> byte;
  ar.Close();
  EXPECT_EQ(file->GetLength(), 3u);
  file.reset();  // a sanitizer would notice any further use
}

TEST(CArchive, RefusesEverythingOnceClosed) {
  CMemFile file(Bytes(8, 0));
  std::uint8_t byte = 0;
  CArchive loading(&file, CArchive::load);
  loading >> byte;
  loading.Close();
  CArchive storing(&file, CArchive::store);
  storing.Close();
  EXPECT_EQ(ArchiveRefusal([&] { loading >> byte; }), CArchiveException::genericException);
  EXPECT_EQ(ArchiveRefusal([&] { storing << byte; }), CArchiveException::genericException);
  EXPECT_EQ(ArchiveRefusal([&] { loading.Flush(); }), CArchiveException::genericException);
  EXPECT_EQ(ArchiveRefusal([&] { storing.Flush(); }), CArchiveException::genericException);
}

TEST(CArchive, DropsWhatIsBufferedWhenAborted) {
  CMemFile file;
  {
    CArchive ar(&file, CArchive::store);
    ar << std::uint8_t{1};
    ar.Flush();
    ar << std::uint8_t{2};
    ar.Abort();
    ar.Close();
  }
  EXPECT_THAT(file.Bytes(), ElementsAre(1));
}

// --- failing files ---------------------------------------------------------------------------------------------------

/// Stores everything and closes the archive, into a file of limited room.
void StoreInto(CArchive& ar) {
  StoreEverything(ar);
  ar.Close();
}

TEST(CArchive, LetsTheFailureOfAFileThroughWhereverItHappens) {
  const Bytes whole = Stored(StoreEverything);
  for (const std::uint32_t bufferSize : {1u, 7u, 100u, 4096u}) {
    for (std::size_t room = 0; room < whole.size(); ++room) {
      FullFile file(room);
      {
        CArchive ar(&file, CArchive::store, bufferSize);
        EXPECT_THROW(StoreInto(ar), CFileException) << bufferSize << ", " << room;
        const int writes = file.Writes();
        EXPECT_EQ(ArchiveRefusal([&] { ar << std::uint8_t{1}; }), CArchiveException::genericException);
        EXPECT_EQ(ArchiveRefusal([&] { ar.Flush(); }), CArchiveException::genericException);
        EXPECT_EQ(ArchiveRefusal([&] { ar.Close(); }), CArchiveException::genericException);
        EXPECT_EQ(file.Writes(), writes) << "the file is left alone";
      }
      EXPECT_EQ(file.Bytes(), Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(room)));
    }
    FullFile enough(whole.size());
    CArchive ar(&enough, CArchive::store, bufferSize);
    EXPECT_NO_THROW(StoreInto(ar));
    EXPECT_EQ(enough.Bytes(), whole);
  }
}

TEST(CArchive, ShowsAFullFileInFlushAndCloseAndStoring) {
  for (const bool close : {false, true}) {
    FullFile file(0);
    CArchive ar(&file, CArchive::store);
    ar << std::uint8_t{1};
    EXPECT_THROW(close ? ar.Close() : ar.Flush(), CFileException);
  }
  FullFile file(0);
  CArchive ar(&file, CArchive::store, 1);
  EXPECT_THROW(ar << std::uint32_t{1}, CFileException);
}

TEST(CArchive, GoesQuietlyWhenTheFileFails) {
  FullFile full(0);
  EXPECT_NO_THROW({ CArchive(&full, CArchive::store) << std::uint8_t{1}; });
  EXPECT_EQ(full.Writes(), 1) << "it has tried";

  UnmovableFile unmovable(Bytes{1, 2, 3});
  std::uint8_t byte = 0;
  EXPECT_NO_THROW({ CArchive(&unmovable, CArchive::load) >> byte; });
  EXPECT_EQ(byte, 1);
}

TEST(CArchive, LetsAFailureToReadThrough) {
  for (const std::uint32_t bufferSize : {1u, 4096u}) {
    BrokenFile file;
    CArchive ar(&file, CArchive::load, bufferSize);
    std::int32_t value = 7;
    EXPECT_THROW(ar >> value, CFileException);
    EXPECT_EQ(value, 7);
  }
}

TEST(CArchive, LetsAFailureToMoveBackThroughWhenClosed) {
  UnmovableFile file(Bytes{1, 2, 3});
  CArchive ar(&file, CArchive::load);
  std::uint8_t byte = 0;
  ar >> byte;
  EXPECT_THROW(ar.Close(), CFileException);
}

TEST(CArchiveException, IsAStandardExceptionThatSaysWhatIsWrong) {
  static_assert(std::is_base_of_v<CException, CArchiveException>);
  const auto text = [](CArchiveException::Cause cause) {
    try {
      throw CArchiveException(cause);
    } catch (const std::exception& error) {
      return std::string(error.what());
    }
  };
  EXPECT_EQ(text(CArchiveException::none), "no archive error");
  EXPECT_EQ(text(CArchiveException::genericException), "the archive is closed or has failed");
  EXPECT_EQ(text(CArchiveException::readOnly), "storing into an archive that was opened for loading");
  EXPECT_EQ(text(CArchiveException::endOfFile), "the archive ends too early");
  EXPECT_EQ(text(CArchiveException::writeOnly), "loading from an archive that was opened for storing");
  EXPECT_EQ(text(CArchiveException::badIndex), "the archive's bytes are not in its form");
  EXPECT_EQ(text(static_cast<CArchiveException::Cause>(99)), "the archive is closed or has failed");
  EXPECT_EQ(CArchiveException().m_cause, CArchiveException::genericException);
}

}  // namespace
