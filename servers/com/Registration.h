// Entries of a server below HKEY_LOCAL_MACHINE\Software\Classes, its type library's included.
#pragma once

#include "servers/com/Module.h"

#include <string>

namespace servers {

// Writes them, over older ones. On failure nothing stays.
HRESULT registerServer(const ServerDescription& server, const std::wstring& dllPath);
// Removes them; S_OK also when there are none.
HRESULT unregisterServer(const ServerDescription& server);

}  // namespace servers
