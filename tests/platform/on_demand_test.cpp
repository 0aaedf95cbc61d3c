#include "vorn/platform/on_demand.h"

#include <gtest/gtest.h>

#include <atomic>
#include <concepts>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "vorn/road/alignment.h"

namespace {

using Text = OnDemand<std::string>;

static_assert(sizeof(Text) == sizeof(void*));
static_assert(std::is_nothrow_move_constructible_v<Text> && std::is_nothrow_move_assignable_v<Text>);
static_assert(std::is_nothrow_default_constructible_v<Text>);

struct WithoutEquality {};
static_assert(std::equality_comparable<Text> && !std::equality_comparable<OnDemand<WithoutEquality>>,
              "never as a pointer");

Text TextOf(const char* value) {
  Text text;
  text.Change() = value;
  return text;
}

TEST(OnDemand, IsAsANewValue) {
  const Text text;
  EXPECT_EQ(text.Get(), "");
  Text other;
  EXPECT_EQ(other.Get(), "");
  EXPECT_EQ(other.Change(), "");
}

TEST(OnDemand, SharesOneNewValueUntilItIsChanged) {
  Text text;
  const Text other;
  EXPECT_EQ(&text.Get(), &other.Get());
  EXPECT_EQ(&text.Get(), &other.Get()) << "looking makes none, nor through an object that can be changed";
  (void)text.Change();
  EXPECT_NE(&text.Get(), &other.Get());
}

TEST(OnDemand, TellsWhetherItsValueIsMade) {
  Text text;
  EXPECT_EQ(text.Get(), "");
  EXPECT_FALSE(text.IsMade());
  (void)text.Change();
  EXPECT_TRUE(text.IsMade()) << "whatever was done with it";
  EXPECT_TRUE(Text(text).IsMade());
  const Text moved = std::move(text);
  EXPECT_TRUE(moved.IsMade());
  EXPECT_FALSE(Text(Text()).IsMade());
}

TEST(OnDemand, KeepsWhatItIsChangedTo) {
  Text text;
  text.Change() = "a";
  text.Change() += "b";
  EXPECT_EQ(text.Get(), "ab");
  EXPECT_EQ(&text.Get(), &text.Change());
}

TEST(OnDemand, IsChangedAlone) {
  const Text text = TextOf("a");
  const Text untouched;
  EXPECT_EQ(text.Get(), "a");
  EXPECT_EQ(untouched.Get(), "");
}

TEST(OnDemand, IsCopiedWithItsValue) {
  Text text = TextOf("a");
  Text copy = text;
  copy.Change() = "b";
  EXPECT_EQ(text.Get(), "a");
  text = copy;
  copy.Change() = "c";
  EXPECT_EQ(text.Get(), "b");
  const Text& same = text;
  text = same;
  EXPECT_EQ(text.Get(), "b");
  text = Text();
  EXPECT_EQ(text.Get(), "");
}

TEST(OnDemand, IsCopiedUnmadeAsUnmade) {
  const Text text;
  Text copy = text;
  EXPECT_EQ(&copy.Get(), &text.Get());
  copy.Change() = "a";
  copy = text;
  EXPECT_EQ(&copy.Get(), &text.Get());
}

TEST(OnDemand, HandsItsValueOverAndIsANewOneWhenMovedFrom) {
  Text text = TextOf("a");
  const std::string* const made = &text.Get();
  Text moved = std::move(text);
  EXPECT_EQ(&moved.Get(), made);
  EXPECT_EQ(text.Get(), "");  // NOLINT(bugprone-use-after-move): a new value
  text.Change() = "b";
  EXPECT_EQ(moved.Get(), "a");
  text = std::move(moved);
  EXPECT_EQ(&text.Get(), made);
}

TEST(OnDemand, KeepsItsValueWhenMovedToItself) {
  Text text = TextOf("a");
  Text& same = text;
  text = std::move(same);
  EXPECT_EQ(text.Get(), "a");
}

TEST(OnDemand, IsComparedByItsValueWhetherMadeOrNot) {
  Text made;
  (void)made.Change();
  EXPECT_TRUE(made == Text());
  EXPECT_TRUE(Text() == made);
  EXPECT_TRUE(Text() == Text());
  EXPECT_TRUE(TextOf("a") == TextOf("a"));
  EXPECT_TRUE(TextOf("a") != TextOf("b"));
  EXPECT_TRUE(TextOf("a") != Text());
}

TEST(OnDemand, IsLookedIntoByManyThreadsAtATime) {
  struct Slow {
    Slow() { ++Made(); }
    static std::atomic<int>& Made() {
      static std::atomic<int> made{0};
      return made;
    }
    int value = 7;
  };
  const OnDemand<Slow> slow;
  std::atomic<int> sum{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) threads.emplace_back([&] { sum += slow.Get().value; });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(sum, 56);
  EXPECT_EQ(Slow::Made(), 1) << "the shared one, once";
}

TEST(OnDemand, LeavesTheSetOfAnUntouchedAlignmentUnmade) {
  const VornAlignment one;
  VornAlignment other;
  EXPECT_EQ(&one.GetXSections(), &std::as_const(other).GetXSections());
  VornXSections sections;
  sections.SetRefAlign("a");
  other.SetXSections(sections);
  EXPECT_EQ(std::as_const(other).GetXSections().GetRefAlign(), "a");
  EXPECT_EQ(one.GetXSections().GetRefAlign(), "");
  other.SetXSections(one.GetXSections());
  EXPECT_EQ(std::as_const(other).GetXSections().GetRefAlign(), "");
  other.SetXSections(std::as_const(other).GetXSections());
  EXPECT_EQ(std::as_const(other).GetXSections().GetRefAlign(), "");
}

}  // namespace
