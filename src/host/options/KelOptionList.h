#pragma once

#include "host/KelApi.h"
#include "host/containers/KelVector.h"
#include "host/text/KelString.h"

#include <memory>

class KelOption;

/// The options of one import, in the order in which they are offered.
///
/// Owns its options. Adding and setting may throw `std::bad_alloc` and then change nothing. One thread at a time may
/// use a list; an import reads it. Searches are linear: there are few options.
class KEL_API KelOptionList {
public:
    /// A vector of `KelOption`. A key is a pointer to a `KelString` with the name of an option.
    class KEL_API Options : public KelVector {
    public:
        ~Options() override;
        int compare2Key(const void* element, const void* key) const override;
    };

    KelOptionList() = default;
    KelOptionList(const KelOptionList&) = delete;
    KelOptionList& operator=(const KelOptionList&) = delete;
    ~KelOptionList();

    /// The vector of options. An option made with `new` that is added to it belongs to the list from then on. Options
    /// must not be removed from it: `removeAll` deletes them.
    [[nodiscard]] KelVector& getOptions() { return options_; }
    [[nodiscard]] const KelVector& getOptions() const { return options_; }
    /// Appends an option. Null adds nothing.
    void addOption(std::unique_ptr<KelOption> option);
    /// Deletes all options.
    void removeAll();

    /// The first option of that name, or null.
    [[nodiscard]] KelOption* findOption(const KelString& name) const;
    /// The value of the first option of that name; empty when there is none.
    [[nodiscard]] KelString getValue(const KelString& name) const;
    /// Sets the value of the first option of that name, as `KelOption::setValue` does. Also false when there is none.
    bool setValue(const KelString& name, const KelString& value);
    /// The same for any value, whether a choice or not. False only when there is no such option.
    bool setFreeValue(const KelString& name, const KelString& value);

private:
    Options options_;
};
