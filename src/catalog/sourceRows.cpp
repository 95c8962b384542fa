#include "catalog/sourceRows.h"

#include "ledger/SourceText.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"
#include "source/TracedText.h"
#include "source/makeSourceMap.h"
#include "units/localText.h"

#include <algorithm>
#include <array>
#include <memory>

namespace catalog {

namespace {

using notation::Construct;
using notation::Event;
using notation::EventKind;

/// The names of properties that say where and how something is drawn, or what other columns have, sorted. By default
/// they are left out also where the ledger gives another reason, which it does in objects that are not imported.
constexpr auto leftOut = std::to_array<std::string_view>({"IncludeAttribute",
                                                          "IncludeOperation",
                                                          "SuppressAttribute",
                                                          "SuppressOperation",
                                                          "anchor",
                                                          "anchor_loc",
                                                          "annotation",
                                                          "autoResize",
                                                          "blinkColor",
                                                          "bold",
                                                          "charSet",
                                                          "color",
                                                          "compartment",
                                                          "defaultFont",
                                                          "default_color",
                                                          "face",
                                                          "file_name",
                                                          "fill_color",
                                                          "font",
                                                          "height",
                                                          "hidden",
                                                          "icon",
                                                          "icon_height",
                                                          "icon_style",
                                                          "icon_width",
                                                          "icon_y_offset",
                                                          "is_loaded",
                                                          "is_unit",
                                                          "italics",
                                                          "justify",
                                                          "line_color",
                                                          "line_style",
                                                          "location",
                                                          "max_height",
                                                          "max_width",
                                                          "nlines",
                                                          "orientation",
                                                          "origin_attachment",
                                                          "origin_x",
                                                          "origin_y",
                                                          "pctDist",
                                                          "quid",
                                                          "quidu",
                                                          "showClassOfObject",
                                                          "showMessageNum",
                                                          "size",
                                                          "strike",
                                                          "terminal_attachment",
                                                          "uid",
                                                          "underline",
                                                          "vertices",
                                                          "width",
                                                          "x_offset",
                                                          "y_coord",
                                                          "zoom"});

/// Whether objects of the kind are parts of a drawing, all of whose properties are left out. The text of a note is not.
bool isDrawn(std::string_view kind) {
    return kind != "NoteView" &&
           (kind.ends_with("View") || kind.ends_with("ViewNew") || kind.ends_with("Label") || kind == "Compartment" ||
            kind == "Font" || kind == "defaults" || kind == "Focus_Of_Control");
}

std::string_view wordOf(const ledger::Reason* reason) {
    return reason != nullptr ? ledger::outcomeWords[static_cast<std::size_t>(reason->outcome)] : "";
}

/// An object of the files.
struct SourceObject {
    std::string name;
    std::string kind;
    std::string quid;
    const ledger::Reason* reason = nullptr;
    std::uint32_t parent = 0;
    std::uint32_t file = 0;
    std::uint64_t offset = 0;
    std::uint64_t line = 0;
};

/// The property whose value is being read.
struct SourceProperty {
    bool isOpen = false;
    bool isKept = false;
    bool isQuid = false;
    std::string name;
    std::uint32_t object = 0;
    const ledger::Reason* reason = nullptr;
    std::uint64_t line = 0;
    std::string value;
};

} // namespace

class SourceRows::Reading {
public:
    Reading(const ImportedParts& parts, const std::vector<OutcomeAt>& outcomes, RowWriter& rows)
        : parts_(parts), outcomes_(outcomes), rows_(rows), text_(parts.tree, parts.trace),
          open_(parts.tree.files.size()), references_(parts.tree.files.size()) {
        const auto common = std::make_shared<ledger::SourceText>(parts.choices.encoding);
        for (const units::ResolvedFile& file : parts.tree.files) {
            texts_.push_back(parts.choices.encodingByFile
                                 ? std::make_shared<ledger::SourceText>(units::encodingOf(file.contents.charSet))
                                 : common);
        }
    }

    source::SourceMap read() {
        source::SourceMapMaker places(parts_.tree, parts_.trace, parts_.model, text_);
        while (text_.next()) {
            places.take(text_.event());
            take(text_.event());
        }
        endProperty();
        return places.finish();
    }

    void writeObjects(const std::vector<std::string>& files, const ElementPlaces& elements) {
        for (const SourceObject& object : objects_) {
            rows_.start(TableId::sourceObject);
            rows_.name(object.name);
            rows_.reference(1);
            rows_.reference(object.parent);
            rows_.name(object.kind);
            rows_.reference(elements.find(object.file, object.offset));
            rows_.text(wordOf(object.reason));
            rows_.text(object.quid);
            rows_.text(files[object.file]);
            rows_.integer(static_cast<std::int64_t>(object.line));
        }
    }

private:
    void take(const Event& event) {
        if (event.kind == EventKind::damage) {
            return;
        }
        if (event.continues) {
            if (isInPiece_) {
                piece_.append(event.startsLine ? "\n" : "").append(event.text);
            }
            return;
        }
        endPiece();
        const bool isObject = event.construct == Construct::object;
        if (event.isProperty()) {
            endProperty();
            startProperty(event);
        }
        if (event.kind == EventKind::start && isObject) {
            endProperty();
            startObject(event);
        } else if (event.kind == EventKind::end && isObject) {
            endProperty();
            open().pop_back();
        } else if (event.kind != EventKind::start && event.kind != EventKind::end && event.kind != EventKind::nothing) {
            startPiece(event);
        }
    }

    /// The objects of the current file that have not ended, by number; 0 for a start that is missing from the file.
    [[nodiscard]] std::vector<std::uint32_t>& open() { return open_[text_.getFile()]; }
    [[nodiscard]] std::string toText(std::string_view bytes) {
        return ledger::isPlain(bytes) ? std::string(bytes) : texts_[text_.getFile()]->toUtf8(bytes);
    }

    /// The outcome of what begins there: outcomes come in the order of the text.
    const ledger::Reason* reasonAt(std::uint64_t offset) {
        const bool isHere =
            next_ < outcomes_.size() && outcomes_[next_].file == text_.getFile() && outcomes_[next_].offset == offset;
        return isHere ? outcomes_[next_++].reason : nullptr;
    }

    /// The innermost object around what comes next; 0 if there is none.
    [[nodiscard]] std::uint32_t innermost() {
        const std::vector<std::uint32_t>& objects = open();
        const auto found =
            std::ranges::find_if(objects.rbegin(), objects.rend(), [](std::uint32_t one) { return one != 0; });
        return found != objects.rend() ? *found : references_[text_.getFile()];
    }

    void startObject(const Event& event) {
        if (event.isImplied) {
            open().push_back(0);
            return;
        }
        SourceObject object;
        object.parent = innermost();
        object.file = text_.getFile();
        object.offset = event.place.offset;
        object.line = event.place.line;
        object.reason = reasonAt(event.place.offset);
        object.kind = toText(event.text);
        if (!event.names.empty()) {
            const notation::Name& name = event.names.size() > 1 ? event.names[1] : event.names.front();
            object.name = toText(name.hasEscapes ? notation::unescaped(name.text) : std::string(name.text));
        }
        objects_.push_back(std::move(object));
        const auto number = static_cast<std::uint32_t>(objects_.size());
        open().push_back(number);
        if (const units::Unit* unit = text_.getUnit(); unit != nullptr && unit->state == units::UnitState::found) {
            references_[unit->file] = number;
        }
    }

    void startProperty(const Event& event) {
        if (open().empty()) {
            return;
        }
        property_.isOpen = true;
        property_.reason = reasonAt(event.keyPlace.offset);
        property_.object = innermost() != 0 ? innermost() : static_cast<std::uint32_t>(objects_.size());
        property_.isQuid = event.key == "quid";
        property_.isKept = property_.object != 0 && isKept(event.key);
        property_.line = event.keyPlace.line;
        property_.value.clear();
        if (property_.isKept) {
            property_.name = toText(event.key);
        }
    }

    [[nodiscard]] bool isAll() const { return parts_.source == SourceDetail::all; }

    [[nodiscard]] bool isKept(std::string_view key) const {
        if (isAll()) {
            return true;
        }
        namespace reasons = ledger::reasons;
        const ledger::Reason* reason = property_.reason;
        return reason != nullptr && reason->outcome == ledger::Outcome::dropped && reason != &reasons::layout &&
               reason != &reasons::layoutOfNote && !isDrawn(objects_[property_.object - 1].kind) &&
               !std::ranges::binary_search(leftOut, key);
    }

    void startPiece(const Event& event) {
        if (!property_.isOpen || !(property_.isKept || property_.isQuid)) {
            return;
        }
        isInPiece_ = true;
        isQuoted_ = event.kind == EventKind::text;
        if (event.kind == EventKind::location) {
            piece_.append("(").append(event.text).append(", ").append(event.y).append(")");
        } else {
            piece_.append(event.kind == EventKind::reference ? "@" : "").append(event.text);
        }
    }

    void endPiece() {
        if (!isInPiece_) {
            return;
        }
        const std::string value = toText(isQuoted_ ? notation::unescaped(piece_) : piece_);
        property_.value.append(property_.value.empty() ? "" : " ").append(value);
        piece_.clear();
        isInPiece_ = false;
    }

    void endProperty() {
        endPiece();
        if (!property_.isOpen) {
            return;
        }
        property_.isOpen = false;
        if (property_.isQuid && property_.object != 0) {
            objects_[property_.object - 1].quid = property_.value;
        }
        if (property_.isKept && (isAll() || !property_.value.empty())) {
            rows_.start(TableId::sourceProperty);
            rows_.name(property_.name);
            rows_.reference(property_.object);
            rows_.text(property_.value);
            rows_.text(wordOf(property_.reason));
            rows_.integer(static_cast<std::int64_t>(property_.line));
        }
    }

    const ImportedParts& parts_;
    const std::vector<OutcomeAt>& outcomes_;
    RowWriter& rows_;
    source::TracedText text_;
    std::vector<std::shared_ptr<ledger::SourceText>> texts_; // by file
    std::vector<std::vector<std::uint32_t>> open_;           // by file
    std::vector<std::uint32_t> references_;                  // by file: the object that names it, whose content it has
    std::vector<SourceObject> objects_; // in the order of the text, written last: the quid may come late, and the
                                        // elements have no numbers yet
    std::size_t next_ = 0;              // of the outcomes
    SourceProperty property_;
    bool isInPiece_ = false;
    bool isQuoted_ = false;
    std::string piece_; // of the value, as it stands
};

SourceRows::SourceRows(const ImportedParts& parts, const std::vector<OutcomeAt>& outcomes, RowWriter& rows)
    : reading_(std::make_unique<Reading>(parts, outcomes, rows)) {}

SourceRows::~SourceRows() = default;

source::SourceMap SourceRows::read() {
    return reading_->read();
}

void SourceRows::writeObjects(const std::vector<std::string>& files, const ElementPlaces& elements) {
    reading_->writeObjects(files, elements);
}

} // namespace catalog
