#include "model/PetalText.h"

#include <cerrno>
#include <system_error>

namespace bench {

namespace {

constexpr std::size_t bufferSize = 1U << 20U;
constexpr unsigned columnsPerLevel = 4;
constexpr unsigned columnsPerTab = 8;
constexpr std::size_t propertyColumns = 11; ///< the tool fills a property's name up with spaces, then sets a tab

} // namespace

PetalText::PetalText(std::FILE* out, Layout layout) : out_(out), layout_(layout) {
    buffer_.reserve(bufferSize + bufferSize / 4);
}

void PetalText::beginItem() {
    if (buffer_.size() >= bufferSize) {
        flush();
    }
    buffer_ += '\n';
    if (layout_ == Layout::tight) {
        buffer_ += ' ';
        return;
    }
    const unsigned columns = depth_ * columnsPerLevel;
    buffer_.append(columns / columnsPerTab, '\t').append(columns % columnsPerTab, ' ');
}

void PetalText::beginProperty(std::string_view property) {
    beginItem();
    buffer_ += property;
    if (layout_ == Layout::tight) {
        buffer_ += ' ';
        return;
    }
    buffer_.append(property.size() < propertyColumns ? propertyColumns - property.size() : 1, ' ') += '\t';
}

void PetalText::quote(std::string_view text) {
    ((buffer_ += '"') += text) += '"';
}

void PetalText::beginObject(std::string_view kind) {
    beginItem();
    (buffer_ += "(object ") += kind;
    ++depth_;
}

void PetalText::beginObject(std::string_view kind, std::string_view name) {
    beginObject(kind);
    buffer_ += ' ';
    quote(name);
}

void PetalText::beginView(std::string_view kind, std::initializer_list<std::string_view> names, std::uint64_t number) {
    beginObject(kind);
    for (const std::string_view name : names) {
        buffer_ += ' ';
        quote(name);
    }
    (buffer_ += " @") += std::to_string(number);
}

void PetalText::beginObjectOf(std::string_view property, std::string_view kind, std::string_view name) {
    beginProperty(property);
    (buffer_ += "(object ") += kind;
    if (!name.empty()) {
        buffer_ += ' ';
        quote(name);
    }
    ++depth_;
}

void PetalText::beginList(std::string_view property, std::string_view kind) {
    beginProperty(property);
    (buffer_ += "(list ") += kind;
    ++depth_;
}

void PetalText::end() {
    buffer_ += ')';
    --depth_;
}

void PetalText::quoted(std::string_view property, std::string_view text) {
    beginProperty(property);
    quote(text);
}

void PetalText::plain(std::string_view property, std::string_view value) {
    beginProperty(property);
    buffer_ += value;
}

void PetalText::number(std::string_view property, std::uint64_t value) {
    plain(property, std::to_string(value));
}

void PetalText::reference(std::string_view property, std::uint64_t view) {
    plain(property, "@" + std::to_string(view));
}

void PetalText::value(std::string_view property, std::string_view kind, std::string_view text) {
    beginProperty(property);
    ((buffer_ += "(value ") += kind) += ' ';
    quote(text);
    buffer_ += ')';
}

void PetalText::item(std::string_view text) {
    beginItem();
    quote(text);
}

void PetalText::lines(std::string_view property, std::string_view text) {
    beginProperty(property);
    buffer_ += "\n|";
    for (const char character : text) {
        buffer_ += character;
        if (character == '\n') {
            buffer_ += '|';
        }
    }
    buffer_ += '\n';
}

void PetalText::flush() {
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), out_) != buffer_.size()) {
        throw std::system_error(errno, std::generic_category(), "writing the model file");
    }
    written_ += buffer_.size();
    buffer_.clear();
}

void PetalText::finish() {
    buffer_ += '\n';
    flush();
    if (std::fflush(out_) != 0) {
        throw std::system_error(errno, std::generic_category(), "writing the model file");
    }
}

} // namespace bench
