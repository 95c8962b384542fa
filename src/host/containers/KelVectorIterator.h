#pragma once

#include "host/containers/KelVector.h"

/// A position in a vector. Copying and assigning copy the position, the container included.
class KEL_API KelVector::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element when `fromLast` is set, else at the first; nowhere when there is none.
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

    /// Goes to the element at `index`; false, and nowhere, when there is none.
    bool moveTo(int index);
    /// The index stood at, or -1 when nowhere.
    [[nodiscard]] int getIndex() const;
    /// The same position in the same container; all positions of a container that are nowhere are the same.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    bool findForward(const void* key, int from);
    bool findBackward(const void* key, int from);

    const KelVector* vector_;
    int index_ = -1;
};
