#include "model/JsonCounts.h"

#include <rapidjson/filereadstream.h>
#include <rapidjson/reader.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

namespace {

std::uint64_t charactersIn(std::string_view utf8) {
    std::uint64_t characters = 0;
    for (const char byte : utf8) {
        characters += (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U ? 1 : 0;
    }
    return characters;
}

/// Hears of every value of the document and counts those that the table of counted things names.
class Counter : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Counter> {
public:
    const Counts& counts() const noexcept { return counts_; }

    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        member_.assign(text, length);
        return true;
    }
    bool StartObject() {
        if (inList()) {
            count(Shown::asObjectIn, lists_.back(), 1);
        }
        lists_.emplace_back();
        return true;
    }
    bool EndObject(rapidjson::SizeType /*members*/) { return leave(); }
    bool StartArray() {
        lists_.push_back(member_);
        return true;
    }
    bool EndArray(rapidjson::SizeType /*values*/) { return leave(); }
    bool Uint(unsigned /*number*/) {
        count(inList() ? Shown::asIdIn : Shown::asId, here(), 1);
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
        const std::string_view value(text, length);
        if (inList()) {
            count(Shown::asTextIn, here(), 1);
        } else if (member_ == "kind") {
            count(Shown::asKind, value, 1);
        }
        count(Shown::asCharactersOf, here(), charactersIn(value));
        return true;
    }

private:
    /// Whether the innermost thing open is a list; its name stands for all that is in it.
    bool inList() const { return !lists_.empty() && !lists_.back().empty(); }
    const std::string& here() const { return inList() ? lists_.back() : member_; }
    bool leave() {
        lists_.pop_back();
        return true;
    }
    void count(Shown shown, std::string_view member, std::uint64_t number) {
        for (const CountedThing& thing : countedThings()) {
            if (thing.shown == shown && thing.member == member) {
                counts_.add(thing.counted, number);
            }
        }
    }

    Counts counts_;
    std::string member_;
    std::vector<std::string> lists_; ///< for each list that is open its name, for each object an empty text
};

} // namespace

Counts countJson(std::FILE* json) {
    std::vector<char> buffer(1U << 16U);
    rapidjson::FileReadStream stream(json, buffer.data(), buffer.size());
    Counter counter;
    rapidjson::Reader reader;
    reader.Parse<rapidjson::kParseIterativeFlag>(stream, counter);
    if (reader.HasParseError()) {
        throw std::runtime_error("no JSON at byte " + std::to_string(reader.GetErrorOffset()));
    }
    return counter.counts();
}

} // namespace bench
