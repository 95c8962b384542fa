#pragma once

#include "host/KelApi.h"
#include "host/text/KelString.h"

#include <vector>

/// One allowed value of an enumerated option.
struct KelOptionChoice {
    KelString identifier; // the value
    KelString label;      // for users
};

/// The files that a file option offers.
struct KelOptionFiles {
    std::vector<KelString> extensions; // without dot
    KelString extensionsLabel;
    bool mustExist = false;
};

/// The constant part of an option: all but its value.
struct KelOptionDescription {
    KelString name;
    KelString type; // "File", "Enumerated" ...
    KelString text; // the purpose of the option, for users
    KelString defaultValue;
    bool required = false;
    std::vector<KelOptionChoice> choices; // of an enumerated option
    KelOptionFiles files;                 // of a file option
};

/// An option of an import, with the value that the user has set. All texts are UTF-8.
///
/// It owns its texts; a `KelOptionList` owns it. Setting a value may throw `std::bad_alloc` and then changes nothing.
/// One thread at a time may use it.
class KEL_API KelOption {
public:
    /// Starts with the default value.
    explicit KelOption(KelOptionDescription description);
    KelOption(const KelOption&) = delete;
    KelOption& operator=(const KelOption&) = delete;
    virtual ~KelOption();

    /// The value. The reference is valid until the value is set next.
    [[nodiscard]] virtual const KelString& getValue() const;
    /// Sets the value. An option with choices accepts only the identifier of one of them; otherwise it keeps its value
    /// and returns false.
    virtual bool setValue(const KelString& value);
    /// Sets any value, whether a choice or not: for example an encoding that the conversion service knows by another
    /// name.
    void setFreeValue(const KelString& value) { value_ = value; }

    [[nodiscard]] const KelString& getName() const { return description_.name; }
    [[nodiscard]] const KelOptionDescription& getDescription() const { return description_; }

private:
    KelOptionDescription description_;
    KelString value_;
};
