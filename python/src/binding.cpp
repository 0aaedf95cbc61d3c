#include "python/src/binding.h"

namespace vorn_python {

std::recursive_mutex& LibraryTurn::Mutex() {
  static std::recursive_mutex mutex;
  return mutex;
}

}  // namespace vorn_python
