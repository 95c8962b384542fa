#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <vector>

/// One allowed value of an enumerated option.
struct KelOptionChoice {
    KelString identifier; // the value
    KelString label;      // what a person reads
};

/// What a file option adds: which files to offer.
struct KelOptionFiles {
    std::vector<KelString> extensions; // without dot
    KelString extensionsLabel;
    bool mustExist = false;
};

/// What an option is, apart from the value that the user gives it.
struct KelOptionDescription {
    KelString name;
    KelString type; // "File", "Enumerated" ...
    KelString text; // what the option is for, to be shown to the user
    KelString defaultValue;
    bool required = false;
    std::vector<KelOptionChoice> choices; // of an enumerated option
    KelOptionFiles files;                 // of a file option
};

/// An option of an import as the user sets it. All texts are UTF-8.
class KEL_API KelOption {
public:
    /// The new option has its default value.
    explicit KelOption(KelOptionDescription description);
    KelOption(const KelOption&) = delete;
    KelOption& operator=(const KelOption&) = delete;
    virtual ~KelOption();

    [[nodiscard]] virtual const KelString& getValue() const;
    /// Takes a value. An option with choices takes only the identifier of one; it refuses anything else, keeps
    /// its value and returns false.
    virtual bool setValue(const KelString& value);
    /// Takes any value, choice or not: an encoding, say, that the conversion service knows under another name.
    void setFreeValue(const KelString& value) { value_ = value; }

    [[nodiscard]] const KelString& getName() const { return description_.name; }
    [[nodiscard]] const KelOptionDescription& getDescription() const { return description_; }

private:
    KelOptionDescription description_;
    KelString value_;
};
