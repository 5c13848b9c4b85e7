// A disk without files, for a settings store that lives in memory alone.
#pragma once

#include "platform/base/FileDevice.h"

namespace terminal {

struct NoDisk final : quor::FileDevice {
    Read read(const Path&, std::string&) override { return Read::missing; }
    bool mayWrite(const Path&) override { return false; }
    bool write(const Path&, std::string_view) override { return false; }
    bool flush(const Path&) override { return false; }
    Replace replace(const Path&, const Path&) override { return Replace::failed; }
    void remove(const Path&) override {}
    void wait(std::chrono::milliseconds) override {}
};

}  // namespace terminal
