#include "petal/ledger/ledgerForms.h"
#include "text/escape.h"

#include <array>

namespace petal {

namespace {

using ledger::Counts;
using ledger::Ledger;
using ledger::Outcome;

std::string countsText(const Counts& counts) {
    std::string text;
    for (std::size_t index = 0; index < ledger::outcomeWords.size(); ++index) {
        text += (index > 0 ? ", " : "") + std::to_string(counts.byOutcome[index]) + " " + ledger::outcomeWords[index];
    }
    return text;
}

std::string placeText(const Ledger& ledger, std::uint32_t file, const notation::Place& place) {
    return text::printableText(ledger.files[file]) + ":" + std::to_string(place.line) + ":" +
           std::to_string(place.column);
}

std::string subjectText(const ledger::Entry& entry) {
    std::string text = text::printableText(entry.kind->name);
    text += entry.name.empty() ? "" : " " + text::printableText(entry.name);
    return text + (entry.property != nullptr ? ", " + text::printableText(entry.property->name) : "");
}

const char* wordOf(const ledger::Reason& reason) {
    return reason.weight == ledger::Weight::loss ? "LOST"
                                                 : ledger::outcomeWords[static_cast<std::size_t>(reason.outcome)];
}

class LedgerTable final : public LedgerForm {
public:
    void writeEntry(const Ledger& ledger, const ledger::Entry& entry, text::BufferedOutput& output) override {
        if (entry.reason->outcome != Outcome::imported) {
            output.put(std::string(wordOf(*entry.reason)) + "\t" + placeText(ledger, entry.file, entry.place) + "\t" +
                       subjectText(entry) + ": " + text::printableText(reasonText(*entry.reason, entry.detail)) + "\n");
        }
    }

    void writeBytes(const Ledger& ledger, const ledger::BadBytes& bad, text::BufferedOutput& output) override {
        output.put("bytes\t" + placeText(ledger, bad.file, bad.place) + "\t" + hexText(bad.bytes) +
                   ": invalid in the encoding\n");
    }

    void writeEnd(const Ledger& ledger, text::BufferedOutput& output) override {
        for (const ledger::DamagedPlace& damaged : ledger.damages) {
            output.put("damage\t" + placeText(ledger, damaged.file, damaged.damage.place) + "\t" +
                       notation::damageText(damaged.damage) + "\n");
        }
        for (const ledger::KindTally* kind : ledger.sortedKinds()) {
            output.put(text::printableText(kind->name) + ": " + countsText(kind->objects) + "\n");
            for (const ledger::PropertyTally* property : kind->sortedProperties()) {
                output.put("\t" + text::printableText(property->name) + ": " + countsText(property->counts) + "\n");
            }
        }
        output.put("objects: " + countsText(ledger.objects()) + "\nproperties: " + countsText(ledger.properties()) +
                   "\n");
    }
};

} // namespace

std::unique_ptr<LedgerForm> makeLedgerTable() {
    return std::make_unique<LedgerTable>();
}

std::string reasonText(const ledger::Reason& reason, const std::string& detail) {
    std::string text = reason.text;
    text += text.empty() || detail.empty() ? "" : " ";
    return text + detail;
}

std::string hexText(const std::string& bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += digits[value / digits.size()];
        text += digits[value % digits.size()];
    }
    return text;
}

std::string ledgerSummary(const Ledger& ledger) {
    return "petal: objects: " + countsText(ledger.objects()) +
           "\npetal: properties: " + countsText(ledger.properties()) +
           "\npetal: losses: " + std::to_string(ledger.losses) +
           ", invalid byte sequences: " + std::to_string(ledger.badByteCount) +
           ", damages: " + std::to_string(ledger.damageCount) + "; --ledger FILE lists them\n";
}

} // namespace petal
