#pragma once

#include "host/KelApi.h"

/// What every container has: how many elements it holds.
///
/// Containers hold untyped element pointers and own nothing: neither adding nor removing touches what a pointer
/// points to, and an element must outlive its stay. No container may be changed while another thread uses it.
class KEL_API _KelContainer {
public:
    _KelContainer() = default;
    _KelContainer(const _KelContainer&) = default;
    _KelContainer& operator=(const _KelContainer&) = default;
    virtual ~_KelContainer();

    /// The number of elements held.
    [[nodiscard]] int getCount() const noexcept { return count_; }

protected:
    int count_ = 0;
};

/// A container that is walked with iterators and searched by key.
///
/// Equality of elements, and of an element and a key, is what the two comparisons say; a container whose
/// elements are looked up by something other than their address overrides them.
///
/// An iterator handed to an operation must be one over this container; another container's is left as it was.
class KEL_API KelContainer : public virtual _KelContainer {
public:
    class Iterator;

    KelContainer() = default;
    KelContainer(const KelContainer&) = default;
    KelContainer& operator=(const KelContainer&) = default;
    ~KelContainer() override;

    /// Removes every element.
    virtual void empty() = 0;
    /// A new iterator over this container; `deleteIterator` destroys it. `fromLast` chooses the end at which it
    /// starts (false: the first element). It must not outlive the container.
    virtual Iterator* newIterator(bool fromLast) const = 0;
    virtual void deleteIterator(Iterator* iterator) const = 0;
    /// Adds an element; false when it was refused (null, or a duplicate where `allowDuplicates` is false and the
    /// container already holds an element that compares equal). `iterator`, when given, is left at the element
    /// added or, on a refusal for a duplicate, at the one that was there.
    virtual bool add(const void* element, bool allowDuplicates, Iterator* iterator) = 0;
    /// Whether this very pointer is held. `iterator`, when given, is left at it when it is.
    virtual bool contains(const void* element, Iterator* iterator) const = 0;
    /// The first element, in the container's order, that compares equal to `key`, or null. `iterator`, when
    /// given, is left at it when there is one.
    virtual const void* findFirst(const void* key, Iterator* iterator) const = 0;
    /// Removes the element `iterator` stands at and moves the iterator to the one that followed; false when the
    /// iterator stands nowhere or belongs to another container.
    virtual bool remove(Iterator* iterator) = 0;
    /// Negative, 0 or positive as the first element sorts before, with or after the second. By default elements
    /// are ordered by address.
    virtual int compare2Object(const void* left, const void* right) const;
    /// The same for an element and a key. By default the key is an element's address.
    virtual int compare2Key(const void* element, const void* key) const;
};

/// A position in a container: at one of its elements, or nowhere (past either end).
///
/// Changing the container invalidates every iterator that stands at an element that is removed.
class KEL_API KelContainer::Iterator {
public:
    Iterator() = default;
    Iterator(const Iterator&) = default;
    Iterator& operator=(const Iterator&) = default;
    virtual ~Iterator();

    [[nodiscard]] virtual const KelContainer* getContainer() const = 0;
    /// The element stood at, or null when nowhere. `operator*` and `get` are the same.
    virtual const void* operator*() const = 0;
    [[nodiscard]] virtual const void* get() const = 0;
    /// Each of these says whether the iterator then stands at an element.
    virtual bool moveToFirst() = 0;
    virtual bool moveToLast() = 0;
    /// Moves by `steps` elements (1 or more) towards the last or the first. An iterator that stands nowhere, or
    /// that has no such element to go to, then stands nowhere.
    virtual bool next(int steps) = 0;
    virtual bool previous(int steps) = 0;
    /// Move to the first, last, next or previous element that compares equal to `key`; when there is none the
    /// iterator stands nowhere.
    virtual bool findFirst(const void* key) = 0;
    virtual bool findLast(const void* key) = 0;
    virtual bool findNext(const void* key) = 0;
    virtual bool findPrevious(const void* key) = 0;
};
