// Counts, in the JSON form of a model on standard input, what make-model counts as it writes one.

#include "model/JsonCounts.h"

#include <exception>
#include <iostream>

int main() {
    try {
        std::cout << bench::countJson(stdin) << '\n';
    } catch (const std::exception& error) {
        std::cerr << "count-model: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
