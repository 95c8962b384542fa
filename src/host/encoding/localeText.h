#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

/// The local encoding is that of the process's locale (LC_CTYPE), which the host sets.

/// `text`, in UTF-8, in the local encoding. Unchanged when that is UTF-8 too, and when the text cannot be
/// represented in it or is not UTF-8. Null gives the empty text.
[[nodiscard]] KEL_API KelString utf8ToLocale(const char* text);

/// The name of a model read from `path` (in the local encoding): the last part of the path without its extension.
/// "/" and "\" both separate, byte by byte; a "." in front starts no extension.
///
/// When `encoding` names an encoding that the conversion service knows, the name is converted into it, so that it
/// may be converted back together with the model's texts. A name that cannot be converted keeps its bytes.
[[nodiscard]] KEL_API KelString computeNameFromPath(const KelString& path, const KelString& encoding);
