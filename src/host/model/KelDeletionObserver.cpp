#include "host/model/KelDeletionObserver.h"

namespace {

thread_local KelDeletionObserver* firstObserver = nullptr;

} // namespace

KelDeletionObserver::KelDeletionObserver() noexcept : next_(firstObserver) {
    firstObserver = this;
}

KelDeletionObserver::~KelDeletionObserver() {
    KelDeletionObserver** link = &firstObserver;
    while (*link != this) {
        link = &(*link)->next_;
    }
    *link = next_;
}

void KelDeletionObserver::announce(KelObject& object) noexcept {
    for (KelDeletionObserver* observer = firstObserver; observer != nullptr; observer = observer->next_) {
        observer->deleting(object);
    }
}
