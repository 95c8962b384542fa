#pragma once

#include "host/containers/KelContainer.h"

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

/// A container that finds by hash; its order is the order of adding.
///
/// Adding, finding and removing cost O(1) plus the number of elements with the same hash. A subclass that
/// overrides the comparisons overrides the hashes with them: what compares equal must have one hash.
class KEL_API KelHashtable : public KelContainer {
public:
    class Iterator;

    KelHashtable() = default;
    /// Copies the elements in their order. Both tables must hash and compare alike.
    KelHashtable(const KelHashtable& other);
    KelHashtable& operator=(const KelHashtable& other);
    ~KelHashtable() override;

    void empty() override;
    KelContainer::Iterator* newIterator(bool fromLast) const override;
    void deleteIterator(KelContainer::Iterator* iterator) const override;
    bool add(const void* element, bool allowDuplicates, KelContainer::Iterator* iterator) override;
    bool contains(const void* element, KelContainer::Iterator* iterator) const override;
    const void* findFirst(const void* key, KelContainer::Iterator* iterator) const override;
    bool remove(KelContainer::Iterator* iterator) override;

    /// The hash of an element, and of a key. By default that of the address.
    virtual std::size_t hashObject(const void* element) const;
    virtual std::size_t hashKey(const void* key) const;

private:
    using Elements = std::list<const void*>;
    using Place = Elements::const_iterator;

    /// The first place with that hash whose element `matches`, or the end of the elements.
    template <typename Matches>
    Place findPlace(std::size_t hash, Matches matches) const;
    void append(const void* element, std::size_t hash);
    Iterator* own(KelContainer::Iterator* iterator) const;

    Elements elements_;
    std::unordered_map<std::size_t, std::vector<Place>> placesByHash_; // each in the order of adding
};

/// A position in a hash table. Adding elements, and removing others than the one stood at, leave it in place.
/// Copying and assigning copy the position, the container included.
class KEL_API KelHashtable::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element when `fromLast` is set, else at the first; nowhere when there is none.
    Iterator(const KelHashtable& table, bool fromLast);
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
    /// These two walk the elements in between.
    bool findNext(const void* key) override;
    bool findPrevious(const void* key) override;

    /// Goes to this very element; false, and nowhere, when the table does not hold it.
    bool moveTo(const void* element);
    /// The same position in the same container; all positions of a container that are nowhere are the same.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    friend class KelHashtable;

    const KelHashtable* table_;
    Place place_; // the end of the elements when nowhere
};
