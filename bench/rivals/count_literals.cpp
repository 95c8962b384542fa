// Counts where the literals of the scanner's rules stand in a file, by a search for all of them at once that is made
// for speed alone. It knows nothing of what must stand before and after a literal.

#include "scanner/RuleTable.h"

#include <hs/hs.h>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Freeing {
    void operator()(hs_database_t* database) const noexcept { hs_free_database(database); }
    void operator()(hs_scratch_t* scratch) const noexcept { hs_free_scratch(scratch); }
};
using Database = std::unique_ptr<hs_database_t, Freeing>;
using Scratch = std::unique_ptr<hs_scratch_t, Freeing>;

void check(hs_error_t outcome, const char* what) {
    if (outcome != HS_SUCCESS) {
        throw std::runtime_error(what);
    }
}

Database compileLiterals() {
    std::array<const char*, rose::patterns.size()> texts{};
    std::array<std::size_t, rose::patterns.size()> lengths{};
    for (std::size_t index = 0; index != texts.size(); ++index) {
        texts[index] = rose::patterns[index].literal.first.data();
        lengths[index] = rose::patterns[index].literal.first.size();
    }
    hs_database_t* made = nullptr;
    hs_compile_error_t* error = nullptr;
    check(hs_compile_lit_multi(texts.data(), nullptr, nullptr, lengths.data(), static_cast<unsigned>(texts.size()),
                               HS_MODE_BLOCK, nullptr, &made, &error),
          "compiling the literals");
    return Database(made);
}

int countOne(unsigned /*literal*/, unsigned long long /*from*/, unsigned long long /*to*/, unsigned /*flags*/,
             void* count) {
    ++*static_cast<unsigned long*>(count);
    return 0;
}

unsigned long countLiterals(const char* path) {
    const int file = ::open(path, O_RDONLY);
    struct stat about {};
    if (file < 0 || ::fstat(file, &about) != 0) {
        throw std::runtime_error("the file cannot be opened");
    }
    const auto size = static_cast<std::size_t>(about.st_size);
    const void* const text = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, file, 0);
    if (text == MAP_FAILED) {
        throw std::runtime_error("the file cannot be mapped");
    }
    const Database database = compileLiterals();
    hs_scratch_t* made = nullptr;
    check(hs_alloc_scratch(database.get(), &made), "preparing the search");
    const Scratch scratch(made);
    unsigned long count = 0;
    check(hs_scan(database.get(), static_cast<const char*>(text), static_cast<unsigned>(size), 0, scratch.get(),
                  countOne, &count),
          "searching");
    return count;
}

} // namespace

int main(int argc, char** argv) {
    try {
        std::printf("%lu\n", countLiterals(argc == 2 ? argv[1] : ""));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "count-literals: %s\n", error.what());
        return 1;
    }
    return 0;
}
