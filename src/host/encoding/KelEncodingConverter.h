#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <bitset>
#include <memory>
#include <optional>
#include <string_view>

struct UConverter;

/// A converter between Unicode and one encoding of the conversion service (ICU). It has a state while it converts,
/// so one thread uses it at a time. It can be moved but not copied; one moved from is without a handle.
class KEL_API KelEncodingConverter {
public:
    /// `encodingName` is any name that the service knows for the encoding. For an unknown name, the empty one
    /// included, the converter exists without a handle and converts nothing. Throws `std::bad_alloc`.
    explicit KelEncodingConverter(const KelString& encodingName);

    /// The service's handle, owned by this object; null for an unknown encoding.
    [[nodiscard]] UConverter* getHandle() const { return handle_.get(); }
    /// The handle to write texts with: as `getHandle`, but one that writes no byte order mark.
    [[nodiscard]] UConverter* getWriter() const { return writer_ != nullptr ? writer_.get() : handle_.get(); }
    /// The service's canonical name of the encoding; empty without a handle.
    [[nodiscard]] KelString getEncodingName() const;
    /// Whether every byte of `text` is an ASCII character that stands for itself in this encoding, both ways.
    [[nodiscard]] bool isPlainText(std::string_view text) const;

private:
    struct KEL_API Close {
        void operator()(UConverter* converter) const noexcept;
    };
    using Handle = std::unique_ptr<UConverter, Close>;

    static Handle open(const char* encodingName);
    [[nodiscard]] std::bitset<128> findPlainBytes() const;

    Handle handle_;
    Handle writer_;                                      // only where the handle itself would write a byte order mark
    mutable std::optional<std::bitset<128>> plainBytes_; // found out when first asked for: it takes its time
};

/// Whether converting from the first to the second would change nothing: both have the same canonical name. False
/// when either has no handle.
[[nodiscard]] KEL_API bool equivalentConverters(const KelEncodingConverter* first, const KelEncodingConverter* second);
