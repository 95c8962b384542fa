#pragma once

#include "host/text/KelString.h"
#include "petal/Request.h"

#include <span>
#include <string>

class KelOptionList;
class KelString;

namespace petal {

/// The text to give as an option of an import, whose texts are UTF-8, so that the bridge opens the file with the
/// very bytes of `path`. May have to put the process into a UTF-8 locale. Throws a `Failure` with the outcome
/// `importFailed` when there is no such text.
[[nodiscard]] KelString fileOption(const std::string& path);

/// A name of petal's own for a value of the bridge.
struct ShortName {
    const char* name;
    const char* value;
};

/// Which argument of the command line sets which option of the bridge.
struct OptionArgument {
    const char* argument;
    const char* option; // the name in the option list
    const char* remark; // what petal adds to it, for people; or null
    std::span<const ShortName> shortNames;
};
[[nodiscard]] std::span<const OptionArgument> optionArguments();

/// Sets the options of an import, which hold their defaults; the encoding "auto" is left to who reads the file. Throws
/// a `Failure`: with the outcome `wrongUsage` for a value that the bridge does not take.
void setImportOptions(const ImportRequest& request, KelOptionList& options);

/// Has the bridge read the file at `path` in place of the one that was asked for.
void setSource(KelOptionList& options, const std::string& path);
/// Has the bridge read the file in that encoding, which the conversion service must know.
void setEncoding(KelOptionList& options, const char* encoding);

/// The encoding that the options say the file is in.
[[nodiscard]] KelString chosenEncoding(const KelOptionList& options);

} // namespace petal
