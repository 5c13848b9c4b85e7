#include "host/core/SettingsFile.h"
#include "host/core/Workspaces.h"
#include "tests/support/TestFile.h"

#include <gtest/gtest.h>

using namespace terminal;
using namespace std::string_literals;

namespace {

Workspace firstOne() {
    return {"Trading", {{"Orders", 0.5}, {"Trades", 0.5}}, {}, "", {{"Orders", {}, -1, false, {}}}};
}

std::string namesOf(const Workspaces& workspaces) {
    std::string names;
    for (std::size_t i = 0; i < workspaces.all().size(); ++i)
        names += (i ? " | " : "") + workspaces.all()[i].name + (i == workspaces.shown() ? "*" : "");
    return names;
}

class WorkspacesTest : public testing::Test {
protected:
    SettingsFile stored(const std::string& bytes) {
        m_file.write(bytes);
        SettingsFile file(m_disk, m_file.name);
        EXPECT_TRUE(file.load());
        return file;
    }
    quor::Disk m_disk;
    const ::test::TestFile m_file;
};

TEST_F(WorkspacesTest, TheShownOneStaysShownWhateverIsDoneToOthers) {
    Workspaces them(firstOne());
    EXPECT_FALSE(them.close(0));
    EXPECT_EQ(them.add(), 1u);
    EXPECT_EQ(them.add(), 2u);
    them.show(1);
    EXPECT_EQ(them.copy(0, 0, "Trading"), 0u);
    EXPECT_EQ(namesOf(them), "Trading (2) | Trading | Workspace 2* | Workspace 3");
    EXPECT_EQ(them.copy(0, 4, ""), 4u);
    EXPECT_EQ(them.all()[4].name, "Trading (3)");
    them.move(2, 4);
    EXPECT_EQ(namesOf(them), "Trading (2) | Trading | Workspace 3 | Trading (3) | Workspace 2*");
    for (const std::string& refused : {""s, "Trading"s, "two\nlines"s}) EXPECT_FALSE(them.rename(4, refused));
    EXPECT_TRUE(them.rename(4, "Mine") && them.rename(4, "Mine"));
    EXPECT_TRUE(them.close(4) && them.close(0));
    EXPECT_EQ(namesOf(them), "Trading | Workspace 3 | Trading (3)*");
    while (them.all().size() < Workspaces::kMost) them.show(them.add());
    EXPECT_EQ(them.add(), them.shown()) << "more would not be read again";
    EXPECT_EQ(them.copy(0, 0, ""), them.shown());
    EXPECT_EQ(them.all().size(), Workspaces::kMost);
}

TEST_F(WorkspacesTest, EverythingComesBackFromTheSettings) {
    Workspaces them(firstOne());
    Workspace changed = firstOne();
    changed.panes = {{"Orders", 0.25, false}, {"Trades", 0.75, true}};
    changed.place = {-10, 20, 800, 600, true};
    changed.watch = "All";
    changed.lists = {{"Orders", {3, 0, 2}, 2, true, {{1, ">5:7"}, {4, ""}, {0, "a,b=c"}}}};
    them.show(them.add());
    them.keep(changed);
    SettingsFile file = stored("");
    them.write(file);
    Workspaces again(firstOne());
    again.read(file);
    EXPECT_EQ(again.shown(), 1u);
    EXPECT_EQ(again.all(), them.all());
    ASSERT_TRUE(them.close(1));
    them.write(file);
    again.read(file);
    EXPECT_EQ(again.all(), them.all()) << "one that was closed stays in the file, and is not read";
}

// What a workspace's section says, and what is read of it.
TEST_F(WorkspacesTest, WhatCannotBeReadStaysAsItWas) {
    const ListChoice list{"Orders", {}, -1, false, {}};
    struct {
        const char* text;
        std::vector<PaneShare> panes;
        ListChoice orders;
    } const cases[] = {
        {"Panes=Orders=x,Trades,Chain=0.5,Trades=nan\nWindow=1,2,3\nOrders Sort=x\n",
         {{"Orders", 0.5, true}, {"Trades", 0.5, true}},
         list},
        {"Panes=Trades=2!,Orders=0\nWindow=1,2,0,4,0\nOrders Columns=1,x,\nOrders Filters=1:9:abc\n",
         {{"Orders", 0.5, true}, {"Trades", 2, false}},
         list},
        {"Orders Columns=2,1,\nOrders Sort=1\nOrders Filters=1:3:abc2:x:y\n",
         {{"Orders", 0.5, true}, {"Trades", 0.5, true}},
         {"Orders", {2, 1}, 1, false, {{1, "abc"}}}},
    };
    for (const auto& [text, panes, orders] : cases) {
        Workspaces them(firstOne());
        them.read(stored("[Workspaces]\nCount=3\nShown=7\n[Workspace 1]\nName=A\n"s + text +
                         "[Workspace 2]\nName=A\n[Workspace 3]\n"));
        EXPECT_EQ(namesOf(them), "A*") << text;
        EXPECT_EQ(them.present().panes, panes) << text;
        EXPECT_EQ(them.present().place, WindowPlace{}) << text;
        EXPECT_EQ(them.present().lists, std::vector{orders}) << text;
    }
    Workspaces none(firstOne());
    none.read(stored("[Workspaces]\nCount=-1\n"));
    EXPECT_EQ(namesOf(none), "Trading*");
}

}  // namespace
