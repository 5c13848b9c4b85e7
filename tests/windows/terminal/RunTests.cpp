// The terminal over its simulator and over tapes: summary, proofs, pictures, self-check, settings, exports.
#include "ChildProcess.h"
#include "host/core/Utf8.h"
#include "host/panes/Theme.h"
#include "quor/platform/proving/WindowCapture.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <unordered_set>

namespace terminal {
namespace {

// Palette colours are COLORREFs; pictures are 0xAARRGGBB.
std::uint32_t pixelOf(std::uint32_t colour) {
    return 0xFF000000u | ((colour & 0xFF) << 16) | (colour & 0xFF00) | ((colour >> 16) & 0xFF);
}

double number(const std::string& text) { return std::atof(text.c_str()); }

void expectIn(const std::string& text, const std::vector<std::string>& parts) {
    for (const std::string& part : parts)
        EXPECT_NE(text.find(part), std::string::npos) << part << " is not in " << text;
}

// A pane of text: mostly its background, some of its colours, no single flat area.
void expectReadable(const RunResult& run, const char* file, std::initializer_list<std::uint32_t> colours) {
    WindowPicture picture;
    ASSERT_TRUE(quorReadPng(wideText(run.folder + "\\" + file).c_str(), picture)) << file;
    ASSERT_GT((std::min)(picture.width, picture.height), 100) << file;
    const auto& pixels = picture.pixels;
    EXPECT_GT(std::unordered_set<std::uint32_t>(pixels.begin(), pixels.end()).size(), 6u) << file;
    for (const std::uint32_t colour : colours) {
        const double share = static_cast<double>(std::count(pixels.begin(), pixels.end(), pixelOf(colour))) /
                             static_cast<double>(pixels.size());
        EXPECT_TRUE(share > 0.0005 && share < 0.95) << share << " of " << file << " is " << std::hex << colour;
    }
}

// `lines` trades, a millisecond apart; the last one at 220.51.
std::string tradesTape(int lines) {
    std::string text = "Time,Price,Volume\n";
    for (int i = 1; i <= lines; ++i) {
        char line[80];
        const int price = i == lines ? 2205100 : 2200000 + (i * 37 % 100) * 100;
        std::snprintf(line, sizeof line, "2012-06-21 09:%02d:%02d.%03d000000,%d,%d\n", 30 + i / 60'000, i / 1000 % 60,
                      i % 1000, price, 1 + i % 300);
        text += line;
    }
    return text;
}

// Order book snapshots of three levels a side; the worst bid is empty in every second line.
std::string snapshotTape(int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        char line[200];
        const int move = i % 50 * 100;
        std::snprintf(line, sizeof line, "%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%lld,%d\n", 2239500 + move, 100 + i,
                      2231800 + move, 100, 2239900 + move, 90, 2230700 + move, 200, 2240000 + move, 220 + i,
                      i % 2 ? -9999999999LL : 2230400, i % 2 ? 0 : 100);
        text += line;
    }
    return text;
}

// As an option of the command line.
std::string taped(const std::string& name, const std::string& text) {
    return " --speed max --tape \"" + writeTestFile(name, text) + "\"";
}

constexpr const char* badLine = "2012-06-21 10:00:00,cheap,5\n";

}  // namespace

TEST(TerminalRun, SimulatorRunsItsTimeAndItsRecordingReplaysTheSame) {
    const std::string tape = testFolder() + "\\simulated.tape";
    const RunResult run = runTerminal("simulator", "--seconds 3 --seed 7 --record \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.figure("ending"), "time is up");
    EXPECT_EQ(run.figure("instruments"), "500");
    const std::pair<const char*, double> figures[] = {
        {"ticks", 3'000}, {"rows", 1'000}, {"repaints", 5}, {"tick_to_paint_ms_median", 0}, {"options_priced", 30}};
    for (const auto& [name, beyond] : figures) EXPECT_GT(number(run.figure(name)), beyond) << name;
    EXPECT_LT(number(run.figure("first_row_ms")), 5'000);
    EXPECT_EQ(run.figure("watch_rows_waiting"), "0");
    for (const char* half : {"first", "second"})
        EXPECT_NE(run.figure("feed_behind_ms_max_" + std::string(half) + "_half"), "none");
    EXPECT_EQ(run.figure("find_checks"), "19/19");
    EXPECT_EQ(run.figure("layouts_restored"), "6/6");
    EXPECT_EQ(run.figure("looks_checks"), "30/30");
    EXPECT_EQ(run.figure("bars_checks"), "39/39");
    using namespace palette;
    expectReadable(run, "terminal.png", {kBackground, kSurface, kUp, kDown});
    expectReadable(run, "watch.png", {kBackground, kStripe, kSymbol, kUp, kDown});
    expectReadable(run, "orders.png", {kUpBack, kDownBack, kUp, kDown});
    expectReadable(run, "trades.png", {kBackground, kUp, kDown});
    expectReadable(run, "positions.png", {kBackground, kText, kRiseFlash, kFallFlash});
    expectReadable(run, "chain.png", {kUpBack, kAtMoney, kSurface});
    expectReadable(run, "looks-trades.png", {0x800000, 0x80FFFF});
    expectReadable(run, "bars-panes.png", {kBackground, kSurface});
    expectReadable(run, "looks-flash.png", {kBackground, kText, 0x408000});
    expectReadable(run, "looks-watch.png", {kSymbol, kUp, kDown, 0x000040});
    for (const char* found : {"find-typed.png", "find-locked.png"})
        expectReadable(run, found, {kUp, kDown, 0x20A5DA, 0x82DDEE});
    expectReadable(run, "find-popup.png", {kUp, kDown, kSurface});
    const RunResult replayed = runTerminal("replay", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(replayed.exitCode, 0) << replayed.errors;
    for (const char* name : {"ticks", "rows", "instruments"})
        EXPECT_EQ(replayed.figure(name), run.figure(name)) << name;
}

TEST(TerminalRun, AProofRunsAloneAndOneWithoutItsGroundFails) {
    const RunResult layout = runTerminal("alone", "--proof layout --seconds 1 --instruments 20");
    EXPECT_EQ(layout.exitCode, 0) << layout.errors;
    EXPECT_EQ(layout.figure("layouts_restored"), "6/6");
    EXPECT_EQ(layout.figure("find_checks"), "none");
    const RunResult find = runTerminal("empty", "--proof find --seconds 1 --speed 0.000001");
    EXPECT_EQ(find.exitCode, 1);
    EXPECT_EQ(find.figure("find_checks"), "none");
    expectIn(find.errors, {"find: it has nothing to prove with; missing: 4 rows in the orders pane"});
}

// Orders are a book from the first start, and the user's own choice outlasts a restart; what is no setting goes, and
// the file with it is kept beside. The self-check of each run looks at the rows: they stand as the log says.
TEST(TerminalRun, SettingsAreReadAndTheRestOfTheFileIsKept) {
    const std::string other = "[Other]\r\nkey= \xA7 \"two\" \r\n";
    const std::pair<std::string, std::string> choices[] = {{"", "locked on Price, falling"},
                                                           {"SortLockInfo=True,4,-1\r\n", "locked on Qty, rising"},
                                                           {"SortLockInfo=False,-1,0\r\n", "as they came"}};
    for (const auto& [stored, shown] : choices) {
        const std::string damaged =
            "[Layout]\r\nWatch=0.3000\r\n\xFF\xFE garbage\r\nMultiMonitor=1\r\n" + other + "[Orders]\r\n" + stored;
        writeTestFile("stored\\terminal-settings.ini", damaged);
        const RunResult run = runTerminal("stored", "--seconds 1 --instruments 20", KeepFolder::yes);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(run.read("terminal-settings.ini.damaged"), damaged);
        expectIn(run.read("terminal.log"), {"Line 3 of the settings is damaged", " rows, " + shown});
        const std::string text = run.read("terminal-settings.ini");
        expectIn(text, {"Watch=0.3000\r\n", "MultiMonitor=1\r\n", other, stored});
        EXPECT_EQ(text.find("garbage"), std::string::npos) << text;
    }
}

TEST(TerminalRun, ASecondTerminalTakesAFolderOfItsOwn) {
    const std::string folder = testFolder() + "\\shared", own = folder + "/terminal-2";
    removeTestFolder("shared");
    ChildProcess first("\"" + programPath("QuorTerminal.exe") + "\" --instruments 5 --headless --seconds 60 --out \"" +
                       folder + "\"");
    std::string log;
    for (int i = 0; i < 1'000 && (log = readFile(folder + "\\terminal.log")).empty(); ++i) ::Sleep(10);
    const RunResult second = runTerminal("shared", "--seconds 1 --instruments 5", KeepFolder::yes);
    EXPECT_EQ(second.exitCode, 0) << second.errors;
    expectIn(second.errors, {folder + " is in use by another terminal; this one uses " + own});
    EXPECT_EQ(readFile(folder + "\\terminal.log").substr(0, log.size()), log) << "the first one's log";
    expectIn(readFile(own + "/terminal.log"), {"in use by another terminal"});
    for (const char* file : {"/terminal.png", "/terminal-settings.ini"}) EXPECT_NE(readFile(own + file), "") << file;
    first.terminate();
    EXPECT_EQ(runTerminal("shared", "--seconds 1 --instruments 5").errors, "") << "the folder is free again";
}

// Files and folders may be named outside the code page.
TEST(TerminalTape, TradesTapeAtFullSpeedShowsEveryTrade) {
    const std::string name = "\xD1\x86\xD0\xB5\xD0\xBD\xD1\x8B", record = testFolder() + "\\" + name + ".tape";
    const RunResult run =
        runTerminal(name, taped(name + ".csv", tradesTape(11'419)) + ":AMZN --record \"" + record + "\"");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.figure("ending"), "end of tape");
    EXPECT_EQ(run.figure("ticks"), "11419");
    EXPECT_EQ(run.figure("rows"), "11420");  // one instrument and its trades; the orders pane stays empty
    for (const char* proof : {"find_checks", "looks_checks"}) EXPECT_EQ(run.figure(proof), "none");
    expectIn(run.read("terminal.log"), {"AMZN: last price 220.51", "Feed: " + testFolder() + "\\" + name + ".csv"});
    for (const char* file : {"terminal.png", "terminal-settings.ini"}) EXPECT_NE(run.read(file), "") << file;
    expectIn(readFile(record), {"quor-tape 1"});
}

TEST(TerminalTape, OldTradesLeaveBeyondTheNumberToKeepAndABookShowsItsLevels) {
    const std::array<std::string, 4> cases[] = {
        {"--keep 700" + taped("long.csv", tradesTape(30'000)), "30000", "701", "none"},
        {taped("book.csv", snapshotTape(2'500)), "2500", "7", "19/19"}};  // the instrument and three levels a side
    for (const auto& [arguments, ticks, rows, checks] : cases) {
        const RunResult run = runTerminal("tape", arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(run.figure("ticks"), ticks);
        EXPECT_EQ(run.figure("rows"), rows);
        EXPECT_EQ(run.figure("find_checks"), checks);
    }
}

TEST(TerminalTape, AFaultOnPurposeFailsTheSelfCheck) {
    const std::pair<std::string, const char*> cases[] = {
        {" --seconds 1 --instruments 20", "self-check: orders: rows: shown"},
        {taped("book.csv", snapshotTape(100)), "self-check: orders: rows: shown"},
        {taped("few.csv", tradesTape(100)), "self-check: trades: rows: shown"}};
    for (const auto& [feed, told] : cases) {
        const RunResult run = runTerminal("fault", "--self-test-fault" + feed);
        EXPECT_EQ(run.exitCode, 1) << feed;
        expectIn(run.errors, {told});
    }
}

TEST(TerminalTape, WhatCannotRunEndsBeforeAnyWindow) {
    const std::string missing = testFolder() + "\\\xD1\x86.csv";
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"--speed 0", {"--speed: found \"0\""}},
        {"--no-such-option", {"--no-such-option"}},
        {"--proof nothing", {"--proof: found \"nothing\", expected find or looks or layout or bars"}},
        {"--tape \"" + missing + "\"", {missing}},
        {taped("bad.csv", tradesTape(500) + badLine), {"bad.csv", "502", "cheap"}}};
    for (const auto& [line, told] : cases) {
        const RunResult run = runTerminal("badline", line);
        EXPECT_EQ(run.exitCode, 2) << line;
        expectIn(run.errors, told);
        for (const char* file : {"terminal.png", "terminal.log"}) EXPECT_EQ(run.read(file), "") << line;
    }
}

TEST(TerminalTape, BadLineFurtherOnStopsTheFeedAndKeepsTheWindows) {
    const RunResult run = runTerminal("late", taped("late.csv", tradesTape(1'500) + badLine + "x\n"));
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.figure("ending"), "bad line");
    EXPECT_EQ(run.figure("ticks"), "1500");
    EXPECT_NE(run.read("terminal.png"), "");
    expectIn(run.read("terminal.log"), {"1502"});
    EXPECT_EQ(run.errors.find("self-check"), std::string::npos) << run.errors;  // what came before it holds
}

TEST(TerminalHost, EveryEntryPointIsExportedByName) {
    std::istringstream names(
        "pu_get_application_iCon pu_get_peer_data UserSettingMWColumns AddToTabbedLog quoru_call_LoadLibrary "
        "FillShadeRect quoru_add_extra_columns MrktWatchGetColumnText UserSetting quoru_get_app_status "
        "pu_get_find_menu_item_in_roles IsOptimizedMWUpdate pu_RegisterForWindowDisplayAffinity "
        "pu_GetScreenSharingStatus pu_GetDefaultScreenSharingStatus pu_GetAppdataHashCode "
        "pu_RemoveWindowFromDispAffinityWindowsMap");
    const HMODULE host =
        ::LoadLibraryExA(programPath("QuorTerminal.exe").c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    ASSERT_NE(host, nullptr);
    for (std::string name; names >> name;) EXPECT_NE(::GetProcAddress(host, name.c_str()), nullptr) << name;
    ::FreeLibrary(host);
}

}  // namespace terminal
