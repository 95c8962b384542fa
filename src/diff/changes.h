#pragma once

#include "diff/Matching.h"
#include "diff/Model.h"
#include "diff/rules.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace diff {

/// Differences that do not count unless they are asked for.
struct Shown {
    bool layout = false;
    bool order = false;
    bool quids = false;
    bool encoding = false;
    bool units = false;
};

/// What about an element has changed.
enum class Subject : std::uint8_t { existence, name, owner, field, order, diagramOrder, quid, unit, encoding, layout };

/// A change of one element. One side is `noElement` for an element that was added or removed.
struct Change {
    RuleId rule = 0;
    Kind kind = Kind::model;
    Subject subject = Subject::existence;
    FieldId field{}; ///< for `Subject::field`
    ElementId oldId = noElement;
    ElementId newId = noElement;
    std::uint32_t detail =
        0; ///< for `Subject::order` a `Kind`; for `Subject::layout` an index into the drawings' changes
};

/// A view of a diagram that is drawn differently. Texts are empty on the side that lacks it.
struct LayoutChange {
    std::string view; ///< its kind and name
    std::string from; ///< place, size, colours ...
    std::string to;
    struct Side {
        std::string id;
        std::string qualifiedName;
        std::string file;
        std::uint64_t line = 0;
    };
    Side oldDiagram;
    Side newDiagram;
    Evidence evidence = Evidence::quid;
};

/// A value of a field: none, a text, a flag, a number or a list.
using Value = std::variant<std::monostate, std::string, bool, std::int64_t, std::vector<std::string>>;

/// Two models, the pairs of their elements and what has changed.
///
/// Does not own the models, which must outlive it. Immutable after its making, but for `leaveOut` and `addLayout`.
class Difference {
public:
    /// Compares the models. Time and memory are proportional to them and to what has changed.
    Difference(const Model& oldModel, const Model& newModel, Renames renames, const Shown& shown);

    [[nodiscard]] const Model& oldModel() const { return old_; }
    [[nodiscard]] const Model& newModel() const { return new_; }
    [[nodiscard]] const Matching& matching() const { return matching_; }
    /// In the order of the new model; within an owner what was removed comes first.
    [[nodiscard]] const std::vector<Change>& changes() const { return changes_; }
    [[nodiscard]] const LayoutChange& layoutOf(const Change& change) const { return layout_[change.detail]; }

    /// Adds changes of drawings, behind all others.
    void addLayout(std::vector<LayoutChange> changes);
    /// Removes the changes for which `isLeftOut` is true.
    template <class Predicate>
    void leaveOut(Predicate isLeftOut) {
        std::erase_if(changes_, isLeftOut);
    }

    /// The name of what has changed, as in the JSON document; empty for an element that was added or removed.
    [[nodiscard]] std::string fieldOf(const Change& change) const;
    /// Its old and its new value. Both read the same if only the elements differ that they refer to.
    [[nodiscard]] std::pair<Value, Value> valuesOf(const Change& change) const;
    /// The qualified names of a change's element; the names of diagrams of which only the drawing is known, too.
    [[nodiscard]] std::string oldName(const Change& change) const;
    [[nodiscard]] std::string newName(const Change& change) const;
    /// The new name or, of what was removed, the old one.
    [[nodiscard]] std::string nameOf(const Change& change) const;
    [[nodiscard]] std::optional<Evidence> evidenceOf(const Change& change) const;

private:
    const Model& old_;
    const Model& new_;
    Matching matching_;
    std::vector<Change> changes_;
    std::vector<LayoutChange> layout_;
};

/// How much has changed.
struct Summary {
    std::uint64_t added = 0;
    std::uint64_t removed = 0;
    std::uint64_t renamed = 0;
    std::uint64_t moved = 0;
    std::uint64_t changed = 0; ///< other changes
    std::array<std::uint64_t, 3> byWeight{};

    void add(const Change& change);
};
[[nodiscard]] Summary summaryOf(const Difference& difference);
/// What a rule says of an element: `added` ...; nothing for other changes.
[[nodiscard]] std::optional<Verb> verbOf(const Change& change);

} // namespace diff
