#include "diff/labels.h"

namespace diff {

namespace {

class Labels {
public:
    explicit Labels(const Model& model) : model_(model) {}

    [[nodiscard]] std::string of(ElementId id) const {
        const Element& element = model_[id];
        std::string name(element.name);
        switch (element.kind) {
        case Kind::attribute:
        case Kind::argument:
            return name + typed(id, FieldId::type);
        case Kind::operation:
            return name + "(" + arguments(id) + ")" + typed(id, FieldId::returnType);
        case Kind::role:
            return name + typed(id, FieldId::classOfRole);
        case Kind::association:
            return spaced(name) + "(" + ends(id) + ")";
        case Kind::generalization:
            return spaced(name) + related(id, FieldId::subtypes, FieldId::supertypes);
        case Kind::realization:
            return spaced(name) + related(id, FieldId::realizationClass, FieldId::specificationClass);
        case Kind::dependency:
            return spaced(name) + related(id, FieldId::client, FieldId::supplier);
        case Kind::type: // a declared type and the system's type for it may have one name
            return name + " (" + std::string(model_.text(model_.find(id, FieldId::typeKind))) + ")";
        case Kind::model: // after its file
            return "";
        default:
            return name;
        }
    }

private:
    static std::string spaced(const std::string& name) { return name.empty() ? name : name + " "; }

    [[nodiscard]] std::string targets(ElementId id, FieldId field) const {
        const Field* found = model_.find(id, field);
        if (found == nullptr) {
            return "?";
        }
        if (formOf(field) == ValueForm::reference) {
            return std::string(model_[static_cast<ElementId>(found->value)].name);
        }
        std::string names;
        for (const ElementId target : model_.references(*found)) {
            names.append(names.empty() ? "" : ", ").append(model_[target].name);
        }
        return names;
    }
    [[nodiscard]] std::string typed(ElementId id, FieldId field) const {
        return model_.find(id, field) != nullptr ? ": " + targets(id, field) : "";
    }
    [[nodiscard]] std::string related(ElementId id, FieldId from, FieldId to) const {
        return targets(id, from) + " → " + targets(id, to);
    }
    /// "orders: Order — Customer".
    [[nodiscard]] std::string ends(ElementId association) const {
        std::string text;
        for (ElementId id = model_.firstWithin(association); id != noElement; id = model_.nextWithin(id)) {
            const std::string_view name = model_[id].name;
            text.append(text.empty() ? "" : " — ").append(name).append(name.empty() ? "" : ": ");
            text.append(targets(id, FieldId::classOfRole));
        }
        return text;
    }
    [[nodiscard]] std::string arguments(ElementId operation) const {
        std::string names;
        for (ElementId id = model_.firstWithin(operation); id != noElement; id = model_.nextWithin(id)) {
            names.append(names.empty() ? "" : ", ").append(of(id));
        }
        return names;
    }

    const Model& model_;
};

} // namespace

std::string labelOf(const Model& model, ElementId id) {
    return Labels(model).of(id);
}

std::string describedName(const Model& model, ElementId id) {
    std::string name = qualifiedName(model, id);
    if (model[id].name.empty()) {
        name.append(kindWord(model[id].kind)).append(" ").append(labelOf(model, id));
    }
    return name;
}

} // namespace diff
