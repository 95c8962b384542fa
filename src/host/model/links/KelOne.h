#pragma once

#include <cstdint>

class KelObject;

/// The end of a relation that holds at most one object. Only `KelRelation` changes it. Takes one word in the object and
/// does not own the other one; nothing here throws.
class KelOne {
public:
    /// The object at the other end, or null.
    [[nodiscard]] KelObject* get() const noexcept { return (word_ & doomedBit) == 0 ? pointer() : nullptr; }

private:
    friend struct KelRelation;

    // The word: null or a KelObject*. With the lowest bit set it is not a link, but belongs to a doomed object and
    // points to the next one.
    static constexpr std::uintptr_t doomedBit = 1;

    [[nodiscard]] KelObject* pointer() const noexcept { return reinterpret_cast<KelObject*>(word_ & ~doomedBit); }
    void hold(KelObject* object) noexcept { word_ = reinterpret_cast<std::uintptr_t>(object); }
    void holdNextDoomed(KelObject* next) noexcept { word_ = reinterpret_cast<std::uintptr_t>(next) | doomedBit; }

    std::uintptr_t word_ = 0;
};
