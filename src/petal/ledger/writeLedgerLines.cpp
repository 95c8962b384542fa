#include "host/model/links/KelPointerHash.h"
#include "petal/ledger/ledgerForms.h"
#include "text/JsonLine.h"
#include "text/escape.h"

#include <tsl/robin_map.h>

namespace petal {

namespace {

using ledger::Counts;
using ledger::Entry;
using ledger::Ledger;

/// One line. Empty texts are omitted.
class Line {
public:
    Line() = default;
    explicit Line(const char* entry) { text("entry", entry); }

    void text(const char* name, std::string_view value) {
        if (!value.empty()) {
            line_.text(name, value);
        }
    }
    void number(const char* name, std::uint64_t value) { line_.number(name, value); }
    void counts(const char* name, const Counts& counts) {
        line_.startObject(name);
        for (std::size_t index = 0; index < ledger::outcomeWords.size(); ++index) {
            number(ledger::outcomeWords[index], counts.byOutcome[index]);
        }
        line_.endObject();
    }
    void reason(const ledger::Reason& reason, const std::string& detail) {
        text("outcome", ledger::outcomeWords[static_cast<std::size_t>(reason.outcome)]);
        if (reason.weight == ledger::Weight::loss) {
            line_.truth("loss", true);
        }
        detail.empty() ? text("reason", reason.text) : text("reason", reasonText(reason, detail));
    }
    void place(const Ledger& ledger, std::uint32_t file, const notation::Place& place) {
        text("file", ledger.files[file]);
        number("line", place.line);
        number("column", place.column);
    }
    [[nodiscard]] std::string finish() { return line_.finish(); }
    void write(text::BufferedOutput& output) { output.put(finish()); }

private:
    text::JsonLine line_;
};

void writeGroups(const Ledger& ledger, const ledger::KindTally& kind, text::BufferedOutput& output) {
    for (const ledger::PropertyTally* property : kind.sortedProperties()) {
        for (const ledger::PropertyGroup& group : property->groups) {
            Line line("properties");
            line.number("count", group.count);
            line.place(ledger, group.file, group.first);
            line.text("kind", kind.name);
            line.text("property", property->name);
            line.reason(*group.reason, "");
            line.write(output);
        }
    }
}

void writeKind(const ledger::KindTally& kind, text::BufferedOutput& output) {
    Line line("kind");
    line.text("kind", kind.name);
    line.counts("objects", kind.objects);
    line.counts("properties", kind.propertyCounts());
    line.write(output);
}

/// The parts of lines that many lines share, by what they are about. Each is quoted once.
class Parts {
public:
    /// The members that `add` gives to a line, with a comma before each.
    template <class Add>
    static std::string make(Add add) {
        constexpr std::string_view start = "{";
        constexpr std::string_view end = "}\n";
        Line line;
        add(line);
        const std::string text = line.finish();
        const std::string_view members =
            std::string_view(text).substr(start.size(), text.size() - start.size() - end.size());
        return members.empty() ? std::string() : "," + std::string(members);
    }
    /// The same of `subject`, which must live as long and always have the same ones.
    template <class Subject, class Add>
    const std::string& of(const Subject& subject, Add add) {
        auto found = parts_.find(&subject);
        if (found == parts_.end()) {
            found = parts_.emplace(&subject, make(add)).first;
        }
        return found->second;
    }

private:
    tsl::robin_map<const void*, std::string, KelPointerHash> parts_;
};

class LedgerLines final : public LedgerForm {
public:
    void writeEntry(const Ledger& ledger, const Entry& entry, text::BufferedOutput& output) override {
        const bool isObject = entry.property == nullptr;
        line_ = startOf(ledger, entry.file, isObject);
        text::appendNumber(line_, entry.place.line);
        line_ += R"(,"column":)";
        text::appendNumber(line_, entry.place.column);
        line_ += parts_.of(*entry.kind, [&](Line& line) { line.text("kind", entry.kind->name); });
        if (!entry.name.empty()) {
            line_ += R"(,"name":)";
            text::appendQuotedJson(line_, entry.name);
        }
        if (!isObject) {
            line_ += parts_.of(*entry.property, [&](Line& line) { line.text("property", entry.property->name); });
        }
        const auto addReason = [&](Line& line) { line.reason(*entry.reason, entry.detail); };
        line_ += entry.detail.empty() ? parts_.of(*entry.reason, addReason) : Parts::make(addReason);
        line_ += "}\n";
        output.put(line_);
    }

    void writeBytes(const Ledger& ledger, const ledger::BadBytes& bad, text::BufferedOutput& output) override {
        Line line("bytes");
        line.place(ledger, bad.file, bad.place);
        line.text("bytes", hexText(bad.bytes));
        line.write(output);
    }

    void writeEnd(const Ledger& ledger, text::BufferedOutput& output) override {
        for (const ledger::DamagedPlace& damaged : ledger.damages) {
            Line line("damage");
            line.place(ledger, damaged.file, damaged.damage.place);
            line.text("damage", notation::damageWord(damaged.damage.kind));
            line.text("text", notation::damageText(damaged.damage));
            line.write(output);
        }
        const std::vector<const ledger::KindTally*> kinds = ledger.sortedKinds();
        for (const ledger::KindTally* kind : kinds) {
            writeGroups(ledger, *kind, output);
        }
        for (const ledger::KindTally* kind : kinds) {
            writeKind(*kind, output);
        }
        Line total("total");
        total.counts("objects", ledger.objects());
        total.counts("properties", ledger.properties());
        total.number("losses", ledger.losses);
        total.number("badBytes", ledger.badByteCount);
        total.number("damages", ledger.damageCount);
        total.write(output);
    }

private:
    /// The start of an entry's line, up to the number of its line in the file.
    const std::string& startOf(const Ledger& ledger, std::uint32_t file, bool isObject) {
        if (file != file_) {
            const std::string name = Parts::make([&](Line& line) { line.text("file", ledger.files[file]); });
            objectStart_ = R"({"entry":"object")" + name + R"(,"line":)";
            propertyStart_ = R"({"entry":"property")" + name + R"(,"line":)";
            file_ = file;
        }
        return isObject ? objectStart_ : propertyStart_;
    }

    std::uint32_t file_ = UINT32_MAX; // of the starts
    std::string objectStart_;
    std::string propertyStart_;
    Parts parts_;
    std::string line_;
};

} // namespace

std::unique_ptr<LedgerForm> makeLedgerLines() {
    return std::make_unique<LedgerLines>();
}

} // namespace petal
