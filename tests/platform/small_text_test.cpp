#include "vorn/platform/small_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

/// Around the longest text that lies in the object, and beyond what one growth gives.
constexpr std::size_t kSizes[] = {0, 1, 14, 15, 16, 17, 31, 32, 300, 70'000};

std::string Letters(std::size_t size) {
  std::string text(size, 'a');
  for (std::size_t i = 0; i < size; ++i) text[i] = static_cast<char>('a' + i % 26);
  return text;
}

testing::AssertionResult Holds(const SmallText& text, std::string_view expected) {
  if (text.View() != expected) return testing::AssertionFailure() << "holds \"" << text.View() << '"';
  if (text.size() != expected.size()) return testing::AssertionFailure() << "has size " << text.size();
  if (text.empty() != expected.empty()) return testing::AssertionFailure() << "errs about being empty";
  if (text.data()[text.size()] != '\0') return testing::AssertionFailure() << "has no terminator";
  return testing::AssertionSuccess();
}

TEST(SmallText, TakesSixteenBytes) { EXPECT_EQ(sizeof(SmallText), 16u); }

TEST(SmallText, IsEmptyAtFirst) { EXPECT_TRUE(Holds(SmallText(), "")); }

TEST(SmallText, HoldsTextsOfEverySize) {
  for (const std::size_t size : kSizes) {
    const std::string text = Letters(size);
    EXPECT_TRUE(Holds(SmallText(text), text)) << size;
  }
}

TEST(SmallText, HoldsZeroBytes) {
  const std::string text("a\0b\0", 4);
  EXPECT_TRUE(Holds(SmallText(text), text));
  const std::string zeros(40, '\0');
  EXPECT_TRUE(Holds(SmallText(zeros), zeros));
}

TEST(SmallText, LiesInTheObjectUpToFifteenBytes) {
  const auto liesInside = [](const SmallText& text) {
    const auto* object = reinterpret_cast<const char*>(&text);
    return text.data() >= object && text.data() < object + sizeof text;
  };
  EXPECT_TRUE(liesInside(SmallText(Letters(15))));
  EXPECT_FALSE(liesInside(SmallText(Letters(16))));
}

TEST(SmallText, CopiesAndMovesBetweenTextsOfEverySize) {
  for (const std::size_t from : kSizes) {
    for (const std::size_t to : kSizes) {
      const std::string text = Letters(from);
      const SmallText source(text);
      const SmallText copy(source);
      EXPECT_TRUE(Holds(copy, text));

      SmallText assigned(Letters(to));
      assigned = source;
      EXPECT_TRUE(Holds(assigned, text)) << from << " over " << to;
      EXPECT_TRUE(Holds(source, text));

      SmallText moved(std::move(assigned));
      EXPECT_TRUE(Holds(moved, text));
      EXPECT_TRUE(Holds(assigned, ""));  // NOLINT(bugprone-use-after-move): a moved text is empty

      SmallText target(Letters(to));
      target = std::move(moved);
      EXPECT_TRUE(Holds(target, text)) << from << " over " << to;
    }
  }
}

TEST(SmallText, SurvivesBeingAssignedToItself) {
  for (const std::size_t size : kSizes) {
    const std::string letters = Letters(size);
    SmallText text(letters);
    auto& same = text;
    text = same;
    EXPECT_TRUE(Holds(text, letters));
    text = std::move(same);
    EXPECT_TRUE(Holds(text, letters));
  }
}

TEST(SmallText, AppendsTextsOfEverySize) {
  for (const std::size_t first : kSizes) {
    for (const std::size_t second : kSizes) {
      SmallText text(Letters(first));
      text.append(Letters(second));
      EXPECT_TRUE(Holds(text, Letters(first) + Letters(second))) << first << " and " << second;
    }
  }
}

TEST(SmallText, TakesAndAppendsPartsOfItself) {
  for (const std::size_t size : kSizes) {
    const std::string letters = Letters(size);
    for (const std::size_t part : {size, size / 2, size - size / 3}) {
      SmallText tail(letters);
      tail.assign(tail.View().substr(size - part));
      EXPECT_TRUE(Holds(tail, letters.substr(size - part)));

      SmallText twice(letters);
      twice.append(twice.View().substr(0, part));
      EXPECT_TRUE(Holds(twice, letters + letters.substr(0, part)));
    }
  }
}

TEST(SmallText, CutsToTheFirstBytes) {
  for (const std::size_t size : kSizes) {
    SmallText text(Letters(size));
    text.truncate(size + 1);
    EXPECT_TRUE(Holds(text, Letters(size)));
    text.truncate(size / 2);
    EXPECT_TRUE(Holds(text, Letters(size / 2)));
    text.clear();
    EXPECT_TRUE(Holds(text, ""));
    text.append("again");
    EXPECT_TRUE(Holds(text, "again"));
  }
}

TEST(SmallText, GivesItsBytesToBeWritten) {
  for (const std::size_t before : kSizes) {
    for (const std::size_t after : kSizes) {
      SmallText text(Letters(before));
      const std::string letters = Letters(after);
      char* const bytes = text.resize(after);
      EXPECT_EQ(bytes, text.data());
      const std::size_t kept = std::min(before, after);
      EXPECT_EQ(std::string_view(bytes, kept), Letters(before).substr(0, kept)) << before << " to " << after;
      std::memcpy(bytes, letters.data(), after);
      EXPECT_TRUE(Holds(text, letters)) << before << " to " << after;
    }
  }
}

#if SIZE_MAX > UINT32_MAX  // elsewhere no text is that long
TEST(SmallText, RefusesFourGibibytesAndStays) {
  // Never looked at: the length alone is refused.
  const std::string_view huge("x", std::size_t{1} << 32);
  for (const char* kept : {"kept", "kept in memory of its own"}) {
    SmallText text(kept);
    EXPECT_THROW(text.assign(huge), std::length_error);
    EXPECT_THROW(text.append(huge), std::length_error);
    EXPECT_THROW((void)text.resize(huge.size()), std::length_error);
    EXPECT_TRUE(Holds(text, kept));
  }
}
#endif

TEST(SmallText, BehavesLikeAStandardStringInAnyOrderOfOperations) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
  for (int run = 0; run < 300; ++run) {
    SmallText text;
    std::string expected;
    for (int step = 0; step < 40; ++step) {
      const std::string piece = Letters(below(24));
      switch (below(4)) {
        case 0:
          text.append(piece);
          expected += piece;
          break;
        case 1:
          text.assign(piece);
          expected = piece;
          break;
        case 2: {
          const std::size_t size = below(40);
          text.truncate(size);
          if (size < expected.size()) expected.resize(size);
          break;
        }
        default: {
          SmallText copy(text);
          text = std::move(copy);
          break;
        }
      }
      ASSERT_TRUE(Holds(text, expected)) << "run " << run << ", step " << step;
    }
  }
}

}  // namespace
