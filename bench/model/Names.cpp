#include "model/Names.h"

#include "model/Random.h"

#include <array>
#include <cctype>
#include <string_view>

namespace bench {

namespace {

constexpr std::array<std::string_view, 40> words{"order",
                                                 "customer",
                                                 "invoice",
                                                 "ledger",
                                                 "parcel",
                                                 "route",
                                                 "vessel",
                                                 "harbour",
                                                 "tariff",
                                                 "policy",
                                                 "claim",
                                                 "premium",
                                                 "broker",
                                                 "account",
                                                 "branch",
                                                 "teller",
                                                 "receipt",
                                                 "voucher",
                                                 "catalog",
                                                 "shelf",
                                                 "supply",
                                                 "batch",
                                                 "stra\xDF"
                                                 "e",
                                                 "gr\xF6\xDF"
                                                 "e",
                                                 "caf\xE9",
                                                 "plan",
                                                 "shift",
                                                 "crew",
                                                 "roster",
                                                 "permit",
                                                 "contract",
                                                 "tenant",
                                                 "meter",
                                                 "reading",
                                                 "outage",
                                                 "repair",
                                                 "patient",
                                                 "ward",
                                                 "chart",
                                                 "dosage"};

std::string_view word(std::uint64_t number) {
    return words[number % words.size()];
}

void appendCapitalised(std::string& name, std::string_view part) {
    name += static_cast<char>(std::toupper(static_cast<unsigned char>(part.front())));
    name += part.substr(1);
}

std::string twoWords(std::uint64_t number) {
    std::string name;
    appendCapitalised(name, word(number));
    appendCapitalised(name, word(number / words.size() * 7 + number * 3 + 1));
    return name;
}

std::string quid(std::uint64_t number) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text(12, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit) {
        *digit = digits[number & 0xFU];
        number >>= 4U;
    }
    return text;
}

} // namespace

std::string className(std::uint64_t number) {
    return twoWords(number) + std::to_string(number);
}

std::string packageName(std::uint64_t number) {
    std::string name;
    appendCapitalised(name, word(number));
    return name + "s" + std::to_string(number);
}

std::string featureName(std::uint64_t number) {
    std::string name(word(number));
    appendCapitalised(name, word(number / words.size() + number * 11 + 5));
    return name + std::to_string(number);
}

std::string_view parameterName(std::uint64_t number) {
    return word(number);
}

std::string typeName(std::uint64_t number) {
    return twoWords(number) + "Code" + std::to_string(number);
}

std::string associationQuid(std::uint64_t number) {
    return quid(0x3A0000000000U + number * 0x1E5U);
}

std::string otherQuid(std::uint64_t number) {
    return quid(0x5B0000000000U + number * 0x2F1U);
}

std::string sentence(Random& random, std::size_t length) {
    std::string text;
    appendCapitalised(text, word(random.next()));
    while (text.size() < length) {
        (text += ' ') += word(random.next());
    }
    return text += '.';
}

} // namespace bench
