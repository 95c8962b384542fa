#include "export/writeJson.h"

#include "export/JsonMembers.h"
#include "export/ModelNumbers.h"
#include "export/exporters.h"
#include "export/jsonCommonMembers.h"
#include "export/jsonForms.h"
#include "export/modelWalk.h"
#include "host/model/KelModel.h"
#include "text/IndentedJson.h"
#include "text/Output.h"

namespace exporter {

namespace {

class MemberWriter final : public JsonMembers {
public:
    MemberWriter(text::IndentedJson& json, const ModelNumbers& numbers) : json_(json), numbers_(numbers) {}

    void text(const char* member, const KelString& value) override {
        json_.key(member);
        json_.text(value.view());
    }
    void word(const char* member, const char* value) override {
        json_.key(member);
        json_.text(value);
    }
    void number(const char* member, std::int64_t value) override {
        json_.key(member);
        json_.number(value);
    }
    void trueFlag(const char* member) override {
        json_.key(member);
        json_.trueFlag();
    }
    void reference(const char* member, const KelObject* target) override {
        if (const std::uint32_t number = numbers_.numberOf(target); number != 0) {
            json_.key(member);
            json_.number(number);
        }
    }
    void references(const char* member, std::span<const KelObject* const> targets) override {
        bool started = false;
        for (const KelObject* target : targets) {
            const std::uint32_t number = numbers_.numberOf(target);
            if (number == 0) {
                continue;
            }
            if (!started) {
                startList(member);
                started = true;
            }
            json_.number(number);
        }
        if (started) {
            endList();
        }
    }
    void startList(const char* member) override {
        json_.key(member);
        json_.startList();
    }
    void endList() override { json_.endList(); }
    void entry(const KelString& text) override { json_.text(text.view()); }
    void startEntry() override { json_.startObject(); }
    void endEntry() override { json_.endObject(); }
    void startObject(const char* member) override {
        json_.key(member);
        json_.startObject();
    }
    void endObject() override { json_.endObject(); }

private:
    text::IndentedJson& json_;
    const ModelNumbers& numbers_;
};

class DocumentWriter final : public ModelVisitor {
public:
    DocumentWriter(text::IndentedJson& json, const ModelNumbers& numbers, const source::SourceMap* places)
        : json_(json), numbers_(numbers), places_(places) {}

    void enter(const KelObject& object) override {
        const JsonForm& form = jsonFormOf(object);
        MemberWriter members(json_, numbers_);
        json_.startObject();
        members.reference("id", &object);
        writePlace(object, places_, members);
        members.optionalWord("kind", form.kind);
        form.writeMembers(object, members);
    }
    void startPart(const Part& part) override {
        json_.key(part.member);
        json_.startList();
    }
    void endPart(const Part& /*part*/) override { json_.endList(); }
    void leave(const KelObject& /*object*/) override { json_.endObject(); }

private:
    text::IndentedJson& json_;
    const ModelNumbers& numbers_;
    const source::SourceMap* places_; // null: not written
};

} // namespace

void writeJson(const ExportContext& context) {
    const source::SourceMap* places = context.options.isOn("places") ? context.source : nullptr;
    const ModelNumbers numbers(context.model, places);
    text::BufferedOutput output(context.output);
    text::IndentedJson json(output);
    json.startObject();
    json.key("format");
    json.text("petal-model");
    json.key("formatVersion");
    json.number(1);
    if (!numbers.areTextsValid()) {
        json.key("lossy");
        json.trueFlag();
    }
    json.key("model");
    DocumentWriter document(json, numbers, places);
    walkModel(context.model, documentParts, document);
    json.endObject();
    output.put('\n');
    output.flush();
}

} // namespace exporter
