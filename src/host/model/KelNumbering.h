#pragma once

#include "host/KelApi.h"

#include <cstdint>

class KelObject;

/// Numbers given to objects of models without changing the models, in memory that does not grow with them: each
/// object has room for one number, and for whose it is.
///
/// Good for as long as no later numbering gives the same objects numbers of its own. Nothing is undone at the end:
/// a number means nothing to any other numbering.
class KEL_API KelNumbering {
public:
    KelNumbering();
    KelNumbering(const KelNumbering&) = delete;
    KelNumbering& operator=(const KelNumbering&) = delete;
    ~KelNumbering() = default;

    /// Gives the object a number, in place of an earlier one.
    void give(const KelObject& object, std::uint32_t number) noexcept;
    /// The number given to the object, or 0.
    [[nodiscard]] std::uint32_t numberOf(const KelObject& object) const noexcept;

private:
    std::uint32_t stamp_;
};
