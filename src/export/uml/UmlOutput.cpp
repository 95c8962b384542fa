#include "export/uml/UmlOutput.h"

#include "export/words.h"
#include "host/model/KelModelObject.h"
#include "host/model/KelNote.h"

namespace exporter {

namespace {

constexpr std::int32_t publicVisibility = 0;
constexpr std::int32_t implementationVisibility = 3;
constexpr std::string_view keywordSource = "http://www.eclipse.org/uml2/2.0.0/UML";
constexpr std::string_view ownSource = "petal";
constexpr std::string_view annotationExtender = "http://www.eclipse.org/emf/2002/Ecore";

std::string joined(std::span<const std::string> ids) {
    std::string list;
    for (const std::string& id : ids) {
        list.append(list.empty() ? "" : " ").append(id);
    }
    return list;
}

} // namespace

std::string partId(std::string_view id, std::string_view part) {
    std::string result;
    result.reserve(id.size() + 1 + part.size());
    return result.append(id).append("-").append(part);
}

void UmlOutput::start(std::string_view tag, std::string_view type, std::string_view id, Layout layout) {
    xml_.start(tag, layout);
    plainAttribute("xmi:type", type);
    plainAttribute("xmi:id", id);
}

void UmlOutput::visibility(std::int32_t number) {
    const char* word = number == implementationVisibility ? "package" : visibilityWord(number);
    if (number != publicVisibility && word != nullptr) {
        plainAttribute("visibility", word);
    }
}

void UmlOutput::references(std::string_view name, std::span<const std::string> ids, bool asChildren) {
    if (!asChildren) {
        optionalPlain(name, joined(ids));
        return;
    }
    for (const std::string& id : ids) {
        xml_.start(name, Layout::line);
        plainAttribute("xmi:idref", id);
        end();
    }
}

void UmlOutput::annotations(std::string_view id, const Keywords& keywords, const Details& details, Layout layout) {
    if (keywords.empty() && details.entries().empty()) {
        return;
    }
    if (!flavour_.isEcore) {
        xml_.start("xmi:Extension", layout);
        plainAttribute("extender", annotationExtender);
    }
    if (!keywords.empty()) {
        const std::string annotation = partId(id, "Keywords");
        start("eAnnotations", "ecore:EAnnotation", annotation, layout);
        plainAttribute("source", keywordSource);
        std::size_t number = 0;
        for (const std::string_view keyword : keywords) {
            start("details", "ecore:EStringToStringMapEntry", annotation + std::to_string(++number), layout);
            attribute("key", keyword);
            end();
        }
        end();
    }
    if (!details.entries().empty()) {
        const std::string annotation = partId(id, "Petal");
        start("eAnnotations", "ecore:EAnnotation", annotation, layout);
        plainAttribute("source", ownSource);
        std::size_t number = 0;
        for (const auto& [key, value] : details.entries()) {
            start("details", "ecore:EStringToStringMapEntry", annotation + std::to_string(++number), Layout::line);
            attribute("key", key);
            attribute("value", value);
            end();
        }
        end();
    }
    if (!flavour_.isEcore) {
        end();
    }
}

void UmlOutput::comment(std::string_view commentId, std::string_view annotatedId, std::string_view text,
                        const Keywords& keywords, const Details& details) {
    start("ownedComment", "uml:Comment", commentId, Layout::line);
    optionalPlain("annotatedElement", annotatedId);
    annotations(commentId, keywords, details);
    if (!text.empty()) {
        xml_.start("body", Layout::line);
        xml_.text(text);
        end();
    }
    end();
}

void UmlOutput::comments(const KelElement& object, std::string_view id) {
    const std::string_view own = idOf(object);
    if (object.isInstanceOf(KelElementType::modelObject)) {
        const std::string_view description = static_cast<const KelModelObject&>(object).description.view();
        if (!description.empty()) {
            comment(partId(own, "Description"), id, description);
        }
    }
    std::size_t number = 0;
    for (const KelNote* note : object.notes()) {
        comment(partId(own, "Note") + std::to_string(++number), id, note->description.view());
    }
}

void UmlOutput::typeAttribute(std::string_view name, const TypeTarget& target) {
    if (target.element != nullptr) {
        plainAttribute(name, idOf(*target.element));
    }
}

void UmlOutput::typeChild(std::string_view name, const TypeTarget& target) {
    if (!target.primitive.empty()) {
        xml_.start(name, Layout::line);
        plainAttribute("xmi:type", metaclassName(Metaclass::primitiveType));
        plainAttribute("href", std::string(flavour_.primitiveTypes).append(target.primitive));
        end();
    }
}

void UmlOutput::expression(std::string_view tag, std::string_view id, std::string_view text) {
    start(tag, "uml:OpaqueExpression", id, Layout::line);
    xml_.start("body", Layout::line);
    xml_.text(text);
    end();
    end();
}

void UmlOutput::defaultValue(std::string_view ownerId, std::string_view text) {
    if (!text.empty()) {
        expression("defaultValue", partId(ownerId, "Default"), text);
    }
}

void UmlOutput::constraint(std::string_view specification, std::string_view id, std::string_view name,
                           std::span<const std::string> constrained, const Details& details) {
    start("ownedRule", "uml:Constraint", id, Layout::line);
    optionalAttribute("name", name);
    references("constrainedElement", constrained, false);
    annotations(id, {}, details);
    expression("specification", partId(id, "Specification"), specification);
    end();
}

} // namespace exporter
