#pragma once

#include <ctime>
#include <utility>

namespace host_test {

/// How much of the processor an action takes, in seconds: whatever else runs on the machine does not count.
template <typename Action>
double ProcessorSeconds(Action&& action) {
  const std::clock_t start = std::clock();
  std::forward<Action>(action)();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

}  // namespace host_test
