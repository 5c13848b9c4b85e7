// A stand-in for both calculation servers, under their ids, that writes down what arrives in which place of which
// method. It is built from the published tables alone and shares no declaration with the library: what the two make of
// the interface can differ, and the tests would show it.
#pragma once

#include <windows.h>
#include <string>

namespace test {

// From now on this process's new objects of both classes are the recording ones.
void serveRecording();
// A line a call, "option 3: 1 2 3", oldest first, each ended by a newline.
std::string recordedCalls();
// Forgets the calls, and from now on answers every method with `answer`, without error info.
void answerWith(HRESULT answer);

}  // namespace test
