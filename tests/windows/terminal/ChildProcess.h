// A program started by a test, with what it printed. Command lines, paths and names are UTF-8.
#pragma once

#include <windows.h>
#include <memory>
#include <string>

using Handle = std::unique_ptr<void, decltype(&::CloseHandle)>;

// Ends nothing by itself: a child that is still alive at the end of its object is ended by its handle.
class ChildProcess {
public:
    // `output` and `errors` name files that take what it prints.
    explicit ChildProcess(const std::string& commandLine, const std::string& output = "NUL",
                          const std::string& errors = "NUL");
    ~ChildProcess();

    bool started() const { return m_process != nullptr; }
    DWORD id() const { return ::GetProcessId(m_process.get()); }
    // Its exit code; -1 if it did not end within `seconds`.
    int wait(int seconds);
    void terminate();

private:
    Handle m_process{nullptr, &::CloseHandle};
};

struct RunResult {
    int exitCode = -1;
    std::string output;
    std::string errors;
    std::string folder;  // given as --out

    // The value of name=value in the summary line, without quotes; "" if it has none.
    std::string figure(const std::string& name) const;
    // Of a file in the folder; "" if it wrote none.
    std::string read(const std::string& file) const;
};

enum class KeepFolder { no, yes };

// Runs QuorTerminal.exe --headless with an out folder of its own, `name` below the folder of test output, removed first
// unless it is kept.
RunResult runTerminal(const std::string& name, const std::string& arguments, KeepFolder keep = KeepFolder::no);

// The folder of test output, made if need be; and one file in it, its folder made too (one level).
std::string testFolder();
void removeTestFolder(const std::string& name);
std::string writeTestFile(const std::string& name, const std::string& text);
std::string readFile(const std::string& path);
// Of this test program's folder.
std::string programPath(const std::string& name);
