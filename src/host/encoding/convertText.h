#pragma once

#include "host/KelApi.h"

class KelEncodingConverter;
class KelString;

/// Converts `text`, which may hold NULs, from one encoding to another. Both converters must have a handle.
///
/// Each byte sequence that the source encoding does not have becomes U+FFFD, and a character that the target
/// encoding does not have becomes its substitute; false is returned when there was any. A byte order mark in
/// front is dropped, and none is written: UTF-16 and UTF-32 are written big endian, as they are read without a
/// mark. Throws `std::bad_alloc` (or `std::length_error` for a result above 2,147,483,646 bytes) and then leaves
/// the text as it was.
KEL_API bool convertText(KelEncodingConverter& from, KelEncodingConverter& to, KelString& text);
