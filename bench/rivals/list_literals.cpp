// Prints the literals of the scanner's rules, one a line.

#include "scanner/RuleTable.h"

#include <cstdio>

int main() {
    for (const rose::Pattern& pattern : rose::patterns) {
        std::printf("%.*s\n", static_cast<int>(pattern.literal.first.size()), pattern.literal.first.data());
    }
    return 0;
}
