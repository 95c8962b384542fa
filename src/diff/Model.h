#pragma once

#include "host/text/KelTextHash.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tsl/robin_set.h>
#include <vector>

namespace diff {

/// An element of a model: its index in the order of the JSON document. 0 is the model itself.
using ElementId = std::uint32_t;
inline constexpr ElementId noElement = ~ElementId{0};

enum class Kind : std::uint8_t {
    model,
    package,
    classObject,
    attribute,
    operation,
    argument,
    key,
    association,
    role,
    generalization,
    realization,
    dependency,
    diagram,
    type,
};
inline constexpr std::size_t kindCount = 14;

/// The word of a kind, as in the JSON document.
[[nodiscard]] std::string_view kindWord(Kind kind);
/// The list of the JSON document in which an owner has elements of a kind; several kinds share one.
[[nodiscard]] std::string_view listName(Kind kind);

/// The members of the JSON document that say something about an element, or about a record within one.
enum class FieldId : std::uint8_t {
    description,
    notes,
    stereotype,
    category,
    isAbstract,
    isPersistent,
    space,
    multiplicity,
    concurrency,
    type,
    returnType,
    visibility,
    containment,
    isStatic,
    isDerived,
    isVirtual,
    isFriend,
    isNavigable,
    isAggregate,
    isAggregation,
    isSource,
    position,
    initialValue,
    semantics,
    precondition,
    postcondition,
    classOfRole,
    subtypes,
    supertypes,
    realizationClass,
    specificationClass,
    client,
    supplier,
    foreignKeys,
    keyKind,
    isPrimary,
    candidateKey,
    keyAttributes,
    roleNameMaps,
    diagramElements,
    typeKind,
    dataType,
    length,
    scale,
    userDefined,
    physicalName,
    derivedFrom,
    values,
    origins,
    // of records only
    recordName,
    recordValue,
    mapSource,
    mapDestination,
    sourceEncoding,
    sourceFormat,
    sourcePath,
    sourceKind,
    toolVendor,
    toolName,
    toolVersions,
    toolWeb,
    methodology,
    bridgeId,
};
inline constexpr std::size_t fieldCount = static_cast<std::size_t>(FieldId::bridgeId) + 1;

/// The form of a field's value. A field that the document leaves out has the empty text, 0, false, no target or no
/// members.
enum class ValueForm : std::uint8_t { text, number, flag, reference, texts, references, records };

[[nodiscard]] ValueForm formOf(FieldId field);
/// The member's name in the JSON document.
[[nodiscard]] std::string_view memberName(FieldId field);

/// A field that has a value. `Model` reads it.
struct Field {
    FieldId id;
    std::uint32_t size = 0;  ///< of a text in bytes, of a list in members
    std::uint64_t value = 0; ///< a number or target; of a text or a list its first place in the model's pool
};

struct Element {
    Kind kind = Kind::model;
    ElementId owner = noElement;
    ElementId end = 0;            ///< after the last element within this one
    std::uint32_t firstField = 0; ///< of the model's fields; those of an element are sorted by their ids
    std::uint32_t fieldCount = 0;
    std::uint32_t file = 0; ///< of the model's files; 0 for the model's own
    std::uint32_t line = 0; ///< 0: not known
    std::string_view name;
    std::string_view quid; ///< in lower case; empty if there is none
};

/// A part of an element that has no id: a value of a type, a pair of attributes of a key, an origin.
struct Record {
    std::uint32_t firstField = 0;
    std::uint32_t fieldCount = 0;
};

/// A model as its JSON document has it, in memory: what a comparison needs, and no more.
///
/// Owns the document's bytes, in which all texts are; immutable once it is read, so several threads may use it.
class Model {
public:
    /// A model without elements but itself, as the other side of one that was added or removed as a whole.
    Model();
    Model(Model&&) noexcept = default;
    Model& operator=(Model&&) noexcept = default;
    ~Model() = default;

    [[nodiscard]] std::span<const Element> elements() const { return elements_; }
    [[nodiscard]] const Element& operator[](ElementId id) const { return elements_[id]; }
    /// How many there are, without the model itself.
    [[nodiscard]] std::uint32_t count() const { return static_cast<std::uint32_t>(elements_.size()) - 1; }
    /// The paths of the units' files; the first is the model's own and empty.
    [[nodiscard]] const std::vector<std::string>& files() const { return files_; }

    [[nodiscard]] std::span<const Field> fieldsOf(ElementId id) const {
        return std::span(fields_).subspan(elements_[id].firstField, elements_[id].fieldCount);
    }
    [[nodiscard]] std::span<const Field> fieldsOf(const Record& record) const {
        return std::span(fields_).subspan(record.firstField, record.fieldCount);
    }
    /// Null for a field that has the value of one left out.
    [[nodiscard]] const Field* find(ElementId id, FieldId field) const;

    [[nodiscard]] std::string_view text(const Field& field) const { return {text_.get() + field.value, field.size}; }
    /// Of `find`; empty for null.
    [[nodiscard]] std::string_view text(const Field* field) const {
        return field != nullptr ? text(*field) : std::string_view();
    }
    [[nodiscard]] std::span<const std::string_view> texts(const Field& field) const {
        return std::span(texts_).subspan(field.value, field.size);
    }
    [[nodiscard]] std::span<const ElementId> references(const Field& field) const {
        return std::span(references_).subspan(field.value, field.size);
    }
    [[nodiscard]] std::span<const Record> records(const Field& field) const {
        return std::span(records_).subspan(field.value, field.size);
    }

    /// The first element directly within one; `noElement` without any.
    [[nodiscard]] ElementId firstWithin(ElementId id) const { return elements_[id].end > id + 1 ? id + 1 : noElement; }
    /// The one after it in the same owner; `noElement` after the last.
    [[nodiscard]] ElementId nextWithin(ElementId id) const {
        const ElementId next = elements_[id].end;
        const ElementId owner = elements_[id].owner;
        return owner != noElement && next < elements_[owner].end ? next : noElement;
    }

private:
    friend class ModelReader;

    std::vector<Element> elements_;
    std::vector<Field> fields_;
    std::vector<std::string_view> texts_;
    std::vector<ElementId> references_;
    std::vector<Record> records_;
    std::vector<std::string> files_{""};
    std::shared_ptr<const char> text_; // bytes that do not move with the model, as the views into them
};

/// The names from the model's packages down to the element, joined with "::"; for the model itself, its name.
[[nodiscard]] std::string qualifiedName(const Model& model, ElementId id);

/// The ids that the elements of a model have in all outputs (`exporter::ElementIds`). The model must outlive it. Made
/// in time and memory proportional to the model.
class LastingIds {
public:
    explicit LastingIds(const Model& model);
    [[nodiscard]] std::string idOf(ElementId id) const;

private:
    const Model& model_;
    std::vector<std::uint64_t> hashes_; // of the names; 0: the quid is the id
};

/// The elements that alone have their quid. The model must outlive it. Made in time and memory proportional to the
/// model.
class OwnQuids {
public:
    explicit OwnQuids(const Model& model);
    /// Whether the element has one of its own.
    [[nodiscard]] bool operator[](ElementId id) const { return isOwn_[id]; }
    /// The element that has the quid alone; `noElement` without one.
    [[nodiscard]] ElementId find(std::string_view quid) const;

private:
    /// Elements stand for their quids, so that the table is small.
    struct QuidHash {
        const Model* model;
        std::size_t operator()(ElementId id) const { return (*this)((*model)[id].quid); }
        std::size_t operator()(std::string_view quid) const { return KelTextHash()(quid); }
    };
    struct SameQuid {
        using is_transparent = void;
        const Model* model;
        bool operator()(ElementId one, ElementId other) const { return (*this)(one, (*model)[other].quid); }
        bool operator()(ElementId id, std::string_view quid) const { return (*model)[id].quid == quid; }
        bool operator()(std::string_view quid, ElementId id) const { return (*this)(id, quid); }
    };
    static constexpr bool storesHash = true; // else most comparisons would read two elements

    std::vector<bool> isOwn_;
    tsl::robin_set<ElementId, QuidHash, SameQuid, std::allocator<ElementId>, storesHash> first_; // of each quid
};

/// A document that is not one of petal's models. Its text says why, and where.
struct BadDocument : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads a JSON document that petal wrote, of format version 1, with or without the places of elements. Throws
/// `BadDocument`. Takes time and memory proportional to the document, and no stack for the depth of the model.
[[nodiscard]] Model readModel(std::string document);

} // namespace diff
