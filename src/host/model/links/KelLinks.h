#pragma once

#include "host/model/links/KelMany.h"
#include "host/model/links/KelRareEnds.h"

/// A read-only view of the objects at a "many" end of a relation, with their type.
///
/// Owns nothing, and is as cheap to copy as a pointer. It is valid as long as the object that has the end, and always
/// shows the end's current contents. Access by index needs no memory and costs O(1) or O(log n); in name order, the
/// first access after additions may sort the collection. The first search in a large collection builds an index and may
/// throw `std::bad_alloc`. KelObject.h has the rules for threads.
template <class T>
class KelLinks {
public:
    class Iterator {
    public:
        Iterator(const KelMany& end, int index) : end_(&end), index_(index) {}
        T* operator*() const { return static_cast<T*>(end_->at(index_)); }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return index_ != other.index_; }

    private:
        const KelMany* end_;
        int index_;
    };

    explicit KelLinks(const KelMany& end) : end_(&end) {}
    /// A rare end, which may be made later.
    KelLinks(const KelRareEnds& ends, KelRareEnd number) : ends_(&ends), number_(number) {}

    [[nodiscard]] int count() const { return links().count(); }
    [[nodiscard]] bool isEmpty() const { return links().count() == 0; }
    /// The object at `index`, or null when there is none.
    T* operator[](int index) const { return static_cast<T*>(links().at(index)); }
    /// The first object, or null.
    [[nodiscard]] T* first() const { return (*this)[0]; }
    /// Whether the end holds this object.
    [[nodiscard]] bool holds(const T& object) const { return links().holds(object); }
    /// The index of the object, or -1.
    [[nodiscard]] int indexOf(const T& object) const { return links().indexOf(object); }
    /// The first object of that name at or after the index that `index` points to (0 when null), or null. `index`,
    /// unless null, receives the index of the object found.
    T* findNamed(const KelString& name, int* index = nullptr) const {
        if (index == nullptr) {
            return static_cast<T*>(links().firstNamed(name));
        }
        const int found = links().indexOfName(name, *index);
        *index = found >= 0 ? found : *index;
        return (*this)[found];
    }
    /// The same objects as an array, for `KelObject::_getn`; valid until the end changes next.
    [[nodiscard]] const KelArrayInterface& array() const { return links().array(); }

    /// For range-based loops. No object may be added or removed during such a loop.
    [[nodiscard]] Iterator begin() const { return Iterator(links(), 0); }
    [[nodiscard]] Iterator end() const { return Iterator(links(), links().count()); }

private:
    [[nodiscard]] const KelMany& links() const { return number_ == KelRareEnd::none ? *end_ : (*ends_)[number_]; }

    union {
        const KelMany* end_;
        const KelRareEnds* ends_;
    };
    KelRareEnd number_ = KelRareEnd::none;
};
