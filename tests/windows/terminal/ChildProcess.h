// A program started by a test, with what it printed. Command lines, paths and names are UTF-8.
#pragma once

#include <windows.h>

#include <string>

// Ends nothing by itself: a child that is still alive at the end of its object is ended by its handle.
class ChildProcess {
public:
    // `output` and `errors` name files that take what it prints; empty: the test's own.
    explicit ChildProcess(const std::string& commandLine, const std::string& output = {},
                          const std::string& errors = {});
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool started() const { return m_process != nullptr; }
    DWORD id() const { return m_id; }
    // Its exit code; -1 if it did not end within `seconds`.
    int wait(int seconds);
    void terminate();

private:
    HANDLE m_process = nullptr;
    DWORD m_id = 0;
};

struct RunResult {
    int exitCode = -1;
    std::string output;
    std::string errors;
    std::string folder;  // given as --out

    // The value of name=value in the summary line, without quotes; "" if it has none.
    std::string figure(const std::string& name) const;
    bool wrote(const std::string& file) const;
};

enum class KeepSettings { no, yes };

// Runs QuorTerminal.exe --headless with an out folder of its own, `name` below the folder of test output. What an
// earlier run left there is deleted first, the settings only if told so.
RunResult runTerminal(const std::string& name, const std::string& arguments, KeepSettings keep = KeepSettings::no);

// The folder of test output, made if need be; and one file in it, its folder made too (one level).
std::string testFolder();
std::string writeTestFile(const std::string& name, const std::string& text);
std::string readFile(const std::string& path);
// Of this test program's folder.
std::string programPath(const std::string& name);
