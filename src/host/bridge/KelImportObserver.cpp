#include "host/bridge/KelImportObserver.h"

namespace {

thread_local KelImportObserver* currentObserver = nullptr;

} // namespace

KelImportObserver::KelImportObserver() noexcept : outer_(currentObserver) {
    currentObserver = this;
}

KelImportObserver::~KelImportObserver() {
    currentObserver = outer_;
}

KelImportObserver* KelImportObserver::current() noexcept {
    return currentObserver;
}
