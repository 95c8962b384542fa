#pragma once

#include "host/KelApi.h"
#include "host/containers/KelVector.h"
#include "host/text/KelString.h"

#include <memory>

class KelOption;

/// The options of one import, in the order in which they are offered. Owns them.
class KEL_API KelOptionList {
public:
    /// A vector of `KelOption`; a key is a pointer to a `KelString` and matches the option of that name.
    class KEL_API Options : public KelVector {
    public:
        ~Options() override;
        int compare2Key(const void* element, const void* key) const override;
    };

    KelOptionList() = default;
    KelOptionList(const KelOptionList&) = delete;
    KelOptionList& operator=(const KelOptionList&) = delete;
    ~KelOptionList();

    /// The option vector, for searching and adding. An option made with `new` that is added to it belongs to
    /// this list, which must also be the one to remove it.
    [[nodiscard]] KelVector& getOptions() { return options_; }
    [[nodiscard]] const KelVector& getOptions() const { return options_; }
    /// Appends an option.
    void addOption(std::unique_ptr<KelOption> option);
    /// Deletes all options.
    void removeAll();

    /// The first option of that name, or null.
    [[nodiscard]] KelOption* findOption(const KelString& name) const;
    /// The value of the option of that name; the empty text when there is no such option.
    [[nodiscard]] KelString getValue(const KelString& name) const;
    /// Sets the value of the option of that name. False, changing nothing, when there is no such option or when
    /// it has choices and the value is none of them.
    bool setValue(const KelString& name, const KelString& value);
    /// Sets any value, choice or not. False only when there is no such option.
    bool setFreeValue(const KelString& name, const KelString& value);

private:
    Options options_;
};
