#pragma once

#include "host/text/KelString.h"
#include "host/text/KelTextHash.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <tsl/robin_map.h>
#include <utility>
#include <vector>

class KelObject;

/// Objects gathered in a row that is put in name order when the order is first asked for.
///
/// Gathering and finding by name cost O(1), whatever order the objects come in; sorting costs O(n log n), once, as
/// long as nothing but the last object is taken out and no object is added out of order after that.
class KelNameRow {
public:
    [[nodiscard]] bool isSorted() const noexcept { return isSorted_; }
    [[nodiscard]] const std::vector<KelObject*>& objects() const noexcept { return objects_; }
    /// Whether adding the object keeps what `sort` has done.
    [[nodiscard]] bool takesNext(const KelObject& object) const;
    void add(KelObject& object);
    void removeLast() noexcept;
    /// Takes out an object that is held, by walking.
    void remove(const KelObject& object) noexcept;
    void clear() noexcept;
    /// Puts the objects in name order; equal names stay in the order of adding. Needs no memory.
    void sort() noexcept;
    /// To be called when names may have changed.
    void forgetOrder() noexcept;
    /// The first object of that name, or null.
    [[nodiscard]] KelObject* firstNamed(const KelString& name);
    /// In the sorted row, the index of the first object whose name is not less.
    [[nodiscard]] int lowerBound(const KelString& name) const noexcept;

private:
    using NamedObject = std::pair<std::string_view, KelObject*>;
    static constexpr bool storesHash = true; // names of one length would otherwise be compared letter by letter
    using FirstByName = tsl::robin_map<std::string_view, KelObject*, KelTextHash, std::equal_to<>,
                                       std::allocator<NamedObject>, storesHash>;

    void indexNames();

    std::vector<KelObject*> objects_;
    std::optional<FirstByName> firstByName_; // keyed by the object's own text; made when needed
    bool isSorted_ = false;
};
