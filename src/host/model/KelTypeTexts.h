#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <array>
#include <memory>

/// The texts about a type that no import sets. While all of them are empty they take one word in the type, instead of
/// one each.
///
/// Copying copies the texts, and may throw `std::bad_alloc`; equal are those with the same texts. Threads as for
/// `KelString`.
class KEL_API KelTypeTexts {
public:
    struct Texts {
        KelString initialValue;
        KelString lowerBound;
        KelString upperBound;
        KelString nativeDataType;
        KelString userDataType;
        KelString nativeLogicalDataType;

        bool operator==(const Texts& other) const = default;
        /// Each of them, for code that changes all alike.
        [[nodiscard]] std::array<KelString*, 6> all() noexcept {
            return {&initialValue, &lowerBound, &upperBound, &nativeDataType, &userDataType, &nativeLogicalDataType};
        }
    };

    KelTypeTexts() = default;
    KelTypeTexts(const KelTypeTexts& other) { *this = other; }
    KelTypeTexts& operator=(const KelTypeTexts& other);
    ~KelTypeTexts() = default;

    bool operator==(const KelTypeTexts& other) const { return read() == other.read(); }

    /// The texts, to be read; valid until they are next copied to or destroyed.
    [[nodiscard]] const Texts& read() const noexcept { return texts_ != nullptr ? *texts_ : none(); }
    /// The texts, to be set. May throw `std::bad_alloc`.
    [[nodiscard]] Texts& change();
    /// The texts if any has been set, or null.
    [[nodiscard]] Texts* changed() noexcept { return texts_.get(); }

private:
    static const Texts& none() noexcept;

    std::unique_ptr<Texts> texts_;
};
