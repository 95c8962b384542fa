#include "petal/output/FileUses.h"

#include "petal/Failure.h"
#include "petal/output/Descriptor.h"

#include <cerrno>
#include <sys/stat.h>
#include <system_error>

namespace petal {

namespace {

constexpr int mostLinks = 40; // the system's own limit

} // namespace

std::filesystem::path followLinks(std::filesystem::path file) {
    for (int links = 0; std::filesystem::is_symlink(std::filesystem::symlink_status(file)); ++links) {
        if (links == mostLinks) {
            throw std::system_error(ELOOP, std::generic_category());
        }
        file = file.parent_path() / std::filesystem::read_symlink(file);
    }
    return file;
}

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& written, const std::string& other) {
    throw Failure(Outcome::wrongUsage, "writing '" + written + "' would overwrite '" + other + "'",
                  "Give -o, --log, --ledger and --report different places.");
}

/// The key of the file at a path: `name` if it does not exist yet, "" if it is not a regular file.
std::string keyOf(const std::string& path, std::string name) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return name;
    }
    return S_ISREG(status.st_mode) ? std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino) : "";
}

} // namespace

void FileUses::reads(const std::string& path) {
    read_.emplace(keyOf(path, nameOf(path)), path);
}

void FileUses::writes(const std::string& path) {
    if (path.empty() || path == "-" || namedDescriptor(path) >= 0) {
        return;
    }
    const std::string name = nameOf(path);
    const std::string key = keyOf(path, name);
    if (key.empty()) {
        return;
    }
    if (const auto known = read_.find(key); known != read_.end()) {
        refuse(path, known->second);
    }
    if (const auto [other, isNew] = names_.emplace(name, path); !isNew) {
        refuse(path, other->second);
    }
    written_.emplace(key, path);
}

void FileUses::refuseToLose(const std::string& path) const {
    if (const auto known = written_.find(keyOf(path, "")); known != written_.end()) {
        refuse(known->second, path);
    }
}

/// The path without links and detours; "" when there is no such name. Each folder is looked up once.
std::string FileUses::nameOf(const std::string& path) {
    try {
        const fs::path file = fs::absolute(followLinks(path));
        const auto [folder, isNew] = folders_.try_emplace(file.parent_path());
        if (isNew) {
            folder->second = fs::weakly_canonical(file.parent_path());
        }
        return folder->second / file.filename();
    } catch (const std::system_error&) {
        return ""; // opening it will fail and report the reason
    }
}

} // namespace petal
