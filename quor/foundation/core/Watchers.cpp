#include "quor/foundation/core/Watchers.h"

INT_PTR CStore::find(CWatcher* watcher) const {
    for (INT_PTR i = 0; i < m_watchers.GetCount(); ++i) {
        if (m_watchers.GetAt(i) == watcher) return i;
    }
    return -1;
}

void CStore::AddWatcher(CWatcher* watcher) {
    if (find(watcher) < 0) m_watchers.Add(watcher);
}

void CStore::RemoveWatcher(CWatcher* watcher) {
    const INT_PTR index = find(watcher);
    if (index >= 0) m_watchers.RemoveAt(index);
}

void CStore::NotifyWatcher(int event, CString text, sUpdateData* data) {
    for (INT_PTR i = 0; i < m_watchers.GetCount(); ++i) m_watchers.GetAt(i)->OnUpdate(event, text, data, 0);
}
