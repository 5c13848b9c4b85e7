// What happened, in order, as short texts: "create 5", "draw 3". Tests compare the whole list.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace test {

class CallRecorder {
public:
    // Joins its arguments with blanks: record("notify", code, row).
    template <class... Parts>
    void record(const Parts&... parts) {
        std::ostringstream line;
        const char* separator = "";
        ((line << separator << parts, separator = " "), ...);
        m_calls.push_back(line.str());
    }

    // What was recorded since the last take.
    std::vector<std::string> take() { return std::exchange(m_calls, {}); }
    void clear() { m_calls.clear(); }
    int count(const std::string& call) const {
        int found = 0;
        for (const std::string& each : m_calls) found += each == call;
        return found;
    }

private:
    std::vector<std::string> m_calls;
};

using Calls = std::vector<std::string>;

}  // namespace test
