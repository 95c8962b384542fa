#pragma once

#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>

class KelClass;
class KelDesignPackage;
class KelDiagram;
class KelModelElement;
class KelModelObject;

namespace rose {

/// The elements of one diagram or package by view number, and its classes by view number and by name.
///
/// Each lookup is equivalent to a linear search of the elements in their order, at O(log n): elements only join at the
/// end, so the order in which they joined is that of the collection, and entries that are equal otherwise are kept in
/// that order.
class ContainerIndex {
public:
    using Order = std::uint64_t; // of joining
    struct Place {
        Order order = 0;
        KelModelElement* element = nullptr; // null: there is none
    };

    /// Adds an element that has joined at the end.
    void add(KelModelElement& element);
    /// Removes an element that is about to leave. Does nothing for an unknown element.
    void remove(KelModelElement& element) noexcept;
    /// Moves an element to another view number. Call it before the element's own number changes. Does nothing for an
    /// unknown element; never allocates.
    void renumber(KelModelElement& element, int viewNumber) noexcept;

    [[nodiscard]] Place first(int viewNumber) const;
    /// The last element of that number before the given place. PRECONDITION: there is one.
    [[nodiscard]] Place lastBefore(int viewNumber, const Place& place) const;
    [[nodiscard]] KelClass* firstClass(int viewNumber) const;
    [[nodiscard]] KelClass* firstClass(std::string_view name) const;

private:
    template <class Key>
    struct Entry {
        Key key;
        Order order;
        KelModelElement* element;
        bool operator<(const Entry& other) const {
            return key < other.key || (!(other.key < key) && order < other.order);
        }
    };

    std::set<Entry<int>> byNumber_;
    std::set<Entry<int>> classesByNumber_;
    std::set<Entry<std::string_view>> classesByName_;
    tsl::robin_map<const KelModelElement*, Order, KelPointerHash> orders_;
    Order next_ = 0;
};

// Every change of the elements of diagrams and packages, and of view numbers, is made here, so that the indexes match
// the containers.
//
// An index is made when its container is first searched. The diagram searched is always the current one, so there is
// one diagram index at a time; a package that was searched keeps its index.

/// Each adds an element; false when the diagram or package refuses it.
bool draw(KelDiagram& diagram, KelModelElement& element);
bool place(KelDesignPackage& package, KelModelElement& element);
/// Gives the object a view number.
void setViewNumber(KelModelObject& object, int viewNumber);

[[nodiscard]] const ContainerIndex& indexOf(KelDiagram& diagram);
[[nodiscard]] const ContainerIndex& indexOf(KelDesignPackage& package);

/// Removes an element that is being deleted from the indexes.
void forgetElement(KelModelElement& element) noexcept;
void clearContainerIndexes() noexcept;

} // namespace rose
