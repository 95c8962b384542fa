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

void putBase64(std::string_view bytes, text::BufferedOutput& output) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t groupSize = 3;
    for (std::size_t at = 0; at < bytes.size(); at += groupSize) {
        const std::string_view group = bytes.substr(at, groupSize);
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < groupSize; ++index) {
            bits = bits << 8U | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0U);
        }
        std::array<char, groupSize + 1> digits;
        digits.fill('=');
        for (std::size_t index = 0; index <= group.size(); ++index) {
            digits[index] = alphabet[bits >> (18 - 6 * index) & 63U];
        }
        output.put({digits.data(), digits.size()});
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
