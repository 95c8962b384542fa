#include "PostgresServer.h"

#include <cstdlib>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

std::unique_ptr<PostgresServer> PostgresServer::start(std::string& missing) {
    for (int version = 30; version > 12; --version) { // the newest first
        const fs::path folder = "/usr/lib/postgresql/" + std::to_string(version) + "/bin";
        if (fs::exists(folder / "initdb")) {
            return std::make_unique<PostgresServer>(folder);
        }
    }
    missing = "PostgreSQL is not installed";
    return nullptr;
}

PostgresServer::PostgresServer(fs::path programs) : programs_(std::move(programs)) {
    std::string name = (fs::temp_directory_path() / "petal-pg-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    folder_ = name;
    if (::getuid() == 0) { // the server does not run as root
        const passwd* user = ::getpwnam("postgres") != nullptr ? ::getpwnam("postgres") : ::getpwnam("nobody");
        asUser_ = "setpriv --reuid=" + std::to_string(user->pw_uid) + " --regid=" + std::to_string(user->pw_gid) +
                  " --clear-groups ";
        if (::chown(name.c_str(), user->pw_uid, user->pw_gid) != 0) {
            throw std::runtime_error("the folder cannot be given away");
        }
    }
    command("initdb -D " + name + "/data -A trust -U test -E UTF8 --locale=C.UTF-8 --no-sync");
    run();
}

PostgresServer::~PostgresServer() {
    try {
        stop();
    } catch (const std::runtime_error&) { // it has stopped before
    }
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void PostgresServer::run() const {
    const std::string name = folder_.string();
    command("pg_ctl -D " + name + "/data -l " + name + "/log -w -o \"-k " + name +
            " -c listen_addresses='' -c fsync=off -c full_page_writes=off\" start");
}

void PostgresServer::stop() const {
    command("pg_ctl -D " + folder_.string() + "/data -m immediate -w stop");
}

void PostgresServer::command(const std::string& command) const {
    if (std::system(("cd / && " + asUser_ + programs_.string() + "/" + command + " >/dev/null 2>&1").c_str()) != 0) {
        throw std::runtime_error("cannot run " + command);
    }
}
