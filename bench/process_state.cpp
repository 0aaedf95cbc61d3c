#include "bench/process_state.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <string_view>

#ifdef __linux__
#include <sys/resource.h>
#endif
#ifdef __GLIBC__
#include <gnu/libc-version.h>
#include <malloc.h>
#endif
#ifdef VORN_HAS_BINDING
#include "bench/competitors/binding_design.h"
#endif
#ifdef VORN_HAS_LIBXML2
#include <libxml/xmlversion.h>
#endif
#ifdef VORN_HAS_CEREAL
#include <cereal/version.hpp>
#endif

namespace {

/// A number of kibibytes in one of the system's files, in bytes; 0 when it is not there.
std::size_t SystemBytes(const char* path, std::string_view name) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(name)) return std::stoull(line.substr(name.size() + 1)) * 1024;
  }
  return 0;
}

}  // namespace

void ReturnFreedMemory() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

double ProcessorSeconds() {
#ifdef __linux__
  timespec own = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
  rusage children = {};
  getrusage(RUSAGE_CHILDREN, &children);
  return static_cast<double>(own.tv_sec + children.ru_utime.tv_sec + children.ru_stime.tv_sec) +
         static_cast<double>(own.tv_nsec) * 1e-9 +
         static_cast<double>(children.ru_utime.tv_usec + children.ru_stime.tv_usec) * 1e-6;
#else
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
#endif
}

MemoryUse CurrentMemoryUse() {
  MemoryUse use;
  use.peak = SystemBytes("/proc/self/status", "VmHWM");
  use.resident = SystemBytes("/proc/self/status", "VmRSS");
#ifdef __GLIBC__
  const struct mallinfo2 info = mallinfo2();
  use.allocated = info.uordblks + info.hblkhd;
#endif
  return use;
}

std::string OwnPath() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : path.string();
}

void PrintMachine() {
  constexpr double kGibibyte = 1024.0 * 1024.0 * 1024.0;
  std::printf("Memory: %.1f GiB\n", static_cast<double>(SystemBytes("/proc/meminfo", "MemTotal")) / kGibibyte);
#ifdef __VERSION__
  std::printf("Compiler: %s\n", __VERSION__);
#endif
  std::printf("Libraries: pugixml %d.%d", PUGIXML_VERSION / 1000, PUGIXML_VERSION % 1000 / 10);
#ifdef __GLIBC__
  std::printf(", glibc %s", gnu_get_libc_version());
#endif
#ifdef VORN_HAS_LIBXML2
  std::printf(", libxml2 %s", LIBXML_DOTTED_VERSION);
#endif
#ifdef VORN_HAS_BINDING
  std::printf(", %s", BindingVersion().c_str());
#endif
#ifdef VORN_HAS_CEREAL
  std::printf(", cereal %d.%d.%d", CEREAL_VERSION_MAJOR, CEREAL_VERSION_MINOR, CEREAL_VERSION_PATCH);
#endif
  std::printf("\n");
  std::fflush(stdout);
}
