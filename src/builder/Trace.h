#pragma once

#include "builder/BuilderState.h"
#include "host/bridge/KelImportObserver.h"

#include <utility>

/// Tells the observer of the import, if there is one, of its steps. Each function does nothing without one. They throw
/// what the observer throws.
namespace rose::trace {

/// The observer of an import, from construction to destruction.
class Scope {
public:
    explicit Scope(KelImportObserver* observer) noexcept {
        state.theObserver = observer;
        state.theSource = {};
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { state.theObserver = nullptr; }
};

/// Has the steps during its life come from another place of the file.
class SourceScope {
public:
    explicit SourceScope(const KelImportSource& source) noexcept : outer_(std::exchange(state.theSource, source)) {}
    SourceScope(const SourceScope&) = delete;
    SourceScope& operator=(const SourceScope&) = delete;
    ~SourceScope() { state.theSource = outer_; }

private:
    KelImportSource outer_;
};

[[nodiscard]] inline bool isOn() {
    return state.theObserver != nullptr;
}

inline void made(KelObject& object) {
    if (isOn()) {
        state.theObserver->made(state.theSource, object);
    }
}

inline void named(KelObject& object) {
    if (isOn()) {
        state.theObserver->named(state.theSource, object);
    }
}

inline void changed(KelObject& object, KelObject* other = nullptr, KelImportReason why = KelImportReason::none) {
    if (isOn()) {
        state.theObserver->changed(state.theSource, object, other, why);
    }
}

inline void refused(KelImportReason why, KelObject* object = nullptr, KelObject* other = nullptr) {
    if (isOn()) {
        state.theObserver->refused(state.theSource, why, object, other);
    }
}

inline void repaired(KelObject& object, KelImportReason why, KelObject* other = nullptr) {
    if (isOn()) {
        state.theObserver->repaired(object, why, other);
    }
}

inline void replaced(KelObject& object, KelImportReason why, KelObject& by) {
    if (isOn()) {
        state.theObserver->replaced(object, why, by);
    }
}

inline void removing(KelObject& object, KelImportReason why) noexcept {
    if (isOn()) {
        state.theObserver->removing(object, why);
    }
}

} // namespace rose::trace
