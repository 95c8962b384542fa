#pragma once

#include "host/text/KelString.h"
#include "petal/Request.h"

#include <span>
#include <string>

class KelOptionList;
class KelString;

namespace petal {

/// The option value, in UTF-8, with which the bridge opens the file named by exactly the bytes of `path`. May switch
/// the process to a UTF-8 locale. Throws a `Failure` with the outcome `importFailed` when there is no such value.
[[nodiscard]] KelString fileOption(const std::string& path);

/// Petal's short name for a value of the bridge.
struct ShortName {
    const char* name;
    const char* value;
};

/// An argument of the command line and the option of the bridge that it sets.
struct OptionArgument {
    const char* argument;
    const char* option; // the name in the option list
    const char* remark; // petal's addition to the description, for people; or null
    std::span<const ShortName> shortNames;
};
[[nodiscard]] std::span<const OptionArgument> optionArguments();

/// Sets the options of an import, which have their defaults before. The encoding "auto" is not set here: it depends on
/// the file (`ModelSource::setOptions`). Throws a `Failure`, with the outcome `wrongUsage` for a value that the bridge
/// does not accept.
void setImportOptions(const ImportRequest& request, KelOptionList& options);

/// Makes the bridge read the file at `path` instead of the request's file.
void setSource(KelOptionList& options, const std::string& path);
/// Makes the bridge read the file in that encoding, which ICU must know.
void setEncoding(KelOptionList& options, const char* encoding);

/// The file's encoding according to the options.
[[nodiscard]] KelString chosenEncoding(const KelOptionList& options);

} // namespace petal
