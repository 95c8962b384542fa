#include "Workload.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace rose::bench {

File openFile(const std::string& path) {
    File file(std::fopen(path.c_str(), "r"), &std::fclose);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return file;
}

Workload::Workload(const std::vector<std::string>& paths, std::uint64_t leastBytes) {
    std::string once;
    for (const std::string& path : paths) {
        std::ostringstream text;
        if (!(text << std::ifstream(path, std::ios::binary).rdbuf())) {
            throw std::runtime_error("cannot read " + path + ", or it is empty");
        }
        once += text.view();
    }
    path_ = std::filesystem::temp_directory_path() / "scan-bench-XXXXXX";
    const int handle = mkstemp(path_.data());
    const File file(handle < 0 ? nullptr : fdopen(handle, "w"), [](std::FILE* f) { return f ? std::fclose(f) : 0; });
    do {
        if (!file || std::fwrite(once.data(), 1, once.size(), file.get()) != once.size()) {
            throw std::runtime_error("cannot write " + path_);
        }
        bytes_ += once.size();
    } while (bytes_ < leastBytes);
}

Workload::~Workload() {
    unlink(path_.c_str());
}

} // namespace rose::bench
