#include "ChildProcess.h"

#include "host/core/Utf8.h"

#include <fstream>
#include <regex>
#include <sstream>

namespace {
Handle outputFile(const std::string& path) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    // What a former child started, its desktop for one, may still hold its output open.
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return {::CreateFileW(terminal::wideText(path).c_str(), GENERIC_WRITE, share, &inherit, CREATE_ALWAYS, 0, nullptr),
            &::CloseHandle};
}
}  // namespace

ChildProcess::ChildProcess(const std::string& commandLine, const std::string& output, const std::string& errors) {
    const Handle out = outputFile(output), err = outputFile(errors);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = out.get();
    start.hStdError = err.get();
    PROCESS_INFORMATION process{};
    std::wstring line = terminal::wideText(commandLine);
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) return;
    ::CloseHandle(process.hThread);
    m_process.reset(process.hProcess);
}

ChildProcess::~ChildProcess() {
    if (m_process && wait(0) == -1) terminate();
}

int ChildProcess::wait(int seconds) {
    if (!m_process || ::WaitForSingleObject(m_process.get(), static_cast<DWORD>(seconds) * 1000) != WAIT_OBJECT_0)
        return -1;
    DWORD code = 0;
    ::GetExitCodeProcess(m_process.get(), &code);
    return static_cast<int>(code);
}

void ChildProcess::terminate() {
    ::TerminateProcess(m_process.get(), 99);
    ::WaitForSingleObject(m_process.get(), 10'000);
}

std::string RunResult::figure(const std::string& name) const {
    std::smatch found;
    const std::regex field(" " + name + "=(?:\"([^\"]*)\"|(\\S*))");
    return std::regex_search(output, found, field) ? found.str(1) + found.str(2) : "";
}

std::string RunResult::read(const std::string& file) const { return readFile(folder + "\\" + file); }

std::string programPath(const std::string& name) {
    char path[MAX_PATH];
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string own(path);
    return own.substr(0, own.find_last_of('\\') + 1) + name;
}

std::string testFolder() {
    const std::string folder = programPath("terminal_tests.out");
    ::CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

void removeTestFolder(const std::string& name) {
    std::error_code none;  // it may not be there
    std::filesystem::remove_all(terminal::systemPath(testFolder() + "\\" + name), none);
}

std::string writeTestFile(const std::string& name, const std::string& text) {
    const std::string path = testFolder() + "\\" + name;
    std::filesystem::create_directory(terminal::systemPath(path.substr(0, path.find_last_of('\\'))));
    std::ofstream(terminal::systemPath(path), std::ios::binary) << text;
    return path;
}

std::string readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(terminal::systemPath(path), std::ios::binary).rdbuf();
    return text.str();
}

RunResult runTerminal(const std::string& name, const std::string& arguments, KeepFolder keep) {
    RunResult result;
    result.folder = testFolder() + "\\" + name;
    if (keep == KeepFolder::no) removeTestFolder(name);
    const std::string output = result.folder + ".stdout", errors = result.folder + ".stderr";
    ChildProcess terminal(
        "\"" + programPath("QuorTerminal.exe") + "\" --headless --out \"" + result.folder + "\" " + arguments, output,
        errors);
    result.exitCode = terminal.wait(60);
    result.output = readFile(output);
    result.errors = readFile(errors);
    return result;
}
