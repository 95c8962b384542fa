#include "catalog/sqlite/Connection.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace catalog {

namespace {

constexpr int patience = 2000; // milliseconds to wait for another program's lock

constexpr std::size_t cacheLength = std::size_t{64} << 20U;
constexpr int pageLength = 4096;

/// Gives SQLite memory for its pages that forked processes do not inherit: they never use a database, and sharing its
/// pages would cost each fork, and each change of a page after it, more than writing a small model.
void keepPagesFromChildren() {
    static const bool isDone = [] {
        int headLength = 0;
        sqlite3_config(SQLITE_CONFIG_PCACHE_HDRSZ, &headLength);
        void* memory = ::mmap(nullptr, cacheLength, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED || ::madvise(memory, cacheLength, MADV_DONTFORK) != 0) {
            return false; // it works without, slower
        }
        const int slotLength = pageLength + headLength;
        return sqlite3_config(SQLITE_CONFIG_PAGECACHE, memory, slotLength,
                              static_cast<int>(cacheLength) / slotLength) == SQLITE_OK;
    }();
    static_cast<void>(isDone);
}

constexpr int primary(int code) {
    constexpr int mask = 0xFF;
    return code & mask;
}

/// What a failure of SQLite means for a catalogue. The last row is for all others.
struct FailureRow {
    int code;
    const char* text;
    bool hasReason; ///< the text goes on with what SQLite and the system say
    const char* advice;
};
constexpr std::array failures{
    FailureRow{
        SQLITE_BUSY, "is in use by another program", false,
        "Wait until that is done, or close what has the file open, and run petal again: it goes on where it was."},
    FailureRow{SQLITE_LOCKED, "is in use by another program", false, "Wait until that is done, and run petal again."},
    FailureRow{SQLITE_NOTADB, "is not a catalogue, nor any file of SQLite", false,
               "Name another file, or delete this one and make it anew."},
    FailureRow{SQLITE_CORRUPT, "is damaged: ", true, "Delete the file and make it anew."},
    FailureRow{SQLITE_READONLY, "must not be changed: ", true,
               "Give yourself the right to write the file and its folder."},
    FailureRow{SQLITE_PERM, "must not be changed: ", true, "Give yourself the right to write the file and its folder."},
    FailureRow{SQLITE_FULL, "cannot be written: the disk is full", false,
               "Make room and run petal again: it goes on where it was."},
    FailureRow{SQLITE_CANTOPEN, "cannot be opened: ", true, "See that its folder exists and can be written."},
    FailureRow{SQLITE_IOERR, "cannot be read or written: ", true,
               "See that there is room on the disk, and run petal again: it goes on where it was."},
    FailureRow{SQLITE_ERROR, "refuses: ", true, ""},
};

} // namespace

Connection::Connection(std::string path, Access access) : path_(std::move(path)) {
    try {
        open(access);
    } catch (...) {
        close();
        throw;
    }
}

void Connection::open(Access access) {
    std::error_code error;
    const auto status = std::filesystem::status(path_, error);
    if (access == Access::read && !std::filesystem::exists(status)) {
        refuse("does not exist", "Make a catalogue with 'petal catalog FOLDER -o FILE'.");
    }
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        refuse("is no regular file", "Name a file.");
    }
    keepPagesFromChildren();
    const int flags = access == Access::read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    // A name such as "file:a" must not be taken for a URI.
    const std::string name = std::filesystem::absolute(path_).string();
    check(sqlite3_open_v2(name.c_str(), &handle_, flags | SQLITE_OPEN_NOMUTEX, nullptr));
    sqlite3_extended_result_codes(handle_, 1);
    sqlite3_busy_timeout(handle_, patience);
    if (access == Access::write) {
        lockOut();
    }
}

void Connection::close() {
    sqlite3_close(std::exchange(handle_, nullptr));
    if (lock_ >= 0) {
        ::close(std::exchange(lock_, -1)); // not before: SQLite would lose its own locks
    }
}

/// Refuses a second petal that would write to the catalogue between the transactions of this one.
void Connection::lockOut() {
    lock_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC);
    if (lock_ >= 0 && ::flock(lock_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        refuse("is being written by another petal", "Wait until that is done, and run petal again.");
    }
}

void Connection::refuse(const std::string& what, const std::string& advice) const {
    throw DatabaseFailure("'" + path_ + "' " + what, advice);
}

void Connection::check(int code) const {
    if (code == SQLITE_OK) {
        return;
    }
    if (primary(code) == SQLITE_NOMEM) {
        throw std::bad_alloc();
    }
    const int systemError = handle_ != nullptr ? sqlite3_system_errno(handle_) : 0;
    const std::string text = handle_ != nullptr ? sqlite3_errmsg(handle_) : sqlite3_errstr(code);
    const std::string reason = systemError != 0 ? text + ": " + std::strerror(systemError) : text;
    const auto* row = std::ranges::find(failures, primary(code), &FailureRow::code);
    row = row != failures.end() ? row : &failures.back();
    refuse(row->text + (row->hasReason ? reason : std::string()), row->advice);
}

std::int64_t Connection::numberOf(const std::string& sql) const {
    Statement statement(*this, sql);
    return statement.step() ? statement.number(0) : 0;
}

bool Connection::has(std::string_view name) const {
    Statement statement(*this, "SELECT 1 FROM sqlite_schema WHERE name = ?");
    statement.bind(1, name);
    return statement.step();
}

Statement::Statement(const Connection& connection, const std::string& sql) : connection_(connection) {
    connection.check(sqlite3_prepare_v3(connection.handle(), sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
}

bool Statement::step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        const int failure = sqlite3_extended_errcode(connection_.handle());
        reset();
        connection_.check(failure);
    }
    return code == SQLITE_ROW;
}

} // namespace catalog
