#include "export/json/writeJson.h"

#include "export/Exporter.h"
#include "export/asItsClass.h"
#include "export/json/JsonMembers.h"
#include "export/json/elementMembers.h"
#include "export/modelWalk.h"
#include "host/model/KelAssociationRoleNameMap.h"
#include "host/model/KelMetadataOrigin.h"
#include "host/model/KelNote.h"
#include "host/model/KelTypeValue.h"
#include "source/SourceMap.h"
#include "text/IndentedJson.h"
#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace exporter {

namespace {

/// The document holds the name and every text field of an object but these, and no `KelTypeTexts`. The last row for a
/// class counts.
struct TextRule {
    KelElementType type; // and the classes derived from it
    std::string_view field;
    bool isWritten;
};
constexpr auto textRules = std::to_array<TextRule>({
    {KelElementType::note, "name", false},
    {KelElementType::metadataOrigin, "name", false},
    {KelElementType::modelObject, "physicalName", false},
    {KelElementType::concreteType, "physicalName", true},
    {KelElementType::key, "description", false},
    {KelElementType::typeValue, "description", false},
    {KelElementType::associationRoleNameMap, "description", false},
});

bool isWritten(const KelMetaClass& metaClass, std::string_view field) {
    bool result = true;
    for (const TextRule& rule : textRules) {
        if (metaClass.isA(rule.type) && rule.field == field) {
            result = rule.isWritten;
        }
    }
    return result;
}

/// Tells whether the texts that the document will hold are valid UTF-8.
class TextCheck {
public:
    TextCheck() {
        for (const KelMetaClass& metaClass : KelMetaClass::all()) {
            ClassTexts& texts = texts_[static_cast<std::size_t>(metaClass.getCode())];
            texts.hasName = isWritten(metaClass, "name");
            for (const KelField& field : metaClass.fields()) {
                const auto* text = std::get_if<KelString KelObject::*>(&field.member);
                if (text != nullptr && isWritten(metaClass, field.name)) {
                    texts.fields.push_back(*text);
                }
            }
        }
    }

    /// The texts of an element and of the objects without a number in it.
    [[nodiscard]] bool isValid(const KelObject& element) const {
        return hasValidTexts(element) &&
               asItsClass(element, [this](const auto& object) { return hasValidParts(object); });
    }

private:
    struct ClassTexts {
        bool hasName = false;
        std::vector<KelString KelObject::*> fields;
    };

    [[nodiscard]] bool hasValidTexts(const KelObject& object) const {
        const ClassTexts& texts = texts_[static_cast<std::size_t>(object.elementType)];
        return (!texts.hasName || text::isValidUtf8(object.getName().view())) &&
               std::ranges::all_of(texts.fields, [&](auto text) { return text::isValidUtf8((object.*text).view()); });
    }
    template <class Links>
    [[nodiscard]] bool areValid(const Links& links) const {
        for (const KelObject* object : links) {
            if (!hasValidTexts(*object)) {
                return false;
            }
        }
        return true;
    }
    [[nodiscard]] bool hasValidParts(const KelElement& element) const { return areValid(element.notes()); }
    // The document has no place for the notes of these; no import makes any.
    [[nodiscard]] bool hasValidParts(const KelModel& model) const { return areValid(model.metadataOrigins()); }
    [[nodiscard]] bool hasValidParts(const KelDerivedType& type) const { return areValid(type.typeValues()); }
    [[nodiscard]] bool hasValidParts(const KelForeignKey& key) const { return areValid(key.roleNameMaps()); }
    [[nodiscard]] bool hasValidParts(const KelBaseType& /*type*/) const { return true; }
    [[nodiscard]] bool hasValidParts(const KelCandidateKey& /*key*/) const { return true; }

    std::array<ClassTexts, 1 + static_cast<std::size_t>(KelElementType::package)> texts_; // by class
};

/// Finds out what must be known before the first line is written: the number of every object, counted from 1 in the
/// order of the document, and whether all texts are valid UTF-8, if that is told.
class Survey final : private ModelVisitor {
public:
    /// `places`, unless null, are written, too.
    Survey(const KelModel& model, const source::SourceMap* places, Lossy lossy)
        : places_(places), looksAtTexts_(lossy == Lossy::told) {
        walkModel(model, documentParts, *this);
    }

    [[nodiscard]] const KelNumbering& getNumbers() const { return numbers_; }
    [[nodiscard]] bool areTextsValid() const { return areTextsValid_; }

private:
    void enter(const KelObject& object) override {
        if (numbers_.numberOf(object) == 0) { // an argument may have two owners
            numbers_.give(object, ++count_);
        }
        areTextsValid_ = areTextsValid_ && (!looksAtTexts_ || (check_.isValid(object) && isPlaceValid(object)));
    }
    [[nodiscard]] bool isPlaceValid(const KelObject& object) const {
        const source::SourcePlace* place = places_ != nullptr ? places_->find(object) : nullptr;
        return place == nullptr || (text::isValidUtf8(place->quid) &&
                                    (place->file == 0 || text::isValidUtf8(places_->getFiles()[place->file])));
    }

    const source::SourceMap* places_;
    bool looksAtTexts_;
    TextCheck check_;
    KelNumbering numbers_;
    std::uint32_t count_ = 0;
    bool areTextsValid_ = true;
};

/// Members "quid", "file" (not for the model's own file) and "line" of an object that has a place.
void writePlace(const KelObject& object, const source::SourceMap& places, JsonMembers& members) {
    const source::SourcePlace* place = places.find(object);
    if (place == nullptr) {
        return;
    }
    if (!place->quid.empty()) {
        members.text("quid", std::string_view(place->quid));
    }
    if (place->file != 0) {
        members.text("file", std::string_view(places.getFiles()[place->file]));
    }
    if (place->begin.line != 0) { // else only quids are known
        members.number("line", static_cast<std::int64_t>(place->begin.line));
    }
}

class DocumentWriter final : public ModelVisitor {
public:
    DocumentWriter(text::JsonTaker& json, const KelNumbering& numbers, const source::SourceMap* places)
        : json_(json), members_(json, numbers), places_(places) {}

    void enter(const KelObject& object) override {
        json_.startObject();
        members_.reference("id", &object);
        if (places_ != nullptr) {
            writePlace(object, *places_, members_);
        }
        writeMembers(object, members_);
    }
    void startPart(const Part& part) override {
        json_.key(part.member);
        json_.startList();
    }
    void endPart(const Part& /*part*/) override { json_.endList(); }
    void leave(const KelObject& /*object*/) override { json_.endObject(); }

private:
    text::JsonTaker& json_;
    JsonMembers members_;
    const source::SourceMap* places_; // null: not written
};

} // namespace

void giveDocument(const KelModel& model, const source::SourceMap* places, Lossy lossy, text::JsonTaker& taker) {
    const Survey survey(model, places, lossy);
    taker.startObject();
    taker.key("format");
    taker.text("petal-model");
    taker.key("formatVersion");
    taker.number(1);
    if (!survey.areTextsValid()) {
        taker.key("lossy");
        taker.trueFlag();
    }
    taker.key("model");
    DocumentWriter document(taker, survey.getNumbers(), places);
    walkModel(model, documentParts, document);
    taker.endObject();
}

void writeJson(const ExportContext& context) {
    text::BufferedOutput output(context.folder.open(""));
    text::IndentedJson json(output);
    giveDocument(context.model, context.options.isOn("places") ? context.getSource() : nullptr, Lossy::told, json);
    output.put('\n');
    output.flush();
}

} // namespace exporter
