#pragma once

#include "host/containers/KelArrayInterface.h"
#include "host/model/KelObject.h"

#include <memory>

/// The order of the objects at a "many" end of a relation.
enum class KelOrder { byAdding, byName };

/// The objects at the "many" end of a relation, in the relation's order.
///
/// Does not own the objects. As an array it is read-only: a link has two ends, which only `KelRelation` changes
/// together, so `addElement` and `removeElement` always return false.
///
/// Adding may throw `std::bad_alloc`, and nothing has changed then. Removing, access by index and `holds` do not throw:
/// without memory for an index they search linearly. Other searches may throw. Reading may build an index; thus one
/// thread at a time uses a collection, also for reading. Each operation costs at most O(log n), apart from the first
/// use of an index, which costs O(n log n).
class KEL_API KelLinkCollection : public KelArrayInterface {
public:
    /// An empty collection of the kind that suits `count` objects in the given order.
    [[nodiscard]] static std::unique_ptr<KelLinkCollection> make(KelOrder order, int count);

    /// Adds an object. Precondition: it is not held yet.
    virtual void insert(KelObject& object) = 0;
    /// Removes an object. Precondition: it is held.
    virtual void erase(KelObject& object) noexcept = 0;
    /// The object at `index`, or null when there is none.
    [[nodiscard]] virtual KelObject* at(int index) const = 0;
    [[nodiscard]] virtual bool holds(const KelObject& object) const = 0;
    /// The index of the first object named `name` at or after the index `from`, or -1.
    [[nodiscard]] virtual int indexOfName(const KelString& name, int from) const = 0;
    /// The first object named `name`, or null.
    [[nodiscard]] virtual KelObject* firstNamed(const KelString& name) const { return at(indexOfName(name, 0)); }
    /// Called before and after a change of the name of an object that is held. Neither allocates.
    virtual void beforeRename(KelObject& object) noexcept = 0;
    virtual void afterRename(KelObject& object) noexcept = 0;
    /// Called by `KelRenaming` for each object that it is about to rename, in the order of renaming, and then once when
    /// all are renamed (or none is), if the first call has returned true. Meanwhile `beforeRename` and `afterRename`
    /// are called as for any other change of a name, and nothing else. May throw `std::bad_alloc`.
    virtual bool expectRename(KelObject& /*object*/) { return false; }
    virtual void afterRenames(bool /*areRenamed*/) noexcept {}
    /// Whether the collection has reached the largest size of its kind; `make` then gives its successor.
    [[nodiscard]] virtual bool isFull() const noexcept = 0;

    bool addElement(const void* element, bool allowDuplicates) final;
    bool containsElement(const void* element) const final;
    const void* operator[](int index) const final;
    int findFirstElement(const void* element) const final;
    int findLastElement(const void* element) const final;
    int findNextElement(const void* element, int index) const final;
    int findPreviousElement(const void* element, int index) const final;
    bool removeElement(int index) final;

protected:
    [[nodiscard]] virtual int indexOf(const KelObject& object) const = 0;
};
