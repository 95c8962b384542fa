#include "scanner/Dispatch.h"

#include "builder/BuilderState.h"
#include "scanner/FatalConditions.h"
#include "scanner/InputLayer.h"
#include "scanner/Matcher.h"
#include "scanner/MultiLine.h"
#include "scanner/RuleTable.h"
#include "scanner/ValueReaders.h"

namespace rose {

namespace {

constexpr char quote = '"';

bool mayAct(const Rule& rule) {
    return (rule.package == PackageGuard::anyPackage || aPackage != nullptr) &&
           (rule.mechanism == MechanismGuard::always || !objectMechanism);
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
    long viewNumber = 0;
    const Value value = read(rule.reader, viewNumber);
    // Reading lines behind the match may have moved it.
    rule.action({yytext, value.text(), viewNumber});
}

int yylex() {
    scan(scannerInput, [](int rule, const char*, std::size_t) { dispatch(rule); });
    scannerInput.startOver();
    return 0;
}

} // namespace rose
