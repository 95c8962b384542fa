#include "html/DataBlock.h"

#include <array>
#include <new>
#include <zlib.h>

namespace html {

namespace {

constexpr std::size_t mostPlain = 1'000'000;

/// Encodes bytes that come in pieces.
class Base64 {
public:
    explicit Base64(text::BufferedOutput& output) : output_(output) {}

    void put(std::string_view bytes) {
        for (const char byte : bytes) {
            group_ = group_ << 8U | static_cast<unsigned char>(byte);
            if (++length_ == 3) {
                putGroup(4);
            }
        }
    }
    void finish() {
        if (length_ > 0) {
            const std::size_t digits = length_ + 1;
            group_ <<= 8 * (3 - length_);
            putGroup(digits);
            output_.putRepeated('=', 4 - digits);
        }
    }

private:
    void putGroup(std::size_t digits) {
        constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
        for (std::size_t index = 0; index < digits; ++index) {
            output_.put(alphabet[group_ >> (18 - 6 * index) & 63U]);
        }
        group_ = 0;
        length_ = 0;
    }

    text::BufferedOutput& output_;
    std::uint32_t group_ = 0;
    std::size_t length_ = 0;
};

} // namespace

class DataBlock::Packer {
public:
    explicit Packer(text::BufferedOutput& output) : base64_(output) {
        constexpr int gzip = 16; // added to the size of the window
        constexpr int level = 7; // in the time of the usual one a document is a fifteenth smaller
        constexpr int memory = 8;
        if (deflateInit2(&stream_, level, Z_DEFLATED, MAX_WBITS + gzip, memory, Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;
    ~Packer() { deflateEnd(&stream_); }

    void put(std::string_view bytes) {
        // zlib counts in 32 bits
        constexpr std::size_t most = std::size_t{1} << 30U;
        for (; bytes.size() > most; bytes.remove_prefix(most)) {
            pack(bytes.substr(0, most), Z_NO_FLUSH);
        }
        pack(bytes, Z_NO_FLUSH);
    }
    void finish() {
        pack({}, Z_FINISH);
        base64_.finish();
    }

private:
    void pack(std::string_view bytes, int flush) {
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data())); // which zlib only reads
        stream_.avail_in = static_cast<uInt>(bytes.size());
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(buffer_.data());
            stream_.avail_out = static_cast<uInt>(buffer_.size());
            deflate(&stream_, flush);
            base64_.put({buffer_.data(), buffer_.size() - stream_.avail_out});
        } while (stream_.avail_out == 0);
    }

    z_stream stream_{};
    std::array<char, 16'384> buffer_;
    Base64 base64_;
};

DataBlock::DataBlock(text::BufferedOutput& output, std::string_view id) : output_(output), id_(id) {}
DataBlock::~DataBlock() = default;

void DataBlock::start(std::string_view attributes) {
    output_.put(R"(<script type="application/json" id=")");
    output_.put(id_);
    output_.put(attributes);
    output_.put("\">");
}

void DataBlock::write(std::string_view bytes) {
    if (packer_ == nullptr && kept_.size() + bytes.size() <= mostPlain) {
        kept_ += bytes;
        return;
    }
    if (packer_ == nullptr) {
        start("\" data-encoding=\"gzip+base64");
        packer_ = std::make_unique<Packer>(output_);
        packer_->put(kept_);
        kept_ = {};
    }
    packer_->put(bytes);
}

void DataBlock::finish() {
    if (packer_ != nullptr) {
        packer_->finish();
    } else {
        start("");
        for (const char byte : kept_) {
            if (byte == '<') {
                output_.put("\\u003c"); // only texts have one
            } else {
                output_.put(byte);
            }
        }
    }
    output_.put("</script>\n");
}

} // namespace html
