// Counts what the program takes from the heap, for paths that must take nothing. It replaces the program's
// own operators, so that one source of a program includes it.
#pragma once

#include <cstdlib>
#include <new>

namespace quillet {
// Of this thread only: other tests of the program may have left threads behind.
inline thread_local int allocations = 0;
}  // namespace quillet

// Never inlined: the compiler would see memory of one kind given back as another.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++quillet::allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
// Replaced with the others, so that what it gives is freed by the one that fits.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  ++quillet::allocations;
  return std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
  std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
