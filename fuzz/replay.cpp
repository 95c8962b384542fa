// Runs a fuzzing target over files, each once, without a fuzzer: the programs that the tests run. The arguments are
// files and folders of files.

#include "require.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
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

void runOn(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    fuzz::require(file.is_open(), path.string() + " cannot be opened");
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    LLVMFuzzerTestOneInput(nullptr, 0);
    int count = 0;
    for (int argument = 1; argument < argc; ++argument) {
        for (const std::filesystem::path& path : filesIn(argv[argument])) {
            runOn(path);
            ++count;
        }
    }
    fuzz::require(count > 0, "there is nothing to run on");
    std::printf("%d files\n", count);
    return 0;
}
