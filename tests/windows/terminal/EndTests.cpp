// A terminal with a user ends: by its window, by the end of the session, by a kill, with windows that go before it
// does, with a settings file that another program holds. Whenever that is, each stored setting is the one that stood
// before the run, or the one that the user has made of it, and none is gone.
#include <gtest/gtest.h>

#include <windows.h>
// Needs what windows.h declares.
#include <commctrl.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <random>
#include <sstream>

#include "ChildProcess.h"
#include "host/resource.h"
#include "tests/support/Rounds.h"

namespace terminal {

namespace {

using Layout = std::map<std::string, std::string>;  // "section|key" to value

const std::string folder = testFolder() + "\\ends";
const std::string settingsPath = folder + "\\terminal-settings.ini";

constexpr struct {
    int id;
    const char* profile;
} lists[] = {{IDC_WATCH, "MarketWatchNew_Market|COLUMNPROFILE"},
             {IDC_ORDERS, "Orders|COLUMNPROFILE"},
             {IDC_TRADES, "Trades|COLUMNPROFILE"},
             {IDC_CHAIN, "Option chain|COLUMNPROFILE"}};

Layout storedLayout() {
    Layout layout;
    std::istringstream text(readFile(settingsPath));
    std::string line, section;
    while (std::getline(text, line)) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.starts_with('[')) section = line.substr(1, line.rfind(']') - 1) + "|";
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) layout[section + line.substr(0, equals)] = line.substr(equals + 1);
    }
    return layout;
}

// A column profile with another width for the column at a place.
std::string withWidth(const std::string& profile, int place, int width) {
    std::istringstream text(profile);
    std::string made, fields[3];
    while (std::getline(text, fields[0], ',')) {
        if (!made.empty()) made += ',';
        if (fields[0].find('#') != std::string::npos) {  // the user part of the column before
            made += fields[0];
            continue;
        }
        std::getline(text, fields[1], ',');
        std::getline(text, fields[2], ',');
        if (fields[1] == std::to_string(place)) fields[2] = std::to_string(width);
        made += fields[0] + "," + fields[1] + "," + fields[2];
    }
    return made;
}

// Another program, such as a scanner, that has the settings file open.
class Holder {
public:
    Holder()
        : m_file(
              ::CreateFileA(settingsPath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(m_file, INVALID_HANDLE_VALUE);
    }
    ~Holder() { letGo(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    void letGo() {
        if (m_file != INVALID_HANDLE_VALUE) ::CloseHandle(m_file);
        m_file = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_file;
};

// The terminal, with its windows in reach.
class UserTerminal {
public:
    UserTerminal()
        : m_process("\"" + programPath("QuorTerminal.exe") + "\" --instruments 20 --out \"" + folder + "\"",
                    folder + ".stdout", folder + ".stderr") {}

    // The frame, shown or not yet; null: there is none.
    HWND frame() const { return window("Quor Terminal - "); }
    // Until the terminal shows itself.
    bool waitForFrame() const {
        for (int i = 0; i < 6'000 && !::IsWindowVisible(frame()); ++i) ::Sleep(10);
        return frame() != nullptr;
    }
    std::vector<HWND> children() const {
        std::vector<HWND> all;
        const HWND parent = frame();
        if (!parent) return all;
        ::EnumChildWindows(
            parent,
            [](HWND child, LPARAM found) {
                reinterpret_cast<std::vector<HWND>*>(found)->push_back(child);
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&all));
        return all;
    }
    // True: the terminal has done with it.
    static bool send(HWND to, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        DWORD_PTR result = 0;
        return ::SendMessageTimeoutA(to, message, wParam, lParam, SMTO_NORMAL, 30'000, &result) != 0;
    }
    bool setWidth(int id, int place, int width) const {
        for (const HWND child : children())
            if (::GetDlgCtrlID(child) == id) return send(child, LVM_SETCOLUMNWIDTH, place, MAKELPARAM(width, 0));
        return false;
    }
    void close() const { ::PostMessageA(frame(), WM_CLOSE, 0, 0); }
    void kill() { m_process.terminate(); }
    // The exit code; message boxes on the way are answered and counted.
    int wait() {
        for (int i = 0; i < 3'000; ++i) {
            if (const int code = m_process.wait(0); code != -1) return code;
            answerBox();
            ::Sleep(20);
        }
        return -1;
    }

    int boxes = 0;

private:
    void answerBox() {
        const HWND box = window("Quor Terminal");
        if (!box || box == m_answered) return;
        m_answered = box;
        ++boxes;
        for (const int button : {IDOK, IDCANCEL})
            if (::GetDlgItem(box, button)) ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }
    struct Search {
        DWORD process;
        std::string title;
        HWND found;
    };
    HWND window(const std::string& title) const {
        Search search{m_process.id(), title, nullptr};
        ::EnumWindows(
            [](HWND window, LPARAM data) {
                Search& wanted = *reinterpret_cast<Search*>(data);
                DWORD process = 0;
                char text[200] = "";
                ::GetWindowThreadProcessId(window, &process);
                ::GetWindowTextA(window, text, sizeof text);
                const bool prefix =
                    wanted.title.ends_with(' ') ? std::string(text).starts_with(wanted.title) : text == wanted.title;
                if (process == wanted.process && prefix) wanted.found = window;
                return wanted.found ? FALSE : TRUE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }

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
        first.close();
        ASSERT_EQ(first.wait(), 0);
        const Layout layout = storedLayout();
        const std::string& orders = layout.at("Orders|COLUMNPROFILE");
        ASSERT_TRUE(orders.ends_with(",5,-1,0,6,5,110,9,6,70,Five# 2+3# 2+3,10,-1,0,Seven# 7# 7")) << orders;
        ASSERT_EQ(layout.at("Orders|SortLockInfo"), "True,9,-1");
        ASSERT_EQ(layout.at("MarketWatchNew_Market|AutoSort"), "2");
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
        const bool early = random() % 2 != 0;
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
        std::optional<Holder> holder;
        if (random() % 4 == 0) holder.emplace();
        std::ostringstream what;
        what << "round " << round << ", end " << end << (early ? ", early" : "") << (frame ? "" : ", no frame yet")
             << (holder ? ", held" : "") << ", window " << ::GetDlgCtrlID(victim) << " of " << children.size();
        SCOPED_TRACE(what.str());
        bool whole = false;  // all that the user did is stored
        if (end == kill || !frame) {
            terminal.kill();
        } else if (end == session) {
            whole = UserTerminal::send(frame, WM_ENDSESSION, TRUE) && !holder;
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
            ASSERT_TRUE(now == present[key] || (!whole && now == value)) << key << "=" << now;
        }
    }
}

TEST_F(TerminalEnd, OfTheSessionStoresWhatTheEndOfTheWindowsWouldStore) {
    std::mt19937 random(1);
    Layout present = storedLayout();
    UserTerminal terminal;
    ASSERT_TRUE(terminal.waitForFrame());
    changeWidths(terminal, random, present);
    ASSERT_TRUE(UserTerminal::send(terminal.frame(), WM_ENDSESSION, FALSE));
    EXPECT_NE(storedLayout(), present) << "it was called off";
    ASSERT_TRUE(UserTerminal::send(terminal.frame(), WM_ENDSESSION, TRUE));
    EXPECT_EQ(storedLayout(), present);
    const std::string bytes = readFile(settingsPath);
    terminal.close();
    EXPECT_EQ(terminal.wait(), 0);
    EXPECT_EQ(readFile(settingsPath), bytes);
}

TEST_F(TerminalEnd, WaitsForAHeldFileAndTellsWhenItStaysBehind) {
    std::mt19937 random(2);
    for (const bool longer : {false, true}) {
        const Layout before = storedLayout();
        Layout present = before;
        UserTerminal terminal;
        ASSERT_TRUE(terminal.waitForFrame());
        changeWidths(terminal, random, present);
        Holder holder;
        terminal.close();
        if (!longer) {
            const std::string beside = settingsPath + ".new";
            for (int i = 0; i < 6'000 && ::GetFileAttributesA(beside.c_str()) == INVALID_FILE_ATTRIBUTES; ++i)
                ::Sleep(10);
            holder.letGo();
        }
        EXPECT_EQ(terminal.wait(), longer ? 1 : 0);
        EXPECT_EQ(terminal.boxes, longer ? 1 : 0);
        holder.letGo();
        EXPECT_EQ(storedLayout(), longer ? before : present);
        const bool told = readFile(folder + "\\terminal.log").find("could not be written") != std::string::npos;
        EXPECT_EQ(told, longer);
    }
}

}  // namespace

}  // namespace terminal
