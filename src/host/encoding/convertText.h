#pragma once

#include "host/KelApi.h"

class KelEncodingConverter;
class KelString;

/// Converts `text`, which may contain NULs, from one encoding to another. Precondition: both converters have a handle.
///
/// Each sequence that is invalid in the source encoding becomes U+FFFD; a character that the target encoding lacks
/// becomes that encoding's substitute. Returns whether there was none of either. A byte order mark at the start is
/// dropped and none is written; UTF-16 and UTF-32 without a mark are read and written as big endian. May throw
/// `std::bad_alloc`, or `std::length_error` for a result above 2,147,483,646 bytes; the text is unchanged then. The
/// cost is proportional to the text.
KEL_API bool convertText(KelEncodingConverter& from, KelEncodingConverter& to, KelString& text);
