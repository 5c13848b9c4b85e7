// LibraryResources: while one lives, templates and texts are taken from this library; then from where they were before.
#pragma once

#include "quor/platform/Framework.h"

namespace quor {

class LibraryResources {
public:
    LibraryResources() : m_former(AfxGetResourceHandle()) { AfxSetResourceHandle(module()); }
    LibraryResources(const LibraryResources&) = delete;
    LibraryResources& operator=(const LibraryResources&) = delete;
    ~LibraryResources() { AfxSetResourceHandle(m_former); }

    // The library itself.
    static HMODULE module() {
        static const char anchor = 0;  // lies in whatever module was compiled with this header
        HMODULE found = nullptr;
        ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             &anchor, &found);
        return found;
    }

private:
    HINSTANCE m_former;
};

}  // namespace quor
