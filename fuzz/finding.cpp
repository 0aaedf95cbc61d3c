#include <cstdio>
#include <cstdlib>

#include "fuzz/target.h"

namespace vorn_fuzz {

void Finding(const std::string& where, const std::string& what) {
  std::fprintf(stderr, "%s: %s\n", where.c_str(), what.c_str());
  std::abort();
}

}  // namespace vorn_fuzz
