// A reference to a COM object, released at the end of its scope. No windows: servers take it without the framework.
#pragma once

template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    // Takes over a reference.
    explicit ComPointer(Interface* owned) : m_pointer(owned) {}
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ~ComPointer() {
        if (m_pointer) m_pointer->Release();
    }

    // For a call that hands out a reference, while this holds none.
    Interface** out() { return &m_pointer; }
    void** outUntyped() { return reinterpret_cast<void**>(&m_pointer); }
    // Gives the reference away.
    Interface* detach() {
        Interface* const given = m_pointer;
        m_pointer = nullptr;
        return given;
    }

    Interface* get() const { return m_pointer; }
    Interface& operator*() const { return *m_pointer; }
    Interface* operator->() const { return m_pointer; }
    explicit operator bool() const { return m_pointer != nullptr; }

private:
    Interface* m_pointer = nullptr;
};
