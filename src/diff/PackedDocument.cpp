#include "diff/PackedDocument.h"

#include "diff/ModelReader.h"
#include "text/ascii.h"
#include "text/utf8.h"

#include <algorithm>
#include <limits>

namespace diff {

namespace {

/// What the first byte of a part says. From `knownKey` on it is a key that came before, the first one with this byte.
enum Token : std::uint8_t {
    objectStart,
    objectEnd,
    listStart,
    listEnd,
    flagFalse,
    flagTrue,
    negativeNumber, // less 1, as the size behind it
    positiveNumber, // a size is behind it
    someText,       // its size, then its bytes
    newKey,         // likewise
    knownKey,
};
constexpr std::size_t mostKeys = std::numeric_limits<std::uint8_t>::max() - knownKey;

/// Sizes are in groups of 7 bits, the lowest first; all but the last have this bit.
constexpr unsigned groupBits = 7;
constexpr std::uint8_t more = 1U << groupBits;

std::size_t likelyPlace(std::string_view key, std::size_t places) {
    const auto byte = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(key[at])); };
    return key.empty() ? 0 : (key.size() * 5 + byte(0) * 3 + byte(key.size() / 2) + byte(key.size() - 1)) % places;
}

} // namespace

void DocumentPacker::startObject() {
    output_.put(static_cast<char>(objectStart));
}

void DocumentPacker::endObject() {
    output_.put(static_cast<char>(objectEnd));
}

void DocumentPacker::startList() {
    output_.put(static_cast<char>(listStart));
}

void DocumentPacker::endList() {
    output_.put(static_cast<char>(listEnd));
}

void DocumentPacker::key(std::string_view member) {
    isQuid_ = member == "quid";
    std::uint8_t& likely = likely_[likelyPlace(member, likely_.size())];
    if (likely >= keys_.size() || keys_[likely] != member) {
        const auto found = std::ranges::find(keys_, member);
        if (found == keys_.end()) {
            output_.put(static_cast<char>(newKey));
            putText(member);
            if (keys_.size() < mostKeys) {
                likely = static_cast<std::uint8_t>(keys_.size());
                keys_.emplace_back(member);
            }
            return;
        }
        likely = static_cast<std::uint8_t>(found - keys_.begin());
    }
    output_.put(static_cast<char>(knownKey + likely));
}

void DocumentPacker::text(std::string_view value) {
    output_.put(static_cast<char>(someText));
    if (!text::isValidUtf8(value)) {
        const std::string repaired = text::repairedUtf8(value);
        putText(isQuid_ ? text::lowerCase(repaired) : repaired);
    } else if (isQuid_) {
        putText(text::lowerCase(value));
    } else {
        putText(value);
    }
}

void DocumentPacker::number(std::int64_t value) {
    output_.put(static_cast<char>(value < 0 ? negativeNumber : positiveNumber));
    putSize(static_cast<std::uint64_t>(value < 0 ? -(value + 1) : value));
}

void DocumentPacker::truth(bool value) {
    output_.put(static_cast<char>(value ? flagTrue : flagFalse));
}

void DocumentPacker::putSize(std::uint64_t size) {
    for (; size >= more; size >>= groupBits) {
        output_.put(static_cast<char>(size | more));
    }
    output_.put(static_cast<char>(size));
}

void DocumentPacker::putText(std::string_view text) {
    putSize(text.size());
    output_.put(text);
}

namespace {

/// Takes the parts apart and gives them to a reader of models.
class Unpacker {
public:
    Unpacker(std::string_view bytes, ModelReader& reader)
        : at_(bytes.data()), end_(at_ + bytes.size()), reader_(reader) {}

    /// False if the reader refuses a part.
    bool unpack() {
        while (at_ != end_) {
            if (!takePart(static_cast<std::uint8_t>(*at_++))) {
                return false;
            }
        }
        return true;
    }

private:
    struct Key {
        std::string_view name;
        const Member* member;
    };

    bool takePart(std::uint8_t token) {
        switch (token) {
        case objectStart:
            return reader_.StartObject();
        case objectEnd:
            return reader_.EndObject();
        case listStart:
            return reader_.StartArray();
        case listEnd:
            return reader_.EndArray();
        case flagFalse:
        case flagTrue:
            return reader_.Bool(token == flagTrue);
        case negativeNumber:
            return reader_.Int64(-static_cast<std::int64_t>(size()) - 1);
        case positiveNumber:
            return reader_.Int64(static_cast<std::int64_t>(size()));
        case someText:
            return reader_.takeText(text());
        case newKey: {
            const std::string_view name = text();
            const Key key{name, findMember(name)};
            if (keys_.size() < mostKeys) {
                keys_.push_back(key);
            }
            return reader_.takeKey(key.name, key.member);
        }
        default:
            break;
        }
        const std::size_t number = std::size_t{token} - knownKey;
        if (number >= keys_.size()) {
            throw BadDocument("it is damaged");
        }
        return reader_.takeKey(keys_[number].name, keys_[number].member);
    }

    std::uint64_t size() {
        std::uint64_t size = 0;
        for (unsigned shift = 0; at_ != end_ && shift < std::numeric_limits<std::uint64_t>::digits;
             shift += groupBits) {
            const auto group = static_cast<std::uint8_t>(*at_++);
            size |= std::uint64_t{group & ~more & 0xFFU} << shift;
            if (group < more) {
                return size;
            }
        }
        throw BadDocument("it is cut off");
    }

    std::string_view text() {
        const std::uint64_t length = size();
        if (length > static_cast<std::uint64_t>(end_ - at_)) {
            throw BadDocument("it is cut off");
        }
        const std::string_view text(at_, static_cast<std::size_t>(length));
        at_ += length;
        return text;
    }

    const char* at_;
    const char* end_;
    ModelReader& reader_;
    std::vector<Key> keys_;
};

} // namespace

Model readPacked(std::shared_ptr<const char> bytes, std::size_t size) {
    const std::string_view all(bytes.get(), size);
    ModelReader reader(std::move(bytes), size, true);
    if (!Unpacker(all, reader).unpack()) {
        throw BadDocument(reader.getFault());
    }
    if (!reader.isComplete()) {
        throw BadDocument("it is cut off");
    }
    return reader.finish();
}

} // namespace diff
