#pragma once

#include "host/model/links/KelMany.h"

/// The objects at a "many" end, seen as what they are. Good for as long as the object that has the end; changes
/// of the end show at once, and walking by index stays right through them.
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

    [[nodiscard]] int count() const { return end_->count(); }
    [[nodiscard]] bool isEmpty() const { return end_->count() == 0; }
    /// The object at `index`, or null when there is none.
    T* operator[](int index) const { return static_cast<T*>(end_->at(index)); }
    /// The first object, or null.
    [[nodiscard]] T* first() const { return (*this)[0]; }
    [[nodiscard]] bool holds(const T& object) const { return end_->holds(object); }
    /// The index of the object, or -1.
    [[nodiscard]] int indexOf(const T& object) const { return end_->indexOf(object); }
    /// The first object of that name at or after the index that `index` points to (0 when null), which then is
    /// left at it; or null.
    T* findNamed(const KelString& name, int* index = nullptr) const {
        if (index == nullptr) {
            return static_cast<T*>(end_->firstNamed(name));
        }
        const int found = end_->indexOfName(name, *index);
        *index = found >= 0 ? found : *index;
        return (*this)[found];
    }
    /// For `KelObject::_getn`; good until the end next changes.
    [[nodiscard]] const KelArrayInterface& array() const { return end_->array(); }

    /// The objects must not be added to or taken out during a walk with iterators.
    [[nodiscard]] Iterator begin() const { return Iterator(*end_, 0); }
    [[nodiscard]] Iterator end() const { return Iterator(*end_, end_->count()); }

private:
    const KelMany* end_;
};
