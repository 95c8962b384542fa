#pragma once

#include "host/model/links/KelPointerHash.h"

#include <cstdint>
#include <set>
#include <string_view>
#include <tsl/robin_map.h>

class KelClass;
class KelModelElement;

namespace rose {

/// The elements of one diagram or package by view number, and its classes by view number and by name.
///
/// A walk through the elements in their order would find the same ones. Elements only ever join at the end, so
/// the order in which they joined is the order of the collection, and entries that are equal otherwise are kept
/// in that order: the first entry is the one that the walk meets first.
class ContainerIndex {
public:
    using Order = std::uint64_t; // of joining
    struct Place {
        Order order = 0;
        KelModelElement* element = nullptr; // null: there is none
    };

    /// An element that has joined at the end.
    void add(KelModelElement& element);
    /// An element that is about to leave. Does nothing if it is not here.
    void remove(KelModelElement& element) noexcept;
    /// An element, if it is here, gets another view number. Frames the change; neither allocates.
    void renumber(KelModelElement& element, int viewNumber) noexcept;

    [[nodiscard]] Place first(int viewNumber) const;
    /// The last element of that number that stands before the given place; there must be one.
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

} // namespace rose
