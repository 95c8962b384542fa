#include "html/DataBlock.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <libdeflate.h>
#include <new>

namespace html {

namespace {

constexpr std::size_t mostPlain = 1'000'000;

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

struct Packed {
    std::unique_ptr<char[]> memory; // of which only the pages with bytes take memory
    std::size_t size = 0;

    [[nodiscard]] std::string_view bytes() const { return {memory.get(), size}; }
};

Packed packed(std::string_view bytes) {
    constexpr int level = 6; // the next one takes half as long again, and saves a thirtieth
    const std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor(libdeflate_alloc_compressor(level));
    if (compressor == nullptr) {
        throw std::bad_alloc();
    }
    const std::size_t most = libdeflate_gzip_compress_bound(compressor.get(), bytes.size());
    Packed packed{std::make_unique_for_overwrite<char[]>(most), 0};
    packed.size = libdeflate_gzip_compress(compressor.get(), bytes.data(), bytes.size(), packed.memory.get(), most);
    return packed;
}

/// Writes the four digits of three bytes.
void putDigits(std::string_view group, char* target) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto byte = [&](std::size_t index) { return std::uint32_t{static_cast<unsigned char>(group[index])}; };
    const std::uint32_t bits = byte(0) << 16U | byte(1) << 8U | byte(2);
    target[0] = alphabet[bits >> 18U];
    target[1] = alphabet[bits >> 12U & 63U];
    target[2] = alphabet[bits >> 6U & 63U];
    target[3] = alphabet[bits & 63U];
}

void putBase64(std::string_view bytes, text::BufferedOutput& output) {
    constexpr std::size_t groupSize = 3;
    constexpr std::size_t groupsAtOnce = text::BufferedOutput::mostRoom / (groupSize + 1);
    while (!bytes.empty()) {
        const std::string_view some = bytes.substr(0, groupSize * groupsAtOnce);
        bytes.remove_prefix(some.size());
        char* target = output.room(text::BufferedOutput::mostRoom);
        const std::size_t whole = some.size() - some.size() % groupSize;
        for (std::size_t at = 0; at < whole; at += groupSize, target += groupSize + 1) {
            putDigits(some.substr(at, groupSize), target);
        }
        if (whole < some.size()) { // the last group of all
            std::array<char, groupSize> last{};
            const std::string_view rest = some.substr(whole);
            std::ranges::copy(rest, last.begin());
            putDigits({last.data(), last.size()}, target);
            std::fill(target + rest.size() + 1, target + groupSize + 1, '=');
            target += groupSize + 1;
        }
        output.putUntil(target);
    }
}

} // namespace

void putWithoutTags(std::string_view json, text::BufferedOutput& output) {
    for (std::size_t found = 0; (found = json.find('<')) != std::string_view::npos; json.remove_prefix(found + 1)) {
        output.put(json.substr(0, found));
        output.put("\\u003c"); // only texts have one
    }
    output.put(json);
}

DataBlock::DataBlock(text::BufferedOutput& output, std::string_view id) : output_(output), id_(id) {}

void DataBlock::start(std::string_view attributes) {
    output_.put(R"(<script type="application/json" id=")");
    output_.put(id_);
    output_.put(attributes);
    output_.put("\">");
}

void DataBlock::write(std::string_view bytes) {
    if (bytes.empty()) {
        return;
    }
    if (bytes.size() > capacity_ - size_) {
        grow(bytes.size());
    }
    std::memcpy(kept_.get() + size_, bytes.data(), bytes.size());
    size_ += bytes.size();
}

void DataBlock::grow(std::size_t more) {
    const std::size_t capacity = std::max(2 * capacity_, size_ + more);
    auto* const larger = static_cast<char*>(std::realloc(kept_.get(), capacity));
    if (larger == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(kept_.release());
    kept_.reset(larger);
    capacity_ = capacity;
}

void DataBlock::finish() {
    const std::string_view kept(kept_.get(), size_);
    if (size_ > mostPlain) {
        start("\" data-encoding=\"gzip+base64");
        putBase64(packed(kept).bytes(), output_);
    } else {
        start("");
        putWithoutTags(kept, output_);
    }
    output_.put("</script>\n");
}

} // namespace html
