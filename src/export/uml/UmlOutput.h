#pragma once

#include "export/uml/UmlMapping.h"
#include "export/uml/XmlWriter.h"
#include "host/model/KelObject.h"

#include <array>
#include <concepts>
#include <cstdint>
#include <forward_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class KelAttribute;
class KelElement;
class KelOperation;

namespace exporter {

/// A dialect of XMI: a row of the table of option "flavour".
struct Flavour {
    std::string_view word;
    const char* xmiVersion;
    const char* xmiNamespace;
    const char* umlNamespace;
    std::string_view primitiveTypes; ///< with the name of one of UML's own types after it, where that is defined
    /// Of Ecore: it has annotations, and refers to the ends of an association in attributes.
    bool isEcore;
};

/// Entries of an annotation for that which UML has no place for. Texts must live as long, unless they are moved into
/// it.
class Details {
public:
    using Entry = std::pair<std::string_view, std::string_view>;

    void add(std::string_view key, std::string_view value) { entries_.emplace_back(key, value); }
    /// A text that would end before the entry is written.
    template <class Key, class Value>
    requires(std::same_as<Key, std::string> || std::same_as<Value, std::string>) void add(Key&&, Value&&) = delete;
    void addMade(std::string&& key, std::string&& value) { add(keep(std::move(key)), keep(std::move(value))); }
    void addText(std::string_view key, std::string_view value) {
        if (!value.empty()) {
            add(key, value);
        }
    }
    void addFlag(std::string_view key, bool value) {
        if (value) {
            add(key, "true");
        }
    }
    /// Only for a number other than 0.
    void addNumber(std::string_view key, std::int32_t value) {
        if (value != 0) {
            add(key, keep(std::to_string(value)));
        }
    }
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

private:
    std::string_view keep(std::string&& text) { return kept_.emplace_front(std::move(text)); }

    std::vector<Entry> entries_;
    std::forward_list<std::string> kept_;
};

using Keywords = std::vector<std::string_view>;

/// The constructs of UML that many elements have. Ids of parts are the id of the element with "-" and a word in capital
/// letters, which element ids do not hold.
class UmlOutput {
public:
    /// All must outlive it.
    UmlOutput(XmlWriter& xml, const UmlMapping& mapping, const Flavour& flavour, Omissions& omissions)
        : xml_(xml), mapping_(mapping), flavour_(flavour), omissions_(omissions) {}

    [[nodiscard]] const UmlMapping& mapping() const { return mapping_; }
    [[nodiscard]] const Flavour& flavour() const { return flavour_; }
    [[nodiscard]] Omissions& omissions() { return omissions_; }
    /// Empty while the writer only counts: ids hold no character that XML cannot hold.
    [[nodiscard]] std::string_view idOf(const KelObject& element) const {
        return xml_.isCounting() ? std::string_view() : mapping_.idOf(element);
    }

    /// The element `tag` with its type and id.
    void start(std::string_view tag, std::string_view type, std::string_view id, Layout layout);
    void end() { xml_.end(); }
    void attribute(std::string_view name, std::string_view value) { xml_.attribute(name, value); }
    /// For ids and words of UML.
    void plainAttribute(std::string_view name, std::string_view value) { xml_.plainAttribute(name, value); }
    void optionalAttribute(std::string_view name, std::string_view value) {
        if (!value.empty()) {
            attribute(name, value);
        }
    }
    void optionalPlain(std::string_view name, std::string_view value) {
        if (!value.empty()) {
            plainAttribute(name, value);
        }
    }
    void optionalFlag(std::string_view name, bool value) {
        if (value) {
            plainAttribute(name, "true");
        }
    }
    void nameOf(const KelObject& object) { optionalAttribute("name", object.getName().view()); }
    void visibility(std::int32_t number);

    /// References to several elements, as an attribute with their ids or as a child for each.
    void references(std::string_view name, std::span<const std::string> ids, bool asChildren);

    /// The annotations of the element: keywords, and details of petal's own.
    void annotations(std::string_view id, const Keywords& keywords, const Details& details,
                     Layout layout = Layout::line);
    /// The description and the notes of `object` as comments on the element `id`.
    void comments(const KelElement& object, std::string_view id);
    void comment(std::string_view commentId, std::string_view annotatedId, std::string_view text,
                 const Keywords& keywords = {}, const Details& details = {});

    /// A target that is an element is an attribute, one of UML's own types a child.
    void typeAttribute(std::string_view name, const TypeTarget& target);
    void typeChild(std::string_view name, const TypeTarget& target);
    void expression(std::string_view tag, std::string_view id, std::string_view text);
    /// Nothing for an empty text.
    void defaultValue(std::string_view ownerId, std::string_view text);
    void constraint(std::string_view specification, std::string_view id, std::string_view name,
                    std::span<const std::string> constrained, const Details& details);

private:
    XmlWriter& xml_;
    const UmlMapping& mapping_;
    const Flavour& flavour_;
    Omissions& omissions_;
};

/// `id` with "-" and `part`.
[[nodiscard]] std::string partId(std::string_view id, std::string_view part);

/// The class as a classifier with its features.
void writeClassifier(const KelClass& one, UmlOutput& output);

/// An attribute as a property, or as a literal of an enumeration.
void writeAttribute(const KelAttribute& attribute, bool isId, UmlOutput& output);
void writeLiteral(const KelAttribute& literal, UmlOutput& output);
void writeOperation(const KelOperation& operation, UmlOutput& output);
/// UML's word for the number of a concurrency; empty for the default.
[[nodiscard]] std::string_view concurrencyOf(std::int32_t number);

/// An association that is not a part of an association class.
void writeAssociation(const KelAssociation& association, UmlOutput& output);
/// The references of an association, or association class, `id` to its ends: before its content, and among it.
void writeEndReferences(const KelAssociation& association, UmlOutput& output, bool isContent);
/// The ends that the association, or association class, `id` owns.
void writeOwnedEnds(const KelAssociation& association, std::string_view id, UmlOutput& output);
/// A role as a property with tag `tag`, an end of the association `associationId`.
void writeEnd(std::string_view tag, const KelAssociationRole& role, std::string_view associationId, UmlOutput& output);

} // namespace exporter
