#include "host/model/links/KelNameRow.h"

#include "host/model/KelObject.h"

#include <algorithm>

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
        std::stable_sort(objects_.begin(), objects_.end(), [](const KelObject* left, const KelObject* right) {
            return left->getName().view() < right->getName().view();
        });
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
