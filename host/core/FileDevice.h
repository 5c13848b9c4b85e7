// The few things that a settings file does to a disk, each behind a call that a test can make fail.
#pragma once

#include <string>
#include <string_view>

namespace terminal {

// Paths are UTF-8.
class FileDevice {
public:
    enum class Read { done, missing, failed };
    virtual ~FileDevice() = default;
    // All bytes of a file. `missing`: there is no such file; `failed`: there is one that could not be read to its end.
    virtual Read read(const std::string& path, std::string& bytes) = 0;
    // Creates or empties `path` and writes all bytes. False may leave a part behind.
    virtual bool write(const std::string& path, std::string_view bytes) = 0;
    // True once what was written to `path` is on the medium.
    virtual bool flush(const std::string& path) = 0;
    // Puts `from` in the place of `to` in one step: whoever opens `to` sees the old file or the new one, whole.
    virtual bool replace(const std::string& from, const std::string& to) = 0;
};

// The real one.
class Disk final : public FileDevice {
public:
    Read read(const std::string& path, std::string& bytes) override;
    bool write(const std::string& path, std::string_view bytes) override;
    bool flush(const std::string& path) override;
    bool replace(const std::string& from, const std::string& to) override;
};

}  // namespace terminal
