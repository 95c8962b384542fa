#include "catalog/Database.h"

#include "catalog/texts.h"

#include <functional>

namespace catalog {

namespace {

using Values = std::span<const Value>;

/// Calls `take` with each row of an answer.
class EachRow final : public AnswerTaker {
public:
    explicit EachRow(std::function<void(Values)> take) : take_(std::move(take)) {}

    void columns(std::span<const std::string> /*names*/) override {}
    void row(Values values) override { take_(values); }

private:
    std::function<void(Values)> take_;
};

void forEach(Database& database, const std::string& sql, std::function<void(Values)> take) {
    EachRow taker(std::move(take));
    database.query(sql, taker);
}

std::string textOf(const Value& value) {
    return std::string(value.text);
}

FileFacts factsOf(const Value& size, const Value& modified, const Value& hash) {
    return {static_cast<std::uint64_t>(size.number), textOf(modified), textOf(hash)};
}

} // namespace

std::vector<KnownModel> Database::models() {
    std::vector<KnownModel> models;
    std::unordered_map<std::int64_t, std::size_t> byId;
    forEach(*this,
            "SELECT id, path, size, modified, hash, petal_version, reading, status, failure FROM model ORDER BY path",
            [&](Values row) {
                byId[row[0].number] = models.size();
                KnownModel& one = models.emplace_back();
                one.id = row[0].number;
                one.path = textOf(row[1]);
                one.facts = factsOf(row[2], row[3], row[4]);
                one.version = textOf(row[5]);
                one.reading = textOf(row[6]);
                one.isImported = row[7].text == "imported";
                one.failure = textOf(row[8]);
            });
    forEach(*this, "SELECT id, model, name, path, kind, found, remark, size, modified, hash FROM unit ORDER BY id",
            [&](Values row) {
                KnownUnit& one = models[byId.at(row[1].number)].units.emplace_back();
                one.id = row[0].number;
                one.name = textOf(row[2]);
                one.path = textOf(row[3]);
                one.kind = textOf(row[4]);
                one.isFound = row[5].number != 0;
                one.remark = textOf(row[6]);
                one.facts = factsOf(row[7], row[8], row[9]);
            });
    return models;
}

Ids Database::freeIds() {
    Ids ids;
    for (const Table& table : tables()) {
        if (table.columns.front().kind == ColumnKind::key) {
            forEach(*this, "SELECT max(id) FROM " + quoted(table.name),
                    [&](Values row) { ids.first[static_cast<std::size_t>(table.id)] = row.front().number + 1; });
        }
    }
    return ids;
}

std::unordered_map<std::string, std::int64_t> Database::elementsOf(std::int64_t model) {
    std::unordered_map<std::string, std::int64_t> ids;
    forEach(*this, "SELECT element_id, id FROM element WHERE model = " + std::to_string(model),
            [&](Values row) { ids.emplace(row[0].text, row[1].number); });
    return ids;
}

} // namespace catalog
