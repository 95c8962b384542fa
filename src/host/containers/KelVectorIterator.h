#pragma once

#include "host/containers/KelVector.h"

/// A position in a vector, kept as an index. A copy has the same position in the same vector. Searches cost O(n).
class KEL_API KelVector::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element or at the first; at none in an empty vector.
    Iterator(const KelVector& vector, bool fromLast);
    Iterator(const Iterator&) = default;
    Iterator& operator=(const Iterator&) = default;
    ~Iterator() override;

    [[nodiscard]] const KelContainer* getContainer() const override;
    const void* operator*() const override;
    [[nodiscard]] const void* get() const override;
    bool moveToFirst() override;
    bool moveToLast() override;
    bool next(int steps) override;
    bool previous(int steps) override;
    bool findFirst(const void* key) override;
    bool findLast(const void* key) override;
    bool findNext(const void* key) override;
    bool findPrevious(const void* key) override;

    /// Moves to the element at `index`. False when there is none; the iterator then is at none.
    bool moveTo(int index);
    /// The index, or -1 when the iterator is at no element.
    [[nodiscard]] int getIndex() const;
    /// Whether both are at the same position of the same vector; two that are at no element are equal.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    bool findForward(const void* key, int from);
    bool findBackward(const void* key, int from);

    const KelVector* vector_;
    int index_ = -1;
};
