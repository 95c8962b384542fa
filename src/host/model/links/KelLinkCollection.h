#pragma once

#include "host/containers/KelArrayInterface.h"
#include "host/model/KelObject.h"

#include <memory>

/// How the "many" end of a relation orders the objects at the other end.
enum class KelOrder { byAdding, byName };

/// The objects at the "many" end of a relation, in the relation's order.
///
/// Owns nothing. Every operation costs at most O(log n), but those that build an index the first time it is
/// needed. Taking objects out, walking by index and asking whether an object is held never throw: without room for
/// an index they walk. Putting objects in may throw `std::bad_alloc` and then changes nothing.
/// As an array it is for reading: it changes only through the relation that keeps both ends in step, so
/// `addElement` and `removeElement` always refuse.
class KEL_API KelLinkCollection : public KelArrayInterface {
public:
    /// The collection to use for `count` objects in the given order.
    [[nodiscard]] static std::unique_ptr<KelLinkCollection> make(KelOrder order, int count);

    /// Adds an object that is not held yet.
    virtual void insert(KelObject& object) = 0;
    /// Takes out an object that is held.
    virtual void erase(KelObject& object) noexcept = 0;
    [[nodiscard]] virtual KelObject* at(int index) const = 0;
    [[nodiscard]] virtual bool holds(const KelObject& object) const = 0;
    /// The index of the first object named `name` at or after the index `from`, or -1.
    [[nodiscard]] virtual int indexOfName(const KelString& name, int from) const = 0;
    /// The first object named `name`, or null.
    [[nodiscard]] virtual KelObject* firstNamed(const KelString& name) const { return at(indexOfName(name, 0)); }
    /// Frame a change of name of an object that is held. Neither allocates.
    virtual void beforeRename(KelObject& object) noexcept = 0;
    virtual void afterRename(KelObject& object) noexcept = 0;
    /// Whether the collection is as large as its kind should grow; `make` then gives its successor.
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
