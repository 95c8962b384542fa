#pragma once

#include "builder/BuilderState.h"
#include "builder/Classes.h"
#include "scanner/Rule.h"

/// The effects of the rules, as the rule table names them: templates for effects that only forward to the builder, and
/// functions for the others.
///
/// An action is called only when the guards of its rule permit it. It sees the current match and may consume text after
/// it. It throws what the builder throws. An action without a value (null) leaves the builder alone, but its other
/// effects take place.
namespace rose {

/// Passes the value, if there is one, to an operation of the builder.
template <void (*operation)(char*)>
void take(const Reading& reading) {
    if (reading.value != nullptr) {
        operation(reading.value);
    }
}

/// Calls an operation of the builder that takes no value.
template <void (*operation)()>
void call(const Reading& /*reading*/) {
    operation();
}

/// Begins an object that is imported, which ends one that is not.
template <void (*operation)(char*)>
void begin(const Reading& reading) {
    state.objectMechanism = false;
    take<operation>(reading);
}

template <KelClassCategoryType category>
void createClass(const Reading& reading) {
    state.objectMechanism = false;
    if (reading.value != nullptr) {
        CreateClass(reading.value, category);
    }
}

/// Sets a flag that later keywords look at.
template <bool BuilderState::*flag>
void raise(const Reading& /*reading*/) {
    state.*flag = true;
}

/// Sets the flag of a view that has no object in the model.
template <bool BuilderState::*flag>
void enterView(const Reading& reading) {
    raise<flag>(reading);
    state.activeObject = nullptr;
}

// Classes.
void setAbstract(const Reading& reading);
void setPersistent(const Reading& reading);
void setSpace(const Reading& reading);

// Attributes, arguments, and the properties that several kinds of objects share.
void createAttribute(const Reading& reading);
void setFriend(const Reading& reading);
void setStatic(const Reading& reading);
void setDerived(const Reading& reading);
void setVirtual(const Reading& reading);
void setVisibility(const Reading& reading);
void setContainment(const Reading& reading);

// Operations.
void setConcurrency(const Reading& reading);
void setOperationVisibility(const Reading& reading);
void setOperationText(const Reading& reading);

// Associations, roles and the ends of relationships.
void setNavigable(const Reading& reading);
void markAggregation(const Reading& reading);
void bindSupplier(const Reading& reading);

// Views, documentation and labels.
void addClassView(const Reading& reading);
void enterNoteView(const Reading& reading);
void setClient(const Reading& reading);
void placeText(const Reading& reading);

} // namespace rose
