#include "ChildProcess.h"

#include <fstream>
#include <sstream>

namespace {
class OutputFile {
public:
    explicit OutputFile(const std::string& path, DWORD otherwise) {
        if (path.empty()) {
            m_handle = ::GetStdHandle(otherwise);
            return;
        }
        SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
        m_handle = ::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS, 0, nullptr);
        m_owned = true;
    }
    ~OutputFile() {
        if (m_owned) ::CloseHandle(m_handle);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    HANDLE handle() const { return m_handle; }

private:
    HANDLE m_handle = nullptr;
    bool m_owned = false;
};
}  // namespace

ChildProcess::ChildProcess(const std::string& commandLine, const std::string& output, const std::string& errors) {
    const OutputFile out(output, STD_OUTPUT_HANDLE), err(errors, STD_ERROR_HANDLE);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = out.handle();
    start.hStdError = err.handle();
    PROCESS_INFORMATION process{};
    std::string line = commandLine;
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) return;
    ::CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_id = process.dwProcessId;
}

ChildProcess::~ChildProcess() {
    if (!m_process) return;
    if (::WaitForSingleObject(m_process, 0) != WAIT_OBJECT_0) terminate();
    ::CloseHandle(m_process);
}

int ChildProcess::wait(int seconds) {
    if (!m_process || ::WaitForSingleObject(m_process, static_cast<DWORD>(seconds) * 1000) != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    ::GetExitCodeProcess(m_process, &code);
    return static_cast<int>(code);
}

void ChildProcess::terminate() {
    ::TerminateProcess(m_process, 99);
    ::WaitForSingleObject(m_process, 10'000);
}

std::string RunResult::figure(const std::string& name) const {
    const std::size_t at = output.find(" " + name + "=");
    if (at == std::string::npos) return {};
    std::size_t from = at + name.size() + 2;
    const bool quoted = output[from] == '"';
    if (quoted) ++from;
    return output.substr(from, output.find_first_of(quoted ? "\"" : " \r\n", from) - from);
}

bool RunResult::wrote(const std::string& file) const {
    return ::GetFileAttributesA((folder + "\\" + file).c_str()) != INVALID_FILE_ATTRIBUTES;
}

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

std::string writeTestFile(const std::string& name, const std::string& text) {
    const std::string path = testFolder() + "\\" + name;
    ::CreateDirectoryA(path.substr(0, path.find_last_of('\\')).c_str(), nullptr);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

RunResult runTerminal(const std::string& name, const std::string& arguments, KeepSettings keep) {
    RunResult result;
    result.folder = testFolder() + "\\" + name;
    for (const char* file : {"terminal.png", "watch.png", "orders.png", "trades.png", "chain.png", "terminal.log"})
        ::DeleteFileA((result.folder + "\\" + file).c_str());
    if (keep == KeepSettings::no) ::DeleteFileA((result.folder + "\\terminal-settings.ini").c_str());
    const std::string output = testFolder() + "\\" + name + ".stdout", errors = testFolder() + "\\" + name + ".stderr";
    ChildProcess terminal(
        "\"" + programPath("QuorTerminal.exe") + "\" --headless --out \"" + result.folder + "\" " + arguments, output,
        errors);
    result.exitCode = terminal.wait(60);
    result.output = readFile(output);
    result.errors = readFile(errors);
    return result;
}
