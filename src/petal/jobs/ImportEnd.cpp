#include "petal/jobs/ImportEnd.h"

#include "export/Omissions.h"
#include "petal/Failure.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace petal {

namespace {

/// The fixed part of an encoded end; its texts follow.
struct EndHead {
    Outcome outcome;
    ImportResult result;
};

/// The first value of a part of a message.
enum class Part : std::uint8_t { losses, omissions, end };

/// Makes a part of a message.
class Writer {
public:
    template <class Value>
    void plain(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void text(std::string_view text) {
        plain(std::uint64_t{text.size()});
        bytes_ += text;
    }
    [[nodiscard]] std::string take() {
        const std::uint64_t length = bytes_.size() - sizeof length;
        std::memcpy(bytes_.data(), &length, sizeof length);
        return std::move(bytes_);
    }

private:
    std::string bytes_ = std::string(sizeof(std::uint64_t), '\0'); // begins with the length of the rest
};

/// Reads the bytes of a `Writer`; after their end it returns zeros and empty texts.
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    template <class Value>
    Value plain() {
        Value value{};
        if (const std::string_view bytes = next(sizeof value); !bytes.empty()) {
            std::memcpy(&value, bytes.data(), sizeof value);
        }
        return value;
    }
    std::string text() { return std::string(next(plain<std::uint64_t>())); }
    [[nodiscard]] bool isAtEnd() const { return bytes_.empty(); }
    /// Whether more bytes were requested than there are.
    [[nodiscard]] bool isCut() const { return isCut_; }

private:
    std::string_view next(std::uint64_t count) {
        isCut_ = isCut_ || count > bytes_.size();
        const std::string_view bytes = bytes_.substr(0, isCut_ ? 0 : count);
        bytes_.remove_prefix(isCut_ ? bytes_.size() : count);
        return bytes;
    }

    std::string_view bytes_;
    bool isCut_ = false;
};

constexpr std::array lostTexts{&units::LostUnit::fileName, &units::LostUnit::folder, &units::LostUnit::place,
                               &units::LostUnit::remark};

units::ModelLosses readLosses(Reader& reader) {
    units::ModelLosses losses;
    losses.untold = reader.plain<std::uint64_t>();
    for (auto count = reader.plain<std::uint64_t>(); count > 0 && !reader.isCut(); --count) {
        losses.provenSymbols.insert(reader.text());
    }
    for (auto count = reader.plain<std::uint64_t>(); count > 0 && !reader.isCut(); --count) {
        units::LostUnit unit;
        unit.fault = std::min(reader.plain<units::UnitFault>(), units::lastFault);
        for (const auto text : lostTexts) {
            unit.*text = reader.text();
        }
        losses.units.push_back(std::move(unit));
    }
    return losses;
}

OmissionCounts readOmissions(Reader& reader) {
    OmissionCounts omissions;
    const std::string format = reader.text();
    for (auto count = reader.plain<std::uint64_t>(); count > 0 && !reader.isCut(); --count) {
        OmissionCounts::Row row{.format = format, .one = reader.text(), .many = reader.text(), .count = 0};
        row.count = reader.plain<std::uint64_t>();
        omissions.rows.push_back(std::move(row));
    }
    return omissions;
}

ImportEnd readEnd(Reader& reader) {
    const auto head = reader.plain<EndHead>();
    ImportEnd end;
    end.outcome = head.outcome;
    end.result = head.result;
    end.text = reader.text();
    end.advice = reader.text();
    for (auto count = reader.plain<std::uint64_t>(); count > 0 && !reader.isCut(); --count) {
        end.listed.emplace_back(reader.text());
    }
    return end;
}

ImportEnd failed(Outcome outcome, const char* text, const std::string& advice) {
    ImportEnd end;
    end.outcome = outcome;
    end.text = text;
    end.advice = advice;
    return end;
}

} // namespace

void OmissionCounts::add(const OmissionCounts& others) {
    for (const Row& other : others.rows) {
        const auto same = std::ranges::find_if(
            rows, [&](const Row& row) { return row.format == other.format && row.one == other.one; });
        if (same != rows.end()) {
            same->count += other.count;
        } else {
            rows.push_back(other);
        }
    }
}

std::vector<std::string> OmissionCounts::lines() const {
    std::vector<std::string> lines;
    const std::string* last = nullptr; // rows of a format that was added twice may be apart
    for (const Row& row : rows) {
        if (last == nullptr || *last != row.format) {
            lines.push_back(row.format + ": left out: ");
        } else {
            lines.back() += ", ";
        }
        last = &row.format;
        lines.back() += std::to_string(row.count) + " " + (row.count == 1 ? row.one : row.many);
    }
    return lines;
}

ImportEnd endWith(const ImportResult& result) {
    ImportEnd end;
    end.outcome = result.outcome;
    end.result = result;
    return end;
}

ImportEnd endWith(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const Failure& known) {
        return failed(known.getOutcome(), known.what(), known.getAdvice());
    } catch (const std::bad_alloc&) {
        return failed(Outcome::outOfMemory, "there is too little memory for this file",
                      "Raise --max-memory if it is given, and run fewer imports at a time.");
    } catch (const std::exception& unknown) {
        return failed(Outcome::unexpected, unknown.what(), "");
    }
}

std::string encoded(const ImportEnd& end) {
    EndHead head{};
    head.outcome = end.outcome;
    head.result = end.result;
    Writer writer;
    writer.plain(Part::end);
    writer.plain(head);
    writer.text(end.text);
    writer.text(end.advice);
    writer.plain(std::uint64_t{end.listed.size()});
    for (const std::filesystem::path& folder : end.listed) {
        writer.text(folder.native());
    }
    return writer.take();
}

std::string encoded(const units::ModelLosses& losses) {
    Writer writer;
    writer.plain(Part::losses);
    writer.plain(losses.untold);
    writer.plain(std::uint64_t{losses.provenSymbols.size()});
    for (const std::string& symbol : losses.provenSymbols) {
        writer.text(symbol);
    }
    writer.plain(std::uint64_t{losses.units.size()});
    for (const units::LostUnit& unit : losses.units) {
        writer.plain(unit.fault);
        for (const auto text : lostTexts) {
            writer.text(unit.*text);
        }
    }
    return writer.take();
}

std::string encoded(std::string_view format, const exporter::Omissions& omissions) {
    Writer writer;
    writer.plain(Part::omissions);
    writer.text(format);
    writer.plain(std::uint64_t{omissions.getCounts().size()});
    for (const exporter::Omissions::Count& row : omissions.getCounts()) {
        writer.text(row.omission.one);
        writer.text(row.omission.many);
        writer.plain(row.count);
    }
    return writer.take();
}

bool takePart(std::string_view& bytes, ImportMessage& message) {
    Reader head(bytes);
    const auto length = head.plain<std::uint64_t>();
    if (head.isCut() || length > bytes.size() - sizeof length) {
        return false;
    }
    Reader reader(bytes.substr(sizeof length, length));
    bytes.remove_prefix(sizeof length + length);
    const auto part = reader.plain<Part>();
    if (part == Part::losses) {
        message.losses.push_back(readLosses(reader));
    } else if (part == Part::omissions) {
        message.omissions.add(readOmissions(reader));
    } else {
        message.end = readEnd(reader);
    }
    return true;
}

} // namespace petal
