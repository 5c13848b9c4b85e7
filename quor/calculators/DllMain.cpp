// The library's entry, which starts and ends its application object. The object's constructor has run before; its
// destructor runs after.
#include "quor/platform/Framework.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD reason, void*) {
    CWinApp* app = quorGetLibraryApp(hInstance);
    if (app && reason == DLL_PROCESS_ATTACH) return app->InitInstance();
    if (app && reason == DLL_PROCESS_DETACH) app->ExitInstance();
    return TRUE;
}
