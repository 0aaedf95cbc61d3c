#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

// The global allocation, which is replaced to fail where a test wants it to: therefore an executable of its own.

namespace allocation_test {

// The counts are behind functions of another translation unit: compilers take it that allocating changes no variable,
// and would go on with the counts from before it.

/// Says how many allocations succeed before one fails; none fails while negative.
void SetSucceeding(std::ptrdiff_t count) noexcept;
/// How many are still to succeed; negative once one has failed.
[[nodiscard]] std::ptrdiff_t Succeeding() noexcept;
/// How many allocations there were.
[[nodiscard]] std::size_t Allocations() noexcept;

/// How often something allocates.
template <typename Action>
std::size_t AllocationsOf(Action action) {
  const std::size_t before = Allocations();
  action();
  return Allocations() - before;
}

/// Does something while its first allocations succeed and the next one fails; later ones succeed again.
template <typename Action>
void AllowAllocations(std::ptrdiff_t succeeding, Action action) {
  struct Limit {
    explicit Limit(std::ptrdiff_t count) { SetSucceeding(count); }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { SetSucceeding(-1); }
  };
  const Limit limit(succeeding);
  action();
}

/// Does something again and again, each time with a later allocation failing, until it is done without a failure.
/// `prepare` is called before, and `check` after every failure.
/// @tparam Failure what the failure shows as
template <typename Failure = std::bad_alloc, typename Prepare, typename Action, typename Check>
void FailEachAllocation(Prepare prepare, Action action, Check check) {
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    prepare();
    bool reached = true;
    try {
      AllowAllocations(succeeding, [&] {
        action();
        reached = Succeeding() < 0;
      });
      ASSERT_FALSE(reached) << "a failure was swallowed";
      ASSERT_GT(succeeding, 0) << "nothing was allocated";
      return;
    } catch (const Failure&) {
      check();
      if (testing::Test::HasFailure()) return;
    }
  }
}

}  // namespace allocation_test
