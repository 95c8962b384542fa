#include "Engines.h"

#include "FlexScanner.h"
#include "scanner/InputLayer.h"
#include "scanner/Matcher.h"

namespace rose::bench {

namespace {

RuleCounts countOurs(std::FILE* file, const VectorCode& code) {
    RuleCounts counts{};
    scannerInput.startOver();
    yyin = file;
    const auto count = [&](int rule, const char*, std::size_t) { ++counts[static_cast<std::size_t>(rule) - 1]; };
    scan(scannerInput, count, code);
    return counts;
}

RuleCounts countByFlex(std::FILE* file) {
    flexCounts = {};
    flexScanFile(file);
    return flexCounts;
}

} // namespace

RuleCounts flexCounts;

std::vector<Engine> allEngines() {
    std::vector<Engine> engines;
    for (const VectorCode& code : vectorCodes()) {
        engines.push_back({code.instructions, [&code](std::FILE* file) { return countOurs(file, code); }});
    }
    engines.insert(engines.begin() + rivalNumber, {"flex -Cf", countByFlex});
    return engines;
}

} // namespace rose::bench
