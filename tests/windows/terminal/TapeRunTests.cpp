// The terminal over tapes: the three formats, bad lines, recording and replay.
#include <gtest/gtest.h>

#include <cstdio>

#include "ChildProcess.h"

namespace {

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

}  // namespace

TEST(TerminalTape, TradesTapeAtFullSpeedShowsEveryTrade) {
    const std::string tape = writeTestFile("AMZN.csv", tradesTape(11'419));
    const RunResult run = runTerminal("trades", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.figure("ending"), "end of tape");
    EXPECT_EQ(run.figure("ticks"), "11419");
    EXPECT_EQ(run.figure("rows"), "11420");  // one instrument and its trades; the orders pane stays empty
    EXPECT_EQ(run.figure("find_checks"), "none");
    const std::string log = readFile(run.folder + "\\terminal.log");
    EXPECT_NE(log.find("AMZN: last price 220.51"), std::string::npos) << log;
}

TEST(TerminalTape, OldTradesLeaveBeyondTheNumberToKeep) {
    const std::string tape = writeTestFile("long.csv", tradesTape(30'000));
    const RunResult run = runTerminal("keep", "--speed max --keep 700 --tape \"" + tape + "\":ABC");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.figure("ticks"), "30000");
    EXPECT_EQ(run.figure("rows"), "701");
}

TEST(TerminalTape, SnapshotTapeShowsTheLevels) {
    const std::string tape = writeTestFile("book.csv", snapshotTape(2'500));
    const RunResult run = runTerminal("book", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.figure("ticks"), "2500");
    EXPECT_EQ(run.figure("rows"), "7");  // the instrument and three levels a side
    EXPECT_EQ(run.figure("find_checks"), "19/19");
    const RunResult fault = runTerminal("bookfault", "--self-test-fault --speed max --tape \"" + tape + "\"");
    EXPECT_EQ(fault.exitCode, 1);
}

TEST(TerminalTape, FaultOnATradesTapeIsFound) {
    const std::string tape = writeTestFile("few.csv", tradesTape(100));
    const RunResult run = runTerminal("tradefault", "--self-test-fault --speed max --tape \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("trades"), std::string::npos) << run.errors;
}

TEST(TerminalTape, BadLineNearTheStartEndsBeforeAnyWindow) {
    const std::string tape = writeTestFile("bad.csv", tradesTape(500) + "2012-06-21 10:00:00,cheap,5\n");
    const RunResult run = runTerminal("bad", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("bad.csv"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("502"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("cheap"), std::string::npos) << run.errors;
    EXPECT_FALSE(run.wrote("terminal.png"));
}

TEST(TerminalTape, BadLineFurtherOnStopsTheFeedAndKeepsTheWindows) {
    const std::string tape = writeTestFile("late.csv", tradesTape(1'500) + "2012-06-21 10:00:00,cheap,5\n" + "x\n");
    const RunResult run = runTerminal("late", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.figure("ending"), "bad line");
    EXPECT_EQ(run.figure("ticks"), "1500");
    EXPECT_TRUE(run.wrote("terminal.png"));
    EXPECT_NE(readFile(run.folder + "\\terminal.log").find("1502"), std::string::npos);
    EXPECT_EQ(run.errors.find("self-check"), std::string::npos) << run.errors;  // what came before it holds
}

TEST(TerminalTape, FilesAndFoldersMayBeNamedOutsideTheCodePage) {
    const std::string name = "\xD1\x86\xD0\xB5\xD0\xBD\xD1\x8B";
    const std::string tape = writeTestFile(name + ".csv", tradesTape(100)),
                      record = testFolder() + "\\" + name + ".tape";
    const RunResult run = runTerminal(name, "--speed max --tape \"" + tape + "\" --record \"" + record + "\"");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.figure("ticks"), "100");
    for (const char* file : {"terminal.png", "terminal-settings.ini"}) EXPECT_TRUE(run.wrote(file)) << file;
    EXPECT_NE(readFile(run.folder + "\\terminal.log").find("Feed: " + tape), std::string::npos);
    EXPECT_NE(readFile(record).find("quor-tape 1"), std::string::npos);

    const std::string missing = testFolder() + "\\" + name + "2.csv";
    const RunResult refused = runTerminal("refused", "--tape \"" + missing + "\"");
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_NE(refused.errors.find(missing), std::string::npos) << refused.errors;
}

TEST(TerminalTape, RecordedRunReplaysTheSame) {
    const std::string tape = testFolder() + "\\recorded.tape";
    const RunResult first = runTerminal("record", "--seconds 2 --instruments 50 --seed 3 --record \"" + tape + "\"");
    ASSERT_EQ(first.exitCode, 0) << first.errors;
    const RunResult second = runTerminal("replay", "--speed max --tape \"" + tape + "\"");
    EXPECT_EQ(second.exitCode, 0) << second.errors;
    EXPECT_EQ(second.figure("ticks"), first.figure("ticks"));
    EXPECT_EQ(second.figure("rows"), first.figure("rows"));
    EXPECT_EQ(second.figure("instruments"), first.figure("instruments"));
}
