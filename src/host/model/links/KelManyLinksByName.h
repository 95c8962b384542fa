#pragma once

#include "host/containers/KelNameLinkTree.h"
#include "host/model/links/KelLinkCollection.h"
#include "host/model/links/KelPointerHash.h"

#include <tsl/robin_map.h>

/// A large collection in name order: a name tree, and each object's node in it.
class KelManyLinksByName final : public KelLinkCollection {
public:
    void insert(KelObject& object) override;
    void erase(KelObject& object) noexcept override;
    [[nodiscard]] KelObject* at(int index) const override;
    [[nodiscard]] bool holds(const KelObject& object) const override;
    [[nodiscard]] int indexOfName(const KelString& name, int from) const override;
    void beforeRename(KelObject& object) noexcept override;
    void afterRename(KelObject& object) noexcept override;
    [[nodiscard]] bool isFull() const noexcept override { return false; }

protected:
    [[nodiscard]] int indexOf(const KelObject& object) const override;

private:
    KelNameLinkTree tree_;
    tsl::robin_map<const KelObject*, KelRBTree::Node*, KelPointerHash> nodes_;
};
