#include "ledger/checks.h"
#include "ledger/reasons.h"
#include "notation/unescaped.h"

#include <algorithm>

namespace ledger {

namespace {

constexpr std::size_t shownLength = 60;
constexpr std::size_t searchedLength = 4096; // a longer text costs too much to search for each part

/// A text as it is compared: files from elsewhere end their lines with CR LF.
std::string withoutReturns(std::string_view text) {
    std::string plain(text);
    std::erase(plain, '\r');
    return plain;
}

std::string shown(std::string_view text) {
    std::string_view start = text.substr(0, shownLength);
    while (start.size() < text.size() && !start.empty() && (text[start.size()] & 0xC0) == 0x80) {
        start.remove_suffix(1); // not within a character
    }
    return '"' + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}

/// Whether the text is the model's byte for byte, and whoever reads it otherwise could not tell: most texts are.
bool isSamePlainText(const SourceValue& value, std::string_view taken, std::string_view inModel) {
    return taken == inModel && taken.size() == value.text.size() && isPlain(taken) &&
           taken.find_first_of("\\\r") == std::string_view::npos;
}

std::string_view taken(const Checked& checked) {
    const std::string_view bytes = checked.value.text;
    return checked.value.kind == notation::EventKind::line ? bytes.substr(0, bytes.find('\0')) : takenOfQuoted(bytes);
}

/// Whether the text ends with the part. The import keeps the CR of each line's end, which the reader leaves out.
std::size_t lengthOfEnding(std::string_view text, const std::string& part) {
    if (text.ends_with(part)) {
        return part.size();
    }
    std::string withReturns;
    for (const char byte : part) {
        withReturns += byte == '\n' ? "\r\n" : std::string(1, byte);
    }
    withReturns += '\r';
    return text.ends_with(withReturns) ? withReturns.size() : 0;
}

/// Whether the model's text holds the part beside others. The import puts each further text in front of those that are
/// there, so the parts are found from the end on, each at a cost in step with its length.
bool holds(const Checked& checked, const KelString& inModel, const std::string& part) {
    const std::string_view whole = inModel.view();
    std::size_t& rest = checked.rests.try_emplace(&inModel, whole.size()).first.value();
    const std::size_t length = lengthOfEnding(whole.substr(0, rest), part);
    rest -= length;
    return length > 0 || whole.starts_with(part) ||
           (whole.size() <= searchedLength && whole.find(part) != std::string_view::npos);
}

} // namespace

std::string takenText(const Checked& checked) {
    return checked.text.toUtf8(taken(checked));
}

Verdict compareText(const Checked& checked, const KelString& inModel) {
    const std::string_view bytes = taken(checked);
    if (isSamePlainText(checked.value, bytes, inModel.view())) {
        return {&reasons::kept, {}};
    }
    bool isWhole = true;
    const std::string expected = withoutReturns(checked.text.toUtf8(bytes, &isWhole));
    const bool isMuchLonger = inModel.view().size() > 2 * expected.size() + searchedLength;
    const std::string found =
        withoutReturns(inModel.view().substr(0, isMuchLonger ? shownLength + 4 : std::string_view::npos));
    if (!isMuchLonger && found == expected) {
        const bool isQuoted = checked.value.kind != notation::EventKind::line;
        if (isQuoted && notation::unescaped(checked.value.text) != bytes) {
            return {&reasons::textAtQuote, {}};
        }
        return {isWhole ? &reasons::kept : &reasons::replaced, {}};
    }
    if (expected.empty()) {
        return {&reasons::kept, {}};
    }
    if (found.empty()) {
        return {&reasons::notInModel, {}};
    }
    if (!isMuchLonger && expected.starts_with(found)) {
        return {&reasons::textCut, std::to_string(found.size()) + " bytes"};
    }
    return {holds(checked, inModel, expected) ? &reasons::textAdded : &reasons::differs, shown(found)};
}

Verdict compareFlag(const Checked& checked, bool inModel) {
    const bool expected = checked.value.text == "TRUE";
    if (expected == inModel) {
        return {&reasons::kept, {}};
    }
    return {inModel ? &reasons::takenAsTrue : &reasons::notInModel, {}};
}

} // namespace ledger
