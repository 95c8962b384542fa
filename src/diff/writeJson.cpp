#include "diff/writers.h"
#include "text/IndentedJson.h"
#include "text/Output.h"
#include "text/escape.h"

#include <algorithm>
#include <memory>

namespace diff {

namespace {

class JsonWriter {
public:
    JsonWriter(const Report& report, text::BufferedOutput& output)
        : report_(report), difference_(report.difference), json_(output) {}

    void write() {
        json_.startObject();
        text("format", "petal-diff");
        number("formatVersion", 1);
        writeSummary();
        json_.key("changes");
        json_.startList();
        for (const Change& change : difference_.changes()) {
            writeChange(change);
        }
        json_.endList();
        json_.endObject();
    }

private:
    void text(std::string_view key, std::string_view value) {
        json_.key(key);
        json_.text(value);
    }
    void number(std::string_view key, std::uint64_t value) {
        json_.key(key);
        json_.number(static_cast<std::int64_t>(value));
    }

    void writeSummary() {
        const Summary summary = summaryOf(difference_);
        json_.key("summary");
        json_.startObject();
        writeFile("old", report_.oldFile, difference_.oldModel());
        writeFile("new", report_.newFile, difference_.newModel());
        const Matching& matching = difference_.matching();
        text("matchedBy", matching.isByName ? "name" : "quid");
        number("added", summary.added);
        number("removed", summary.removed);
        number("renamed", summary.renamed);
        number("moved", summary.moved);
        number("changed", summary.changed);
        for (const Weight weight : {Weight::breaking, Weight::compatible, Weight::information}) {
            number(weightWord(weight), summary.byWeight[static_cast<std::size_t>(weight)]);
        }
        json_.endObject();
    }
    void writeFile(std::string_view key, const std::string& file, const Model& model) {
        json_.key(key);
        json_.startObject();
        text("file", text::validText(file));
        number("elements", model.count());
        json_.endObject();
    }

    void writeChange(const Change& change) {
        const Rule& rule = ruleOf(change.rule);
        json_.startObject();
        text("rule", rule.name);
        text("weight", weightWord(rule.weight));
        text("kind", kindWord(change.kind));
        if (const auto evidence = difference_.evidenceOf(change)) {
            text("match", evidenceWord(*evidence));
        }
        if (change.subject == Subject::layout) {
            writeDiagram("old", difference_.layoutOf(change).oldDiagram);
            writeDiagram("new", difference_.layoutOf(change).newDiagram);
        } else {
            writeSide("old", difference_.oldModel(), oldIds_, change.oldId, report_.oldFile, report_.isOldModelFile);
            writeSide("new", difference_.newModel(), newIds_, change.newId, report_.newFile, report_.isNewModelFile);
        }
        if (const auto& [from, to] = difference_.valuesOf(change); from != to) {
            text("field", difference_.fieldOf(change));
            writeValue("from", from);
            writeValue("to", to);
        }
        json_.endObject();
    }

    using Ids = std::unique_ptr<LastingIds>;

    void writeSide(std::string_view key, const Model& model, Ids& ids, ElementId id, const std::string& file,
                   bool isModelFile) {
        if (id == noElement) {
            return;
        }
        if (ids == nullptr) {
            ids = std::make_unique<LastingIds>(model);
        }
        const Element& element = model[id];
        json_.key(key);
        json_.startObject();
        text("id", ids->idOf(id));
        text("qualifiedName", qualifiedName(model, id));
        const std::string& unit = model.files()[element.file];
        if (!unit.empty() || (isModelFile && element.line > 0)) {
            text("file", text::validText(unit.empty() ? file : unit));
        }
        if (element.line > 0) {
            number("line", element.line);
        }
        json_.endObject();
    }

    void writeDiagram(std::string_view key, const LayoutChange::Side& side) {
        json_.key(key);
        json_.startObject();
        text("id", side.id);
        text("qualifiedName", side.qualifiedName);
        text("file", text::validText(side.file));
        number("line", side.line);
        json_.endObject();
    }

    void writeValue(std::string_view key, const Value& value) {
        json_.key(key);
        std::visit([this](const auto& one) { put(one); }, value);
    }
    void put(std::monostate /*none*/) { json_.null(); }
    void put(const std::string& text) { json_.text(text); }
    void put(bool flag) { json_.truth(flag); }
    void put(std::int64_t number) { json_.number(number); }
    void put(const std::vector<std::string>& list) {
        json_.startList();
        std::ranges::for_each(list, [this](const std::string& one) { json_.text(one); });
        json_.endList();
    }

    const Report& report_;
    const Difference& difference_;
    text::IndentedJson json_;
    Ids oldIds_; // made when they are needed
    Ids newIds_;
};

} // namespace

void writeJson(const Report& report, text::Output& output) {
    text::BufferedOutput buffered(output);
    JsonWriter(report, buffered).write();
    buffered.put('\n');
    buffered.flush();
}

} // namespace diff
