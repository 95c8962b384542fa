#include "petal/LogFile.h"

#include "petal/fileFailure.h"
#include "petal/namedDescriptor.h"
#include "petal/writeFully.h"

#include <cerrno>

namespace petal {

namespace {

std::FILE* open(const std::string& path) {
    const int descriptor = namedDescriptor(path);
    std::FILE* file = descriptor >= 0 ? ::fdopen(duplicate(descriptor), "w") : std::fopen(path.c_str(), "we");
    if (file == nullptr) {
        throwErrno();
    }
    std::setvbuf(file, nullptr, _IOLBF, BUFSIZ);
    return file;
}

} // namespace

LogFile::LogFile(std::string path) : path_(std::move(path)) {
    try {
        file_.reset(open(path_));
    } catch (const std::system_error& error) {
        throw outputFailure("the log '" + path_ + "'", error);
    }
}

void LogFile::write(std::string_view line) {
    if (std::fwrite(line.data(), 1, line.size(), file_.get()) != line.size() && error_ == 0) {
        error_ = errno;
    }
}

void LogFile::close() {
    if (std::fclose(file_.release()) != 0 && error_ == 0) {
        error_ = errno;
    }
    if (error_ != 0) {
        throw outputFailure("the log '" + path_ + "'", std::system_error(error_, std::generic_category()));
    }
}

} // namespace petal
