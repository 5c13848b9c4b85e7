#include "support/WindowFixture.h"

#include "quor/platform/proving/UserInput.h"

#include <algorithm>
#include <cstdio>

namespace test {

void useOwnDesktop() {
    static const bool done = quor::useOwnDesktop("quor-test");
    if (done) return;
    std::fprintf(stderr, "No desktop of its own: error %lu\n", ::GetLastError());
    std::exit(3);
}

namespace {

constexpr DWORD kCrashes[] = {EXCEPTION_ACCESS_VIOLATION, EXCEPTION_ILLEGAL_INSTRUCTION,
                              EXCEPTION_STACK_OVERFLOW,   EXCEPTION_INT_DIVIDE_BY_ZERO,
                              EXCEPTION_PRIV_INSTRUCTION, EXCEPTION_DATATYPE_MISALIGNMENT};

// The offset in the module is what addr2line wants, once the module's preferred base is added.
LONG CALLBACK reportCrash(EXCEPTION_POINTERS* info) {
    const EXCEPTION_RECORD& record = *info->ExceptionRecord;
    if (std::ranges::find(kCrashes, record.ExceptionCode) == std::end(kCrashes)) return EXCEPTION_CONTINUE_SEARCH;
    HMODULE module = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         static_cast<LPCSTR>(record.ExceptionAddress), &module);
    char path[MAX_PATH] = "?";
    ::GetModuleFileNameA(module, path, sizeof(path));
    const auto offset = static_cast<const char*>(record.ExceptionAddress) - reinterpret_cast<const char*>(module);
    std::fprintf(stderr, "CRASH %08lx at %s+0x%llx\n", record.ExceptionCode, path,
                 static_cast<unsigned long long>(offset));
    std::fflush(stderr);
    std::fflush(stdout);
    ::TerminateProcess(::GetCurrentProcess(), 29);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void endOnCrash() { ::AddVectoredExceptionHandler(1, &reportCrash); }

LRESULT TestFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT answer = 0;
    if (onMessage && onMessage(message, wParam, lParam, answer)) return answer;
    return CFrameWnd::WindowProc(message, wParam, lParam);
}

namespace {

bool messageWaits() {
    MSG message;
    return ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
}

// One look at the queue: a message, or an idle turn. False when there is nothing to do.
bool turn(LONG& idleCount) {
    if (!messageWaits()) return AfxOnIdle(idleCount++);
    idleCount = 0;
    if (!AfxPumpMessage()) ADD_FAILURE() << "The application was told to quit";
    return true;
}

}  // namespace

void pumpUntilIdle() {
    const ULONGLONG end = ::GetTickCount64() + 5000;
    LONG idleCount = 0;
    while (turn(idleCount)) {
        if (::GetTickCount64() <= end) continue;
        ADD_FAILURE() << "The message queue does not come to rest";
        return;
    }
}

bool pumpFor(const std::function<bool()>& condition, DWORD limit) {
    const ULONGLONG end = ::GetTickCount64() + limit;
    LONG idleCount = 0;
    while (!condition()) {
        const ULONGLONG now = ::GetTickCount64();
        if (now >= end) return false;
        if (!turn(idleCount))
            ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    }
    return true;
}

WindowFixture::WindowFixture() : m_frame(nullptr) {
    useOwnDesktop();
    watchMessageBoxes();
    m_frame = new TestFrame;
    m_frame->Create(nullptr, "Test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(20, 20, 820, 620));
    AfxSetMainWnd(m_frame);
    pumpUntilIdle();
}

void WindowFixture::TearDown() {
    if (!m_frame) return;
    m_frame->onMessage = nullptr;
    m_frame->DestroyWindow();
    m_frame = nullptr;
    pumpUntilIdle();
}

WindowFixture::~WindowFixture() { WindowFixture::TearDown(); }

CRect WindowFixture::client() const {
    CRect area;
    m_frame->GetClientRect(&area);
    return area;
}

}  // namespace test
