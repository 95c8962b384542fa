#pragma once

#include <cstdint>

class KelObject;

/// The end of a relation that holds one object at most. Changed by `KelRelation` alone.
class KelOne {
public:
    [[nodiscard]] KelObject* get() const noexcept { return (word_ & doomedBit) == 0 ? pointer() : nullptr; }

private:
    friend struct KelRelation;

    // The word: null or a KelObject*. In a doomed object the lowest bit is set, and the pointer is not a link but
    // the next doomed object.
    static constexpr std::uintptr_t doomedBit = 1;

    [[nodiscard]] KelObject* pointer() const noexcept { return reinterpret_cast<KelObject*>(word_ & ~doomedBit); }
    void hold(KelObject* object) noexcept { word_ = reinterpret_cast<std::uintptr_t>(object); }
    void holdNextDoomed(KelObject* next) noexcept { word_ = reinterpret_cast<std::uintptr_t>(next) | doomedBit; }

    std::uintptr_t word_ = 0;
};
