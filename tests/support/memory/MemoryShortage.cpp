// Stands in front of the process's allocator. What is allocated comes from the real one and is freed there.

#include "support/memory/MemoryShortage.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

#ifdef BEFORE_SANITIZER
#define REAL_ALLOCATOR(name) __interceptor_##name
#else
#define REAL_ALLOCATOR(name) __libc_##name
#endif

extern "C" {
void* REAL_ALLOCATOR(malloc)(std::size_t size);
void* REAL_ALLOCATOR(calloc)(std::size_t count, std::size_t size);
void* REAL_ALLOCATOR(realloc)(void* memory, std::size_t size);
void REAL_ALLOCATOR(free)(void* memory);
}

namespace {

constexpr long plenty = std::numeric_limits<long>::max();

thread_local long asked = 0;
thread_local long failsFrom = plenty; // the number of the first allocation that fails
thread_local long failsBefore = plenty;

std::atomic<long> live = 0;

void* counted(void* memory) noexcept {
    live.fetch_add(static_cast<long>(memory != nullptr), std::memory_order_relaxed);
    return memory;
}

bool isDenied() noexcept {
    const long number = asked++;
    const bool denied = number >= failsFrom && number < failsBefore;
    if (denied) {
        errno = ENOMEM;
    }
    return denied;
}

} // namespace

MemoryShortage::MemoryShortage(long allowed, Extent extent) noexcept {
    failsFrom = asked + allowed;
    failsBefore = extent == Extent::once ? failsFrom + 1 : plenty;
}

MemoryShortage::~MemoryShortage() {
    failsFrom = plenty;
}

bool MemoryShortage::hasStruck() noexcept {
    return asked > failsFrom;
}

long allocationCount() noexcept {
    return asked;
}

long liveAllocations() noexcept {
    return live.load();
}

extern "C" void* malloc(std::size_t size) noexcept {
    return isDenied() ? nullptr : counted(REAL_ALLOCATOR(malloc)(size));
}

extern "C" void* calloc(std::size_t count, std::size_t size) noexcept {
    return isDenied() ? nullptr : counted(REAL_ALLOCATOR(calloc)(count, size));
}

extern "C" void* realloc(void* memory, std::size_t size) noexcept {
    if (isDenied()) {
        return nullptr;
    }
    void* moved = REAL_ALLOCATOR(realloc)(memory, size);
    return memory == nullptr ? counted(moved) : moved;
}

extern "C" void free(void* memory) noexcept {
    live.fetch_sub(static_cast<long>(memory != nullptr), std::memory_order_relaxed);
    REAL_ALLOCATOR(free)(memory);
}

// The sanitizers' own `operator new` would go past `malloc`. Not inlined, so that the compiler does not see a malloc
// where it expects a new.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* memory = std::malloc(size > 0 ? size : 1);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return std::malloc(size > 0 ? size : 1);
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    std::free(memory);
}
