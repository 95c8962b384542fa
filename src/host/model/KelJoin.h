#pragma once

#include "host/model/KelClassifier.h"

/// A classifier joined from others. Part of the repository's interface; no import makes one.
class KEL_API KelJoin final : public KelClassifier {
public:
    KelJoin();
    ~KelJoin() override;
};

/// The role of one classifier in a join. No import makes one either, and no class owns it.
class KEL_API KelJoinRole final : public KelModelObject {
public:
    KelJoinRole();
    ~KelJoinRole() override;
};
