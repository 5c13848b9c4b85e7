// What each DLL exports. Natively there are no DLLs and the macros are empty.
#pragma once

#if defined(_WIN32)
#if defined(QUOR_FRAMEWORK_BUILD)
#define QUOR_FRAMEWORK_API __declspec(dllexport)
#else
#define QUOR_FRAMEWORK_API __declspec(dllimport)
#endif
#if defined(QUOR_CONTROLS_BUILD)
#define QUOR_CONTROLS_API __declspec(dllexport)
#else
#define QUOR_CONTROLS_API __declspec(dllimport)
#endif
#if defined(QUOR_TOOLS_BUILD)
#define QUOR_TOOLS_API __declspec(dllexport)
#else
#define QUOR_TOOLS_API __declspec(dllimport)
#endif
#else
#define QUOR_FRAMEWORK_API
#define QUOR_CONTROLS_API
#define QUOR_TOOLS_API
#endif
