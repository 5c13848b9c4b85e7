// Errors of COM servers as exceptions: _com_error, _bstr_t and what belongs to them. The classes come from the
// compiler's <comdef.h>; the three functions that its runtime lacks are in this library.
#pragma once

#include "quor/platform/base/WinTypes.h"

#include <comdef.h>
// A macro of the system's, which takes a plain word from everyone.
#undef small

// void _com_issue_errorex(HRESULT hr, IUnknown* server, REFIID iid)
//
// Throws _com_error(hr). It carries the thread's error info if the server says that this interface of it sets one
// (ISupportErrorInfo); otherwise none, whatever an earlier call left.
