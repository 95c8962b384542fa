#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace bench {

/// How the text is laid out: as the modelling tool does it, or with as few bytes as the notation takes.
enum class Layout : std::uint8_t { asUsual, tight };

/// Writes the notation of model files, item by item, in constant memory. Texts are bytes; what stands between
/// quotes must hold no quote of its own.
class PetalText {
public:
    /// Writes to `out`, which stays the caller's and must outlive this.
    PetalText(std::FILE* out, Layout layout);
    PetalText(const PetalText&) = delete;
    PetalText& operator=(const PetalText&) = delete;

    void beginObject(std::string_view kind);
    void beginObject(std::string_view kind, std::string_view name);
    /// An object whose header ends in a view number, such as a class view's: each of `names` is quoted.
    void beginView(std::string_view kind, std::initializer_list<std::string_view> names, std::uint64_t number);
    /// An object that is the value of a property.
    void beginObjectOf(std::string_view property, std::string_view kind, std::string_view name = {});
    void beginList(std::string_view property, std::string_view kind);
    void end();

    void quoted(std::string_view property, std::string_view text);
    void plain(std::string_view property, std::string_view value);
    void number(std::string_view property, std::uint64_t value);
    void reference(std::string_view property, std::uint64_t view);
    /// A text that is an item of a list.
    void item(std::string_view text);
    void value(std::string_view property, std::string_view kind, std::string_view text);
    /// A text in "|" lines: `text` holds them, joined by newlines.
    void lines(std::string_view property, std::string_view text);

    /// The bytes written so far.
    std::uint64_t size() const noexcept { return written_ + buffer_.size(); }

    /// Ends the text. Throws std::system_error when it could not be written.
    void finish();

private:
    void beginItem();
    void beginProperty(std::string_view property);
    void quote(std::string_view text);
    void flush();

    std::FILE* out_;
    Layout layout_;
    std::string buffer_;
    std::uint64_t written_ = 0;
    unsigned depth_ = 0;
};

} // namespace bench
