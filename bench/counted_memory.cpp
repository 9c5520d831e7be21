#include "counted_memory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

std::size_t bench::held = 0;
std::size_t bench::peak = 0;

namespace {

// The bytes of each block as the system's allocator counts them.
void* allocate(std::size_t size) {
  void* const block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  bench::held += malloc_usable_size(block);
  bench::peak = std::max(bench::peak, bench::held);
  return block;
}

void release(void* block) {
  if (block == nullptr) return;
  bench::held -= malloc_usable_size(block);
  std::free(block);
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { release(block); }
