#include "catalog/Rows.h"

#include "text/utf8.h"

#include <stdexcept>

namespace catalog {

namespace {

/// The first byte of a value. Texts and integers follow their tag as a number, a text then as its bytes.
enum class Tag : char { null, positive, negative, text };

constexpr unsigned bitsPerByte = 7;
constexpr std::uint64_t more = 0x80;

} // namespace

std::uint32_t RowWriter::start(TableId table) {
    checkLast();
    table_ = &tableOf(table);
    values_ = table_->columns.front().kind == ColumnKind::key ? 1 : 0;
    output_.put(static_cast<char>(table));
    return values_ == 1 ? ++counts_[static_cast<std::size_t>(table)] : 0;
}

void RowWriter::checkLast() const {
    if (table_ != nullptr && values_ != table_->columns.size()) {
        throw std::logic_error("a row of '" + std::string(table_->name) + "' has another number of values");
    }
}

void RowWriter::put(std::uint64_t number) {
    for (; number >= more; number >>= bitsPerByte) {
        output_.put(static_cast<char>(number | more));
    }
    output_.put(static_cast<char>(number));
}

void RowWriter::null() {
    ++values_;
    output_.put(static_cast<char>(Tag::null));
}

void RowWriter::reference(std::uint32_t localNumber) {
    if (localNumber == 0) {
        return null();
    }
    integer(localNumber);
}

void RowWriter::integer(std::int64_t value) {
    ++values_;
    output_.put(static_cast<char>(value < 0 ? Tag::negative : Tag::positive));
    put(value < 0 ? ~static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value));
}

void RowWriter::name(std::string_view value) {
    const bool isPlain = value.find('\0') == std::string_view::npos && text::isValidUtf8(value);
    if (!isPlain) {
        std::string repaired = text::repairedUtf8(value);
        for (std::size_t at = repaired.find('\0'); at != std::string::npos; at = repaired.find('\0', at)) {
            repaired.replace(at, 1, "\xef\xbf\xbd");
        }
        return name(repaired);
    }
    ++values_;
    output_.put(static_cast<char>(Tag::text));
    put(value.size());
    output_.put(value);
}

void RowWriter::text(std::string_view value) {
    if (value.empty()) {
        return null();
    }
    name(value);
}

void RowWriter::finish() {
    checkLast();
    output_.flush();
}

std::uint64_t RowReader::number() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; !bytes_.empty(); shift += bitsPerByte) {
        const auto byte = static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(1);
        value |= (byte & (more - 1)) << shift;
        if (byte < more) {
            return value;
        }
    }
    throw std::runtime_error("the rows of a model were cut");
}

bool RowReader::next(Row& row) {
    if (bytes_.empty()) {
        return false;
    }
    row.table = static_cast<TableId>(number());
    const std::span<const Column> columns = tableOf(row.table).columns;
    row.values.resize(columns.size() - (columns.front().kind == ColumnKind::key ? 1 : 0));
    for (Value& value : row.values) {
        value = {};
        switch (static_cast<Tag>(number())) {
        case Tag::null:
            break;
        case Tag::positive:
            value = {.kind = Value::Kind::integer, .number = static_cast<std::int64_t>(number()), .text = {}};
            break;
        case Tag::negative:
            value = {.kind = Value::Kind::integer, .number = static_cast<std::int64_t>(~number()), .text = {}};
            break;
        case Tag::text: {
            const std::uint64_t length = number();
            if (length > bytes_.size()) {
                throw std::runtime_error("the rows of a model were cut");
            }
            value = {.kind = Value::Kind::text, .number = 0, .text = bytes_.substr(0, length)};
            bytes_.remove_prefix(length);
            break;
        }
        }
    }
    return true;
}

std::int64_t PlacedRows::placed(TableId table, std::int64_t local) const {
    const TableId numbered = numberedBy(table);
    if (numbered == TableId::model) {
        return ids_.model;
    }
    if (numbered == TableId::element && !ids_.elements.empty()) {
        return ids_.elements.at(static_cast<std::size_t>(local) - 1);
    }
    return ids_.first[static_cast<std::size_t>(numbered)] + local - 1;
}

bool PlacedRows::next() {
    if (!reader_.next(row_)) {
        return false;
    }
    const std::span<const Column> columns = tableOf(row_.table).columns;
    values_.clear();
    if (columns.front().kind == ColumnKind::key) {
        const std::uint32_t local = ++counts_[static_cast<std::size_t>(row_.table)];
        values_.push_back({.kind = Value::Kind::integer, .number = placed(row_.table, local), .text = {}});
    }
    for (const Value& value : row_.values) {
        const Column& column = columns[values_.size()];
        values_.push_back(value);
        if (column.kind == ColumnKind::reference && value.kind == Value::Kind::integer) {
            values_.back().number = placed(column.target, value.number);
        }
    }
    return true;
}

Ids PlacedRows::following() const {
    Ids ids = ids_;
    ids.elements.clear();
    for (std::size_t table = 0; table < tableCount; ++table) {
        const bool isReused = table == static_cast<std::size_t>(TableId::element) && !ids_.elements.empty();
        ids.first[table] += isReused ? 0 : counts_[table];
    }
    return ids;
}

} // namespace catalog
