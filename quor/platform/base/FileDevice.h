// The few things that a file of settings does to a disk, each behind a call that a test can make fail, and the one way
// in which such a file is replaced.
#pragma once

#include "quor/platform/base/Export.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

namespace quor {

class QUOR_FRAMEWORK_API FileDevice {
public:
    using Path = std::filesystem::path;
    enum class Read { done, missing, failed };
    enum class Replace { done, busy, failed };
    virtual ~FileDevice() = default;
    // All bytes of a file. `missing`: there is no such file; `failed`: there is one that could not be read to its end.
    virtual Read read(const Path& path, std::string& bytes) = 0;
    // False for a file that is protected, which a replacement would not heed, and for what is no plain file. A missing
    // one may be written.
    virtual bool mayWrite(const Path& path) = 0;
    // Creates or empties `path` and writes all bytes. False may leave a part behind.
    virtual bool write(const Path& path, std::string_view bytes) = 0;
    // True once what was written to `path` is on the medium.
    virtual bool flush(const Path& path) = 0;
    // Puts `from` in the place of `to` in one step: whoever opens `to` sees the old file or the new one, whole. `busy`:
    // refused as things stand, since another program has one of them open.
    virtual Replace replace(const Path& from, const Path& to) = 0;
    virtual void remove(const Path& path) = 0;
    virtual void wait(std::chrono::milliseconds time) = 0;
};

// The real one.
class QUOR_FRAMEWORK_API Disk : public FileDevice {
public:
    Read read(const Path& path, std::string& bytes) override;
    bool mayWrite(const Path& path) override;
    bool write(const Path& path, std::string_view bytes) override;
    bool flush(const Path& path) override;
    Replace replace(const Path& from, const Path& to) override;
    void remove(const Path& path) override;
    void wait(std::chrono::milliseconds time) override;
};

// How long a scanner or a backup program may hold a file before a save gives up.
inline constexpr std::chrono::milliseconds kReplacePatience{1000};

// Makes `bytes` the contents of a file: written beside it (".new"), flushed, put in its place. A kill at any moment
// leaves the old file or the new one. A replacement that is busy is tried again until `patience` is over. False: the
// old file stands as it was, and nothing is left beside it.
QUOR_FRAMEWORK_API bool replaceFile(FileDevice& device, const FileDevice::Path& path, std::string_view bytes,
                                    std::chrono::milliseconds patience);

// The path that the C library would open for a narrow name.
QUOR_FRAMEWORK_API FileDevice::Path pathOfNarrow(std::string_view name);

}  // namespace quor
