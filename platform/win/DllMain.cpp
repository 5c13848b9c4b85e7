// The entry of a DLL that has an application object of its own. Compiled into that DLL: an entry cannot be shared. The
// object's constructor has run before; its destructor runs after.
#include "platform/Framework.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, void*) {
    CWinApp* app = quorGetLibraryApp(hInstance);
    if (app && reason == DLL_PROCESS_ATTACH) return app->InitInstance();
    if (app && reason == DLL_PROCESS_DETACH) app->ExitInstance();
    return TRUE;
}
