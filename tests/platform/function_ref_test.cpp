#include "vorn/platform/function_ref.h"

#include <gtest/gtest.h>

namespace {

int Twice(FunctionRef<int(int)> callback) { return callback(1) + callback(2); }

TEST(FunctionRef, CallsWhatItRefersTo) {
  int calls = 0;
  EXPECT_EQ(Twice([&calls](int value) {
              ++calls;
              return 10 * value;
            }),
            30);
  EXPECT_EQ(calls, 2);
}

TEST(FunctionRef, CallsAConstObject) {
  const auto callback = [](int value) { return value; };
  EXPECT_EQ(Twice(callback), 3);
}

}  // namespace
