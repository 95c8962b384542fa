#include "LedgerText.h"

#include "support/accountFault.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <tuple>
#include <unistd.h>

namespace {

constexpr std::string_view front =
    "\n(object Petal\n    version 42\n    charSet 0)\n\n(object Design \"Logical View\"\n"
    "    root_category \t(object Class_Category \"Logical View\" logical_models \t(list u\n";

std::string textOf(const ledger::Entry& entry) {
    const bool isLost =
        entry.reason->weight == ledger::Weight::loss && entry.reason->outcome == ledger::Outcome::dropped;
    const auto line = static_cast<std::int64_t>(entry.place.line - LedgerText::firstLine + 1);
    std::string text = std::to_string(line) + " " + entry.kind->name;
    text += entry.name.empty() ? "" : " " + entry.name;
    text += entry.property != nullptr ? "." + entry.property->name : "";
    text += isLost ? ": LOST "
                   : std::string(": ") + ledger::outcomeWords[static_cast<std::size_t>(entry.reason->outcome)] + " ";
    return text + entry.reason->text + (entry.detail.empty() ? "" : " " + entry.detail);
}

} // namespace

LedgerText LedgerText::of(std::string_view elements, std::string_view diagrams, const char* encoding) {
    std::string path = std::filesystem::temp_directory_path() / "ledgerXXXXXX";
    ::close(::mkstemp(path.data()));
    std::ofstream(path) << front << elements << ")\n\tlogical_presentations \t(list u\n" << diagrams << ")))\n";
    units::UnitTree tree;
    tree.files.push_back({path, 0, {}, {}});
    source::Trace trace;
    ImportedModel imported = ImportedModel::ofFile(path, {"C++", encoding});
    trace.locate(nullptr);
    const ledger::Choices choices{encoding, false, ledger::Detail::named};
    KeptEntries kept;
    LedgerText text{imported.failure, ledger::makeLedger(tree, trace, imported.model, choices, &kept), {}, {}};
    text.entries = std::move(kept.entries);
    ledger::forEachBadBytes(tree, choices, [&](const ledger::BadBytes& bad) { text.badBytes.push_back(bad); });
    const auto placeOf = [](const ledger::BadBytes& bad) {
        return std::tuple(bad.place.offset, bad.place.line, bad.place.column, bad.bytes);
    };
    text.failure += std::ranges::equal(text.badBytes, text.ledger.badBytes, {}, placeOf, placeOf)
                        ? ""
                        : "invalid bytes are elsewhere when they are read again";
    text.failure += accountFault(text.ledger, imported.model);
    std::filesystem::remove(path);
    return text;
}

std::string LedgerText::exceptions() const {
    std::string text;
    for (const ledger::Entry& entry : entries) {
        text += entry.reason->outcome != ledger::Outcome::imported ? textOf(entry) + "\n" : "";
    }
    return text;
}
