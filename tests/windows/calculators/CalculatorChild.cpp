#include "windows/calculators/CalculatorChild.h"

#include "src/calculators/QuorCOMWrapApp.h"

#include <ole2.h>

namespace test {

namespace {

int createBoth() {
    bool option = true, margin = true;
    quorCalculators().GetSpan(&option);
    quorCalculators().GetSpanCom(&margin);
    return static_cast<int>((option ? kOptionCreated : 0) | (margin ? kMarginCreated : 0));
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
// Writes a letter into a file for each end of COM that it sees, until the process is gone.
class EndOfComSpy final : public IInitializeSpy {
public:
    explicit EndOfComSpy(HANDLE file) : m_file(file) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
    HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD) override {
        DWORD written = 0;
        ::WriteFile(m_file, "u", 1, &written, nullptr);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override { return S_OK; }

private:
    HANDLE m_file;
};
#pragma GCC diagnostic pop

// Leaves with both servers alive and one more start of COM, so that the spy outlives both ends.
int leave(const std::string& path) {
    const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ::CoInitialize(nullptr);
    static EndOfComSpy* const spy = new EndOfComSpy(file);  // never deleted
    ULARGE_INTEGER cookie = {};
    if (file == INVALID_HANDLE_VALUE || FAILED(::CoRegisterInitializeSpy(spy, &cookie))) return 100;
    return createBoth();
}

int callWithoutServer() {
    quorCalculators().DeleteWra();
    return 0;
}

}  // namespace

DWORD runChild(const std::string& mode, const std::string& argument) {
    char program[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, program, MAX_PATH);
    std::string line = '"' + std::string(program) + "\" --child " + mode + " \"" + argument + '"';
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!::CreateProcessA(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return ~0u;
    DWORD code = WAIT_TIMEOUT;
    if (::WaitForSingleObject(process.hProcess, 20000) == WAIT_OBJECT_0)
        ::GetExitCodeProcess(process.hProcess, &code);
    else
        ::TerminateProcess(process.hProcess, WAIT_TIMEOUT);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
    return code;
}

int childMain(const std::string& mode, const std::string& argument) {
    if (mode == "create") return createBoth();
    if (mode == "leave") return leave(argument);
    if (mode == "fault") return callWithoutServer();
    return 101;
}

}  // namespace test
