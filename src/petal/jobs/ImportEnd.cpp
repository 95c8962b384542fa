#include "petal/jobs/ImportEnd.h"

#include "petal/Failure.h"

#include <cstring>
#include <new>

namespace petal {

namespace {

/// What stands ahead of the texts.
struct Head {
    Outcome outcome;
    ImportResult result;
    std::uint64_t textLength;
    std::uint64_t adviceLength;
};

ImportEnd failed(Outcome outcome, const char* text, const std::string& advice) {
    ImportEnd end;
    end.outcome = outcome;
    end.text = text;
    end.advice = advice;
    return end;
}

} // namespace

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
    Head head{};
    head.outcome = end.outcome;
    head.result = end.result;
    head.textLength = end.text.size();
    head.adviceLength = end.advice.size();
    std::string bytes(sizeof head, '\0');
    std::memcpy(bytes.data(), &head, sizeof head);
    return bytes + end.text + end.advice;
}

std::optional<ImportEnd> decoded(std::string_view bytes) {
    Head head{};
    if (bytes.size() < sizeof head) {
        return std::nullopt;
    }
    std::memcpy(&head, bytes.data(), sizeof head);
    bytes.remove_prefix(sizeof head);
    if (bytes.size() != head.textLength + head.adviceLength) {
        return std::nullopt;
    }
    ImportEnd end;
    end.outcome = head.outcome;
    end.result = head.result;
    end.text = bytes.substr(0, head.textLength);
    end.advice = bytes.substr(head.textLength);
    return end;
}

} // namespace petal
