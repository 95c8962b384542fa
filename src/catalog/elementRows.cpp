#include "catalog/elementRows.h"

#include "catalog/searchWords.h"
#include "export/ClassKind.h"
#include "export/ClassNames.h"
#include "export/ElementIds.h"
#include "export/asItsClass.h"
#include "export/modelWalk.h"
#include "export/sql/columnTypes.h"
#include "export/words.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelNote.h"
#include "host/model/KelNumbering.h"
#include "host/model/KelTypeValue.h"
#include "source/SourceMap.h"
#include "text/ascii.h"

#include <algorithm>
#include <utility>

namespace catalog {

namespace {

constexpr std::string_view separator = "::";
constexpr std::size_t longestQualifiedName = 4000; // bytes; a deep model would else take time by the square
constexpr std::size_t longestLabel = 80;           // bytes of a note's first line
constexpr std::string_view ellipsis = "\xe2\x80\xa6";

/// `text` up to `length` bytes, cut between characters.
std::string_view cutAfter(std::string_view text, std::size_t length) {
    constexpr unsigned continuation = 0x80;
    constexpr unsigned mask = 0xC0;
    if (text.size() <= length) {
        return text;
    }
    while (length > 0 && (static_cast<unsigned char>(text[length]) & mask) == continuation) {
        --length;
    }
    return text.substr(0, length);
}

/// Numbers the elements in the order of the JSON document, without the model.
class Numbers final : private exporter::ModelVisitor {
public:
    explicit Numbers(const KelModel& model) { walkModel(model, exporter::documentParts, *this); }
    [[nodiscard]] std::uint32_t of(const KelObject* object) const {
        return object != nullptr ? numbers_.numberOf(*object) : 0;
    }

private:
    void enter(const KelObject& object) override {
        if (object.elementType != KelElementType::model && numbers_.numberOf(object) == 0) {
            numbers_.give(object, ++count_);
        }
    }
    KelNumbering numbers_;
    std::uint32_t count_ = 0;
};

/// Writes the rows of the elements, in the order of the JSON document.
class ElementRows final : private exporter::ModelVisitor {
public:
    ElementRows(const ImportedParts& parts, const source::SourceMap& places, const std::vector<std::string>& files,
                RowWriter& rows)
        : parts_(parts), sources_(places), files_(files), rows_(rows), numbers_(parts.model),
          ids_(parts.model, &places), classNames_(parts.model) {}

    void write() { walkModel(parts_.model, exporter::documentParts, *this); }
    [[nodiscard]] ElementPlaces takePlaces() { return std::move(places_); }

private:
    void enter(const KelObject& object) override {
        if (object.elementType == KelElementType::model) {
            return;
        }
        const std::uint32_t number = numbers_.of(&object);
        if (number > written_) { // an argument may have two owners
            written_ = number;
            writeElement(object, number);
            exporter::asItsClass(object, [this](const auto& one) { writePart(one); });
        }
        owners_.push_back({&object, names_.size()});
        names_.append(object.getName().view()).append(separator);
    }
    void leave(const KelObject& object) override {
        if (object.elementType != KelElementType::model) {
            names_.resize(owners_.back().nameBegin);
            owners_.pop_back();
        }
    }

    [[nodiscard]] std::string qualifiedNameOf(const KelObject& object) const {
        const std::string_view own = object.getName().view();
        if (names_.size() + own.size() <= longestQualifiedName) {
            return names_ + std::string(own);
        }
        const std::size_t room = longestQualifiedName - std::min(own.size(), longestQualifiedName);
        const std::size_t border = names_.find(separator, names_.size() - std::min(room, names_.size()));
        const std::string above = border == std::string::npos ? std::string() : names_.substr(border);
        return std::string(ellipsis) + above + std::string(cutAfter(own, longestQualifiedName));
    }

    void writeElement(const KelObject& object, std::uint32_t number) {
        const std::string_view name = object.getName().view();
        std::string_view stereotype;
        std::string_view documentation;
        exporter::asItsClass(object, [&](const auto& one) {
            documentation = one.description.view();
            if constexpr (requires { one.stereotype; }) {
                stereotype = one.stereotype.view();
            }
        });
        const source::SourcePlace* place = sources_.find(object);
        rows_.start(TableId::element);
        rows_.name(name);
        rows_.reference(1);
        rows_.text(ids_.idOf(object));
        rows_.text(exporter::kindWord(object.elementType));
        rows_.name(qualifiedNameOf(object));
        rows_.reference(owners_.empty() ? 0 : numbers_.of(owners_.back().object));
        rows_.text(stereotype);
        rows_.text(documentation);
        rows_.text(place != nullptr ? std::string_view(files_[place->file]) : std::string_view());
        if (place != nullptr) {
            rows_.integer(static_cast<std::int64_t>(place->begin.line));
        } else {
            rows_.null();
        }
        rows_.text(place != nullptr ? std::string_view(place->quid) : std::string_view());
        rows_.text(searchWords(name, documentation));
        const bool isType = dynamic_cast<const KelType*>(&object) != nullptr;
        if (place != nullptr && !isType) {
            places_.add(place->file, place->begin.offset, number);
        }
        writeNotes(object, number);
    }

    void writeNotes(const KelObject& object, std::uint32_t number) {
        std::int64_t position = 0;
        for (const KelNote* note : static_cast<const KelElement&>(object).notes()) {
            const std::string_view text = note->description.view();
            rows_.start(TableId::note);
            rows_.name(cutAfter(text.substr(0, text.find_first_of("\r\n")), longestLabel));
            rows_.reference(number);
            rows_.text(text);
            rows_.integer(++position);
        }
    }

    /// Begins the row of an element's further columns.
    template <class Element>
    void startPart(TableId table, const Element& element) {
        rows_.start(table);
        rows_.reference(numbers_.of(&element));
        rows_.name(element.getName().view());
    }
    using exporter::ModelVisitor::startPart;
    [[nodiscard]] const KelObject* owner() const { return owners_.empty() ? nullptr : owners_.back().object; }

    void writePart(const KelModel& /*model*/) {}
    void writePart(const KelDesignPackage& /*package*/) {}

    struct Meaning {
        std::string_view word;
        const KelClass* one = nullptr;
    };

    [[nodiscard]] Meaning meaningOf(const KelConcreteType& type) const {
        const std::string_view whole = type.getName().view();
        std::string_view plain = text::trimmed(whole.substr(0, whole.find_first_of("<[")));
        while (plain.ends_with('*') || plain.ends_with('&')) {
            plain = text::trimmed(plain.substr(0, plain.size() - 1));
        }
        for (const std::string_view name : {whole, plain}) {
            if (const KelClass* one = classNames_.find(name)) {
                return {"class", one};
            }
        }
        if (!classNames_.named(text::lastPart(plain)).empty()) {
            return {"several classes"};
        }
        const bool isKnown = type.dataType.view() != "undefined" || exporter::sql::typeOfName(whole) ||
                             exporter::sql::typeOfName(plain) || plain == "void" || plain.empty();
        return {isKnown ? "known" : "unknown"};
    }

    void writeType(const KelConcreteType& type, std::string_view kind, const KelConcreteType* derivedFrom) {
        const Meaning meaning = meaningOf(type);
        startPart(TableId::type, type);
        rows_.text(kind);
        rows_.text(type.dataType.view());
        rows_.integer(type.length);
        rows_.integer(type.scale);
        rows_.flag(type.userDefined);
        rows_.text(type.physicalName.view());
        rows_.reference(numbers_.of(derivedFrom));
        rows_.text(meaning.word);
        rows_.reference(numbers_.of(meaning.one));
    }
    void writePart(const KelBaseType& type) { writeType(type, "base", nullptr); }
    void writePart(const KelDerivedType& type) {
        writeType(type, "derived", type.getDerivedFromConcreteType());
        for (const KelTypeValue* value : type.typeValues()) {
            rows_.start(TableId::typeValue);
            rows_.name(value->getName().view());
            rows_.reference(numbers_.of(&type));
            rows_.text(value->value.view());
            rows_.integer(value->position);
        }
    }

    void writePart(const KelClass& one) {
        startPart(TableId::classTable, one);
        rows_.text(exporter::classKindWord(kinds_.kindOf(one)));
        rows_.text(wordOrNothing(exporter::categoryWord(one.categoryType)));
        rows_.text(one.stereotype.view());
        rows_.flag(one.isAbstract);
        rows_.flag(one.isPersistent);
        rows_.integer(one.space);
        rows_.text(one.multiplicity.view());
        rows_.integer(one.concurrency);
    }

    void writePart(const KelAttribute& attribute) {
        startPart(TableId::attribute, attribute);
        rows_.reference(numbers_.of(owner()));
        rows_.reference(numbers_.of(attribute.getType()));
        rows_.text(wordOrNothing(exporter::visibilityWord(attribute.visibility)));
        rows_.text(wordOrNothing(exporter::containmentWord(attribute.containment)));
        rows_.flag(attribute.isStatic);
        rows_.flag(attribute.isDerived);
        rows_.integer(attribute.position);
        rows_.text(attribute.initialValue.view());
    }

    void writePart(const KelOperation& operation) {
        startPart(TableId::operation, operation);
        rows_.reference(numbers_.of(owner()));
        rows_.reference(numbers_.of(operation.getReturnType()));
        rows_.text(wordOrNothing(exporter::visibilityWord(operation.visibility)));
        rows_.integer(operation.concurrency);
        rows_.flag(operation.isFriend);
        rows_.flag(operation.isStatic);
        rows_.flag(operation.isVirtual);
        rows_.text(operation.semantics.view());
        rows_.text(operation.precondition.view());
        rows_.text(operation.postcondition.view());
    }

    void writePart(const KelArgument& argument) {
        const bool isOfOperation = owner() != nullptr && owner()->elementType == KelElementType::operation;
        startPart(TableId::argument, argument);
        rows_.reference(isOfOperation ? numbers_.of(owner()) : 0);
        rows_.reference(isOfOperation ? 0 : numbers_.of(owner()));
        rows_.reference(numbers_.of(argument.getType()));
        rows_.integer(argument.position);
        rows_.text(argument.initialValue.view());
    }

    void writePart(const KelAssociation& association) {
        startPart(TableId::association, association);
        rows_.flag(association.isAggregation);
        positions_ = 0;
    }

    void writePart(const KelAssociationRole& role) {
        startPart(TableId::role, role);
        rows_.reference(numbers_.of(owner()));
        rows_.reference(numbers_.of(role.getAssociatedClass()));
        rows_.text(role.multiplicity.view());
        rows_.flag(role.isAggregate);
        rows_.flag(role.isNavigable);
        rows_.flag(role.isStatic);
        rows_.flag(role.isFriend);
        rows_.flag(role.isSource);
        rows_.text(wordOrNothing(exporter::containmentWord(role.containment)));
        rows_.integer(++positions_);
        for (const KelForeignKey* key : role.foreignKeys()) {
            if (numbers_.of(key) != 0) {
                rows_.start(TableId::roleForeignKey);
                rows_.name(key->getName().view());
                rows_.reference(numbers_.of(&role));
                rows_.reference(numbers_.of(key));
            }
        }
    }

    void writePart(const KelGeneralization& generalization) {
        for (const KelClass* subtype : generalization.subtypeClasses()) {
            for (const KelClass* supertype : generalization.supertypeClasses()) {
                if (numbers_.of(subtype) == 0 || numbers_.of(supertype) == 0) {
                    continue;
                }
                rows_.start(TableId::generalization);
                rows_.name(generalization.getName().view());
                rows_.reference(numbers_.of(&generalization));
                rows_.reference(numbers_.of(subtype));
                rows_.reference(numbers_.of(supertype));
                rows_.text(wordOrNothing(exporter::visibilityWord(generalization.visibility)));
                rows_.flag(generalization.isVirtual);
                rows_.flag(generalization.isFriend);
            }
        }
    }

    void writePart(const KelRealization& realization) {
        startPart(TableId::realization, realization);
        rows_.reference(numbers_.of(realization.getRealizationClass()));
        rows_.reference(numbers_.of(realization.getSpecificationClass()));
    }

    void writePart(const KelDependency& dependency) {
        startPart(TableId::dependency, dependency);
        rows_.reference(numbers_.of(dependency.getClientClass()));
        rows_.reference(numbers_.of(dependency.getSupplierClass()));
    }

    void writeKey(const KelKey& key, std::string_view kind, bool isPrimary, const KelKey* candidate) {
        startPart(TableId::keyTable, key);
        rows_.reference(numbers_.of(owner()));
        rows_.text(kind);
        rows_.flag(isPrimary);
        rows_.flag(key.userDefined);
        rows_.reference(numbers_.of(candidate));
        std::int64_t position = 0;
        for (const KelAttribute* attribute : key.attributes()) {
            if (numbers_.of(attribute) != 0) {
                rows_.start(TableId::keyAttribute);
                rows_.name(attribute->getName().view());
                rows_.reference(numbers_.of(&key));
                rows_.reference(numbers_.of(attribute));
                rows_.integer(++position);
            }
        }
    }
    void writePart(const KelCandidateKey& key) {
        const KelClass* primary = key.getPrimaryOfClass();
        writeKey(key, "candidate", primary != nullptr && primary == key.getAssociatedClass(), nullptr);
    }
    void writePart(const KelForeignKey& key) {
        writeKey(key, "foreign", false, key.getCandidateKey());
        for (const KelAssociationRoleNameMap* map : key.roleNameMaps()) {
            rows_.start(TableId::roleNameMap);
            rows_.name(map->getName().view());
            rows_.reference(numbers_.of(&key));
            rows_.reference(numbers_.of(map->getSourceAttribute()));
            rows_.reference(numbers_.of(map->getDestinationAttribute()));
        }
    }

    void writePart(const KelClassDiagram& diagram) {
        startPart(TableId::diagram, diagram);
        std::int64_t position = 0;
        for (const KelModelElement* shown : diagram.modelElements()) {
            if (numbers_.of(shown) != 0) {
                rows_.start(TableId::diagramElement);
                rows_.name(shown->getName().view());
                rows_.reference(numbers_.of(&diagram));
                rows_.reference(numbers_.of(shown));
                rows_.integer(++position);
            }
        }
    }

    static std::string_view wordOrNothing(const char* word) { return word != nullptr ? word : ""; }

    struct Owner {
        const KelObject* object;
        std::size_t nameBegin; // of its name in `names_`
    };

    const ImportedParts& parts_;
    const source::SourceMap& sources_;
    const std::vector<std::string>& files_;
    RowWriter& rows_;
    Numbers numbers_;
    exporter::ElementIds ids_;
    exporter::ClassNames classNames_;
    exporter::ClassKinds kinds_;
    std::vector<Owner> owners_;
    std::string names_; // of the owners, each with a separator
    std::uint32_t written_ = 0;
    std::int64_t positions_ = 0; // of roles in the association
    ElementPlaces places_;
};

} // namespace

ElementPlaces writeElementRows(const ImportedParts& parts, const source::SourceMap& places,
                               const std::vector<std::string>& files, RowWriter& rows) {
    ElementRows elements(parts, places, files, rows);
    elements.write();
    return elements.takePlaces();
}

} // namespace catalog
