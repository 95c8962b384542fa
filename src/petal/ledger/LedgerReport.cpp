#include "petal/ledger/LedgerReport.h"

#include "ledger/makeLedger.h"
#include "petal/Failure.h"
#include "petal/ledger/ledgerForms.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "text/Output.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace petal {

void describeLedgerOptions(CLI::App& command, ImportRequest& request) {
    command
        .add_option("--ledger", request.ledger,
                    "Write the outcome of every object and property to this file, as JSON lines; with -\n"
                    "on a terminal, as a table. With several models: a folder, which mirrors the input\n"
                    "paths")
        ->type_name("FILE");
    command
        .add_option_function<std::string>(
            "--ledger-detail", [&request](const std::string& detail) { request.ledgerListsAll = detail == "all"; },
            "named: layout, identifier and storage properties are only counted; all: one line\n"
            "per property")
        ->check(CLI::IsMember({"named", "all"}).description(""))
        ->type_name("named|all")
        ->default_str("named");
    command
        .add_option("--fail-on", request.failOn,
                    "End with status 3, once everything is written, if there is any of these; separate\n"
                    "several with commas")
        ->check(CLI::IsMember({"loss", "damage", "warning", "encoding", "omission"}).description(""))
        ->type_name("loss|damage|warning|encoding|omission")
        ->delimiter(',')
        ->allow_extra_args(false);
}

namespace {

/// Counts of conditions that the ledger does not have.
struct OtherCounts {
    std::uint64_t warnings;
    std::uint64_t omissions;
};

struct Condition {
    const char* name;
    bool needsLedger;
    std::uint64_t (*count)(const ledger::Ledger* ledger, const OtherCounts& others);
    const char* one;
    const char* many;
    const char* advice;
};

constexpr const char* ledgerAdvice = "--ledger lists them.";

constexpr std::array conditions{
    Condition{"loss", true, [](const ledger::Ledger* ledger, const OtherCounts&) { return ledger->losses; }, "loss",
              "losses", ledgerAdvice},
    Condition{"damage", true, [](const ledger::Ledger* ledger, const OtherCounts&) { return ledger->damageCount; },
              "damage of the notation", "damages of the notation", ledgerAdvice},
    Condition{"warning", false, [](const ledger::Ledger*, const OtherCounts& others) { return others.warnings; },
              "warning", "warnings", ""},
    Condition{"encoding", true,
              [](const ledger::Ledger* ledger, const OtherCounts&) -> std::uint64_t { return ledger->badByteCount; },
              "byte sequence that is invalid in the encoding", "byte sequences that are invalid in the encoding",
              ledgerAdvice},
    Condition{"omission", false, [](const ledger::Ledger*, const OtherCounts& others) { return others.omissions; },
              "part of the model that the output has no place for",
              "parts of the model that the output has no place for", "The format json omits nothing."},
};

bool isAsked(const ImportRequest& request, const Condition& condition) {
    return std::ranges::find(request.failOn, condition.name) != request.failOn.end();
}

bool needsLedger(const ImportRequest& request) {
    return request.ledger || std::ranges::any_of(conditions, [&](const Condition& condition) {
               return condition.needsLedger && isAsked(request, condition);
           });
}

ledger::Detail detailOf(const ImportRequest& request, bool isKept) {
    using enum ledger::Detail;
    return request.ledger && request.ledgerListsAll ? all : request.ledger || isKept ? named : counts;
}

/// Writes a ledger to the requested output, and passes its entries to `keeper` unless that is null. Throws a `Failure`
/// with the outcome `outputFailed`.
class LedgerOutput final : public ledger::EntrySink {
public:
    LedgerOutput(const ImportRequest& request, ledger::EntrySink* keeper)
        : keeper_(keeper), name_("the ledger '" + *request.ledger + "'"), output_(open(request)), buffered_(*output_),
          form_(output_->isTerminal() ? makeLedgerTable() : makeLedgerLines()) {}

    void take(const ledger::Ledger& ledger, const ledger::Entry& entry) override {
        attempt([&] { form_->writeEntry(ledger, entry, buffered_); });
        if (keeper_ != nullptr && keeper_->wants(*entry.reason)) {
            keeper_->take(ledger, entry);
        }
    }
    void take(const ledger::Ledger& ledger, const ledger::BadBytes& bytes) {
        attempt([&] { form_->writeBytes(ledger, bytes, buffered_); });
    }
    void finish(const ledger::Ledger& ledger) {
        attempt([&] {
            form_->writeEnd(ledger, buffered_);
            buffered_.flush();
            output_->commit();
        });
    }

private:
    std::unique_ptr<ModelOutput> open(const ImportRequest& request) {
        std::unique_ptr<ModelOutput> output;
        attempt([&] { output = ModelOutput::open(request.ledger, request.ledgerDescriptor); });
        return output;
    }
    template <class Step>
    void attempt(Step step) const {
        try {
            step();
        } catch (const std::system_error& error) {
            throw outputFailure(name_, error);
        }
    }

    ledger::EntrySink* keeper_;
    std::string name_;
    std::unique_ptr<ModelOutput> output_;
    text::BufferedOutput buffered_;
    std::unique_ptr<LedgerForm> form_;
};

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

LedgerReport::LedgerReport(const ImportRequest& request, bool isKept)
    : request_(request), isKept_(isKept), canRead_(isRegularFile(request.file)) {
    if (!canRead_ && isNeeded() && ::access(request.file.c_str(), F_OK) == 0) {
        throw Failure(Outcome::wrongUsage, "'" + request.file + "' cannot be read a second time for its ledger",
                      "Save it as a file first.");
    }
}

bool LedgerReport::isNeeded() const {
    return isKept_ || needsLedger(request_);
}

bool LedgerReport::isWanted() const {
    return canRead_ && (request_.isCounted || isNeeded());
}

std::optional<ledger::KeptLedger> LedgerReport::getKept() const {
    return isKept_ && ledger_ ? std::optional<ledger::KeptLedger>({*ledger_, keeper_.getEntries()}) : std::nullopt;
}

void LedgerReport::make(const ModelSource& source, const source::Trace& trace, const KelModel& model,
                        const KelString& encoding, const ledger::BeginReading& begin) {
    if (!isWanted()) {
        return;
    }
    const ledger::Choices choices{encoding, source.hasEncodingByFile(), detailOf(request_, isKept_),
                                  source.getRenamedRoot()};
    try {
        if (request_.ledger) {
            write(source, trace, model, choices, begin);
        } else {
            ledger_ = ledger::makeLedger(source.getTree(), trace, model, choices, isKept_ ? &keeper_ : nullptr, begin);
        }
    } catch (const std::system_error& error) {
        if (!isNeeded()) {
            return; // the import is done; the file may have changed since
        }
        throw Failure(Outcome::unexpected, "the ledger cannot be made: " + error.code().message(), "");
    }
    if (request_.isSummarised) {
        const std::string summary = ledgerSummary(*ledger_);
        std::fwrite(summary.data(), 1, summary.size(), stderr);
    }
}

void LedgerReport::write(const ModelSource& source, const source::Trace& trace, const KelModel& model,
                         const ledger::Choices& choices, const ledger::BeginReading& begin) {
    LedgerOutput output(request_, isKept_ ? &keeper_ : nullptr);
    ledger_ = ledger::makeLedger(source.getTree(), trace, model, choices, &output, begin);
    const auto take = [&](const ledger::BadBytes& bytes) { output.take(*ledger_, bytes); };
    const bool isInOrder = source.getTree().files.size() == 1; // units are read in between
    if (isInOrder && ledger_->badByteCount == ledger_->badBytes.size()) {
        std::ranges::for_each(ledger_->badBytes, take);
    } else if (ledger_->badByteCount > 0) {
        ledger::forEachBadBytes(source.getTree(), choices, take);
    }
    output.finish(*ledger_);
}

std::uint64_t LedgerReport::getDropped() const {
    return ledger_ ? ledger_->objects().byOutcome[static_cast<std::size_t>(ledger::Outcome::dropped)] : 0;
}

Outcome LedgerReport::check(std::uint64_t warnings, std::uint64_t omissions) const {
    Outcome outcome = Outcome::success;
    for (const Condition& condition : conditions) {
        if (!isAsked(request_, condition)) {
            continue;
        }
        const std::uint64_t count = condition.count(ledger_ ? &*ledger_ : nullptr, {warnings, omissions});
        if (count > 0) {
            const std::string text = std::string("--fail-on ") + condition.name + ": " + std::to_string(count) + " " +
                                     (count == 1 ? condition.one : condition.many);
            printFailure(text.c_str(), condition.advice);
            outcome = Outcome::checkTripped;
        }
    }
    return outcome;
}

} // namespace petal
