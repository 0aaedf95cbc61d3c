#include "tests/host/processor_time.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

namespace host_test {

#ifdef _WIN32
// The clock of the C library goes on there while the process waits.
double ProcessorClock() {
  FILETIME created{};
  FILETIME exited{};
  FILETIME kernel{};
  FILETIME user{};
  GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
  const auto ticks = [](const FILETIME& time) { return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime; };
  return (ticks(kernel) + ticks(user)) * 1e-7;
}
#else
double ProcessorClock() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
#endif

}  // namespace host_test
