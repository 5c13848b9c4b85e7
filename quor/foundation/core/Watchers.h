// One-to-many notification: objects that want to hear of a change register with a store, and the store passes each
// event on to all of them, in the order of registration.
#pragma once

#include "quor/platform/Base.h"

// What travels with an event. Declared and read by the host alone.
struct sUpdateData;

// Who hears of events. The order of the virtual operations is part of the interface.
class QUOR_CONTROLS_API CWatcher {
public:
    // An event, with a text and the host's data about it; the last value is always 0.
    virtual void OnUpdate(int event, CString text, sUpdateData* data, int) = 0;
    // Never called by the library; kept for hosts.
    virtual void OnReserved() = 0;
    virtual ~CWatcher() = default;
};

// Watchers are borrowed, held at most once each, and never freed here.
class QUOR_CONTROLS_API CStore {
public:
    CStore() = default;
    CStore(const CStore&) = delete;
    CStore& operator=(const CStore&) = delete;
    virtual ~CStore() = default;

    // Appends; a watcher that is registered already stays where it is.
    void AddWatcher(CWatcher* watcher);
    // Takes a watcher out; the others keep their order. A stranger is ignored.
    void RemoveWatcher(CWatcher* watcher);
    // Tells every watcher. The count is read before each call, so that watchers may come and go meanwhile; one that
    // removes itself moves the rest down, and the one behind it misses this event.
    void NotifyWatcher(int event, CString text, sUpdateData* data);

private:
    // -1 if it is not registered.
    INT_PTR find(CWatcher* watcher) const;

    CArray<CWatcher*, CWatcher*> m_watchers;
};
