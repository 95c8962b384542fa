#pragma once

#include "host/model/links/KelLinkCollection.h"

#include <vector>

/// A small collection: an array with linear search.
class KelFewLinks final : public KelLinkCollection {
public:
    /// Up to this number of objects a linear search is cheaper than an index.
    static constexpr int mostObjects = 24;

    explicit KelFewLinks(KelOrder order) : order_(order) {}

    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
    [[nodiscard]] bool isFull() const noexcept override { return count_ >= mostObjects; }

protected:
    [[nodiscard]] int indexOf(const KelObject& object) const override;

private:
    /// The position for the object: after the last one whose name is not greater, or at the end.
    [[nodiscard]] std::vector<KelObject*>::iterator placeOf(const KelObject& object);

    KelOrder order_;
    std::vector<KelObject*> objects_;
};
