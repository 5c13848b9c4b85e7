// A stand-in for both calculation servers, registered under their ids, that writes down what arrives in which place of
// which method. It is built from the published tables alone and shares no declaration with the library: what the two
// make of the interface can differ, and the tests would show it.
//
// These are the DLL's own functions; a test loads the DLL by its name (COM loads the same file) and asks for them.
#pragma once

#include <windows.h>

// A line a call, "option 3: 1 2 3", oldest first, each ended by a newline. Valid until the next call of the server.
using RecordedCallsFunction = const char* (*)();
// Forgets the calls, and from now on answers every method with `answer`; a failing answer with error info, if wanted.
using AnswerWithFunction = void (*)(HRESULT answer, BOOL errorInfo);
