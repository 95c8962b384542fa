#pragma once

#include "host/containers/KelContainer.h"

#include <cstddef>
#include <list>
#include <unordered_map>
#include <vector>

/// A hash table that keeps the order of adding. KelContainer.h has the rules for ownership, errors and threads.
///
/// A subclass that overrides the comparisons also overrides the hashes: elements and keys that compare equal have equal
/// hashes, which do not change while an element is held. Adding, searching and removing cost O(1) plus the number of
/// elements with the same hash.
class KEL_API KelHashtable : public KelContainer {
public:
    class Iterator;

    KelHashtable() = default;
    /// Copies the pointers in their order. Precondition: both tables hash and compare alike.
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

    /// The hash of an element, and of a key; by default, of the address.
    virtual std::size_t hashObject(const void* element) const;
    virtual std::size_t hashKey(const void* key) const;

private:
    using Elements = std::list<const void*>;
    using Place = Elements::const_iterator;

    /// The first place with that hash whose element `matches`, or the end.
    template <typename Matches>
    Place findPlace(std::size_t hash, Matches matches) const;
    void append(const void* element, std::size_t hash);
    Iterator* own(KelContainer::Iterator* iterator) const;

    Elements elements_;
    std::unordered_map<std::size_t, std::vector<Place>> placesByHash_; // each in the order of adding
};

/// A position in a hash table. Adding elements and removing other elements leave it where it is. A copy has the same
/// position in the same table.
class KEL_API KelHashtable::Iterator final : public KelContainer::Iterator {
public:
    /// Starts at the last element or at the first; at none in an empty table.
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
    /// These two search linearly, as does `findLast`.
    bool findNext(const void* key) override;
    bool findPrevious(const void* key) override;

    /// Moves to this element (not one that compares equal). False when it is not held; the iterator then is at none.
    bool moveTo(const void* element);
    /// Whether both are at the same position of the same table; two that are at no element are equal.
    bool operator==(const Iterator& other) const;
    bool operator!=(const Iterator& other) const;

private:
    friend class KelHashtable;

    const KelHashtable* table_;
    Place place_; // the end of the elements: at none
};
