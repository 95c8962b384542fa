#pragma once

#include <filesystem>
#include <memory>
#include <string>

/// A server of PostgreSQL in a temporary folder, reached by a socket there, as the user "test".
class PostgresServer {
public:
    /// Null when PostgreSQL is not installed; the reason is written to `missing`. Throws `std::runtime_error` when it
    /// does not start.
    [[nodiscard]] static std::unique_ptr<PostgresServer> start(std::string& missing);
    explicit PostgresServer(std::filesystem::path programs);
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;
    ~PostgresServer();

    /// The words by which libpq connects to a database.
    [[nodiscard]] std::string words(const std::string& database = "postgres") const {
        return "host=" + folder_.string() + " user=test dbname=" + database;
    }
    [[nodiscard]] const std::filesystem::path& getPrograms() const { return programs_; }
    [[nodiscard]] const std::filesystem::path& getFolder() const { return folder_; }

    /// Stops at once, without a word to those that are connected, as after a crash.
    void stop() const;
    void run() const;

private:
    void command(const std::string& command) const;

    std::filesystem::path programs_;
    std::filesystem::path folder_;
    std::string asUser_; // what a command begins with; empty for this user
};
