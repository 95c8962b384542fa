#pragma once

#include "host/KelApi.h"

class KelObject;

/// Somebody who keeps pointers to repository objects without a link and must hear of their deletion.
///
/// An observer hears of every object deleted on its own thread between its construction and its destruction.
class KEL_API KelDeletionObserver {
public:
    KelDeletionObserver() noexcept;
    KelDeletionObserver(const KelDeletionObserver&) = delete;
    KelDeletionObserver& operator=(const KelDeletionObserver&) = delete;
    virtual ~KelDeletionObserver();

    /// Called before anything of the object is taken apart: its name, fields and links can still be read, but for
    /// the link to its owner where that is deleted, too. Must neither delete nor link nor rename objects.
    virtual void deleting(KelObject& object) noexcept = 0;

    /// Tells every observer of this thread.
    static void announce(KelObject& object) noexcept;

private:
    KelDeletionObserver* next_;
};
