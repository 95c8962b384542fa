#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <bitset>
#include <memory>
#include <optional>
#include <string_view>

struct UConverter;

/// A converter between Unicode and one encoding of the conversion service (ICU).
///
/// It owns the service's handle. It can be moved but not copied; a converter that was moved from has no handle. It has
/// a state, so one thread at a time may use it.
class KEL_API KelEncodingConverter {
public:
    /// `encodingName` is any name of the encoding that the service knows. For an unknown name, also the empty one, the
    /// converter has no handle and cannot convert. May throw `std::bad_alloc`.
    explicit KelEncodingConverter(const KelString& encodingName);

    /// The service's handle, which this object owns; null for an unknown encoding.
    [[nodiscard]] UConverter* getHandle() const { return handle_.get(); }
    /// The handle for writing texts: as `getHandle`, but it writes no byte order mark.
    [[nodiscard]] UConverter* getWriter() const { return writer_ != nullptr ? writer_.get() : handle_.get(); }
    /// The service's canonical name of the encoding; empty without a handle.
    [[nodiscard]] KelString getEncodingName() const;
    /// Whether `text` is ASCII and conversion in either direction would not change it. The first call in the
    /// process for an encoding examines it, which takes as long as converting some kilobytes; the first call of each
    /// converter may throw `std::bad_alloc`.
    [[nodiscard]] bool isPlainText(std::string_view text) const;

private:
    struct KEL_API Close {
        void operator()(UConverter* converter) const noexcept;
    };
    using Handle = std::unique_ptr<UConverter, Close>;

    static Handle open(const char* encodingName);
    [[nodiscard]] std::bitset<128> findPlainBytes() const;
    [[nodiscard]] std::bitset<128> examine() const;

    Handle handle_;
    Handle writer_;                                      // null unless the handle would write a byte order mark
    mutable std::optional<std::bitset<128>> plainBytes_; // filled at the first call of isPlainText
};

/// Whether both converters have the same canonical name, so that converting between them would change nothing. False
/// when one has no handle. Neither pointer may be null.
[[nodiscard]] KEL_API bool equivalentConverters(const KelEncodingConverter* first, const KelEncodingConverter* second);
