#include "petal/import/InputFile.h"

#include "petal/output/Descriptor.h"
#include "petal/output/fileFailure.h"

#include <algorithm>
#include <fcntl.h>

namespace petal {

namespace {

constexpr std::size_t pieceLength = std::size_t{64} * 1024;

Descriptor open(const std::string& path) {
    if (path == "-") {
        return Descriptor(duplicate(STDIN_FILENO));
    }
    Descriptor opened(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
    if (!opened.isOpen()) {
        throwErrno();
    }
    return opened;
}

} // namespace

InputFile::InputFile(std::string path) : path_(std::move(path)) {
    try {
        descriptor_ = open(path_);
    } catch (const std::system_error& error) {
        throw inputFailure(path_, error);
    }
}

std::size_t InputFile::read(char* target, std::size_t size) {
    try {
        const std::size_t count = notation::DescriptorSource(descriptor_.get()).read(target, size);
        head_.append(target, std::min(count, headLength - head_.size()));
        return count;
    } catch (const std::system_error& error) {
        throw inputFailure(path_, error);
    }
}

std::string InputFile::readRest() {
    std::string rest;
    for (std::size_t length = 0;; rest.resize(length)) {
        rest.resize(length + pieceLength);
        const std::size_t count = read(rest.data() + length, pieceLength);
        length += count;
        if (count == 0) {
            rest.resize(length);
            return rest;
        }
    }
}

} // namespace petal
