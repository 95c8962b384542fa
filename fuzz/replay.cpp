// Runs a fuzzing target over files without a fuzzer: the programs that the tests run. The arguments are files and
// folders of files. After "--damaged N" each file is run also as N damaged copies, the same in every run.

#include "require.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

namespace {

std::vector<std::filesystem::path> filesIn(const char* path) {
    if (std::filesystem::is_regular_file(path)) {
        return {path};
    }
    const std::filesystem::directory_iterator entries(path);
    return {begin(entries), end(entries)};
}

/// Loses, adds or replaces a few bytes, moves a piece to another place, or cuts the text off.
std::string damaged(std::string text, std::minstd_rand& random) {
    using namespace std::string_view_literals;
    constexpr std::string_view bytes = "()\"\\|,@ \n\r\t#\0\1x5(object B)\""sv;
    for (auto count = random() % 5 + 1; count > 0 && !text.empty(); --count) {
        const std::size_t at = random() % text.size();
        switch (random() % 5) {
        case 0:
            text.erase(at, random() % 3 == 0 ? random() % 100 : 1);
            break;
        case 1:
            text.insert(at, 1, bytes[random() % bytes.size()]);
            break;
        case 2:
            text.insert(random() % text.size(), text.substr(at, random() % 1000));
            break;
        case 3:
            text.resize(random() % 4 == 0 ? at : text.size());
            break;
        default:
            text[at] = bytes[random() % bytes.size()];
        }
    }
    return text;
}

void runOn(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

void runOn(const std::filesystem::path& path, int damagedCopies) {
    std::ifstream file(path, std::ios::binary);
    fuzz::require(file.is_open(), path.string() + " cannot be opened");
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    runOn(bytes);
    std::minstd_rand random(20020610);
    for (int copy = 0; copy < damagedCopies; ++copy) {
        runOn(damaged(bytes, random));
    }
}

} // namespace

int main(int argc, char** argv) {
    LLVMFuzzerTestOneInput(nullptr, 0);
    int count = 0;
    int damagedCopies = 0;
    for (int argument = 1; argument < argc; ++argument) {
        if (argv[argument] == std::string_view("--damaged") && argument + 1 < argc) {
            damagedCopies = std::stoi(argv[++argument]);
            continue;
        }
        for (const std::filesystem::path& path : filesIn(argv[argument])) {
            runOn(path, damagedCopies);
            ++count;
        }
    }
    fuzz::require(count > 0, "there is nothing to run on");
    std::printf("%d files\n", count);
    return 0;
}
