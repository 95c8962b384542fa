#pragma once

#include "host/KelApi.h"

#include <cstdint>

class KelMany;

/// The rare ends of the classes, each with its number among those of its class. All classes have the first one.
enum class KelRareEnd : std::int8_t {
    none = -1,
    notes = 0,
    // of attributes
    keys = 1,
    mapsAsSource = 2,
    mapsAsDestination = 3,
    // of types
    arguments = 1,
    operations = 2,
    aliasTypes = 3,
    derivedTypes = 4,
    typeValues = 5,
};

/// The ends of an object that hold any number of objects, but nearly always none.
///
/// Together they take one word in the object. All of them are made when the first one gets an object; they then stay
/// where they are as long as this lives. Owns the ends. Only `KelRelation` makes and changes them.
class KEL_API KelRareEnds {
public:
    KelRareEnds() = default;
    KelRareEnds(const KelRareEnds&) = delete;
    KelRareEnds& operator=(const KelRareEnds&) = delete;
    ~KelRareEnds() {
        if (ends_ != nullptr) {
            release();
        }
    }

    /// The end of that number. As long as none is made, this is an empty end that all objects share.
    [[nodiscard]] const KelMany& operator[](KelRareEnd number) const noexcept; // KelMany.h

private:
    friend struct KelRelation;

    static const KelMany nothing;

    /// Makes `count` ends unless they are made. May throw `std::bad_alloc`.
    void make(int count);
    [[nodiscard]] KelMany& made(KelRareEnd number) const noexcept;
    void release() noexcept;

    KelMany* ends_ = nullptr;
};
