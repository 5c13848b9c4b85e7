// The terminal over its simulator: summary, pictures, self-check, settings, exported entry points.
#include <gtest/gtest.h>

#include <cstdlib>

#include "ChildProcess.h"
#include "Picture.h"
#include "host/panes/Theme.h"

namespace {

// Palette colours are COLORREFs; pictures are 0xRRGGBB.
std::uint32_t rgb(std::uint32_t colour) {
    return ((colour & 0xFF) << 16) | (colour & 0xFF00) | ((colour >> 16) & 0xFF);
}

double number(const std::string& text) { return std::atof(text.c_str()); }

// A pane of text: mostly its background, some of its colours, no single flat area.
void expectReadable(const RunResult& run, const char* file, std::initializer_list<std::uint32_t> colours) {
    const Picture picture = readPicture(run.folder + "\\" + file);
    ASSERT_GT(picture.width, 200) << file;
    ASSERT_GT(picture.height, 100) << file;
    EXPECT_GT(picture.distinctColours(), 8u) << file;
    for (const std::uint32_t colour : colours) {
        EXPECT_GT(picture.shareOf(rgb(colour)), 0.0005) << file << " lacks colour " << std::hex << colour;
        EXPECT_LT(picture.shareOf(rgb(colour)), 0.95) << file << " is nearly all " << std::hex << colour;
    }
}

}  // namespace

namespace terminal {

TEST(TerminalRun, SimulatorRunsItsTimeAndPassesItsSelfCheck) {
    const RunResult run = runTerminal("simulator", "--seconds 3 --seed 7");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.figure("ending"), "time is up");
    EXPECT_EQ(run.figure("instruments"), "500");
    EXPECT_GT(number(run.figure("ticks")), 3'000);
    EXPECT_GT(number(run.figure("rows")), 1'000);
    EXPECT_GT(number(run.figure("repaints")), 5);
    EXPECT_GT(number(run.figure("tick_to_paint_ms_median")), 0);
    EXPECT_LT(number(run.figure("first_row_ms")), 5'000);
    EXPECT_GT(number(run.figure("options_priced")), 30);
    EXPECT_EQ(run.figure("watch_rows_waiting"), "0");
    EXPECT_GE(number(run.figure("feed_behind_ms_max_first_half")), 0);
    EXPECT_NE(run.figure("feed_behind_ms_max_second_half"), "none");
    EXPECT_EQ(run.figure("layouts_restored"), "5/5");
    EXPECT_EQ(run.figure("find_checks"), "19/19");
    expectReadable(run, "terminal.png", {palette::background, palette::surface, palette::up, palette::down});
    expectReadable(run, "watch.png",
                   {palette::background, palette::stripe, palette::symbol, palette::up, palette::down});
    expectReadable(run, "orders.png", {palette::upBack, palette::downBack, palette::up, palette::down});
    expectReadable(run, "trades.png", {palette::background, palette::up, palette::down});
    expectReadable(run, "chain.png",
                   {palette::upBack, palette::downBack, palette::atMoney, palette::surface, palette::symbol});
    for (const char* found : {"find-typed.png", "find-locked.png"})
        expectReadable(run, found, {palette::up, palette::down, 0x20A5DA, 0x82DDEE});
    expectReadable(run, "find-popup.png", {palette::up, palette::down, palette::surface});
    EXPECT_TRUE(run.wrote("terminal.log"));
    EXPECT_TRUE(run.wrote("terminal-settings.ini"));
}

TEST(TerminalRun, FaultOnPurposeFailsTheSelfCheck) {
    const RunResult run = runTerminal("fault", "--seconds 1 --instruments 20 --self-test-fault");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("self-check: orders: rows: shown"), std::string::npos) << run.errors;
}

TEST(TerminalRun, BadCommandLinesEndBeforeAnyWindow) {
    static const char* const lines[] = {"--speed 0", "--seconds x", "--instruments -1", "--no-such-option", "--tape"};
    for (const char* line : lines) {
        const RunResult run = runTerminal("badline", line);
        EXPECT_EQ(run.exitCode, 2) << line;
        EXPECT_NE(run.errors, "") << line;
        EXPECT_FALSE(run.wrote("terminal.log")) << line;
    }
}

TEST(TerminalRun, LayoutIsReadFromTheSettingsAndTheRestOfTheFileIsKept) {
    const std::string other = "[Other]\r\nkey= \xA7 \"two\" \r\n";
    writeTestFile("layout\\terminal-settings.ini", "[Layout]\r\nWatch=0.3000\r\nOrders=nonsense\r\n" + other);
    const RunResult run = runTerminal("layout", "--seconds 1 --instruments 5", KeepSettings::yes);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const std::string text = readFile(run.folder + "\\terminal-settings.ini");
    EXPECT_NE(text.find("Watch=0.3000\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("nonsense"), std::string::npos) << text;
    EXPECT_NE(text.find(other), std::string::npos) << text;
}

TEST(TerminalRun, DamagedSettingsAreToldAndKept) {
    const std::string damaged = "[Layout]\r\nWatch=0.3000\r\n\xFF\xFE garbage\r\n[Other\r\nWatch=0.7000\r\n";
    writeTestFile("damaged\\terminal-settings.ini", damaged);
    const RunResult run = runTerminal("damaged", "--seconds 1 --instruments 5", KeepSettings::yes);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const std::string log = readFile(run.folder + "\\terminal.log");
    EXPECT_NE(log.find("Line 3 of the settings is damaged"), std::string::npos) << log;
    EXPECT_EQ(readFile(run.folder + "\\terminal-settings.ini.damaged"), damaged);
    const std::string text = readFile(run.folder + "\\terminal-settings.ini");
    EXPECT_NE(text.find("Watch=0.3000\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("garbage"), std::string::npos) << text;
}

TEST(TerminalRun, ASecondTerminalTakesAFolderOfItsOwn) {
    const std::string folder = testFolder() + "\\shared", own = folder + "/terminal-2";
    ::DeleteFileA((folder + "\\terminal.log").c_str());
    ::DeleteFileA((own + "/terminal.png").c_str());
    ChildProcess first("\"" + programPath("QuorTerminal.exe") + "\" --instruments 5 --headless --seconds 60 --out \"" +
                       folder + "\"");
    for (int i = 0; i < 1'000 && readFile(folder + "\\terminal.log").empty(); ++i) ::Sleep(10);
    const std::string log = readFile(folder + "\\terminal.log");
    const RunResult second = runTerminal("shared", "--seconds 1 --instruments 5");
    EXPECT_EQ(second.exitCode, 0) << second.errors;
    EXPECT_NE(second.errors.find(folder + " is in use by another terminal; this one uses " + own), std::string::npos)
        << second.errors;
    EXPECT_EQ(readFile(folder + "\\terminal.log").substr(0, log.size()), log) << "the first one's log";
    EXPECT_NE(readFile(own + "/terminal.log").find("in use by another terminal"), std::string::npos);
    for (const char* file : {"/terminal.png", "/terminal-settings.ini"}) EXPECT_NE(readFile(own + file), "") << file;
    first.terminate();
    EXPECT_EQ(runTerminal("shared", "--seconds 1 --instruments 5").errors, "") << "the folder is free again";
}

// The self-check of each run looks at the rows: they stand as the log says.
TEST(TerminalRun, OrdersAreABookFromTheFirstStartAndTheUsersOwnChoiceOutlastsARestart) {
    static const struct {
        const char* stored;
        const char* shown;
    } choices[] = {{"", "locked on Price, falling"},
                   {"SortLockInfo=True,4,-1\r\n", "locked on Qty, rising"},
                   {"SortLockInfo=False,-1,0\r\n", "as they came"}};
    for (const auto& [stored, shown] : choices) {
        writeTestFile("order\\terminal-settings.ini", std::string("[Orders]\r\n") + stored);
        const RunResult run = runTerminal("order", "--seconds 1 --instruments 20", KeepSettings::yes);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_NE(readFile(run.folder + "\\terminal.log").find(std::string(" rows, ") + shown), std::string::npos)
            << shown;
        EXPECT_NE(readFile(run.folder + "\\terminal-settings.ini").find(stored), std::string::npos) << stored;
    }
}

TEST(TerminalHost, EveryEntryPointIsExportedByName) {
    static const char* const names[] = {"pu_get_application_iCon",
                                        "pu_get_peer_data",
                                        "UserSettingMWColumns",
                                        "AddToTabbedLog",
                                        "quoru_call_LoadLibrary",
                                        "FillShadeRect",
                                        "quoru_add_extra_columns",
                                        "MrktWatchGetColumnText",
                                        "UserSetting",
                                        "quoru_get_app_status",
                                        "pu_get_find_menu_item_in_roles",
                                        "IsOptimizedMWUpdate",
                                        "pu_RegisterForWindowDisplayAffinity",
                                        "pu_GetScreenSharingStatus",
                                        "pu_GetDefaultScreenSharingStatus",
                                        "pu_GetAppdataHashCode",
                                        "pu_RemoveWindowFromDispAffinityWindowsMap"};
    const HMODULE host =
        ::LoadLibraryExA(programPath("QuorTerminal.exe").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    ASSERT_NE(host, nullptr);
    for (const char* name : names) EXPECT_NE(::GetProcAddress(host, name), nullptr) << name;
    ::FreeLibrary(host);
}

}  // namespace terminal
