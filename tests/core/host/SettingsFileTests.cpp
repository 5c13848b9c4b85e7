#include "host/core/SettingsFile.h"
#include "tests/support/Rounds.h"
#include "tests/support/TestFile.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace terminal;
using namespace std::string_literals;

namespace {

struct TroubledDisk final : quor::Disk {
    Read read(const Path& path, std::string& bytes) override {
        return unreadable ? Read::failed : Disk::read(path, bytes);
    }
    bool unreadable = false;
};

class SettingsFileTest : public testing::Test {
protected:
    SettingsFile loaded() {
        SettingsFile file(m_disk, m_file.name);
        EXPECT_TRUE(file.load());
        return file;
    }
    SettingsFile loaded(const std::string& bytes) {
        m_file.write(bytes);
        return loaded();
    }
    TroubledDisk m_disk;
    const ::test::TestFile m_file;
};

// Whatever is set comes back byte for byte, at once and from the file; case and blanks make other keys.
TEST_F(SettingsFileTest, RandomValuesComeBack) {
    const char* const sections[] = {"List", "list", "", " a ]b[ ", "\xA7"};
    const char* const keys[] = {"Key", "key", " Key", " Key ", "k0", "k1"};
    const char* const values[] = {"",   " blanks ", "\"quoted\"", "a=b=c",        "[x]",         ";no",
                                  "\t", "\\n",      "\xA7",       "\xEF\xBB\xBF", "\x01\xFF\x7F"};
    const unsigned seed = ::test::anySeed();
    const testing::ScopedTrace told{__FILE__, __LINE__, "QUOR_SEED=" + std::to_string(seed)};
    std::mt19937 random(seed);
    SettingsFile file = loaded("[List]\n[list]\n");
    std::map<std::pair<std::string, std::string>, std::string> model;
    for (int i = 0; i < 2'000; ++i) {
        const std::string section = sections[random() % std::size(sections)], key = keys[random() % std::size(keys)];
        ASSERT_TRUE(file.set(section, key, model[{section, key}] = values[random() % std::size(values)]));
    }
    ASSERT_TRUE(file.save());
    const SettingsFile again = loaded();
    for (const auto& [name, value] : model) {
        EXPECT_EQ(file.get(name.first, name.second), value) << name.first << "|" << name.second;
        EXPECT_EQ(again.get(name.first, name.second), value) << name.first << "|" << name.second;
    }
    EXPECT_FALSE(again.get("LIST", "Key"));
    EXPECT_FALSE(again.get("List", "KEY"));
}

TEST_F(SettingsFileTest, WhatWouldNotComeBackIsRefused) {
    SettingsFile file = loaded("[s]\nk=v\n");
    for (const std::string& value : {"two\nlines"s, "return\r"s, "nul\0"s}) EXPECT_FALSE(file.set("s", "k", value));
    EXPECT_FALSE(file.set("s\n", "k", "v"));
    for (const std::string& key : {""s, "a=b"s, "[k"s, "k\n"s}) EXPECT_FALSE(file.set("s", key, "v")) << key;
    EXPECT_FALSE(file.dirty());
    EXPECT_EQ(file.text(), "[s]\nk=v\n");
}

// What stands in the file before; section "a", key "k" set to "new"; what must stand there after.
TEST_F(SettingsFileTest, EverythingElseStaysWhereItWas) {
    struct {
        std::string before, after;
    } const cases[] = {
        {"", "[a]\r\nk=new\r\n"},
        {"; note\n\n[a]\n; k=no\nk=old\ngarbage\n[b]\nk=b\n", "; note\n\n[a]\n; k=no\nk=new\ngarbage\n[b]\nk=b\n"},
        {"[a]\nj=1\n\n[b]\nk=b", "[a]\nj=1\nk=new\r\n\n[b]\nk=b"},
        {"k=outside\n[a", "k=outside\n[a\r\n[a]\r\nk=new\r\n"},
        {"[a]\nk=1\n[b]\n[a]\nk=2\n", "[a]\nk=new\n[b]\n[a]\nk=2\n"},
        {"[a]\n[b]\n[a]\nj=1\n", "[a]\n[b]\n[a]\nj=1\nk=new\r\n"},
        {"\xEF\xBB\xBF[a]\nk=old\n", "\xEF\xBB\xBF[a]\nk=new\n"},
        {"\0\0\xFF\n[a]\n\0k=1\n=x\n"s, "\0\0\xFF\n[a]\nk=new\r\n\0k=1\n=x\n"s},
    };
    for (const auto& c : cases) {
        SettingsFile file = loaded(c.before);
        EXPECT_EQ(file.text(), c.before);
        ASSERT_TRUE(file.set("a", "k", "new"));
        EXPECT_EQ(file.text(), c.after);
        ASSERT_TRUE(file.save());
        EXPECT_EQ(loaded().get("a", "k"), "new");
    }
}

// The first damaged line, and what is left when all of them are taken out.
TEST_F(SettingsFileTest, LinesThatCannotBeReadAreFoundAndTakenOut) {
    const struct {
        std::string bytes;
        std::size_t line;
        std::string rest;
    } cases[] = {
        {"\xEF\xBB\xBF; note\r\n\r\n # note\n[a]\nk=\n; k=no\nk=v", 0, {}},
        {"[a]\nk=v\ngarbage\n[b]\nk=w\n", 3, "[a]\nk=v\n[b]\nk=w\n"},
        {"k=outside\n[a]\nk=v\n", 1, "[a]\nk=v\n"},
        {"[a]\nk=v\n[b\nk=w\nl=w\n[c]\nl=v\n", 3, "[a]\nk=v\n[c]\nl=v\n"},
        {"[a]\nk=\0v\nl=w\n"s, 2, "[a]\nl=w\n"},
        {"[a]\nk=v\n[b\0]\nl=w\n"s, 3, "[a]\nk=v\n"},
        {std::string(9, '\0') + "\xFF\xFE\n\x01", 1, ""},
    };
    for (const auto& c : cases) {
        SettingsFile file = loaded(c.bytes);
        EXPECT_EQ(file.damagedLine(), c.line) << c.bytes;
        file.dropDamagedLines();
        EXPECT_EQ(file.text(), c.line ? c.rest : c.bytes);
        EXPECT_EQ(file.dirty(), c.line != 0);
        EXPECT_EQ(file.damagedLine(), 0u);
        EXPECT_TRUE(file.set("a", "l", "new"));
        EXPECT_EQ(file.get("a", "l"), "new");
    }
    EXPECT_FALSE(loaded("[a]\n[b\nk=w\n").get("a", "k")) << "it is no key of the section before";
}

TEST_F(SettingsFileTest, WhatCouldNotBeReadIsNotOverwritten) {
    SettingsFile file = loaded("[a]\nk=old\n");
    m_disk.unreadable = true;
    EXPECT_FALSE(file.load());
    EXPECT_TRUE(file.set("a", "k", "new"));
    EXPECT_FALSE(file.save());
    EXPECT_EQ(m_file.bytes(), "[a]\nk=old\n");
}

}  // namespace
