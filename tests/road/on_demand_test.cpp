#include "vorn/road/on_demand.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace {

using Text = OnDemand<std::string>;

static_assert(sizeof(Text) == sizeof(void*));
static_assert(std::is_nothrow_move_constructible_v<Text> && std::is_nothrow_move_assignable_v<Text>);

TEST(OnDemand, IsAsANewValue) {
  const Text text;
  EXPECT_EQ(text.Get(), "");
  Text other;
  EXPECT_EQ(other.Get(), "");
}

TEST(OnDemand, KeepsWhatItIsChangedTo) {
  Text text;
  text.Get() = "a";
  text.Get() += "b";
  EXPECT_EQ(std::as_const(text).Get(), "ab");
  EXPECT_EQ(&std::as_const(text).Get(), &text.Get());
}

TEST(OnDemand, IsChangedAlone) {
  Text text;
  text.Get() = "a";
  const Text untouched;
  EXPECT_EQ(untouched.Get(), "");
}

TEST(OnDemand, IsCopiedWithItsValue) {
  Text text;
  text.Get() = "a";
  Text copy = text;
  copy.Get() = "b";
  EXPECT_EQ(text.Get(), "a");
  text = copy;
  copy.Get() = "c";
  EXPECT_EQ(text.Get(), "b");
  const Text& same = text;
  text = same;
  EXPECT_EQ(text.Get(), "b");
  text = Text();
  EXPECT_EQ(std::as_const(text).Get(), "");
}

TEST(OnDemand, IsANewValueAfterItWasMovedFrom) {
  Text text;
  text.Get() = "a";
  const std::string* const made = &text.Get();
  const Text moved = std::move(text);
  EXPECT_EQ(&moved.Get(), made);
  EXPECT_EQ(std::as_const(text).Get(), "");
}

}  // namespace
