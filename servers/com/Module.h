// What makes a DLL an in-process COM server: class factory, life count, registration. The DLL that this is compiled
// into supplies serverDescription(); Module.cpp has the four exported functions (named in Module.def).
#pragma once

#include "quor/platform/Base.h"

#include <ole2.h>

namespace servers {

struct ServerDescription {
    CLSID classId;
    IID interfaceId;
    GUID libraryId;            // of the type library, version 1.0, which is resource 1 of the DLL
    const wchar_t* programId;  // also the source of error infos
    const wchar_t* name;
    IDispatch* (*create)();  // a new object with one reference; throws std::bad_alloc
};

const ServerDescription& serverDescription();

// Each living object, and each lock of the factory, keeps the DLL loaded.
void lockModule();
void unlockModule();

// The description of the server's interface in its type library. The caller releases it.
HRESULT interfaceInfo(ITypeInfo** info);

}  // namespace servers
