#pragma once

#include "host/KelApi.h"

class KelObject;

/// A callback for the deletion of repository objects, for code that keeps plain pointers to them.
///
/// Construction registers an observer for the calling thread, and destruction on the same thread unregisters it;
/// nothing owns it. It is called for every object that the thread deletes in between, of any model, and every observer
/// of the thread is called. Neither allocates nor throws. Destruction costs time proportional to the observers
/// registered later, and each deletion one call per observer.
class KEL_API KelDeletionObserver {
public:
    KelDeletionObserver() noexcept;
    KelDeletionObserver(const KelDeletionObserver&) = delete;
    KelDeletionObserver& operator=(const KelDeletionObserver&) = delete;
    virtual ~KelDeletionObserver();

    /// Called before any link of the object is broken: its name, fields and links can be read, except the link to an
    /// owner that is being deleted too. Must not delete, link or rename objects, nor construct or destroy observers.
    virtual void deleting(KelObject& object) noexcept = 0;

    /// Calls `deleting` of every observer of this thread, the latest first. For the repository itself.
    static void announce(KelObject& object) noexcept;

private:
    KelDeletionObserver* next_;
};
