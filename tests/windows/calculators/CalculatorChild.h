// What the end of a process shows, and what a process without a server does, is seen in child processes of the test.
#pragma once

#include <windows.h>

#include <string>

namespace test {

// Runs this executable again as a child with the mode and an argument for it; its exit code, or WAIT_TIMEOUT after 20
// s.
DWORD runChild(const std::string& mode, const std::string& argument = "");
// The child's work, by mode; its exit code. Called by main().
int childMain(const std::string& mode, const std::string& argument);

// Exit codes of the mode "create": one bit a server that was created.
constexpr DWORD kOptionCreated = 1, kMarginCreated = 2;

}  // namespace test
