#include "scanner/Scanner.h"

#include "builder/Trace.h"
#include "scanner/Bytes.h"
#include "scanner/InputLayer.h"
#include "scanner/Matcher.h"
#include "scanner/RuleTable.h"
#include "scanner/ValueReaders.h"

#include <cstring>

namespace rose {

namespace {

constexpr char quote = '"';

bool mayAct(const Rule& rule) {
    return (rule.package == PackageGuard::anyPackage || state.aPackage != nullptr) &&
           (rule.mechanism == MechanismGuard::always || !state.objectMechanism);
}

Value read(Reader reader, long& viewNumber) {
    switch (reader) {
    case Reader::getValue:
        return getValue(yytext, quote);
    case Reader::getValue3:
        return getValue3(yytext, quote);
    case Reader::getValue4ElseMultiLine: {
        Value value = getValue4(yytext, quote);
        return value ? std::move(value) : getMultiLine();
    }
    case Reader::getValue5:
        return getValue5(yytext, quote, &viewNumber);
    case Reader::noReader:
        break;
    }
    return {};
}

std::uint64_t scanStart = 0; // where in the file the input begins
KelImportReason reportedGate = KelImportReason::none;

/// Why most keywords have no effect now, if they have none.
KelImportReason gate() {
    if (state.objectMechanism) {
        return KelImportReason::inMechanism;
    }
    if (state.aPackage == nullptr) {
        return state.startPackages ? KelImportReason::noPackage : KelImportReason::beforeLogicalView;
    }
    return KelImportReason::none;
}

void reportGate() {
    if (const KelImportReason now = gate(); now != reportedGate) {
        reportedGate = now;
        state.theObserver->gate(state.theSource, now);
    }
}

/// The place of the current match and of the value that was read from it.
KelImportSource sourceOf(const Rule& rule, std::uint64_t begin, std::size_t length, const Value& value) {
    KelImportSource source;
    source.rule = rule.pattern.number;
    source.begin = begin;
    source.end = scanStart + static_cast<std::uint64_t>(scannerInput.positionOf(scannerInput.cursor()));
    if (value) {
        const std::size_t ended = length - std::strlen(yytext); // by a NUL in the match
        source.used = std::strlen(value.text());
        source.left = value.getSize() - source.used + ended;
    }
    return source;
}

/// Where the keyword of the current match begins.
std::uint64_t keywordBegin() {
    const char* keyword = yytext;
    while (bytes::isBlank(*keyword)) {
        ++keyword;
    }
    return scanStart + static_cast<std::uint64_t>(scannerInput.positionOf(keyword));
}

/// Makes the rule act with the place of the step set for the observer.
void dispatchWatched(const Rule& rule) {
    const std::uint64_t begin = keywordBegin();
    const std::size_t length = yyleng;
    long viewNumber = 0;
    const Value value = read(rule.reader, viewNumber);
    state.theSource = sourceOf(rule, begin, length, value);
    rule.action({yytext, value.text(), viewNumber});
    reportGate();
}

} // namespace

void dispatch(int number) {
    const auto index = static_cast<std::size_t>(number) - 1;
    if (index >= rules.size()) {
        stopProcess(FatalCondition::noActionFound);
    }
    const Rule& rule = rules[index];
    if (!mayAct(rule)) {
        return;
    }
    if (trace::isOn()) {
        dispatchWatched(rule);
        return;
    }
    long viewNumber = 0;
    const Value value = read(rule.reader, viewNumber);
    // After the value: reading lines after the match may have moved it.
    rule.action({yytext, value.text(), viewNumber});
}

int yylex() {
    if (trace::isOn()) {
        const long start = std::ftell(yyin);
        scanStart = start > 0 ? static_cast<std::uint64_t>(start) : 0;
        reportedGate = KelImportReason::none;
        reportGate();
    }
    scan(scannerInput, [](int rule, const char*, std::size_t) { dispatch(rule); });
    scannerInput.startOver();
    state.theSource = {};
    return 0;
}

bool RoseLexImport(std::FILE* stream) {
    scannerInput.startOver();
    yyin = stream;
    yylex();
    return true;
}

} // namespace rose
