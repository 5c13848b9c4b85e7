// Files of the settings tests.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace settings_test {

// A path in the system's folder for such, unused; what comes to lie there is removed at the end.
class TemporaryFile {
public:
    TemporaryFile() {
        static std::atomic<int> count = 0;
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        const std::string name = "quor-settings-" + std::to_string(now) + "-" + std::to_string(++count) + ".json";
        m_path = (std::filesystem::temp_directory_path() / name).string();
    }
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove(m_path, ignored);
        std::filesystem::remove(m_path + ".new", ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

inline void write(const std::string& path, const std::string& bytes) { std::ofstream(path, std::ios::binary) << bytes; }

// Empty if there is no such file.
inline std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace settings_test
