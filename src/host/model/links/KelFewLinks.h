#pragma once

#include "host/model/links/KelLinkCollection.h"

#include <cstddef>
#include <memory>
#include <span>

/// A small collection: an array with linear search, in one piece of memory with its objects. It never allocates; when
/// it is full, a larger one takes its place.
class KelFewLinks final : public KelLinkCollection {
public:
    /// Up to this number of objects a linear search is cheaper than an index.
    static constexpr int mostObjects = 24;

    /// An empty one with room for that many objects, at most `mostObjects`, or for some more.
    [[nodiscard]] static std::unique_ptr<KelFewLinks> make(KelOrder order, int count);
    static void operator delete(void* memory) noexcept { ::operator delete(memory); }

    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
    [[nodiscard]] bool isFull() const noexcept override { return count_ >= room_; }

protected:
    [[nodiscard]] int indexOf(const KelObject& object) const override;

private:
    struct Room {
        int count;
    };
    static void* operator new(std::size_t size, Room room) {
        return ::operator new(size + static_cast<std::size_t>(room.count) * sizeof(void*));
    }
    static void operator delete(void* memory, Room /*room*/) noexcept { ::operator delete(memory); }
    KelFewLinks(KelOrder order, Room room) : order_(order), room_(room.count) {}

    [[nodiscard]] KelObject** begin() const noexcept; // of the room behind the object
    [[nodiscard]] std::span<KelObject*> objects() const noexcept { return {begin(), static_cast<std::size_t>(count_)}; }
    /// The index for the object: after the last one whose name is not greater, or at the end.
    [[nodiscard]] int placeOf(const KelObject& object) const;
    void put(int index, KelObject& object) noexcept;
    void take(const KelObject& object) noexcept;

    KelOrder order_;
    int room_;
};
