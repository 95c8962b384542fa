#include "export/uml/UmlOutput.h"
#include "export/words.h"
#include "host/model/KelArgument.h"
#include "host/model/KelAttribute.h"
#include "host/model/KelOperation.h"
#include "host/model/KelType.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace exporter {

namespace {

constexpr std::int32_t byValue = 0;
constexpr std::int32_t implementationVisibility = 3;

/// The meaning of the numbers of a concurrency, in UML's words; all others are as the last.
constexpr std::array<std::string_view, 3> concurrencies{"", "guarded", "concurrent"};

bool isInteger(std::string_view text) {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::to_string(number) == text;
}

void addVisibility(std::int32_t visibility, Details& details) {
    if (visibility == implementationVisibility) {
        details.add("visibility", visibilityWord(visibility));
    }
}

void writeParameter(const KelArgument& argument, UmlOutput& output) {
    const std::string_view id = output.idOf(argument);
    const TypeTarget type = output.mapping().targetOf(argument.getType());
    output.start("ownedParameter", "uml:Parameter", id, Layout::line);
    output.nameOf(argument);
    output.typeAttribute("type", type);
    output.comments(argument, id);
    output.typeChild("type", type);
    output.defaultValue(id, argument.initialValue.view());
    output.end();
}

} // namespace

std::string_view concurrencyOf(std::int32_t number) {
    return concurrencies[static_cast<std::size_t>(std::clamp(number, 0, 2))];
}

void writeAttribute(const KelAttribute& attribute, bool isId, UmlOutput& output) {
    const std::string_view id = output.idOf(attribute);
    const TypeTarget type = output.mapping().targetOf(attribute.getType());
    output.start("ownedAttribute", "uml:Property", id, Layout::line);
    output.nameOf(attribute);
    output.visibility(attribute.visibility);
    output.optionalFlag("isStatic", attribute.isStatic);
    output.typeAttribute("type", type);
    output.optionalPlain("aggregation", attribute.containment == byValue ? "composite" : "");
    output.optionalFlag("isDerived", attribute.isDerived);
    output.optionalFlag("isID", isId);
    Details details;
    addVisibility(attribute.visibility, details);
    if (attribute.containment != byValue && containmentWord(attribute.containment) != nullptr) {
        details.add("containment", containmentWord(attribute.containment));
    }
    output.annotations(id, {}, details);
    output.comments(attribute, id);
    output.typeChild("type", type);
    output.defaultValue(id, attribute.initialValue.view());
    output.end();
}

void writeLiteral(const KelAttribute& literal, UmlOutput& output) {
    const std::string_view id = output.idOf(literal);
    output.start("ownedLiteral", "uml:EnumerationLiteral", id, Layout::line);
    output.nameOf(literal);
    output.visibility(literal.visibility);
    Details details;
    addVisibility(literal.visibility, details);
    if (literal.getType() != nullptr) {
        details.addText("type", literal.getType()->getName().view());
    }
    if (containmentWord(literal.containment) != nullptr) {
        details.add("containment", containmentWord(literal.containment));
    }
    details.addFlag("static", literal.isStatic);
    details.addFlag("derived", literal.isDerived);
    output.annotations(id, {}, details);
    output.comments(literal, id);
    const std::string_view value = literal.initialValue.view();
    if (isInteger(value)) {
        output.start("specification", "uml:LiteralInteger", partId(id, "Specification"), Layout::line);
        output.optionalAttribute("value", value != "0" ? value : "");
        output.end();
    } else if (!value.empty()) {
        output.expression("specification", partId(id, "Specification"), value);
    }
    output.end();
}

void writeOperation(const KelOperation& operation, UmlOutput& output) {
    const std::string_view id = output.idOf(operation);
    const std::string precondition = partId(id, "Precondition");
    const std::string postcondition = partId(id, "Postcondition");
    output.start("ownedOperation", "uml:Operation", id, Layout::block);
    output.nameOf(operation);
    output.visibility(operation.visibility);
    output.optionalFlag("isStatic", operation.isStatic);
    output.optionalPlain("concurrency", concurrencyOf(operation.concurrency));
    output.optionalPlain("postcondition", operation.postcondition.isEmpty() ? "" : postcondition);
    output.optionalPlain("precondition", operation.precondition.isEmpty() ? "" : precondition);
    Details details;
    addVisibility(operation.visibility, details);
    details.addFlag("virtual", operation.isVirtual);
    details.addFlag("friend", operation.isFriend);
    output.annotations(id, {}, details);
    output.comments(operation, id);
    if (!operation.semantics.isEmpty()) {
        output.comment(partId(id, "Semantics"), id, operation.semantics.view(), {"semantics"});
    }
    if (!operation.precondition.isEmpty()) {
        output.constraint(operation.precondition.view(), precondition, {}, {}, {});
    }
    if (!operation.postcondition.isEmpty()) {
        output.constraint(operation.postcondition.view(), postcondition, {}, {}, {});
    }
    for (const KelArgument* argument : operation.arguments()) {
        writeParameter(*argument, output);
    }
    if (operation.getReturnType() != nullptr) {
        const TypeTarget type = output.mapping().targetOf(operation.getReturnType());
        output.start("ownedParameter", "uml:Parameter", partId(id, "Return"), Layout::line);
        output.typeAttribute("type", type);
        output.plainAttribute("direction", "return");
        output.typeChild("type", type);
        output.end();
    }
    output.end();
}

} // namespace exporter
