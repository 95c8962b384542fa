#pragma once

#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelRareEnds.h"

#include <cstdint>
#include <memory>
#include <vector>

/// The end of a relation that holds any number of objects. Only `KelRelation` changes it; hosts read it as `KelLinks`.
///
/// Takes one word in the object: null, a pointer to the only object, or a pointer to the collection of several, which
/// the end owns. It does not own the objects, even where the relation does. Cost and errors are those of
/// `KelLinkCollection`.
class KEL_API KelMany {
public:
    constexpr explicit KelMany(KelOrder order = KelOrder::byAdding) noexcept
        : word_(order == KelOrder::byName ? byNameBit : 0) {}
    KelMany(const KelMany&) = delete;
    KelMany& operator=(const KelMany&) = delete;
    ~KelMany();

    [[nodiscard]] int count() const noexcept {
        const KelLinkCollection* several = collection();
        return several != nullptr ? several->getCount() : static_cast<int>(single() != nullptr);
    }
    /// The object at `index`, or null when there is none.
    [[nodiscard]] KelObject* at(int index) const {
        const KelLinkCollection* several = collection();
        if (several != nullptr) {
            return several->at(index);
        }
        return index == 0 ? single() : nullptr;
    }
    /// Whether the end holds this object.
    [[nodiscard]] bool holds(const KelObject& object) const;
    /// The index of the object, or -1.
    [[nodiscard]] int indexOf(const KelObject& object) const;
    /// The index of the first object named `name` at or after the index `from`, or -1.
    [[nodiscard]] int indexOfName(const KelString& name, int from) const;
    /// The first object named `name`, or null.
    [[nodiscard]] KelObject* firstNamed(const KelString& name) const;
    /// The same objects as an array; valid until this end changes next. May throw `std::bad_alloc`.
    [[nodiscard]] const KelArrayInterface& array() const;

private:
    friend struct KelRelation;

    // The word: null, a KelObject* or a KelLinkCollection*. Its two lowest bits say which of them, and the order.
    static constexpr std::uintptr_t collectionBit = 1;
    static constexpr std::uintptr_t byNameBit = 2;
    static constexpr std::uintptr_t pointerBits = ~(collectionBit | byNameBit);

    [[nodiscard]] KelOrder order() const noexcept;
    [[nodiscard]] KelObject* single() const noexcept {
        return (word_ & collectionBit) == 0 ? reinterpret_cast<KelObject*>(word_ & pointerBits) : nullptr;
    }
    [[nodiscard]] KelLinkCollection* collection() const noexcept {
        return (word_ & collectionBit) != 0 ? reinterpret_cast<KelLinkCollection*>(word_ & pointerBits) : nullptr;
    }
    void hold(KelObject* single) const noexcept;
    void hold(std::unique_ptr<KelLinkCollection> collection) const noexcept;
    /// A collection of the current objects with room for another one.
    [[nodiscard]] KelLinkCollection& growing();

    void insert(KelObject& object);
    void erase(KelObject& object) noexcept;
    void beforeRename(KelObject& object) const noexcept;
    void afterRename(KelObject& object) const noexcept;
    void expectRename(KelObject& object, std::vector<KelLinkCollection*>& expecting) const;

    mutable std::uintptr_t word_;
};

inline KelMany& KelRareEnds::made(KelRareEnd number) const noexcept {
    return ends_[static_cast<std::size_t>(number)];
}

inline const KelMany& KelRareEnds::operator[](KelRareEnd number) const noexcept {
    return ends_ != nullptr ? made(number) : nothing;
}
