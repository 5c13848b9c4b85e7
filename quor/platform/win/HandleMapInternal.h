// Which object owns a handle, and the temporary objects for handles that nobody owns. Private to quor/platform/win.
#pragma once

#include <memory>
#include <unordered_map>

// Owner is the base type that registers itself (CGdiObject, CDC, CMenu, CImageList).
template <class Owner, class Handle>
class PermanentMap {
public:
    void add(Handle handle, Owner* owner) { m_owners[handle] = owner; }
    // Only the owner itself can leave: a handle value may have been reused meanwhile.
    void remove(Handle handle, const Owner* owner) {
        const auto entry = m_owners.find(handle);
        if (entry != m_owners.end() && entry->second == owner) m_owners.erase(entry);
    }
    Owner* find(Handle handle) const {
        const auto entry = m_owners.find(handle);
        return entry == m_owners.end() ? nullptr : entry->second;
    }

private:
    std::unordered_map<Handle, Owner*> m_owners;
};

// Member is where the object keeps its handle; it is cleared before a temporary object dies, so that the destructor
// finds nothing to release.
template <class Object, class Handle, auto Member>
class TemporaryMap {
public:
    TemporaryMap() = default;
    TemporaryMap(const TemporaryMap&) = delete;
    TemporaryMap& operator=(const TemporaryMap&) = delete;
    ~TemporaryMap() { clear(); }

    Object* get(Handle handle) {
        std::unique_ptr<Object>& object = m_objects[handle];
        if (!object) object = std::make_unique<Object>();
        (*object).*Member = handle;  // again, for one that was detached meanwhile
        return object.get();
    }
    void clear() {
        for (auto& entry : m_objects) (*entry.second).*Member = nullptr;
        m_objects.clear();
    }

private:
    std::unordered_map<Handle, std::unique_ptr<Object>> m_objects;
};
