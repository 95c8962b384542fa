#include "host/model/links/KelNameRow.h"

#include "host/model/KelObject.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace {

/// An object with the start of its name at hand, which settles most comparisons: names lie far apart in memory.
struct SortedObject {
    std::uint64_t start; // of the name, zeros behind a short one; ordered as the bytes are
    std::string_view name;
    KelObject* object;
};

std::uint64_t startOf(std::string_view name) noexcept {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, name.data(), std::min(name.size(), sizeof(bytes)));
    return std::endian::native == std::endian::little ? __builtin_bswap64(bytes) : bytes;
}

bool comesBefore(const SortedObject& left, const SortedObject& right) noexcept {
    return left.start != right.start ? left.start < right.start : left.name < right.name;
}

/// Throws `std::bad_alloc`.
void sortAtHand(std::vector<KelObject*>& objects) {
    std::vector<SortedObject> sorted;
    sorted.reserve(objects.size());
    for (KelObject* object : objects) {
        const std::string_view name = object->getName().view();
        sorted.push_back({startOf(name), name, object});
    }
    std::stable_sort(sorted.begin(), sorted.end(), comesBefore);
    std::transform(sorted.begin(), sorted.end(), objects.begin(), [](const SortedObject& one) { return one.object; });
}

void sortInPlace(std::vector<KelObject*>& objects) noexcept {
    std::stable_sort(objects.begin(), objects.end(), [](const KelObject* left, const KelObject* right) {
        return left->getName().view() < right->getName().view();
    });
}

} // namespace

bool KelNameRow::takesNext(const KelObject& object) const {
    return !isSorted_ || objects_.empty() || objects_.back()->getName().view() <= object.getName().view();
}

void KelNameRow::add(KelObject& object) {
    objects_.push_back(&object);
    if (!firstByName_) {
        return;
    }
    try {
        firstByName_->try_emplace(object.getName().view(), &object);
    } catch (...) {
        objects_.pop_back();
        throw;
    }
}

void KelNameRow::removeLast() noexcept {
    if (firstByName_) {
        const auto named = firstByName_->find(objects_.back()->getName().view());
        if (named != firstByName_->end() && named->second == objects_.back()) {
            firstByName_->erase(named);
        }
    }
    objects_.pop_back();
}

void KelNameRow::remove(const KelObject& object) noexcept {
    firstByName_.reset();
    objects_.erase(std::find(objects_.begin(), objects_.end(), &object));
}

void KelNameRow::clear() noexcept {
    std::vector<KelObject*>().swap(objects_);
    firstByName_.reset();
    isSorted_ = false;
}

void KelNameRow::sort() noexcept {
    if (!isSorted_) {
        try {
            sortAtHand(objects_);
        } catch (const std::bad_alloc&) {
            sortInPlace(objects_);
        }
        isSorted_ = true;
        firstByName_.reset(); // the order serves as well
    }
}

void KelNameRow::forgetOrder() noexcept {
    firstByName_.reset();
    isSorted_ = false;
}

void KelNameRow::indexNames() {
    FirstByName index(objects_.size());
    for (KelObject* object : objects_) {
        index.try_emplace(object->getName().view(), object);
    }
    firstByName_ = std::move(index);
}

KelObject* KelNameRow::firstNamed(const KelString& name) {
    if (isSorted_) {
        const auto at = static_cast<std::size_t>(lowerBound(name));
        return at < objects_.size() && objects_[at]->getName() == name ? objects_[at] : nullptr;
    }
    if (!firstByName_) {
        indexNames();
    }
    const auto found = firstByName_->find(name.view());
    return found != firstByName_->end() ? found->second : nullptr;
}

int KelNameRow::lowerBound(const KelString& name) const noexcept {
    const auto place = std::lower_bound(
        objects_.begin(), objects_.end(), name.view(),
        [](const KelObject* held, std::string_view wanted) { return held->getName().view() < wanted; });
    return static_cast<int>(place - objects_.begin());
}
