#pragma once

#include "host/KelApi.h"

#include <cstdint>

class KelObject;

/// Assigns numbers to objects, for code that walks a model and needs to recognise objects again.
///
/// Each object has room for one number and for the identity of the numbering that gave it, so nothing is allocated and
/// each call takes constant time. A numbering loses the number of an object to which a later numbering gives one; thus
/// only the latest numbering of a model is complete. Numbers do not change the model otherwise, and need no clean-up.
/// Numberings are told apart by a 29-bit count of all numberings in the process.
class KEL_API KelNumbering {
public:
    KelNumbering();
    KelNumbering(const KelNumbering&) = delete;
    KelNumbering& operator=(const KelNumbering&) = delete;
    ~KelNumbering() = default;

    /// Gives the object a number, replacing an earlier one.
    void give(const KelObject& object, std::uint32_t number) noexcept;
    /// The number that this numbering gave the object, or 0.
    [[nodiscard]] std::uint32_t numberOf(const KelObject& object) const noexcept;

private:
    std::uint32_t stamp_;
};
