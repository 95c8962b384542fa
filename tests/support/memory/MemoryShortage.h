#pragma once

/// Memory that runs out at a chosen allocation of this thread, for as long as the object lives; one at a time in a
/// thread. Counted are `operator new`, `malloc`, `calloc` and `realloc`, whoever calls them: the code under test, the
/// language's library, the C library or ICU. Belongs to programs linked with `memory_shortage`.
class MemoryShortage {
public:
    enum class Extent {
        once,    // one allocation fails
        lasting, // all allocations from then on fail
    };

    /// The allocation that fails is the one after `allowed` others.
    MemoryShortage(long allowed, Extent extent) noexcept;
    explicit MemoryShortage(long allowed) noexcept : MemoryShortage(allowed, Extent::lasting) {}
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    ~MemoryShortage();

    /// Whether an allocation has failed.
    [[nodiscard]] static bool hasStruck() noexcept;
};

/// How many allocations this thread has asked for so far.
[[nodiscard]] long allocationCount() noexcept;

/// How many allocations of this process have not been freed so far.
[[nodiscard]] long liveAllocations() noexcept;
