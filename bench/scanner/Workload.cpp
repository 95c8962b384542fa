#include "Workload.h"

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

Workload::Workload(const std::vector<std::string>& paths, std::uint64_t leastBytes)
    : file_(std::tmpfile(), [](std::FILE* file) { return file != nullptr ? std::fclose(file) : 0; }) {
    std::string once;
    for (const std::string& path : paths) {
        std::ostringstream text;
        if (!(text << std::ifstream(path, std::ios::binary).rdbuf())) {
            throw std::runtime_error("cannot read " + path + ", or it is empty");
        }
        once += text.view();
    }
    do {
        if (!file_ || std::fwrite(once.data(), 1, once.size(), file_.get()) != once.size()) {
            throw std::runtime_error("cannot write a temporary file");
        }
        bytes_ += once.size();
    } while (bytes_ < leastBytes);
    if (std::fflush(file_.get()) != 0) {
        throw std::runtime_error("cannot write a temporary file");
    }
    path_ = "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(fileno(file_.get()));
}

} // namespace rose::bench
