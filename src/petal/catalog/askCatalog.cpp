#include "petal/catalog/askCatalog.h"

#include "petal/catalog/openDatabase.h"
#include "petal/output/ModelOutput.h"
#include "petal/output/fileFailure.h"
#include "text/IndentedJson.h"
#include "text/escape.h"
#include "text/utf8.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace petal {

namespace {

using catalog::Value;

std::string textOf(const Value& value) {
    return value.kind == Value::Kind::integer ? std::to_string(value.number) : std::string(value.text);
}

/// Keeps the rows of an answer.
class KeptAnswer final : public catalog::AnswerTaker {
public:
    void columns(std::span<const std::string> /*names*/) override {}
    void row(std::span<const Value> values) override {
        std::vector<std::string>& kept = rows.emplace_back();
        std::ranges::transform(values, std::back_inserter(kept), textOf);
    }

    std::vector<std::vector<std::string>> rows;
};

/// The cells that a text takes on a terminal: characters of East Asia take two.
std::size_t widthOf(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();) {
        const int code = text::nextCharacter(text, at);
        const int kind = code < 0 ? U_EA_NEUTRAL : u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
        width += kind == U_EA_WIDE || kind == U_EA_FULLWIDTH ? 2 : 1;
    }
    return width;
}

/// Columns side by side, numbers to the right.
class Table final : public catalog::AnswerTaker {
public:
    explicit Table(text::BufferedOutput& output) : output_(output) {}

    void columns(std::span<const std::string> names) override {
        rows_.emplace_back(names.begin(), names.end());
        areNumbers_.assign(names.size(), true);
    }
    void row(std::span<const Value> values) override {
        std::vector<std::string>& cells = rows_.emplace_back();
        for (std::size_t column = 0; column < values.size(); ++column) {
            cells.push_back(text::printableText(textOf(values[column])));
            areNumbers_[column] = areNumbers_[column] && values[column].kind != Value::Kind::text;
        }
    }
    void write() {
        std::vector<std::size_t> widths(areNumbers_.size());
        for (const std::vector<std::string>& row : rows_) {
            for (std::size_t column = 0; column < row.size(); ++column) {
                widths[column] = std::max(widths[column], widthOf(row[column]));
            }
        }
        for (std::size_t index = 0; index < rows_.size(); ++index) {
            line(rows_[index], widths);
            if (index == 0) {
                std::vector<std::string> rules;
                std::ranges::transform(widths, std::back_inserter(rules),
                                       [](std::size_t width) { return std::string(width, '-'); });
                line(rules, widths);
            }
        }
    }

private:
    void line(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
        for (std::size_t column = 0; column < cells.size(); ++column) {
            const std::size_t blanks = widths[column] - widthOf(cells[column]);
            const bool isLast = column + 1 == cells.size();
            output_.putRepeated(' ', areNumbers_[column] ? blanks : 0);
            output_.put(cells[column]);
            output_.putRepeated(' ', areNumbers_[column] || isLast ? 0 : blanks);
            output_.put(isLast ? "\n" : "  ");
        }
    }

    text::BufferedOutput& output_;
    std::vector<std::vector<std::string>> rows_;
    std::vector<bool> areNumbers_;
};

/// RFC 4180, with line feeds.
class Csv final : public catalog::AnswerTaker {
public:
    explicit Csv(text::BufferedOutput& output) : output_(output) {}

    void columns(std::span<const std::string> names) override {
        for (std::size_t column = 0; column < names.size(); ++column) {
            cell(column, names[column]);
        }
        output_.put('\n');
    }
    void row(std::span<const Value> values) override {
        for (std::size_t column = 0; column < values.size(); ++column) {
            cell(column, textOf(values[column]));
        }
        output_.put('\n');
    }

private:
    void cell(std::size_t column, std::string_view text) {
        output_.put(column > 0 ? "," : "");
        if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
            return output_.put(text);
        }
        output_.put('"');
        for (const char byte : text) {
            output_.put(byte == '"' ? "\"\"" : std::string_view(&byte, 1));
        }
        output_.put('"');
    }

    text::BufferedOutput& output_;
};

class Json final : public catalog::AnswerTaker {
public:
    explicit Json(text::BufferedOutput& output) : output_(output), json_(output) { json_.startList(); }

    void columns(std::span<const std::string> names) override { names_.assign(names.begin(), names.end()); }
    void row(std::span<const Value> values) override {
        json_.startObject();
        for (std::size_t column = 0; column < values.size(); ++column) {
            json_.key(names_[column].c_str());
            switch (values[column].kind) {
            case Value::Kind::null:
                json_.null();
                break;
            case Value::Kind::integer:
                json_.number(values[column].number);
                break;
            case Value::Kind::text:
                json_.text(values[column].text);
                break;
            }
        }
        json_.endObject();
    }
    void write() {
        json_.endList();
        output_.put('\n');
    }

private:
    text::BufferedOutput& output_;
    text::IndentedJson json_;
    std::vector<std::string> names_;
};

constexpr const char* guideQuery = "SELECT name, question FROM guide ORDER BY id";

/// The statement of a question; the guide's own name asks for its questions.
std::string statementOf(const std::string& name, catalog::Database& database, const std::string& catalogue) {
    if (name == "guide") {
        return guideQuery;
    }
    KeptAnswer guide;
    database.query("SELECT name, sql FROM guide ORDER BY id", guide);
    for (const std::vector<std::string>& row : guide.rows) {
        if (row.front() == name) {
            return row.back();
        }
    }
    throw Failure(Outcome::wrongUsage, "the guide has no question '" + name + "'",
                  "'petal catalog --ask guide " + catalogue + "' lists the questions.");
}

} // namespace

void askCatalog(const CatalogRequest& request) {
    if (request.jobs.inputs.size() != 1) {
        throw Failure(Outcome::wrongUsage, "--ask needs one catalogue", "Name it.");
    }
    const std::string& catalogue = request.jobs.inputs.front();
    const std::unique_ptr<catalog::Database> database = openDatabase(catalogue, catalog::Access::read);
    try {
        withDatabase(Outcome::inputNotRead, [&] {
            const std::string sql = statementOf(*request.question, *database, catalogue);
            const std::unique_ptr<ModelOutput> output = ModelOutput::open(std::nullopt);
            text::BufferedOutput buffered(*output);
            if (request.asJson) {
                Json json(buffered);
                database->query(sql, json);
                json.write();
            } else if (request.asCsv) {
                Csv csv(buffered);
                database->query(sql, csv);
            } else {
                Table table(buffered);
                database->query(sql, table);
                table.write();
            }
            buffered.flush();
            output->commit();
        });
    } catch (const std::system_error& error) {
        throw outputFailure("standard output", error);
    }
}

} // namespace petal
