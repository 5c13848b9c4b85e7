// This file and Utf8.cpp are the only ones of this half that know which system they run on: the C library has no call
// that flushes to the medium or replaces a file in one step on both.
#include "host/core/FileDevice.h"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "host/core/Utf8.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace terminal {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

#ifdef _WIN32

bool flushFile(const std::string& path) {
    const HANDLE file = CreateFileW(wideText(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool done = FlushFileBuffers(file) != 0;
    CloseHandle(file);
    return done;
}

bool replaceFile(const std::string& from, const std::string& to) {
    return MoveFileExW(wideText(from).c_str(), wideText(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

#else

bool flushPath(const std::string& path, int flags) {
    const int file = open(path.c_str(), flags);
    if (file < 0) return false;
    const bool done = fsync(file) == 0;
    close(file);
    return done;
}

bool flushFile(const std::string& path) { return flushPath(path, O_WRONLY); }

// The folder is flushed too: the new name is what must survive.
bool replaceFile(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return false;
    const std::size_t slash = to.rfind('/');
    flushPath(slash == std::string::npos ? "." : to.substr(0, slash + 1), O_RDONLY);
    return true;
}

#endif

}  // namespace

FileDevice::Read Disk::read(const std::string& path, std::string& bytes) {
    bytes.clear();
    errno = 0;
    const File file(openFile(path, "rb"));
    if (!file) return errno == ENOENT ? Read::missing : Read::failed;
    char part[65'536];
    std::size_t got = 0;
    while ((got = std::fread(part, 1, sizeof part, file.get())) > 0) bytes.append(part, got);
    return std::ferror(file.get()) ? Read::failed : Read::done;
}

bool Disk::write(const std::string& path, std::string_view bytes) {
    File file(openFile(path, "wb"));
    if (!file) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}

bool Disk::flush(const std::string& path) { return flushFile(path); }

bool Disk::replace(const std::string& from, const std::string& to) { return replaceFile(from, to); }

}  // namespace terminal
