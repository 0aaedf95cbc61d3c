#include "tests/allocation_failure/failing_allocation.h"

#include <cstdlib>

namespace allocation_test {

namespace {

std::ptrdiff_t g_succeeding = -1;
std::size_t g_allocations = 0;

void* Allocate(std::size_t size) {
  if (g_succeeding >= 0 && g_succeeding-- == 0) throw std::bad_alloc();
  void* memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  ++g_allocations;
  return memory;
}

}  // namespace

void SetSucceeding(std::ptrdiff_t count) noexcept { g_succeeding = count; }
std::ptrdiff_t Succeeding() noexcept { return g_succeeding; }
std::size_t Allocations() noexcept { return g_allocations; }

}  // namespace allocation_test

void* operator new(std::size_t size) { return allocation_test::Allocate(size); }
void* operator new[](std::size_t size) { return allocation_test::Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return allocation_test::Allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
