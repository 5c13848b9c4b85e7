#include "host/core/Simulator.h"
#include "host/core/Tape.h"
#include "host/core/TapeRecorder.h"
#include "tests/core/host/HostTestTools.h"

#include <gtest/gtest.h>

using namespace terminal;
using namespace terminal::test;
using namespace std::string_literals;

namespace {

struct Replay {
    EventLog log;
    std::string error;  // empty where the tape came to its end
    std::int64_t ticks = 0;
};

Replay replay(const std::string& file) {
    Replay result;
    Feed feed(openTape({file, "SYM"}), {.max = true});
    SetClock clock;
    while (feed.state() == FeedState::running) feed.take(clock, {}, result.log);
    result.error = feed.error();
    result.ticks = feed.ticksTaken();
    EXPECT_EQ(feed.state(), result.error.empty() ? FeedState::ended : FeedState::failed);
    EXPECT_EQ(feed.tally().faults(), 0);
    return result;
}

const std::string trades = "Time,Price,Volume\n";
const std::string own = "quor-tape 1\n";
const std::string ownWithOne = own + "1970-01-01 00:00:00;I0,0.05,2,EQ,ONE\n";
const std::string at = "1970-01-01 00:00:01;";

TEST(Tape, TradesGiveTradesAndTheFiguresOfTheSession) {
    const TestFile file(trades +
                        "2012-06-21 09:30:00.5,2205100,10\n2012-06-21 09:30:01,221.75,20\n"
                        "2012-06-21 09:30:02,2190000,1\n");
    const Replay result = replay(file.name);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.ticks, 3);
    EXPECT_EQ(result.log.all<Instrument>().at(0).symbol, "SYM");
    const auto done = result.log.all<Trade>();
    ASSERT_EQ(done.size(), 3u);
    EXPECT_EQ(done[1], (Trade{0, 221'75000000, 20, 1'340'271'001'000'000'000}));
    Quote quote;
    for (const Quote& news : result.log.all<Quote>()) mergeQuote(quote, news);
    EXPECT_EQ((std::vector{quote.open, quote.high, quote.low, quote.last, Price{quote.volume}}),
              (std::vector<Price>{220'51000000, 221'75000000, 219'00000000, 219'00000000, 31}));
    EXPECT_DOUBLE_EQ(quote.value, 220.51 * 10 + 221.75 * 20 + 219);
}

TEST(Tape, SnapshotsGiveTheLevelsThatChanged) {
    const TestFile file(
        "100,5,90,6,101,7,-9999999999,8\n"
        "100,5,91,6,101,0,89,1\n"
        "100,5,91,6,9999999999,3,89,1\n");
    const Replay result = replay(file.name);
    EXPECT_EQ(result.ticks, 3);
    EXPECT_EQ(result.log.all<Instrument>()[0].bookLevels, 2);
    const std::vector<BookLevel> expected = {
        {0, Side::sell, 0, 1'000'000, 5}, {0, Side::buy, 0, 900'000, 6},   {0, Side::sell, 1, 1'010'000, 7},
        {0, Side::buy, 0, 910'000, 6},    {0, Side::sell, 1, kNoPrice, 0}, {0, Side::buy, 1, 890'000, 1},
    };
    EXPECT_EQ(result.log.all<BookLevel>(), expected);
    EXPECT_TRUE(result.log.ticks[2].events.empty());
    EXPECT_EQ(result.log.ticks[2].time, 2'000'000);
    const Quote best = result.log.all<Quote>()[1];
    EXPECT_EQ(best.fields, quoteBid | quoteBidSize);
    EXPECT_EQ(best.bid, 910'000);
}

// What a reader must live with; the number is that of the ticks.
TEST(Tape, OddButGoodFilesAreRead) {
    const std::pair<std::string, int> cases[] = {
        {trades + "09:30:00,1,1", 1},
        {"Time,Price,Volume\r\n09:30:00,1,1\r", 1},
        {"\xEF\xBB\xBF" + trades + "09:30:00,1,1\n", 1},
        {"\n\n" + trades + "\n09:30:00,1,1\n\n\n", 1},
        {"9999999999,0,-9999999999,0\r\n", 1},
        {ownWithOne + at + "T0,1.5,7\n1970-01-01 00:00:02\n", 3},
    };
    for (const auto& [bytes, ticks] : cases) {
        const TestFile file(bytes);
        EXPECT_EQ(checkTape({file.name, "SYM"}), "") << bytes;
        const Replay result = replay(file.name);
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.ticks, ticks) << bytes;
    }
}

TEST(Tape, BadLinesAreNamedWithWhatWasFoundAndExpected) {
    const std::pair<std::string, const char*> cases[] = {
        // what follows the file's name
        {"", " is empty; expected a tape"},
        {"\0\0\0"s, ": line 1: first line: found \"\\x00\\x00\\x00\", expected"},
        {"1,2,3\n",
         ": line 1: first line: found \"1,2,3\", expected \"quor-tape 1\", \"Time,Price,Volume\" or a book snapshot of "
         "whole numbers"},
        {trades + "09:30:00,1\n", ": line 2: line: found \"09:30:00,1\", expected three fields: time, price, volume"},
        {trades + "\n9:30,1,1\n", ": line 3: time: found \"9:30\", expected a time such as"},
        {trades + "09:30:00,12x,1\n", ": line 2: price: found \"12x\", expected an integer of 1/10000"},
        {"1,2,3,4\n1,2,3,4,5,6,7,8\n", ": line 2: line of 8 fields: found \"1,2,3,4,5,6,7,8\", expected 4 fields"},
        {"1,2,3,4,5,6,7,8\n1,2,3,4,1.5,6,7,8\n", ": line 2: price of ask 2: found \"1.5\", expected an integer"},
        {own + at + "\xFFZ\n", ": line 2: event: found \"\\xFFZ\", expected an event that begins with"},
        {own + at + "T0,1,1\n", ": line 2: instrument: found \"0\", expected the number of an announced instrument"},
        {own + at + "I1,0,0,EQ,A\n", ": line 2: instrument: found \"1\", expected the next number in turn"},
        {own + at + "I0,0,0,EQ,A%00\n", ": line 2: symbol: found \"A%00\""},
        {own + at + "X1\n", ": line 2: order: found \"1\", expected the number of a live order"},
        {ownWithOne + at + "O1,0,B,5,7;O1,0,B,5,7\n",
         ": line 3: order: found \"1\", expected a number that no live order has"},
        {ownWithOne + at + "O1,0,C,5,1\n", ": line 3: side: found \"C\", expected B or S"},
        {ownWithOne + at + "O1,0,B,5,1;X1;M1,5,1\n",
         ": line 3: order: found \"1\", expected the number of a live order"},
        {ownWithOne + at + "T0,5\n", ": line 3: event: found \"T0,5\", expected more fields"},
        {ownWithOne + at + "T0,5,1,1\n", ": line 3: event: found \"T0,5,1,1\", expected fewer fields"},
        {ownWithOne + at + "Q0,unan\n", ": line 3: value: found \"nan\", expected a number"},
        {ownWithOne + at + "L0,B,2,5,1\n", ": line 3: level: found \"2\", expected a level of the instrument's book"},
        {ownWithOne + at + "L0,B,0,-,1\n", ": line 3: event: found \"L0,B,0,-,1\", expected size 0 with the price -"},
    };
    for (const auto& [bytes, message] : cases) {
        const TestFile file(bytes);
        const std::string error = checkTape({file.name, "SYM"});
        EXPECT_TRUE(error.starts_with(file.name + message)) << error << "\n  not " << message;
        const Replay result = replay(file.name);
        EXPECT_EQ(result.error, error);
    }
    EXPECT_EQ(checkTape({"no/such.csv", "SYM"}), "no/such.csv cannot be opened for reading");
    EXPECT_EQ(replay("no/such.csv").error, "no/such.csv cannot be opened for reading");
}

TEST(Tape, LinesUpToTheLongestAreReadWhereverTheBufferEnds) {
    const std::string number(kLongestTapeLine - 12, '0');
    const std::string longest = "09:30:00," + number + "1,1";
    ASSERT_EQ(longest.size(), kLongestTapeLine);
    std::string bytes = trades;
    for (int i = 0; i < 3; ++i) bytes += longest + (i == 1 ? "\r\n" : "\n") + "09:30:01,1,1\n";
    const auto price = [](int i) { return 1 + i * 37 % 100'000; };
    for (int i = 0; i < 60'000; ++i) bytes += "09:30:00," + std::to_string(price(i)) + ",1\n";
    const TestFile good(bytes);
    const Replay result = replay(good.name);
    EXPECT_EQ(result.error, "");
    const auto done = result.log.all<Trade>();
    ASSERT_EQ(done.size(), 60'006u);
    for (int i = 0; i < 60'000; ++i) ASSERT_EQ(done[static_cast<std::size_t>(i) + 6].price, price(i) * 10'000) << i;
    const TestFile bad(trades + "0" + longest + "\n");
    EXPECT_NE(replay(bad.name).error.find(": line 2: line: found \"009:30:00,"), std::string::npos);
    EXPECT_TRUE(replay(bad.name).error.ends_with("expected a line of at most 1048576 bytes"));
}

// Runs a source, recording it; the recording gives the same ticks.
void expectRoundTrip(std::unique_ptr<TickSource> source, int ticks) {
    const TestFile file;
    EventLog played;
    TapeRecorder recorder(file.name);
    Feed feed(std::move(source), {.max = true}, &recorder);
    SetClock clock;
    feed.take(clock, {.maxTicks = ticks}, played);
    ASSERT_TRUE(recorder.close()) << recorder.error();
    const Replay result = replay(file.name);
    EXPECT_EQ(result.error, "");
    ASSERT_EQ(played.ticks.size(), result.log.ticks.size());
    for (std::size_t i = 0; i < played.ticks.size(); ++i) {
        ASSERT_EQ(played.ticks[i].time, result.log.ticks[i].time) << i;
        ASSERT_EQ(played.ticks[i].events, result.log.ticks[i].events) << i;
    }
}

TEST(TapeRecorder, ARecordingGivesTheSameTicks) {
    expectRoundTrip(makeSimulator({.seed = 7, .instruments = 20}), 20'000);
    const TestFile tape(trades + "2012-06-21 09:30:00.017460000,2238200,1\n2012-06-21 09:30:00.19,0.00012345,21\n");
    expectRoundTrip(openTape({tape.name, "a,b;c%\n\x7F\xA7 d,"}), 100);
    const TestFile book("1,2,3,4,9999999999,0,-9999999999,0\n1,2,3,4,5,6,2,7\n9999999999,0,-9999999999,0,5,6,2,0\n");
    expectRoundTrip(openTape({book.name, "SYM"}), 100);
}

}  // namespace
