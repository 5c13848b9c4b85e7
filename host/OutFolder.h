// The folder of a terminal's settings, log and pictures. It is held by a lock on a file in it for as long as this
// object lives: a terminal that wants a folder that another one holds takes one below it, terminal-2, terminal-3, ...
#pragma once

#include "quor/platform/Framework.h"

#include <string>

namespace terminal {

class OutFolder {
public:
    // Makes the folder, named in UTF-8, with those above it.
    explicit OutFolder(const std::string& wanted);
    ~OutFolder() { letGo(); }
    OutFolder(const OutFolder&) = delete;
    OutFolder& operator=(const OutFolder&) = delete;

    // The one that is held; "" if it cannot be made.
    const std::string& path() const { return m_path; }
    // What a user is told who wanted another one; "" if it is the one that was wanted.
    const std::string& remark() const { return m_remark; }

private:
    bool take(const std::string& folder);
    void letGo();

    std::string m_path;
    std::string m_remark;
    HANDLE m_lock = INVALID_HANDLE_VALUE;
};

}  // namespace terminal
