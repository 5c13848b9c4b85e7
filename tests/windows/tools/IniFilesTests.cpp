// The INI pair on real files.

#include "quor/platform/tools/QuorTools.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

namespace {

enum Operation { kRead, kWrite };

struct Outcome {
    int result;
    CString value;
    CString error;
};

// The longest value that is kept, beyond the room of the first try.
constexpr int kLongValue = 32766;

using IniFunction = int (*)(int, CString, CString, CString&, CString&, CString&);

Outcome call(IniFunction function, int operation, const CString& section, const CString& key, CString value,
             CString file) {
    Outcome outcome{0, value, "untouched"};
    outcome.result = function(operation, section, key, outcome.value, file, outcome.error);
    return outcome;
}

// Each test has a file of its own in the temporary folder.
class IniFiles : public ::testing::Test {
protected:
    IniFiles() {
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        name.Format("ini_files_tests_%u.ini", static_cast<unsigned>(GetCurrentProcessId()));
        path = folder + name;
        DeleteFileA(path);
    }
    ~IniFiles() override { DeleteFileA(path); }

    Outcome read(LPCSTR key) { return call(&quoru_ini_file_operations, kRead, "list", key, "untouched", path); }
    Outcome write(LPCSTR key, const CString& value) {
        return call(&quoru_ini_file_operations, kWrite, "list", key, value, path);
    }
    std::string contents() {
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, path);  // out of the system's cache
        std::ifstream file(path.GetString(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    CString name, path;
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
        "half a quote\"",
        "\"\"",
        CString('x', kLongValue),
    };
    for (const bool writing : {true, false})
        for (const CString& value : values) {
            const CString key(std::to_string(&value - values).c_str());
            const Outcome outcome = writing ? write("Key " + key, value) : read("Key " + key);
            ASSERT_EQ(outcome.result, 1) << outcome.error.GetString();
            EXPECT_STREQ(outcome.error, "");
            EXPECT_TRUE(outcome.value == value) << value.Left(60).GetString();
        }
}

TEST_F(IniFiles, AreThoseOfAnyProgram) {
    write("COLUMNPROFILE", "0,0,80");
    write("Other", "x");
    write("COLUMNPROFILE", "0,1,90\xA7");
    EXPECT_STREQ(read("columnprofile").value, "0,1,90\xA7") << "keys are found in any case";
    EXPECT_EQ(contents(), "[list]\r\nCOLUMNPROFILE=0,1,90\xA7\r\nOther=x\r\n");
    std::ofstream(path.GetString(), std::ios::binary)
        << "; comment\r\n[other]\r\na=1\r\n[list]\r\n  a =  spaced  \r\nempty=\r\nquoted=\" x \"\r\n";
    EXPECT_STREQ(read("a").value, "spaced");
    EXPECT_STREQ(read("quoted").value, " x ");
    EXPECT_EQ(read("empty").result, 1);
    EXPECT_STREQ(read("empty").value, "");
}

TEST_F(IniFiles, WhatWouldNotReadBackIsRefused) {
    write("kept", "1");
    const std::string before = contents();
    const CString nul("k\0l", 3), longKey('k', kLongValue + 1);
    const std::pair<CString, CString> names[] = {{"list", ""},     {"", "k"},          {"list", "a=b"}, {"list", ";k"},
                                                 {"list", "[k"},   {"list", " k"},     {"list", "k\t"}, {"li]st", "k"},
                                                 {"list ", "k"},   {"list", "k\nl=2"}, {nul, "k"},      {"list", nul},
                                                 {"list", longKey}};
    const CString values[] = {"two\nlines", "\r", nul, CString('x', kLongValue + 1),
                              CString('x', kLongValue - 2) + " "};  // needs quotes
    const auto refuses = [&](const CString& section, const CString& key, const CString& value, const CString& file) {
        const Outcome refused = call(&quoru_ini_file_operations, kWrite, section, key, value, file);
        EXPECT_EQ(refused.result, 0) << section.GetString() << "," << key.Left(9).GetString() << ","
                                     << value.Left(9).GetString();
        EXPECT_FALSE(refused.error.IsEmpty());
    };
    for (const auto& [section, key] : names) refuses(section, key, "x", path);
    for (const CString& value : values) refuses("list", "k", value, path);
    refuses("list", "k", "x", path + nul);
    EXPECT_EQ(contents(), before);
}

TEST_F(IniFiles, FailuresSayWhatIsMissing) {
    const CString nowhere = path + "\\no folder\\x.ini";
    const Outcome absent = read("the key");
    EXPECT_STREQ(absent.value, "Settings not found");
    write("present", "1");
    const std::pair<Outcome, CString> failures[] = {
        {absent, path},
        {read("the key"), path},
        {call(&quoru_ini_file_operations, kWrite, "list", "the key", "0,0,80", nowhere), nowhere},
    };
    for (const auto& [failed, file] : failures) {
        EXPECT_EQ(failed.result, 0);
        for (const LPCSTR part : {"\"the key\"", "\"list\"", file.GetString()})
            EXPECT_GE(failed.error.Find(part), 0) << failed.error.GetString();
    }
    for (const Outcome& failed : {call(&quoru_appdata_ini_file_operations, kWrite, "s", "k", "kept", ""),
                                  call(&quoru_ini_file_operations, 2, "list", "k", "kept", path)}) {
        EXPECT_EQ(failed.result, 0);
        EXPECT_STREQ(failed.value, "kept");
        EXPECT_FALSE(failed.error.IsEmpty());
    }
}

TEST_F(IniFiles, BareNamesLieBesideTheExecutableOrInTheUsersFolder) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    *(std::strrchr(program, '\\') + 1) = '\0';
    const CString users = CString(std::getenv("APPDATA")) + "\\tools_tests\\";
    const struct {
        IniFunction function, other;
        CString path;
    } rows[] = {{&quoru_ini_file_operations, &quoru_appdata_ini_file_operations, program + name},
                {&quoru_appdata_ini_file_operations, &quoru_ini_file_operations, users + name}};
    for (const auto& row : rows) {
        ASSERT_EQ(call(row.function, kWrite, "MultiMonitor Settings", "Dialog", "YES", name).result, 1);
        EXPECT_STREQ(call(row.function, kRead, "MultiMonitor Settings", "Dialog", "", name).value, "YES");
        EXPECT_STREQ(call(row.function, kRead, "MultiMonitor Settings", "Dialog", "", row.path).value, "YES");
        EXPECT_EQ(call(row.other, kRead, "MultiMonitor Settings", "Dialog", "", name).result, 0) << "another folder";
        EXPECT_TRUE(DeleteFileA(row.path));
    }
    RemoveDirectoryA(users);
}

}  // namespace
