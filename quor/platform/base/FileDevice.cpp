// One of the few sources of this folder that know which system they run on: the C library has no call that flushes to
// the medium or replaces a file in one step on both.
#include "quor/platform/base/FileDevice.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#if defined(_WIN32)
#include "quor/platform/base/WinTypes.h"
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#endif

namespace quor {

namespace {

constexpr std::chrono::milliseconds kPause{20};  // between two tries

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

enum class Access { read, write };

#if defined(_WIN32)

File openFile(const FileDevice::Path& path, Access access) {
    return File(::_wfopen(path.c_str(), access == Access::read ? L"rb" : L"wb"));
}

// Whoever else has the file open stays undisturbed.
HANDLE openForWriting(const FileDevice::Path& path) {
    return ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool isInUse(DWORD error) {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_USER_MAPPED_FILE;
}

#else

File openFile(const FileDevice::Path& path, Access access) {
    return File(std::fopen(path.c_str(), access == Access::read ? "rb" : "wb"));
}

bool flushPath(const FileDevice::Path& path, int flags) {
    const int file = ::open(path.c_str(), flags);
    if (file < 0) return false;
    const bool done = ::fsync(file) == 0;
    ::close(file);
    return done;
}

#endif

bool putInPlace(FileDevice& device, const FileDevice::Path& from, const FileDevice::Path& to,
                std::chrono::milliseconds patience) {
    for (std::chrono::milliseconds waited{0};; waited += kPause) {
        const FileDevice::Replace result = device.replace(from, to);
        if (result != FileDevice::Replace::busy) return result == FileDevice::Replace::done;
        if (waited >= patience) return false;
        device.wait(kPause);
    }
}

}  // namespace

bool replaceFile(FileDevice& device, const FileDevice::Path& path, std::string_view bytes,
                 std::chrono::milliseconds patience) {
    if (!device.mayWrite(path)) return false;
    FileDevice::Path beside = path;
    beside += ".new";
    if (device.write(beside, bytes) && device.flush(beside) && putInPlace(device, beside, path, patience)) return true;
    device.remove(beside);
    return false;
}

FileDevice::Read Disk::read(const Path& path, std::string& bytes) {
    bytes.clear();
    errno = 0;
    const File file = openFile(path, Access::read);
    if (!file) return errno == ENOENT ? Read::missing : Read::failed;
    char part[65'536];
    std::size_t got = 0;
    while ((got = std::fread(part, 1, sizeof part, file.get())) > 0) bytes.append(part, got);
    return std::ferror(file.get()) ? Read::failed : Read::done;
}

bool Disk::write(const Path& path, std::string_view bytes) {
    File file = openFile(path, Access::write);
    if (!file) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

#if defined(_WIN32)

// A file that another program does not share for the moment may be written; replacing it waits.
bool Disk::mayWrite(const Path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return true;
    if (attributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) return false;
    const HANDLE file = openForWriting(path);
    if (file == INVALID_HANDLE_VALUE) return ::GetLastError() == ERROR_SHARING_VIOLATION;
    ::CloseHandle(file);
    return true;
}

bool Disk::flush(const Path& path) {
    const HANDLE file = openForWriting(path);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool done = ::FlushFileBuffers(file) != 0;
    ::CloseHandle(file);
    return done;
}

FileDevice::Replace Disk::replace(const Path& from, const Path& to) {
    if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return Replace::done;
    return isInUse(::GetLastError()) ? Replace::busy : Replace::failed;
}

void Disk::remove(const Path& path) { ::DeleteFileW(path.c_str()); }

void Disk::wait(std::chrono::milliseconds time) { ::Sleep(static_cast<DWORD>(time.count())); }

FileDevice::Path pathOfNarrow(std::string_view name) {
    const int bytes = static_cast<int>(name.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, name.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, name.data(), bytes, wide.data(), length);
    return wide;
}

#else

// The mode counts even for a superuser, whom access() would let pass.
bool Disk::mayWrite(const Path& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return true;
    return S_ISREG(status.st_mode) && (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 &&
           ::access(path.c_str(), W_OK) == 0;
}

bool Disk::flush(const Path& path) { return flushPath(path, O_WRONLY); }

// The folder is flushed too: the new name is what must survive.
FileDevice::Replace Disk::replace(const Path& from, const Path& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return Replace::failed;
    flushPath(to.has_parent_path() ? to.parent_path() : Path("."), O_RDONLY);
    return Replace::done;
}

void Disk::remove(const Path& path) { std::remove(path.c_str()); }

void Disk::wait(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

FileDevice::Path pathOfNarrow(std::string_view name) { return name; }

#endif

}  // namespace quor
