// A disk without files, for a settings store that lives in memory alone.
#pragma once

#include "host/core/FileDevice.h"

namespace terminal {

struct NoDisk final : FileDevice {
    Read read(const std::string&, std::string&) override { return Read::missing; }
    bool write(const std::string&, std::string_view) override { return false; }
    bool flush(const std::string&) override { return false; }
    bool replace(const std::string&, const std::string&) override { return false; }
};

}  // namespace terminal
