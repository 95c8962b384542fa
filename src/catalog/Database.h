#pragma once

#include "catalog/Rows.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace catalog {

/// A database that cannot be opened, read or written. Both texts are for people; `advice` says what to do and may be
/// empty.
class DatabaseFailure : public std::runtime_error {
public:
    DatabaseFailure(const std::string& text, std::string advice)
        : std::runtime_error(text), advice_(std::move(advice)) {}

    [[nodiscard]] const std::string& getAdvice() const { return advice_; }

private:
    std::string advice_;
};

/// What tells whether a file has changed, as the columns of `model` and `unit`.
struct FileFacts {
    std::uint64_t size = 0;
    std::string modified;
    std::string hash;

    bool operator==(const FileFacts&) const = default;
};

/// A unit of a model in the catalogue, or of one on the disk.
struct KnownUnit {
    std::int64_t id = 0; ///< in the catalogue
    std::string name;
    std::string path;
    std::string kind;
    bool isFound = false;
    std::string remark;
    FileFacts facts;  ///< empty unless it was found
    std::string file; ///< its path on the disk; not from a catalogue
};

/// A model in the catalogue.
struct KnownModel {
    std::int64_t id = 0;
    std::string path;
    FileFacts facts;
    std::string version; ///< of petal
    std::string reading; ///< the options
    bool isImported = false;
    std::string failure;
    std::vector<KnownUnit> units; ///< in the order of their numbers
};

/// Takes the rows of an answer.
class AnswerTaker {
public:
    AnswerTaker() = default;
    AnswerTaker(const AnswerTaker&) = delete;
    AnswerTaker& operator=(const AnswerTaker&) = delete;
    virtual ~AnswerTaker() = default;

    /// Called once before the rows, also without any.
    virtual void columns(std::span<const std::string> names) = 0;
    /// The values live during the call.
    virtual void row(std::span<const Value> values) = 0;
};

/// A catalogue in a database.
///
/// Used by one thread of one process; a forked process must leave it alone. All functions throw `DatabaseFailure`, and
/// leave the catalogue as it was when they do. Each change is whole: the end of the process in it, or a failure, undoes
/// it, together with the models that shared its transaction, and a later run goes on from there. After an exception of
/// `put` nothing but the destructor may be called.
class Database {
public:
    Database() = default;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    virtual ~Database() = default;

    /// The models of the catalogue, by path.
    [[nodiscard]] std::vector<KnownModel> models();
    /// The first number that is free, by table; 1 of an empty one.
    [[nodiscard]] Ids freeIds();
    /// The numbers of a model's elements, by their element id.
    [[nodiscard]] std::unordered_map<std::string, std::int64_t> elementsOf(std::int64_t model);

    /// Puts the rows of a model in; `before` is the number of the model whose rows they replace, or 0. One
    /// transaction, which small models may share: the last of them are there after `finish`.
    virtual void put(PlacedRows& rows, std::int64_t before) = 0;
    /// Sets the time at which the files of a model were changed to that of `model`.
    virtual void setTimes(const KnownModel& model) = 0;
    virtual void remove(std::int64_t model) = 0;
    /// Makes what is left: indexes, search, statistics. To be called after the last change, if there was any or
    /// `isUnfinished`.
    virtual void finish() = 0;
    /// Whether an earlier run was interrupted before its `finish`.
    [[nodiscard]] virtual bool isUnfinished() = 0;

    /// Passes on the answer to a question. Throws what `taker` throws.
    virtual void query(const std::string& sql, AnswerTaker& taker) = 0;
};

enum class Access : std::uint8_t {
    read,  ///< of a catalogue that exists
    write, ///< of one that exists or is made
};

/// The interface of a part that holds a database (loading/part.h). Its name is that of the database in small letters.
struct DatabasePart {
    /// Opens the catalogue that `target`, a path or whatever the database takes, names. Throws `DatabaseFailure`: it
    /// cannot be opened, is none, is of another version, or is in use. `version` is that of petal, for `about`.
    std::unique_ptr<Database> (*open)(const std::string& target, Access access, const std::string& version);
};

} // namespace catalog
