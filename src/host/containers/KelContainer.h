#pragma once

#include "host/KelApi.h"

/// The number of elements: the base that all container interfaces share.
///
/// The following holds for all containers. They hold untyped pointers to elements and do not own the elements: adding
/// and removing leave the elements alone, and an element must live as long as it is held. Adding and copying may throw
/// `std::bad_alloc`, and nothing has changed then. Any number of threads may read a container while none changes it
/// (collections of the repository are an exception, see KelObject.h).
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

/// A container with iterators and a search by key.
///
/// `compare2Object` and `compare2Key` define the equality of two elements, and of an element and a key. A subclass
/// whose elements are searched by anything but their address overrides them.
///
/// The parameter `iterator` of an operation is optional (null). An iterator of another container is left unchanged.
class KEL_API KelContainer : public virtual _KelContainer {
public:
    class Iterator;

    KelContainer() = default;
    KelContainer(const KelContainer&) = default;
    KelContainer& operator=(const KelContainer&) = default;
    ~KelContainer() override;

    /// Removes every element.
    virtual void empty() = 0;
    /// A new iterator, at the last element or at the first. The caller owns it and passes it to `deleteIterator` of the
    /// same container, which must still exist.
    virtual Iterator* newIterator(bool fromLast) const = 0;
    virtual void deleteIterator(Iterator* iterator) const = 0;
    /// Adds an element. False when it is refused: null, or a duplicate (it compares equal to an element held) while
    /// `allowDuplicates` is false. `iterator` then is at the new element or, for a duplicate, at the one held.
    virtual bool add(const void* element, bool allowDuplicates, Iterator* iterator) = 0;
    /// Whether this pointer is held (not one that compares equal). If so, `iterator` then is at it.
    virtual bool contains(const void* element, Iterator* iterator) const = 0;
    /// The first element, in the container's order, that compares equal to `key`, or null. If there is one, `iterator`
    /// then is at it.
    virtual const void* findFirst(const void* key, Iterator* iterator) const = 0;
    /// Removes the element at `iterator` and moves the iterator to the next one. False when the iterator is at no
    /// element or belongs to another container.
    virtual bool remove(Iterator* iterator) = 0;
    /// Negative, 0 or positive when the first element sorts before, with or after the second; by default, by address.
    virtual int compare2Object(const void* left, const void* right) const;
    /// The same for an element and a key; by default the key is an element's address.
    virtual int compare2Key(const void* element, const void* key) const;
};

/// A position in a container: at one of its elements, or at none.
///
/// It must not be used after its container is destroyed. Removing an element by other means than this iterator
/// invalidates it when it is at that element. No function throws. A step costs O(1) unless the container says
/// otherwise.
class KEL_API KelContainer::Iterator {
public:
    Iterator() = default;
    Iterator(const Iterator&) = default;
    Iterator& operator=(const Iterator&) = default;
    virtual ~Iterator();

    /// The container that the iterator belongs to.
    [[nodiscard]] virtual const KelContainer* getContainer() const = 0;
    /// The element, or null when the iterator is at none. `operator*` and `get` are the same.
    virtual const void* operator*() const = 0;
    [[nodiscard]] virtual const void* get() const = 0;
    /// Each of the following returns whether the iterator then is at an element.
    virtual bool moveToFirst() = 0;
    virtual bool moveToLast() = 0;
    /// Moves by `steps` (1 or more) elements towards the last or the first. An iterator that is at no element, or that
    /// passes either end, then is at none.
    virtual bool next(int steps) = 0;
    virtual bool previous(int steps) = 0;
    /// Move to the first, last, next or previous element that compares equal to `key`. When there is none, the iterator
    /// then is at no element.
    virtual bool findFirst(const void* key) = 0;
    virtual bool findLast(const void* key) = 0;
    virtual bool findNext(const void* key) = 0;
    virtual bool findPrevious(const void* key) = 0;
};
