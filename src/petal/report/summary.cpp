#include "petal/report/summary.h"

#include "text/escape.h"

#include <algorithm>
#include <array>
#include <map>

namespace petal {

namespace {

constexpr std::size_t mostFailures = 20; // listed
constexpr const char* red = "\x1B[31m";
constexpr const char* plain = "\x1B[0m";

struct Row {
    const char* label;
    std::uint64_t ReportTotals::*total;
    bool isFailure;
    bool isAlwaysShown;
};

constexpr std::array rows{
    Row{"imported", &ReportTotals::imported, false, true},
    Row{"up to date", &ReportTotals::upToDate, false, false},
    Row{"failed", &ReportTotals::failed, true, true},
    Row{"not started", &ReportTotals::notStarted, true, false},
    Row{"objects", &ReportTotals::objects, false, true},
    Row{"dropped", &ReportTotals::dropped, false, true},
    Row{"losses", &ReportTotals::losses, false, true},
    Row{"left out", &ReportTotals::omitted, false, false},
    Row{"units found", &ReportTotals::unitsFound, false, false},
    Row{"units missing", &ReportTotals::unitsMissing, true, false},
};

std::string row(std::string label, std::uint64_t number) {
    constexpr std::size_t labelWidth = 16;
    constexpr std::size_t numberWidth = 12;
    const std::string digits = std::to_string(number);
    label.resize(std::max(labelWidth, label.size() + 1), ' ');
    return label + std::string(numberWidth - std::min(numberWidth, digits.size()), ' ') + digits + "\n";
}

/// The number of failures for each reason, and the first failed files.
std::string failures(const std::vector<FileReport>& files, std::size_t count) {
    std::map<std::string, std::uint64_t> reasons;
    std::string lines;
    std::size_t listed = 0;
    for (const FileReport& file : files) {
        if (file.state == FileState::failed) {
            ++reasons[file.reason];
            if (listed++ < mostFailures) {
                lines += "  " + text::printableText(file.file + ": " + file.text) + "\n";
            }
        }
    }
    std::string counts;
    for (const auto& [reason, number] : reasons) {
        counts += row("  " + text::printableText(reason), number);
    }
    return counts + lines +
           (count > mostFailures ? "  ... and " + std::to_string(count - mostFailures) + " more\n" : "");
}

} // namespace

std::string summary(const std::vector<FileReport>& files, bool withColours) {
    const ReportTotals totals = totalsOf(files);
    std::string lines = row("files", files.size());
    for (const Row& each : rows) {
        const std::uint64_t number = totals.*each.total;
        if (number == 0 && !each.isAlwaysShown) {
            continue;
        }
        const bool isMarked = withColours && each.isFailure && number > 0;
        lines += isMarked ? red + row(each.label, number) + plain : row(each.label, number);
        if (each.total == &ReportTotals::failed) {
            lines += failures(files, number);
        }
    }
    return lines;
}

} // namespace petal
