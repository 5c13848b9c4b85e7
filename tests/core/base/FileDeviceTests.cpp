// Replacing a file: real files, with single steps that fail or are busy.
#include "quor/platform/base/FileDevice.h"
#include "tests/support/TestFile.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

using quor::Disk;
using quor::FileDevice;
using quor::replaceFile;

namespace {

enum class Step { none, mayWrite, write, flush, replace };

class FailingDisk : public Disk {
public:
    explicit FailingDisk(Step failing = Step::none, int busyTimes = 0) : m_failing(failing), m_busyTimes(busyTimes) {}
    bool mayWrite(const Path& path) override { return m_failing != Step::mayWrite && Disk::mayWrite(path); }
    bool write(const Path& path, std::string_view bytes) override {
        const bool fails = m_failing == Step::write;
        return Disk::write(path, bytes.substr(0, fails ? bytes.size() / 2 : bytes.size())) && !fails;
    }
    bool flush(const Path& path) override { return m_flushed = m_failing != Step::flush && Disk::flush(path); }
    Replace replace(const Path& from, const Path& to) override {
        EXPECT_TRUE(m_flushed) << "put in place before it was safe";
        if (m_busyTimes-- > 0) return Replace::busy;
        return m_failing == Step::replace ? Replace::failed : Disk::replace(from, to);
    }
    void wait(std::chrono::milliseconds time) override { waited += time; }

    std::chrono::milliseconds waited{0};

private:
    Step m_failing;
    int m_busyTimes;
    bool m_flushed = false;
};

struct ReplacedFile : testing::Test {
    ~ReplacedFile() override { EXPECT_FALSE(std::filesystem::exists(file.name + ".new")); }

    const test::TestFile file{"old"};
    const FileDevice::Path path = file.name;
};

TEST_F(ReplacedFile, IsTheOldOneOrTheNewOne) {
    for (const Step step : {Step::mayWrite, Step::write, Step::flush, Step::replace}) {
        FailingDisk disk(step);
        EXPECT_FALSE(replaceFile(disk, path, "a new text", quor::kReplacePatience));
        EXPECT_EQ(disk.waited.count(), 0);
        EXPECT_EQ(file.bytes(), "old");
    }
    file.makeReadOnly();
    FailingDisk disk;
    EXPECT_FALSE(replaceFile(disk, path, "new", quor::kReplacePatience));
    EXPECT_EQ(file.bytes(), "old");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    EXPECT_TRUE(replaceFile(disk, path, "1\xA7\r\n", quor::kReplacePatience));
    EXPECT_EQ(file.bytes(), "1\xA7\r\n");
}

TEST_F(ReplacedFile, IsWaitedForWhileItIsBusy) {
    const struct {
        int busyTimes, patience;
        bool replaced;
    } rows[] = {{0, 0, true}, {1, 0, false}, {3, 1000, true}, {1000, 1000, false}};
    for (const auto& row : rows) {
        FailingDisk disk(Step::none, row.busyTimes);
        const std::string text = std::to_string(row.busyTimes), before = file.bytes();
        const std::chrono::milliseconds patience(row.patience);
        EXPECT_EQ(replaceFile(disk, path, text, patience), row.replaced) << text;
        EXPECT_EQ(file.bytes(), row.replaced ? text : before);
        EXPECT_LE(disk.waited, patience);
        EXPECT_TRUE(row.replaced || disk.waited == patience);
    }
}

#if defined(_WIN32)
TEST_F(ReplacedFile, IsBusyWhileAnotherProgramHoldsIt) {
    Disk disk;
    const HANDLE held = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(disk.mayWrite(path));
    ASSERT_TRUE(disk.write("replacing-file.tmp", "new"));
    EXPECT_EQ(disk.replace("replacing-file.tmp", path), FileDevice::Replace::busy);
    ::CloseHandle(held);
    EXPECT_EQ(disk.replace("replacing-file.tmp", path), FileDevice::Replace::done);
    EXPECT_EQ(file.bytes(), "new");
}
#endif

TEST(Disk, MissingFilesAndFoldersAreToldApart) {
    Disk disk;
    std::string bytes;
    EXPECT_EQ(disk.read("no-such-file.ini", bytes), FileDevice::Read::missing);
    EXPECT_FALSE(disk.write("no/such/folder/x", "x"));
    EXPECT_FALSE(disk.flush("no-such-file.ini"));
    EXPECT_EQ(disk.replace("no-such-file.ini", "other.ini"), FileDevice::Replace::failed);
}

}  // namespace
