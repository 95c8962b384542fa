// A model in several files is put together as it must be, whatever they hold; its import ends as one may end, and the
// ledger of that tells of everything in the files once. The first byte chooses how it is imported: the target system
// (bit 0), whether a header is put in front of each file (bit 1 clear), the encoding (bits 2 and 3), whether units are
// searched for by their names (bit 4), and whether `petal units` maps path symbols (bit 5). The rest are the files,
// with a line "----" between one and the next.

#include "CapturedStreams.h"
#include "ImportInput.h"
#include "MemoryFolder.h"
#include "assemblyFault.h"
#include "bridge/KelIbmRationalRose40ImportDllInterface.h"
#include "host/log/KelException.h"
#include "host/options/KelOptionList.h"
#include "ledgerFault.h"
#include "petal/Failure.h"
#include "petal/commands.h"
#include "petal/import/ModelSource.h"
#include "petal/import/importOptions.h"
#include "petal/units/unitOptions.h"
#include "require.h"
#include "support/accountFault.h"
#include "textFault.h"

#include <algorithm>
#include <cstdlib>
#include <set>

namespace {

constexpr std::string_view names[] = {"model.mdl", "a.cat", "b.cat", "sub/c.cat"};
constexpr std::string_view separator = "\n----\n";
constexpr const char* types[] = {"C++", "Oracle 7.x & 8"};
constexpr const char* encodings[] = {"auto", "windows-1252", "auto", "unknown"};

constexpr unsigned typesBit = 1;
constexpr unsigned bareBit = 2;
constexpr unsigned encodingShift = 2;
constexpr unsigned searchBit = 16;
constexpr unsigned automaticBit = 32;

const fuzz::MemoryFolder& folder() {
    static const fuzz::MemoryFolder folder;
    static const int set = ::setenv("TMPDIR", folder.getPath().c_str(), 1); // for assembled texts
    fuzz::require(set == 0, "the environment takes nothing");
    return folder;
}

void putFiles(std::string_view text, std::string_view header) {
    folder().clear();
    for (const std::string_view name : names) {
        const std::string_view file = text.substr(0, text.find(separator));
        folder().put(name, std::string(header).append(file));
        if (file.size() == text.size()) {
            break;
        }
        text.remove_prefix(file.size() + separator.size());
    }
}

petal::ImportRequest requestFor(unsigned choice) {
    petal::ImportRequest request;
    request.file = folder().getPath() / names[0];
    request.types = types[choice & typesBit];
    request.encoding = encodings[(choice >> encodingShift) % std::size(encodings)];
    if ((choice & searchBit) != 0) {
        request.units.folders = {folder().getPath()};
    }
    if ((choice & automaticBit) != 0) {
        request.units.pathMaps = {petal::automaticPathMap};
    }
    return request;
}

/// Whether no file of the machine's own is in the tree: what that holds is no matter of the input.
bool isAtHome(const units::UnitTree& tree) {
    return std::ranges::all_of(tree.files, [](const units::ResolvedFile& file) {
        return std::filesystem::canonical(file.path).string().starts_with(folder().getPath().string() + "/");
    });
}

/// `petal units` on the model.
void checkPrinting(const petal::ImportRequest& request) {
    static fuzz::CapturedStreams streams;
    for (const bool asJson : {false, true}) {
        streams.start();
        bool isRefused = false;
        try {
            petal::printUnits({{request.file}, request.units, asJson});
        } catch (const petal::Failure& failure) {
            isRefused = failure.getOutcome() != petal::Outcome::inputNotRead;
        }
        streams.stop();
        fuzz::require(!isRefused, "a refusal for another reason");
        fuzz::requireNone(fuzz::textFault(streams.output()));
        fuzz::requireNone(fuzz::textFault(streams.errors()));
        fuzz::requireNone(asJson ? fuzz::jsonFault(streams.output()) : "");
    }
}

void checkLedgers(const petal::ModelSource& source, const source::Trace& trace, KelModel& model,
                  const KelString& encoding) {
    fuzz::SourceCounts there;
    for (const units::ResolvedFile& file : source.getTree().files) {
        there.add(file);
    }
    std::set<std::uint64_t> losses;
    for (const ledger::Detail detail : {ledger::Detail::counts, ledger::Detail::named, ledger::Detail::all}) {
        KeptEntries kept;
        const ledger::Ledger made =
            ledger::makeLedger(source.getTree(), trace, model, {encoding, source.hasEncodingByFile(), detail}, &kept);
        fuzz::requireNone(fuzz::ledgerFault(made, kept.entries, detail, there));
        fuzz::requireNone(accountFault(made, model));
        losses.insert(made.losses);
    }
    fuzz::require(losses.size() == 1, "losses depend on what is told");
}

/// Imports as `petal import` does, in this process.
void checkImport(const petal::ImportRequest& request, const units::UnitTree& tree) {
    auto& bridge = static_cast<KelModelBridgeImportDllInterface&>(*getKelIbmRationalRose40ImportInterface());
    KelOptionList options;
    bridge.getOptionList(options);
    petal::setImportOptions(request, options);
    units::UnitLocator locator = petal::makeUnitLocator(request.units);
    const petal::ModelSource source(request, locator);
    fuzz::require(source.getTree().files.size() == tree.files.size(), "the import follows other units");
    source.setOptions(options);
    KeptLog log;
    source.reportTo(log);
    KelModel model;
    source::Trace trace;
    std::string failure;
    try {
        bridge.run("bridge-under-test", model, options, log);
        source.complete(model, options);
    } catch (const KelException& exception) {
        failure = exception.what();
    }
    fuzz::requireNone(fuzz::endFault(failure, model));
    if (failure.empty()) {
        trace.locate(source.getPieces());
        checkLedgers(source, trace, model, petal::chosenEncoding(options));
    }
    fuzz::requireNone(fuzz::emptyingFault(model));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const unsigned choice = bytes[0];
    putFiles({reinterpret_cast<const char*>(bytes) + 1, size - 1}, (choice & bareBit) == 0 ? petalHeader : "");
    const petal::ImportRequest request = requestFor(choice);
    units::UnitLocator locator = petal::makeUnitLocator(request.units);
    const units::UnitTree tree = units::readUnitTree(request.file, locator);
    if (!isAtHome(tree)) {
        return 0;
    }
    fuzz::requireNone(fuzz::treeFault(tree));
    fuzz::requireNone(fuzz::assemblyFault(tree));
    checkPrinting(request);
    checkImport(request, tree);
    return 0;
}
