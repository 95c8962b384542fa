#include "catalog/copyModel.h"

#include "catalog/texts.h"

#include <algorithm>

namespace catalog {

namespace {

/// The numbers of a table's rows, in ascending order: the place of one is its local number less 1.
using Numbers = std::vector<std::int64_t>;

class NumberTaker final : public AnswerTaker {
public:
    explicit NumberTaker(Numbers& numbers) : numbers_(numbers) {}

    void columns(std::span<const std::string> /*names*/) override {}
    void row(std::span<const Value> values) override { numbers_.push_back(values.front().number); }

private:
    Numbers& numbers_;
};

std::uint32_t localNumber(const Numbers& numbers, std::int64_t number) {
    return static_cast<std::uint32_t>(std::ranges::lower_bound(numbers, number) - numbers.begin()) + 1;
}

/// Writes the rows of one table.
class RowCopier final : public AnswerTaker {
public:
    RowCopier(const Table& table, std::span<const Numbers> numbers, RowWriter& rows)
        : table_(table), numbers_(numbers), rows_(rows) {}

    void columns(std::span<const std::string> /*names*/) override {}
    void row(std::span<const Value> values) override {
        rows_.start(table_.id);
        for (std::size_t at = 0; at < values.size(); ++at) {
            const Column& column = table_.columns[at];
            const Value& value = values[at];
            if (column.kind == ColumnKind::key) {
                continue;
            }
            switch (value.kind) {
            case Value::Kind::null:
                rows_.null();
                break;
            case Value::Kind::integer:
                column.kind == ColumnKind::reference ? rows_.reference(local(column.target, value.number))
                                                     : rows_.integer(value.number);
                break;
            case Value::Kind::text:
                rows_.name(value.text);
                break;
            }
        }
    }

private:
    [[nodiscard]] std::uint32_t local(TableId target, std::int64_t number) const {
        return localNumber(numbers_[static_cast<std::size_t>(numberedBy(target))], number);
    }

    const Table& table_;
    std::span<const Numbers> numbers_;
    RowWriter& rows_;
};

std::string selection(const Table& table, const std::string& columns, std::int64_t model) {
    return "SELECT " + columns + " FROM " + quoted(table.name) + " WHERE " + ofModel(table, std::to_string(model)) +
           " ORDER BY " + quoted(table.columns.front().name);
}

/// Gives elements the numbers that those of the same element id have in the catalogue, and others new ones.
void reuse(const std::unordered_map<std::string, std::int64_t>& numbers, std::string_view rows, Ids& ids) {
    constexpr std::size_t elementId = 2; // behind name and model
    std::int64_t& free = ids.first[static_cast<std::size_t>(TableId::element)];
    RowReader reader(rows);
    for (Row row; reader.next(row);) {
        if (row.table == TableId::element) {
            const auto found = numbers.find(std::string(row.values[elementId].text));
            ids.elements.push_back(found != numbers.end() ? found->second : free++);
        }
    }
}

} // namespace

void copyModel(Database& database, std::int64_t model, RowWriter& rows) {
    std::array<Numbers, tableCount> numbers;
    for (const Table& table : tables()) {
        if (table.columns.front().kind == ColumnKind::key) {
            NumberTaker taker(numbers[static_cast<std::size_t>(table.id)]);
            database.query(selection(table, "id", model), taker);
        }
    }
    for (const Table& table : tables()) {
        std::string columns;
        for (const Column& column : table.columns) {
            columns += (columns.empty() ? "" : ", ") + quoted(column.name);
        }
        RowCopier copier(table, numbers, rows);
        database.query(selection(table, columns, model), copier);
    }
    rows.finish();
}

void putModel(Database& database, std::string_view bytes, const KnownModel* known, Ids& free) {
    Ids ids = free;
    if (known != nullptr) {
        ids.model = known->id;
        if (known->isImported) {
            reuse(database.elementsOf(known->id), bytes, ids);
        }
    } else {
        ids.model = ids.first[static_cast<std::size_t>(TableId::model)];
    }
    PlacedRows rows(bytes, ids);
    database.put(rows, known != nullptr ? known->id : 0);
    free = rows.following();
}

} // namespace catalog
