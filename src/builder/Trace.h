#pragma once

#include "builder/BuilderState.h"
#include "host/bridge/KelImportObserver.h"
#include "host/log/KelLog.h"
#include "literals/QEV_RRSE.h"

#include <string_view>
#include <utility>

namespace rose {

/// Logs a message about `subject`. Costs nothing when the log does not accept such messages.
inline void report(const QEV_RRSE::MessageInstance_String& message, std::string_view subject) {
    if (state.localLog->accepts(message.getSeverityLevel())) {
        message.log(*state.localLog, KelString(subject));
    }
}

/// Reports the steps of the import to its observer. Without an observer each function costs one comparison. They throw
/// what the observer throws.
namespace trace {

/// Sets the observer of an import (or null) during its life.
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

/// Attributes the steps during its life to another place of the file.
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

} // namespace trace

} // namespace rose
