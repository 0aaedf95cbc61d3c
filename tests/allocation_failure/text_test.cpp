#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "tests/allocation_failure/failing_allocation.h"
#include "tests/support/archive_bytes.h"
#include "vorn/platform/carchive.h"
#include "vorn/platform/cstring.h"
#include "vorn/platform/small_text.h"

// What a text keeps when memory runs out, and how often it asks for some.

namespace {

using allocation_test::AllocationsOf;
using allocation_test::AllowAllocations;
using allocation_test::FailEachAllocation;

/// Within the object, and in memory of its own.
constexpr const char* kKept[] = {"", "kept", "exactly 15 byte", "kept in memory of its own"};
const std::string kLong(300, 'x');

/// Changes a text without the memory for it, and then with it.
template <typename Text, typename Change>
void ExpectKept(Change change) {
  for (const std::string_view kept : kKept) {
    Text text;
    const auto prepare = [&] { text = Text(kept); };
    FailEachAllocation(
        prepare, [&] { change(text); },
        [&] {
          EXPECT_EQ(text.View(), kept);
          EXPECT_EQ(text.View().data()[kept.size()], '\0');
        });
    EXPECT_NE(text.View(), kept);
  }
}

TEST(TextWithoutMemory, IsAsItWasWhenAssigned) {
  const SmallText longText(kLong);
  ExpectKept<SmallText>([](SmallText& text) { text.assign(kLong); });
  ExpectKept<SmallText>([&](SmallText& text) { text = longText; });
  ExpectKept<SmallText>([](SmallText& text) { (void)text.resize(300); });
}

TEST(TextWithoutMemory, IsAsItWasWhenAppendedTo) {
  ExpectKept<SmallText>([](SmallText& text) { text.append(kLong); });
}

TEST(TextWithoutMemory, IsAsItWasWhenAppendedToItself) {
  SmallText text;
  FailEachAllocation([&] { text = SmallText("a text of its own"); }, [&] { text.append(text.View()); },
                     [&] { EXPECT_EQ(text.View(), "a text of its own"); });
  EXPECT_EQ(text.View(), "a text of its owna text of its own");
}

TEST(TextWithoutMemory, IsAsItWasInEveryOperationOfTheFramework) {
  const CString longText(kLong);
  ExpectKept<CString>([&](CString& text) { text = longText; });
  ExpectKept<CString>([](CString& text) { text = std::string_view(kLong); });
  ExpectKept<CString>([](CString& text) { text = kLong.c_str(); });
  ExpectKept<CString>([&](CString& text) { text += longText; });
  ExpectKept<CString>([](CString& text) { text += std::string_view(kLong); });
  ExpectKept<CString>([](CString& text) { text += kLong.c_str(); });
  ExpectKept<CString>([](CString& text) { (void)text.GetBufferSetLength(300); });
}

TEST(TextWithoutMemory, IsAsItWasWhenLoaded) {
  const auto bytes = test_support::Stored([](CArchive& ar) { ar << CString(kLong); });
  for (const auto reading : test_support::kReadings) {
    ExpectKept<CString>([&](CString& text) {
      // The archive's own memory is not what is to fail.
      const auto succeeding = allocation_test::Succeeding();
      allocation_test::SetSucceeding(-1);
      test_support::LoadingArchive ar(bytes, reading);
      allocation_test::SetSucceeding(succeeding);
      *ar >> text;
    });
  }
}

TEST(TextMemory, IsAskedForOnceByALoadedText) {
  const auto bytes = test_support::Stored([](CArchive& ar) { ar << CString(kLong); });
  for (const auto reading : test_support::kReadings) {
    test_support::LoadingArchive ar(bytes, reading);
    CString text;
    EXPECT_EQ(AllocationsOf([&] { *ar >> text; }), 1u) << test_support::ToText(reading);
    EXPECT_EQ(text.View(), kLong);
  }
}

TEST(TextMemory, IsAskedForByNoTextThatItsSizeCannotTell) {
  constexpr std::size_t kLongest = 0xFFFFFFFF - 5;  // the block, its terminator and the room before it included
  SmallText text;
  EXPECT_THROW(AllowAllocations(0, [&] { (void)text.resize(kLongest); }), std::bad_alloc);
  EXPECT_THROW((void)text.resize(kLongest + 1), std::length_error);
  EXPECT_EQ(text.size(), 0u);
}

TEST(TextMemory, GrowsGeometrically) {
  SmallText text;
  EXPECT_LE(AllocationsOf([&] {
              for (int i = 0; i < 100'000; ++i) text.append("x");
            }),
            20u);
  EXPECT_EQ(text.size(), 100'000u);
}

TEST(TextMemory, IsNotAskedForByShortTexts) {
  EXPECT_EQ(AllocationsOf([] {
              SmallText text("exactly 15 byte");
              const SmallText copy(text);
              text.truncate(3);
              text.append("and so on");
            }),
            0u);
}

TEST(TextMemory, IsNotAskedForByTextsThatGetShorterOrAreFolded) {
  const CString kept = CString("  ") + kLong.c_str() + "Y \t";
  CString trimmed = kept;
  CString left = kept;
  CString right = kept;
  CString upper = kept;
  CString lower = kept;
  EXPECT_EQ(AllocationsOf([&] {
              trimmed.Trim();
              left.TrimLeft();
              right.TrimRight();
              upper.MakeUpper();
              lower.MakeLower();
              lower.SetAt(0, 'a');
              (void)lower.GetBufferSetLength(20);
            }),
            0u);
  EXPECT_EQ(trimmed, CString(kLong) + "Y");
  EXPECT_EQ(left, CString(kLong) + "Y \t");
  EXPECT_EQ(right, CString("  ") + kLong.c_str() + "Y");
  EXPECT_EQ(upper.Mid(2), CString(std::string(300, 'X')) + "Y \t");
  EXPECT_EQ(lower, CString("a ") + std::string(18, 'x').c_str());
}

}  // namespace
