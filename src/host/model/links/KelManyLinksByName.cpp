#include "host/model/links/KelManyLinksByName.h"

#include "host/model/KelObject.h"
#include "host/model/KelRenaming.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace {

/// What decides the place of an object. The first bytes of its name decide most comparisons without access to the
/// names, which are far apart in memory. Small, because a row is sorted when a model is at its largest.
struct SortKey {
    std::uint64_t start; // of the name, padded with zeros; in the order of the bytes
    const char* name;
    std::uint32_t length;
    std::uint32_t index; // of the object before sorting
};

std::uint64_t startOf(std::string_view name) noexcept {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, name.data(), std::min(name.size(), sizeof(bytes)));
    return std::endian::native == std::endian::little ? __builtin_bswap64(bytes) : bytes;
}

bool comesBefore(const SortKey& left, const SortKey& right) noexcept {
    if (left.start != right.start) {
        return left.start < right.start;
    }
    const int order = std::string_view(left.name, left.length).compare(std::string_view(right.name, right.length));
    return order != 0 ? order < 0 : left.index < right.index;
}

/// Throws `std::bad_alloc`.
void sortAtHand(std::span<KelObject*> objects) {
    std::vector<SortKey> keys;
    keys.reserve(objects.size());
    for (const KelObject* object : objects) {
        const std::string_view name = object->getName().view();
        keys.push_back({startOf(name), name.data(), static_cast<std::uint32_t>(name.size()),
                        static_cast<std::uint32_t>(keys.size())});
    }
    std::sort(keys.begin(), keys.end(), comesBefore);
    const std::vector<KelObject*> before(objects.begin(), objects.end());
    std::transform(keys.begin(), keys.end(), objects.begin(), [&](const SortKey& key) { return before[key.index]; });
}

bool comesBeforeByName(const KelObject* left, const KelObject* right) {
    return left->getName().view() < right->getName().view();
}

/// Up to this part of a row, single objects are merged into it with fewer comparisons.
constexpr std::size_t few = 16;

/// The first of the objects at the end that are in order.
std::size_t startOfOrder(std::span<KelObject* const> objects) noexcept {
    std::size_t start = objects.size();
    while (start > 0 && (start == objects.size() || !comesBeforeByName(objects[start], objects[start - 1]))) {
        --start;
    }
    return start;
}

/// Sorts by name; equal names remain in their order. Slower when memory is short.
void sortObjects(std::span<KelObject*> objects) noexcept {
    const std::size_t ordered = startOfOrder(objects); // objects that were made in the order of others, behind a few
    const bool isNearlySorted = ordered <= objects.size() / few;
    const std::span<KelObject*> unsorted = isNearlySorted ? objects.first(ordered) : objects;
    try {
        sortAtHand(unsorted);
    } catch (const std::bad_alloc&) {
        std::stable_sort(unsorted.begin(), unsorted.end(), comesBeforeByName);
    }
    std::inplace_merge(objects.begin(), unsorted.end(), objects.end(), comesBeforeByName);
}

/// Merges the objects from `middle` on, which are sorted, into the others, which are sorted, behind equal names.
void merge(std::vector<KelObject*>& objects, std::size_t middle) noexcept {
    auto end = objects.begin() + static_cast<std::ptrdiff_t>(middle);
    try {
        if (objects.size() - middle <= objects.size() / few) {
            const std::vector<KelObject*> added(end, objects.end());
            auto merged = objects.end();
            for (std::size_t left = added.size(); left > 0; --left) {
                const auto place = std::upper_bound(objects.begin(), end, added[left - 1], comesBeforeByName);
                merged = std::move_backward(place, end, merged);
                *--merged = added[left - 1];
                end = place;
            }
            return;
        }
    } catch (const std::bad_alloc&) { // as with many
    }
    std::inplace_merge(objects.begin(), end, objects.end(), comesBeforeByName);
}

} // namespace

bool KelNameRow::takesNext(const KelObject& object) const {
    return !isSorted_ || objects().empty() || nameOf(objects_.back()) <= nameOf(&object);
}

void KelNameRow::add(KelObject& object) {
    objects_.push_back(&object);
    if (!firstByName_) {
        return;
    }
    try {
        firstByName_->insert(&object);
    } catch (...) {
        objects_.pop_back();
        throw;
    }
}

bool KelNameRow::removeFromEnd(const KelObject& object) noexcept {
    if (objects_.back() == &object) {
        if (firstByName_) {
            const auto named = firstByName_->find(objects_.back());
            if (named != firstByName_->end() && *named == &object) {
                firstByName_->erase(named);
            }
        }
        objects_.pop_back();
        inOrder_ = std::min(inOrder_, objects_.size());
        return true;
    }
    if (isSorted_ && objects_[start_] == &object) {
        ++start_;
        return true;
    }
    return false;
}

void KelNameRow::closeGap() noexcept {
    objects_.erase(objects_.begin(), objects_.begin() + static_cast<std::ptrdiff_t>(start_));
    start_ = 0;
}

void KelNameRow::remove(const KelObject& object) noexcept {
    forgetNames();
    closeGap();
    inOrder_ = 0;
    objects_.erase(std::find(objects_.begin(), objects_.end(), &object));
}

void KelNameRow::clear() noexcept {
    std::vector<KelObject*>().swap(objects_);
    start_ = 0;
    forgetOrder();
}

void KelNameRow::sort() noexcept {
    if (isSorted_) {
        return;
    }
    forgetNames(); // sorted, the row is searched instead
    closeGap();
    sortObjects(std::span(objects_).subspan(inOrder_));
    merge(objects_, inOrder_);
    isSorted_ = true;
}

void KelNameRow::forgetOrder() noexcept {
    forgetNames();
    isSorted_ = false;
    inOrder_ = 0;
}

void KelNameRow::moveToEnd(std::span<KelObject* const> renamed) noexcept {
    const bool wasSorted = isSorted_;
    forgetOrder();
    closeGap();
    const auto kept = std::remove_if(objects_.begin(), objects_.end(),
                                     [](const KelObject* object) { return KelRenaming::isUnderWay(*object); });
    std::copy(renamed.begin(), renamed.end(), kept);
    inOrder_ = wasSorted ? objects_.size() - renamed.size() : 0;
}

void KelNameRow::indexNames() {
    closeGap();
    FirstByName index;
    index.max_load_factor(0.8F); // half the memory of the default for many sizes, for longer searches of hashes
    index.reserve(objects_.size());
    index.insert(objects_.begin(), objects_.end());
    firstByName_ = std::move(index);
}

KelObject* KelNameRow::firstNamed(const KelString& name) {
    if (isSorted_) {
        const auto at = static_cast<std::size_t>(lowerBound(name));
        return at < objects().size() && objects()[at]->getName() == name ? objects()[at] : nullptr;
    }
    if (!firstByName_) {
        indexNames();
    }
    const auto found = firstByName_->find(name.view());
    return found != firstByName_->end() ? *found : nullptr;
}

int KelNameRow::lowerBound(const KelString& name) const noexcept {
    const auto place =
        std::lower_bound(objects().begin(), objects().end(), name.view(),
                         [](const KelObject* held, std::string_view wanted) { return nameOf(held) < wanted; });
    return static_cast<int>(place - objects().begin());
}

namespace {

constexpr int looksAhead = 8;
constexpr int mostNamesakes = 16; // up to this number a linear search is cheaper than an index

KelObject* objectOf(const KelRBTree::Node* node) noexcept {
    return node == nullptr ? nullptr : static_cast<KelObject*>(const_cast<void*>(KelRBTree::element(node)));
}

} // namespace

void KelManyLinksByName::indexNodes() const {
    try {
        nodes_.reserve(static_cast<std::size_t>(count_));
        for (KelRBTree::Node* node = tree_.firstNode(); node != nullptr; node = KelRBTree::nextNode(node)) {
            nodes_.emplace(objectOf(node), node);
        }
    } catch (...) {
        nodes_.clear();
        throw;
    }
}

KelRBTree::Node* KelManyLinksByName::searchFrom(KelRBTree::Node* first, const KelObject& object) const noexcept {
    KelRBTree::Node* node = first;
    for (int walked = 0; node != nullptr && objectOf(node) != &object; ++walked) {
        if (walked == mostNamesakes) {
            try {
                indexNodes();
                return nodeOf(object);
            } catch (...) { // no memory for the index: search on
            }
        }
        node = tree_.findNextNode(&object.getName(), node);
    }
    return node;
}

KelRBTree::Node* KelManyLinksByName::nodeOf(const KelObject& object) const noexcept {
    if (objectOf(walk_.node) == &object) {
        return walk_.node;
    }
    if (nodes_.empty()) {
        return searchFrom(tree_.findFirstNode(&object.getName()), object);
    }
    const auto place = nodes_.find(&object);
    return place == nodes_.end() ? nullptr : place->second;
}

bool KelManyLinksByName::bringIntoTree() const noexcept {
    if (isInTree()) {
        return true;
    }
    try {
        row_.sort();
        for (const KelObject* object : row_.objects()) {
            tree_.addLastNode(object);
        }
        row_.clear();
    } catch (...) { // no memory: the row remains
        tree_.empty();
    }
    return isInTree();
}

void KelManyLinksByName::insert(KelObject& object) {
    if (!isInTree() && (row_.takesNext(object) || !bringIntoTree())) {
        if (!row_.takesNext(object)) {
            throw std::bad_alloc(); // no memory for the tree
        }
        row_.add(object);
        ++count_;
        return;
    }
    KelRBTree::Node* added = tree_.addNode(&object);
    walk_ = {};
    if (!nodes_.empty()) {
        try {
            nodes_.emplace(&object, added);
        } catch (...) {
            tree_.removeNode(added);
            throw;
        }
    }
    ++count_;
}

void KelManyLinksByName::erase(KelObject& object) noexcept {
    --count_;
    if (!isInTree() && row_.removeFromEnd(object)) {
        return;
    }
    if (bringIntoTree()) {
        KelRBTree::Node* node = nodeOf(object);
        nodes_.erase(&object);
        tree_.removeNode(node);
        walk_ = {};
    } else {
        row_.remove(object);
    }
}

KelObject* KelManyLinksByName::at(int index) const {
    if (index < 0 || index >= count_) {
        return nullptr;
    }
    if (!isInTree()) {
        row_.sort();
        KelObject* const* place = row_.objects().data() + index;
        if (count_ - index > looksAhead) {
            __builtin_prefetch(place[looksAhead]); // accesses are mostly consecutive
        }
        return *place;
    }
    if (walk_.node != nullptr && index == walk_.index + 1) {
        walk_ = {KelRBTree::nextNode(walk_.node), index};
    } else if (walk_.node == nullptr || index != walk_.index) {
        walk_ = {tree_.getNode(index), index};
    }
    return objectOf(walk_.node);
}

int KelManyLinksByName::indexInRow(const KelObject& object) const {
    row_.sort();
    for (int index = row_.lowerBound(object.getName()); index < count_; ++index) {
        const KelObject* held = row_.objects()[static_cast<std::size_t>(index)];
        if (held == &object) {
            return index;
        }
        if (!(held->getName() == object.getName())) {
            break;
        }
    }
    return -1;
}

bool KelManyLinksByName::holds(const KelObject& object) const {
    return bringIntoTree() ? nodeOf(object) != nullptr : indexInRow(object) >= 0;
}

int KelManyLinksByName::indexOf(const KelObject& object) const {
    if (!bringIntoTree()) {
        return indexInRow(object);
    }
    const KelRBTree::Node* node = nodeOf(object);
    return node == nullptr ? -1 : KelRBTree::getIndex(node);
}

int KelManyLinksByName::indexOfName(const KelString& name, int from) const {
    if (!isInTree()) {
        row_.sort();
    }
    const KelRBTree::Node* first = isInTree() ? tree_.findFirstNode(&name) : nullptr;
    const int index = first != nullptr ? KelRBTree::getIndex(first) : row_.lowerBound(name);
    // Equal names are adjacent, so a first one before `from` leaves only the object at `from` itself.
    const int answer = std::max(index, from);
    const KelObject* object = at(answer);
    return object != nullptr && object->getName() == name ? answer : -1;
}

KelObject* KelManyLinksByName::firstNamed(const KelString& name) const {
    return isInTree() ? objectOf(tree_.findFirstNode(&name)) : row_.firstNamed(name);
}

void KelManyLinksByName::beforeRename(KelObject& object) noexcept {
    if (expected_.empty() && bringIntoTree()) {
        renaming_ = nodeOf(object);
        tree_.detachNode(renaming_);
        walk_ = {};
    }
}

void KelManyLinksByName::afterRename(KelObject& /*object*/) noexcept {
    if (renaming_ != nullptr) {
        tree_.attachNode(std::exchange(renaming_, nullptr));
    } else if (expected_.empty()) {
        row_.forgetOrder();
    }
}

bool KelManyLinksByName::expectRename(KelObject& object) {
    if (isInTree()) {
        return false;
    }
    row_.forgetNames();
    expected_.push_back(&object);
    return expected_.size() == 1;
}

void KelManyLinksByName::afterRenames(bool areRenamed) noexcept {
    if (areRenamed) {
        row_.moveToEnd(expected_);
    }
    std::vector<KelObject*>().swap(expected_);
}
