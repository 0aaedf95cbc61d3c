#pragma once

#include <utility>

namespace host_test {

/// How much of the processor this process has taken, in seconds.
double ProcessorClock();

/// What that clock may tell less than there was, in seconds.
#ifdef _WIN32
inline constexpr double kProcessorTick = 1.0 / 64;
#else
inline constexpr double kProcessorTick = 0.0;
#endif

/// How much of the processor an action takes, in seconds: whatever else runs on the machine does not count.
template <typename Action>
double ProcessorSeconds(Action&& action) {
  const double start = ProcessorClock();
  std::forward<Action>(action)();
  return ProcessorClock() - start;
}

}  // namespace host_test
