// A report is read or refused, whatever it holds. One that is read and written again reads the same, is JSON, and
// neither it nor what people are told of it drives a terminal.

#include "MemoryFile.h"
#include "petal/Failure.h"
#include "petal/report/Report.h"
#include "petal/report/summary.h"
#include "require.h"
#include "textFault.h"

#include <cstdint>
#include <optional>
#include <set>

namespace {

using petal::FileReport;
using Files = std::vector<FileReport>;

class MemoryModelOutput final : public petal::ModelOutput {
public:
    void write(std::string_view bytes) override { text += bytes; }
    void commit() override {}
    [[nodiscard]] bool isTerminal() const override { return false; }

    std::string text;
};

/// The report in a file of these bytes; nothing when it is refused.
std::optional<Files> reportIn(std::string_view bytes) {
    static fuzz::MemoryFile file;
    file.put(bytes);
    try {
        return petal::readReport(file.getPath());
    } catch (const petal::Failure& failure) {
        fuzz::require(failure.getOutcome() == petal::Outcome::inputNotRead, "a refusal for another reason");
        fuzz::requireNone(fuzz::textFault(petal::failureLines(failure.what(), failure.getAdvice())));
        return std::nullopt;
    }
}

std::string written(const Files& files) {
    MemoryModelOutput output;
    petal::writeReport(files, output);
    fuzz::requireNone(fuzz::jsonFault(output.text));
    return output.text;
}

void checkMerging(const Files& files) {
    std::set<std::string> names;
    for (const FileReport& file : files) {
        names.insert(file.file);
    }
    const Files merged = petal::merged({files, files});
    fuzz::require(merged.size() == names.size(), "a merged report has files of other names");
    fuzz::require(written(petal::merged({merged, files})) == written(merged),
                  "merging depends on how often it is done");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::optional<Files> files = reportIn({reinterpret_cast<const char*>(bytes), size});
    if (!files) {
        return 0;
    }
    const std::string text = written(*files);
    const std::optional<Files> again = reportIn(text);
    fuzz::require(again.has_value(), "what was written is refused");
    fuzz::require(written(*again) == text, "a report that is read again is another one");
    fuzz::requireNone(fuzz::textFault(petal::summary(*files, false)));
    checkMerging(*files);
    return 0;
}
