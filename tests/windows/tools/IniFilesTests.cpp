// The INI pair on real files.

#include "platform/tools/QuorTools.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace {

struct Outcome {
    int result;
    CString value;
    CString error;
};

// The longest value that is kept, beyond the room of the first try.
constexpr int kLongValue = 32766;

using IniFunction = int (*)(int, CString, CString, CString&, CString&, CString&);

Outcome readKey(IniFunction function, LPCSTR section, LPCSTR key, CString file) {
    Outcome outcome{0, "untouched", "untouched"};
    outcome.result = function(0, section, key, outcome.value, file, outcome.error);
    return outcome;
}

Outcome writeKey(IniFunction function, LPCSTR section, LPCSTR key, CString value, CString file) {
    Outcome outcome{0, value, "untouched"};
    outcome.result = function(1, section, key, outcome.value, file, outcome.error);
    return outcome;
}

std::string contents(LPCSTR path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

CString executableFolder() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const CString text(path);
    return text.Left(text.ReverseFind('\\') + 1);
}

// Each test has a file of its own in the temporary folder.
class IniFiles : public ::testing::Test {
protected:
    IniFiles() {
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        m_file.Format("%sini_files_tests_%u_%s.ini", folder, static_cast<unsigned>(GetCurrentProcessId()),
                      ::testing::UnitTest::GetInstance()->current_test_info()->name());
        DeleteFileA(m_file);
    }
    ~IniFiles() override { DeleteFileA(m_file); }

    Outcome read(LPCSTR key) { return readKey(&quoru_ini_file_operations, "list", key, m_file); }
    Outcome write(LPCSTR key, const CString& value) {
        return writeKey(&quoru_ini_file_operations, "list", key, value, m_file);
    }

    CString m_file;
};

TEST_F(IniFiles, ValuesComeBackByteForByte) {
    const CString values[] = {
        "0,0,80,1,-1,0,2,1,60,Ratio#F#T",
        "112\xA7"
        "0\xA7"
        "80\xA7Ratio\xA7[1]/[2]\xA7\"Last\" / \"Close\"",
        "000000,FF00,MS Shell Dlg 2,8,3,BUY ; SELL,FF,",
        "a = b ; c # d [e] \x80\xE4\xFF",
        "",
        " ",
        "  blanks around\t",
        "\"quoted\"",
        "'",
        "half a quote\"",
        "\"\"",
        CString('x', kLongValue),
    };
    int number = 0;
    for (const CString& value : values) {
        CString key;
        key.Format("Key %d-%d", ++number, 1001);
        const Outcome written = write(key, value);
        ASSERT_EQ(written.result, 1) << written.error.GetString();
        EXPECT_STREQ(written.error, "");
        EXPECT_EQ(written.value, value);
    }
    number = 0;
    for (const CString& value : values) {
        CString key;
        key.Format("Key %d-%d", ++number, 1001);
        const Outcome found = read(key);
        EXPECT_EQ(found.result, 1) << found.error.GetString();
        EXPECT_STREQ(found.error, "");
        EXPECT_EQ(found.value.GetLength(), value.GetLength());
        EXPECT_TRUE(found.value == value) << value.Left(60).GetString();
    }
}

TEST_F(IniFiles, LaterValueReplacesEarlierInOneFileAnyProgramReads) {
    write("COLUMNPROFILE", "0,0,80");
    write("Other", "x");
    write("COLUMNPROFILE", "0,1,90\xA7");
    EXPECT_STREQ(read("COLUMNPROFILE").value, "0,1,90\xA7");
    EXPECT_STREQ(read("columnprofile").value, "0,1,90\xA7") << "keys are found in any case";
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, m_file);
    EXPECT_EQ(contents(m_file), "[list]\r\nCOLUMNPROFILE=0,1,90\xA7\r\nOther=x\r\n");
}

TEST_F(IniFiles, FileWrittenByHandIsRead) {
    std::ofstream(m_file.GetString(), std::ios::binary)
        << "; comment\r\n[other]\r\na=1\r\n[list]\r\n  a =  spaced  \r\nempty=\r\nquoted=\" x \"\r\n";
    EXPECT_STREQ(read("a").value, "spaced");
    EXPECT_STREQ(read("quoted").value, " x ");
    const Outcome empty = read("empty");
    EXPECT_EQ(empty.result, 1);
    EXPECT_STREQ(empty.value, "");
}

TEST_F(IniFiles, FailedReadsSayWhatIsMissing) {
    for (const bool fileExists : {false, true}) {
        if (fileExists) write("present", "1");
        const Outcome missing = read("absent");
        EXPECT_EQ(missing.result, 0);
        EXPECT_STREQ(missing.value, "Settings not found");
        EXPECT_GE(missing.error.Find("\"absent\""), 0) << missing.error.GetString();
        EXPECT_GE(missing.error.Find("\"list\""), 0) << missing.error.GetString();
        EXPECT_GE(missing.error.Find(m_file), 0) << missing.error.GetString();
    }
    EXPECT_EQ(readKey(&quoru_ini_file_operations, "no such section", "present", m_file).result, 0);
}

TEST_F(IniFiles, WhatWouldNotReadBackIsRefused) {
    write("kept", "1");
    const std::string before = contents(m_file);
    const struct {
        LPCSTR section, key, value;
    } cases[] = {
        {"list", "k", "two\nlines"}, {"list", "k", "\r"}, {"list", "", "x"},   {"", "k", "x"},
        {"list", "a=b", "x"},        {"list", ";k", "x"}, {"list", "[k", "x"}, {"list", " k", "x"},
        {"list", "k\t", "x"},        {"li]st", "k", "x"}, {"list ", "k", "x"}, {"list", "k\nl=2", "x"},
    };
    for (const auto& one : cases) {
        const Outcome refused = writeKey(&quoru_ini_file_operations, one.section, one.key, one.value, m_file);
        EXPECT_EQ(refused.result, 0) << one.section << one.key;
        EXPECT_FALSE(refused.error.IsEmpty());
    }
    EXPECT_EQ(write("k", CString('x', kLongValue + 1)).result, 0);
    EXPECT_EQ(write("k", CString('x', kLongValue - 2) + " ").result, 0) << "needs quotes";
    EXPECT_EQ(write(CString('k', kLongValue + 1), "x").result, 0);
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, m_file);
    EXPECT_EQ(contents(m_file), before);
}

TEST_F(IniFiles, TextsWithANulAreRefused) {
    const CString cut("k\0l", 3);
    for (int where = 0; where < 4; ++where) {
        CString file = where == 3 ? m_file + cut : m_file, value = where == 2 ? cut : "x", error;
        EXPECT_EQ(quoru_ini_file_operations(1, where ? "list" : cut, where == 1 ? cut : "k", value, file, error), 0);
        EXPECT_FALSE(error.IsEmpty()) << where;
    }
    EXPECT_EQ(contents(m_file), "");
}

TEST_F(IniFiles, FailedWritesSayWhere) {
    const CString nowhere = m_file + "\\no folder\\x.ini";
    const Outcome failed = writeKey(&quoru_ini_file_operations, "list", "COLUMNPROFILE", "0,0,80", nowhere);
    EXPECT_EQ(failed.result, 0);
    for (const LPCSTR part : {nowhere.GetString(), "\"list\"", "\"COLUMNPROFILE\""})
        EXPECT_GE(failed.error.Find(part), 0) << failed.error.GetString();
    const Outcome unnamed = writeKey(&quoru_appdata_ini_file_operations, "CUSTOMIZE_LISTS", "L-1", "0,FF00,F,8", "");
    EXPECT_EQ(unnamed.result, 0);
    EXPECT_FALSE(unnamed.error.IsEmpty());
    CString value("kept");
    CString error;
    EXPECT_EQ(quoru_ini_file_operations(2, "list", "k", value, m_file, error), 0);
    EXPECT_STREQ(value, "kept");
    EXPECT_FALSE(error.IsEmpty());
}

TEST_F(IniFiles, BareNamesLieBesideTheExecutable) {
    CString name;
    name.Format("ini_files_tests_%u.ini", static_cast<unsigned>(GetCurrentProcessId()));
    ASSERT_EQ(writeKey(&quoru_ini_file_operations, "COLUMN PROFILE", "Orders", "0,0,80", name).result, 1);
    const CString path = executableFolder() + name;
    EXPECT_STREQ(readKey(&quoru_ini_file_operations, "COLUMN PROFILE", "Orders", path).value, "0,0,80");
    EXPECT_STREQ(readKey(&quoru_ini_file_operations, "COLUMN PROFILE", "Orders", name).value, "0,0,80");
    EXPECT_EQ(readKey(&quoru_appdata_ini_file_operations, "COLUMN PROFILE", "Orders", name).result, 0)
        << "the user's data are another folder";
    EXPECT_TRUE(DeleteFileA(path));
}

TEST_F(IniFiles, BareNamesOfUserDataLieInTheUsersFolder) {
    CString name;
    name.Format("ini_files_tests_%u.ini", static_cast<unsigned>(GetCurrentProcessId()));
    const CString folder = CString(std::getenv("APPDATA")) + "\\tools_tests\\";
    ASSERT_EQ(writeKey(&quoru_appdata_ini_file_operations, "MultiMonitor Settings", "Dialog", "YES", name).result, 1);
    EXPECT_STREQ(readKey(&quoru_appdata_ini_file_operations, "MultiMonitor Settings", "Dialog", name).value, "YES");
    EXPECT_STREQ(readKey(&quoru_ini_file_operations, "MultiMonitor Settings", "Dialog", folder + name).value, "YES");
    EXPECT_TRUE(DeleteFileA(folder + name));
    RemoveDirectoryA(folder);
}

}  // namespace
