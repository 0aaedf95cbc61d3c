#pragma once

#include <cstddef>

namespace vorn_fuzz {

/// Measures the most memory that is taken at a time from its construction on, beyond what is taken already. It counts
/// what `new` gives; one thread, one meter at a time.
class MemoryMeter {
 public:
  MemoryMeter();
  [[nodiscard]] std::size_t Peak() const;

 private:
  std::size_t m_before;
};

}  // namespace vorn_fuzz
