// A file in the working folder. It is removed at the end, even if it is read-only by then, with what a replace that
// failed may have left beside it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace test {

class TestFile {
public:
    TestFile() : name("test-" + std::to_string(++s_number) + ".tmp") {}
    explicit TestFile(std::string_view bytes) : TestFile() { write(bytes); }
    ~TestFile() {
        std::error_code ignored;
        std::filesystem::permissions(name, std::filesystem::perms::owner_all, ignored);
        for (const std::string& left : {name, name + ".new"}) std::filesystem::remove(left, ignored);
    }
    TestFile(const TestFile&) = delete;
    TestFile& operator=(const TestFile&) = delete;

    void write(std::string_view bytes) const { std::ofstream(name, std::ios::binary) << bytes; }
    void makeReadOnly() const { std::filesystem::permissions(name, std::filesystem::perms::owner_read); }
    // Empty if there is no such file.
    std::string bytes() const {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    const std::string name;

private:
    inline static int s_number = 0;
};

}  // namespace test
