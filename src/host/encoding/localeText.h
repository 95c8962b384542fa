#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// The local encoding is that of the process's locale (LC_CTYPE), which the host sets. No thread may change the locale
/// during a call. Both functions may throw `std::bad_alloc`; each call opens two converters.

/// `text`, which is UTF-8, in the local encoding. Unchanged when the local encoding is UTF-8 or cannot represent the
/// text, and when the text is not UTF-8. Null gives the empty text.
[[nodiscard]] KEL_API KelString utf8ToLocale(const char* text);

/// The name of a model whose file has the path `path` (in the local encoding): the last component without its last
/// extension. Both "/" and "\" are separators, byte by byte; a leading "." does not start an extension.
///
/// When the conversion service knows `encoding`, the name is converted into it, so that it can be converted back
/// together with the model's texts. A name that cannot be converted keeps its bytes.
[[nodiscard]] KEL_API KelString computeNameFromPath(const KelString& path, const KelString& encoding);
