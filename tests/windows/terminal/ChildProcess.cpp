#include "ChildProcess.h"

#include <fstream>
#include <sstream>

#include "host/core/Utf8.h"

namespace {
class OutputFile {
public:
    explicit OutputFile(const std::string& path, DWORD otherwise) {
        if (path.empty()) {
            m_handle = ::GetStdHandle(otherwise);
            return;
        }
        SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
        // What a former child started, its desktop for one, may still hold its output open.
        constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        m_handle =
            ::CreateFileW(terminal::wideText(path).c_str(), GENERIC_WRITE, share, &inherit, CREATE_ALWAYS, 0, nullptr);
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

void removeFile(const std::string& path) {
    std::error_code none;  // it may not be there
    std::filesystem::remove(terminal::systemPath(path), none);
}
}  // namespace

ChildProcess::ChildProcess(const std::string& commandLine, const std::string& output, const std::string& errors) {
    const OutputFile out(output, STD_OUTPUT_HANDLE), err(errors, STD_ERROR_HANDLE);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = out.handle();
    start.hStdError = err.handle();
    PROCESS_INFORMATION process{};
    std::wstring line = terminal::wideText(commandLine);
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process)) return;
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
    return std::filesystem::exists(terminal::systemPath(folder + "\\" + file));
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
    std::filesystem::create_directory(terminal::systemPath(path.substr(0, path.find_last_of('\\'))));
    std::ofstream(terminal::systemPath(path), std::ios::binary) << text;
    return path;
}

std::string readFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(terminal::systemPath(path), std::ios::binary).rdbuf();
    return text.str();
}

RunResult runTerminal(const std::string& name, const std::string& arguments, KeepSettings keep) {
    RunResult result;
    result.folder = testFolder() + "\\" + name;
    for (const char* file : {"terminal.png", "watch.png", "orders.png", "trades.png", "chain.png", "terminal.log"})
        removeFile(result.folder + "\\" + file);
    if (keep == KeepSettings::no) removeFile(result.folder + "\\terminal-settings.ini");
    const std::string output = result.folder + ".stdout", errors = result.folder + ".stderr";
    ChildProcess terminal(
        "\"" + programPath("QuorTerminal.exe") + "\" --headless --out \"" + result.folder + "\" " + arguments, output,
        errors);
    result.exitCode = terminal.wait(60);
    result.output = readFile(output);
    result.errors = readFile(errors);
    return result;
}
