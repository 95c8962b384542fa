#include "petal/Failure.h"

#include "text/escape.h"

#include <cstdio>

namespace petal {

std::string failureLines(const std::string& text, const std::string& advice) {
    std::string lines = "petal: " + text::printableText(text) + "\n";
    if (!advice.empty()) {
        lines += "petal: " + text::printableText(advice) + "\n";
    }
    return lines;
}

void printFailure(const char* text, const std::string& advice) {
    const std::string lines = failureLines(text, advice);
    std::fwrite(lines.data(), 1, lines.size(), stderr);
}

} // namespace petal
