#pragma once

#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

#include <utility>

namespace host_test {

/// How much of the processor this process has taken, in seconds.
inline double ProcessorClock() {
#ifdef _WIN32
  // The clock of the C library goes on there while the process waits.
  FILETIME ignored{}, kernel{}, user{};
  GetProcessTimes(GetCurrentProcess(), &ignored, &ignored, &kernel, &user);
  const auto ticks = [](const FILETIME& time) { return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime; };
  return (ticks(kernel) + ticks(user)) * 1e-7;
#else
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#endif
}

/// How much of the processor an action takes, in seconds: whatever else runs on the machine does not count.
template <typename Action>
double ProcessorSeconds(Action&& action) {
  const double start = ProcessorClock();
  std::forward<Action>(action)();
  return ProcessorClock() - start;
}

}  // namespace host_test
