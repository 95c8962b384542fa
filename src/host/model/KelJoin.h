#pragma once

#include "host/model/KelClassifier.h"

/// A classifier joined from others.
class KEL_API KelJoin final : public KelClassifier {
public:
    KelJoin();
    ~KelJoin() override;
};

/// The part that one classifier plays in a join.
class KEL_API KelJoinRole final : public KelModelObject {
public:
    KelJoinRole();
    ~KelJoinRole() override;
};
