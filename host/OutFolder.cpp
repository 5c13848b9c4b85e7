#include "host/OutFolder.h"

#include "host/core/Utf8.h"

#include <filesystem>
#include <system_error>

namespace terminal {

namespace {
constexpr const char* kLockName = "/terminal.lock";

// Makes a folder and those above it. False: it is not there afterwards.
bool makeFolder(const std::string& path) {
    std::error_code none;  // a folder that is there already is told as one, too
    std::filesystem::create_directories(systemPath(path), none);
    return std::filesystem::is_directory(systemPath(path), none);
}
}  // namespace

OutFolder::OutFolder(const std::string& wanted) {
    std::string folder = wanted;
    for (int number = 2; makeFolder(folder); ++number) {
        if (take(folder)) {
            m_path = folder;
            break;
        }
        folder = wanted + "/terminal-" + std::to_string(number);
    }
    if (m_path != wanted)
        m_remark = "The folder " + wanted + " is in use by another terminal; this one uses " + m_path + ".";
}

// False only if another terminal holds it: a folder in which nothing can be locked is shared, as it can be.
bool OutFolder::take(const std::string& folder) {
    m_lock = ::CreateFileW(wideText(folder + kLockName).c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_lock == INVALID_HANDLE_VALUE) return true;
    OVERLAPPED firstByte{};
    if (::LockFileEx(m_lock, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &firstByte)) return true;
    const DWORD reason = ::GetLastError();
    if (reason != ERROR_LOCK_VIOLATION && reason != ERROR_IO_PENDING) return true;
    letGo();
    return false;
}

void OutFolder::letGo() {
    if (m_lock != INVALID_HANDLE_VALUE) ::CloseHandle(m_lock);
    m_lock = INVALID_HANDLE_VALUE;
}

}  // namespace terminal
