#pragma once

#include "host/model/KelObject.h"
#include "host/model/links/KelOne.h"

class KelElement;

/// A remark on an element, which owns it. A copy has the same name and text and no owner; assigning keeps the owner of
/// the target.
class KEL_API KelNote final : public KelObject {
public:
    KelNote();
    KelNote(const KelNote& other);
    KelNote& operator=(const KelNote& other);
    ~KelNote() override;

    [[nodiscard]] KelElement* getElement() const;

    KelString description; // the note's text

private:
    friend struct KelRelations;
    KelOne element_;
};
