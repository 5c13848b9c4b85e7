// From an exception of the servers' mathematics to a failing HRESULT with error info, and nothing thrown across COM.
#pragma once

#include "servers/com/Module.h"

#include <string>
#include <string_view>

namespace servers {

// The failure that belongs to the exception being handled, and its sentence. Call it inside a catch block.
struct Failure {
    HRESULT code;
    std::string sentence;
};
Failure currentFailure() noexcept;

// Makes the sentence the thread's error info, with the server's interface and program id; where memory is too short for
// that, the thread has none afterwards. Returns `failure.code`.
HRESULT report(const Failure& failure) noexcept;

// UTF-8 and back. A null BSTR is an empty text; the new one belongs to the caller, null when memory is out.
std::string textOf(BSTR text);
BSTR newBstr(std::string_view text) noexcept;

}  // namespace servers
