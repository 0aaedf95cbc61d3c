#include "fuzz/memory_meter.h"

#include <algorithm>
#include <cstdlib>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VORN_FUZZ_HAS_HOOKS
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define VORN_FUZZ_HAS_HOOKS
#endif

#ifdef VORN_FUZZ_HAS_HOOKS
#include <sanitizer/allocator_interface.h>
#else
#include <malloc.h>

#include <new>
#endif

namespace {

std::size_t g_taken = 0;
std::size_t g_peak = 0;

void Take(std::size_t size) {
  g_taken += size;
  g_peak = std::max(g_peak, g_taken);
}

}  // namespace

#ifdef VORN_FUZZ_HAS_HOOKS

// The sanitizer keeps its own new and delete, which see more mistakes, and tells what they do.

namespace {

void OnMalloc(const volatile void*, std::size_t size) { Take(size); }
void OnFree(const volatile void* memory) { g_taken -= __sanitizer_get_allocated_size(memory); }

const int g_installed = __sanitizer_install_malloc_and_free_hooks(OnMalloc, OnFree);

}  // namespace

#else

// The whole program's: the other forms of new and delete come here.

void* operator new(std::size_t size) {
  void* const memory = std::malloc(size > 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  Take(malloc_usable_size(memory));
  return memory;
}

void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  g_taken -= malloc_usable_size(memory);
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

#endif

namespace vorn_fuzz {

MemoryMeter::MemoryMeter() : m_before(g_taken) { g_peak = g_taken; }

std::size_t MemoryMeter::Peak() const { return g_peak - m_before; }

}  // namespace vorn_fuzz
