// A terminal with a user ends: by its window, by the end of the session, by a kill, with windows that go before it
// does, with a settings file that another program holds. Whenever that is, each stored setting is the one that stood
// before the run, or the one that the user has made of it, and none is gone.
#include <windows.h>
#include <gtest/gtest.h>
// Needs what windows.h declares.
#include "ChildProcess.h"
#include "host/resource/resource.h"
#include "quor/list/ListCommands.h"
#include "quor/resource/resource.h"
#include "tests/support/Rounds.h"

#include <commctrl.h>
#include <filesystem>
#include <map>
#include <random>
#include <regex>
#include <sstream>
#include <utility>

namespace terminal {
namespace {

using Layout = std::map<std::string, std::string>;  // "section|key" to value

const std::string folder = testFolder() + "\\ends";
const std::string settingsPath = folder + "\\terminal-settings.ini";

constexpr std::pair<int, const char*> lists[] = {{IDC_WATCH, "MarketWatchNew_Market|COLUMNPROFILE"},
                                                 {IDC_ORDERS, "Orders|COLUMNPROFILE"},
                                                 {IDC_TRADES, "Trades|COLUMNPROFILE"},
                                                 {IDC_CHAIN, "Option chain|COLUMNPROFILE"}};

// Index, place, width; the texts of a user column.
const std::regex profiledColumn("(-?\\d+,(-?\\d+),)(\\d+)((?:,[^,#]*#[^,]*)?,?)");

// A column profile with another width for the column at a place.
std::string withWidth(const std::string& profile, int place, int width) {
    std::string made;
    for (std::sregex_iterator at(profile.begin(), profile.end(), profiledColumn), end; at != end; ++at)
        made += at->str(1) + (at->str(2) == std::to_string(place) ? std::to_string(width) : at->str(3)) + at->str(4);
    return made;
}

// The last column on screen is as wide as its pane lets it be, which is nobody's choice.
std::string withoutRoom(const std::string& profile) {
    int last = -1;
    for (std::sregex_iterator at(profile.begin(), profile.end(), profiledColumn), end; at != end; ++at)
        last = (std::max)(last, std::stoi(at->str(2)));
    return withWidth(profile, last, 0);
}

Layout storedLayout(const std::string& path = settingsPath) {
    Layout layout;
    std::string section;
    const std::string text = readFile(path);
    static const std::regex line("\\[([^\\]\r\n]*)\\]|([^=\r\n]+)=([^\r\n]*)");
    for (std::sregex_iterator at(text.begin(), text.end(), line), end; at != end; ++at)
        if ((*at)[1].matched)
            section = at->str(1);
        else
            layout[section + "|" + at->str(2)] = at->str(2) == "COLUMNPROFILE" ? withoutRoom(at->str(3)) : at->str(3);
    std::erase_if(layout, [](const auto& entry) { return entry.first.find("|Filled") != std::string::npos; });
    return layout;
}

// Another program, such as a scanner, that has the settings file open.
Handle holdSettings() {
    return {::CreateFileA(settingsPath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr),
            &::CloseHandle};
}

// The terminal, with its windows in reach.
class UserTerminal {
public:
    UserTerminal()
        : m_process("\"" + programPath("QuorTerminal.exe") + "\" --instruments 20 --out \"" + folder + "\"",
                    folder + ".stdout", folder + ".stderr") {}

    // The one whose title begins with, or without a blank at its end is, `title`.
    HWND window(const std::string& title) const {
        for (HWND found = nullptr; (found = ::FindWindowExA(nullptr, found, nullptr, nullptr));) {
            DWORD process = 0;
            char text[200] = "";
            ::GetWindowThreadProcessId(found, &process);
            ::GetWindowTextA(found, text, sizeof text);
            const bool fits = title.ends_with(' ') ? std::string(text).starts_with(title) : text == title;
            if (process == m_process.id() && fits) return found;
        }
        return nullptr;
    }
    // The frame, shown or not yet; null: there is none.
    HWND frame() const { return window("Quor Terminal - "); }
    // Until the terminal shows itself.
    bool waitForFrame() const {
        for (int i = 0; i < 6'000 && !::IsWindowVisible(frame()); ++i) ::Sleep(10);
        return frame() != nullptr;
    }
    std::vector<HWND> children() const {
        std::vector<HWND> all;
        const auto add = [](HWND child, LPARAM to) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(to)->push_back(child);
            return TRUE;
        };
        if (const HWND parent = frame()) ::EnumChildWindows(parent, add, reinterpret_cast<LPARAM>(&all));
        return all;
    }
    // True: the terminal has done with it.
    static bool send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        DWORD_PTR result = 0;
        return ::SendMessageTimeoutA(to, message, wParam, lParam, SMTO_NORMAL, 30'000, &result) != 0;
    }
    HWND child(int id) const {
        for (const HWND child : children())
            if (::GetDlgCtrlID(child) == id) return child;
        return nullptr;
    }
    bool setWidth(int id, int place, int width) const {
        const HWND list = child(id);
        return list && send(list, LVM_SETCOLUMNWIDTH, place, MAKELPARAM(width, 0));
    }
    void close() const { ::PostMessageA(frame(), WM_CLOSE, 0, 0); }
    void kill() { m_process.terminate(); }
    // The exit code; message boxes on the way are answered and counted.
    int wait() {
        for (int i = 0; i < 3'000; ++i) {
            if (const int code = m_process.wait(0); code != -1) return code;
            if (const HWND box = window("Quor Terminal"); box && box != std::exchange(m_answered, box)) {
                ++boxes;
                ::PostMessageA(box, WM_CLOSE, 0, 0);
            }
            ::Sleep(20);
        }
        return -1;
    }

    int boxes = 0;

private:
    ChildProcess m_process;
    HWND m_answered = nullptr;
};

// The user's changes, and what they make of the layout.
void changeWidths(const UserTerminal& terminal, std::mt19937& random, Layout& present) {
    for (const auto& [id, profile] : lists) {
        const int place = static_cast<int>(random() % 3), width = 60 + static_cast<int>(random() % 60);
        if (terminal.setWidth(id, place, width)) present[profile] = withWidth(present[profile], place, width);
    }
}

struct TerminalEnd : testing::Test {
    // A layout with all that a list can keep, as a complete run leaves it.
    static void SetUpTestSuite() {
        writeTestFile("ends\\terminal-settings.ini",
                      "[Layout]\r\nBottom=0.6000\r\nLogShown=1\r\n"
                      "[Orders]\r\nCOLUMNPROFILE=0,1,84,1,2,92,2,0,50,3,3,96,4,4,90,5,-1,0,6,5,110,"
                      "9,6,70,Five# 2+3# 2+3,10,-1,0,Seven# 7# 7\r\n"
                      "SortLockInfo=True,9,-1\r\nGridLine=true\r\n"
                      "[Trades]\r\nCOLUMNPROFILE=0,1,84,1,-1,0,2,0,92,3,2,96,4,3,84,5,4,90\r\n"
                      "[watch]\r\nother=kept\r\n"
                      "[MarketWatchNew_Futures]\r\nCOLUMNPROFILE=0,0,92,1,1,52\r\n"
                      "[MarketWatchNew_Market]\r\nAutoSortTicked=true\r\nAutoSort=2\r\nAutoSortOrder=1\r\n"
                      "COLUMN_SORT_ORDER_PROFILE=Series->-1,Last->1#0\r\n");
        const DWORD begin = ::GetTickCount();
        UserTerminal first;
        ASSERT_TRUE(first.waitForFrame());
        s_start = ::GetTickCount() - begin;
        for (int i = 0; i < 1'000 && storedLayout()["Workspace 1|Orders Columns"].empty(); ++i) ::Sleep(10);
        ASSERT_NE(storedLayout()["Workspace 1|Orders Columns"], "") << "layouts are stored as long as it runs";
        first.close();
        ASSERT_EQ(first.wait(), 0);
        const std::string text = readFile(settingsPath);
        for (const char* kept : {",5,-1,0,6,5,110,9,6,70,Five# 2+3# 2+3,10,-1,0,Seven# 7# 7\r\n",
                                 "SortLockInfo=True,9,-1\r\n", "AutoSort=2\r\n"})
            ASSERT_NE(text.find(kept), std::string::npos) << kept << text;
    }

    static inline DWORD s_start = 0;  // milliseconds until the terminal shows itself
};

TEST_F(TerminalEnd, AtAnyMomentLeavesNoPoorerLayout) {
    const unsigned seed = test::anySeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    enum End { kill, session, windowGoes, close, ends };
    const long rounds = test::rounds("QUOR_END_ROUNDS", 160);
    for (long round = 0; round < rounds; ++round) {
        const auto end = static_cast<End>(round % ends);
        const Layout before = storedLayout();
        Layout present = before;
        UserTerminal terminal;
        const bool plain = round < ends, early = !plain && random() % 2 != 0;  // one of each first, plain
        if (early) {
            ::Sleep(random() % (s_start + s_start / 4));
        } else {
            ASSERT_TRUE(terminal.waitForFrame());
            changeWidths(terminal, random, present);
            ::Sleep(random() % 300);
        }
        const HWND frame = terminal.frame();
        const std::vector<HWND> children = terminal.children();
        const HWND victim = children.empty() ? nullptr : children[random() % children.size()];
        Handle holder = !plain && random() % 4 == 0 ? holdSettings() : Handle{nullptr, &::CloseHandle};
        std::ostringstream what;
        what << "round " << round << ", end " << end << (early ? ", early" : "") << (frame ? "" : ", no frame yet")
             << (holder ? ", held" : "") << ", window " << ::GetDlgCtrlID(victim) << " of " << children.size();
        SCOPED_TRACE(what.str());
        bool whole = false;  // all that the user did is stored
        if (end == kill || !frame) {
            terminal.kill();
        } else if (end == session) {
            UserTerminal::send(frame, WM_ENDSESSION, FALSE);
            EXPECT_TRUE(early || storedLayout() != present) << "it was called off";
            whole = UserTerminal::send(frame, WM_ENDSESSION, TRUE) && !holder;
            if (whole && !early) {  // what is left of the windows' end stores the same
                const std::string bytes = readFile(settingsPath);
                terminal.close();
                EXPECT_EQ(terminal.wait(), 0);
                EXPECT_EQ(readFile(settingsPath), bytes);
            }
            terminal.kill();
        } else {
            if (end == windowGoes) ::PostMessageA(victim, WM_CLOSE, 0, 0);
            ::Sleep(random() % 2 * 100);
            terminal.close();
            const int code = terminal.wait();
            EXPECT_TRUE(code == 0 || code == 1) << code;
            whole = end == close && !holder;
        }
        holder.reset();
        const Layout after = storedLayout();
        for (const auto& [key, value] : before) {
            ASSERT_TRUE(after.contains(key)) << key;
            const std::string& now = after.at(key);
            ASSERT_TRUE(now == present[key] || (!whole && now == value)) << key << "=" << now << ", was " << value;
        }
    }
}

// Closed before the end, open at it, open when the session ends. The dialogs of a list's looks open over their list,
// wherever they stood; the others where they stood.
TEST_F(TerminalEnd, DialogsStandWhereTheyStoodBefore) {
    const struct {
        int list;  // 0: the frame
        WPARAM command;
        const char* title;
        int key;
        bool overList;
    } dialogs[] = {{0, ID_HELP_ABOUT, "About Quor Terminal", IDD_ABOUT, false},
                   {IDC_ORDERS, kCustomizeAppearance, "Customize Appearance :Orders ", IDD_CUSTOMIZE_APPEARANCE, true},
                   {IDC_ORDERS, kUserCustomize, "User Customize Appearance :Orders ", IDD_USER_CUSTOMIZE, true},
                   {IDC_ORDERS, kCommandSetTrendColumns, "Trend Settings", IDD_TREND_SETTINGS, false}};
    for (int run = 0; run < 6; ++run) {
        const int end = run / 2, left = 120 + 10 * end;
        const bool before = run % 2 == 0;
        UserTerminal terminal;
        ASSERT_TRUE(terminal.waitForFrame());
        for (const auto& each : dialogs) {
            SCOPED_TRACE(each.title + std::to_string(run));
            const HWND target = each.list ? terminal.child(each.list) : terminal.frame();
            ASSERT_TRUE(UserTerminal::send(target, WM_COMMAND, each.command));
            const HWND dialog = terminal.window(each.title);
            ASSERT_TRUE(dialog && ::IsWindowVisible(dialog));
            RECT place{}, list{};
            ::GetWindowRect(dialog, &place);
            ::GetWindowRect(target, &list);
            if (before) ::SetWindowPos(dialog, nullptr, left, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
            const bool overList = std::abs(place.left + place.right - list.left - list.right) <= 2;
            const bool stands = place.left == left && place.top == 90;
            EXPECT_TRUE(each.overList ? overList : before || stands) << place.left << " " << place.top;
            if (end == 0) UserTerminal::send(dialog, WM_COMMAND, IDCANCEL);
        }
        if (end == 2) {
            EXPECT_TRUE(UserTerminal::send(terminal.frame(), WM_ENDSESSION, TRUE));
            terminal.kill();
        } else {
            terminal.close();
        }
        terminal.wait();
        const Layout stored = storedLayout(folder + "\\dialogs.ini");
        const std::string record = "90," + std::to_string(left) + ",";
        for (const auto& each : dialogs)
            EXPECT_EQ(!before || stored.at("DIALOG_POSITION|" + std::to_string(each.key)).starts_with(record), true)
                << each.key;
    }
}

TEST_F(TerminalEnd, WaitsForAHeldFileAndTellsWhenItStaysBehind) {
    std::mt19937 random(2);
    for (const bool longer : {false, true}) {
        const Layout before = storedLayout();
        Layout present = before;
        UserTerminal terminal;
        ASSERT_TRUE(terminal.waitForFrame());
        changeWidths(terminal, random, present);
        Handle holder = holdSettings();
        terminal.close();
        if (!longer) {
            for (int i = 0; i < 6'000 && !std::filesystem::exists(settingsPath + ".new"); ++i) ::Sleep(10);
            holder.reset();
        }
        EXPECT_EQ(terminal.wait(), longer ? 1 : 0);
        EXPECT_EQ(terminal.boxes, longer ? 1 : 0);
        holder.reset();
        EXPECT_EQ(storedLayout(), longer ? before : present);
        EXPECT_EQ(readFile(folder + "\\terminal.log").find("could not be written") != std::string::npos, longer);
    }
}

}  // namespace
}  // namespace terminal
