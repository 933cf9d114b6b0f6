#include "tests/allocations.h"

#include <cstdlib>
#include <new>

namespace {
tests::Allocations made;
}

tests::Allocations tests::allocations() noexcept {
  return made;
}

#ifdef CXOL_SANITIZED

// The sanitizer's own operators stay, which check what others could not; it tells what they make.
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*onMalloc)(const volatile void* memory, std::size_t size),
    void (*onFree)(const volatile void* memory));

namespace {

void count(const volatile void*, std::size_t size) {
  ++made.count;
  made.bytes += size;
}

[[maybe_unused]] const int installed =
    __sanitizer_install_malloc_and_free_hooks(count, [](const volatile void*) {});

}  // namespace

#else

namespace {

/// Memory or a null pointer.
void* counted(std::size_t size, std::size_t alignment) noexcept {
  ++made.count;
  made.bytes += size;
  // The size has to be a multiple of the alignment.
  const std::size_t whole = size == 0 ? alignment : (size + alignment - 1) / alignment * alignment;
  return alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__ ? std::malloc(whole)
                                                       : std::aligned_alloc(alignment, whole);
}

void* countedOrThrow(std::size_t size, std::size_t alignment) {
  if (void* memory = counted(size, alignment)) return memory;
  throw std::bad_alloc();
}

constexpr std::size_t Usual = 1;
constexpr std::size_t number(std::align_val_t alignment) {
  return static_cast<std::size_t>(alignment);
}

}  // namespace

// Every form of new and delete: a form that is left out would be the library's, and what one
// library makes the other must not free.
void* operator new(std::size_t size) {
  return countedOrThrow(size, Usual);
}
void* operator new[](std::size_t size) {
  return countedOrThrow(size, Usual);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return counted(size, Usual);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return counted(size, Usual);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return countedOrThrow(size, number(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return countedOrThrow(size, number(alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return counted(size, number(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return counted(size, number(alignment));
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
  std::free(memory);
}

#endif
