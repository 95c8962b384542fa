#include "petal/catalog/readModel.h"

#include "petal/Failure.h"
#include "petal/output/Descriptor.h"
#include "units/OpenFile.h"

#define XXH_STATIC_LINKING_ONLY // the state of the hash stands on the stack
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <sys/stat.h>

namespace petal {

namespace {

constexpr std::size_t pieceLength = std::size_t{1} << 16;

std::string timeText(const timespec& time) {
    std::tm parts{};
    ::gmtime_r(&time.tv_sec, &parts);
    std::array<char, 64> text{};
    std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
    length += static_cast<std::size_t>(
        std::snprintf(text.data() + length, text.size() - length, ".%09ld", static_cast<long>(time.tv_nsec)));
    return {text.data(), length};
}

std::string hashOf(const std::string& file) {
    units::OpenFile source(file);
    XXH64_state_t state;
    XXH64_reset(&state, 0);
    std::array<char, pieceLength> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    while (const std::size_t length = source.read(piece.data(), piece.size())) {
        XXH64_update(&state, piece.data(), length);
    }
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016" PRIx64, static_cast<std::uint64_t>(XXH64_digest(&state)));
    return text.data();
}

bool haveSameContent(const catalog::FileFacts& one, const catalog::FileFacts& other) {
    return one.size == other.size && one.hash == other.hash;
}

bool areSame(const catalog::KnownUnit& one, const catalog::KnownUnit& other) {
    return one.name == other.name && one.path == other.path && one.kind == other.kind && one.isFound == other.isFound &&
           one.remark == other.remark && haveSameContent(one.facts, other.facts);
}

bool isSame(const catalog::KnownModel& one, const catalog::KnownModel& other) {
    return one.isImported && haveSameContent(one.facts, other.facts) && one.version == other.version &&
           one.reading == other.reading && std::ranges::equal(one.units, other.units, areSame);
}

/// Ends an import whose rows the catalogue has.
struct Unchanged {};

bool looksUnchanged(const catalog::FileFacts& facts, const std::string& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           static_cast<std::uint64_t>(status.st_size) == facts.size && timeText(status.st_mtim) == facts.modified;
}

} // namespace

catalog::FileFacts factsOf(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) {
        throwErrno();
    }
    return {static_cast<std::uint64_t>(status.st_size), timeText(status.st_mtim),
            S_ISREG(status.st_mode) ? hashOf(file) : ""};
}

std::string unitFile(const catalog::KnownUnit& unit, const std::string& file) {
    return (std::filesystem::absolute(file).lexically_normal().parent_path() / unit.path).string();
}

std::string modifiedTime(const std::string& file) {
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 ? timeText(status.st_mtim) : std::string();
}

bool looksUnchanged(const catalog::KnownModel& known, const std::string& file) {
    return known.isImported && looksUnchanged(known.facts, file) &&
           std::ranges::all_of(known.units, [&](const catalog::KnownUnit& unit) {
               return unit.isFound && looksUnchanged(unit.facts, unitFile(unit, file));
           });
}

ImportResult readModel(const ImportRequest& request, const ImportContext& context, const CatalogReading& reading,
                       const std::string& path, const catalog::KnownModel* known, int descriptor) {
    catalog::KnownModel model;
    model.path = path;
    model.version = reading.version;
    model.reading = reading.options;
    model.isImported = true;
    ImportContext own = context;
    own.takeTree = [&](const units::UnitTree& tree) {
        if (context.takeTree) {
            context.takeTree(tree);
        }
        if (!std::filesystem::is_regular_file(request.file)) {
            return; // the bridge reports what is not there
        }
        model.facts = factsOf(request.file);
        model.units = catalog::unitsOf(tree);
        for (catalog::KnownUnit& unit : model.units) {
            if (unit.isFound) {
                unit.facts = factsOf(unit.file);
            }
        }
        if (known != nullptr && isSame(*known, model)) {
            throw Unchanged();
        }
    };
    own.takeModel = [&](const FinishedImport& import) {
        if (::ftruncate(descriptor, 0) != 0 || ::lseek(descriptor, 0, SEEK_SET) != 0) {
            throwErrno();
        }
        DescriptorOutput output(descriptor);
        catalog::RowWriter rows(output);
        catalog::writeModelRows({.model = import.model,
                                 .tree = import.source.getTree(),
                                 .trace = import.trace,
                                 .choices = {import.encoding, import.source.hasEncodingByFile(), ledger::Detail::counts,
                                             import.source.getRenamedRoot()},
                                 .source = reading.source},
                                model, rows);
    };
    try {
        return importModel(request, own);
    } catch (const Unchanged&) {
        return {};
    } catch (const std::system_error& error) {
        throw Failure(Outcome::unexpected,
                      "the rows of '" + request.file + "' cannot be made: " + error.code().message(), "");
    }
}

} // namespace petal
