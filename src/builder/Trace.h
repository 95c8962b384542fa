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
        theObserver = observer;
        theSource = {};
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { theObserver = nullptr; }
};

/// Has the steps during its life come from another place of the file.
class SourceScope {
public:
    explicit SourceScope(const KelImportSource& source) noexcept : outer_(std::exchange(theSource, source)) {}
    SourceScope(const SourceScope&) = delete;
    SourceScope& operator=(const SourceScope&) = delete;
    ~SourceScope() { theSource = outer_; }

private:
    KelImportSource outer_;
};

[[nodiscard]] inline bool isOn() {
    return theObserver != nullptr;
}

inline void made(KelObject& object) {
    if (isOn()) {
        theObserver->made(theSource, object);
    }
}

inline void named(KelObject& object) {
    if (isOn()) {
        theObserver->named(theSource, object);
    }
}

inline void changed(KelObject& object, KelObject* other = nullptr, KelImportReason why = KelImportReason::none) {
    if (isOn()) {
        theObserver->changed(theSource, object, other, why);
    }
}

inline void refused(KelImportReason why, KelObject* object = nullptr, KelObject* other = nullptr) {
    if (isOn()) {
        theObserver->refused(theSource, why, object, other);
    }
}

inline void repaired(KelObject& object, KelImportReason why, KelObject* other = nullptr) {
    if (isOn()) {
        theObserver->repaired(object, why, other);
    }
}

inline void replaced(KelObject& object, KelImportReason why, KelObject& by) {
    if (isOn()) {
        theObserver->replaced(object, why, by);
    }
}

inline void removing(KelObject& object, KelImportReason why) noexcept {
    if (isOn()) {
        theObserver->removing(object, why);
    }
}

} // namespace rose::trace
