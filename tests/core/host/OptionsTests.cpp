#include <gtest/gtest.h>

#include <sstream>

#include "host/core/Options.h"
#include "tests/core/host/HostTestTools.h"

using namespace terminal;

namespace {

// Words parted by blanks; "''" is an empty argument.
ParsedOptions parse(const std::string& line) {
    std::vector<std::string> words;
    std::istringstream in(line);
    for (std::string word; in >> word;) words.push_back(word == "''" ? "" : word);
    std::vector<const char*> arguments;
    for (const std::string& word : words) arguments.push_back(word.c_str());
    return parseOptions(static_cast<int>(arguments.size()), arguments.data(), {"find", "layout"});
}

TEST(Options, DefaultsAreWhatTheHelpSays) {
    const Options options = parse("").options;
    EXPECT_FALSE(options.tape);
    EXPECT_FALSE(options.headless);
    EXPECT_EQ(options.speed.factor, 1);
    EXPECT_FALSE(options.speed.max);
    EXPECT_EQ(options.outDirectory, "out");
    EXPECT_EQ(options.instruments, 500);
    EXPECT_EQ(options.keep, 100'000);
    EXPECT_FALSE(secondsToRun(options));
    EXPECT_EQ(secondsToRun(parse("--headless").options), 15);
    EXPECT_EQ(secondsToRun(parse("--headless --seconds 3").options), 3);
}

TEST(Options, AllOfThemAreRead) {
    const ParsedOptions parsed = parse(
        "--tape a.csv:SYM --speed 2.5 --seconds 20 --headless --out pictures --seed 9 "
        "--instruments 10 --keep 5 --record b.tape --proof layout --self-test-fault");
    ASSERT_EQ(parsed.error, "");
    const Options& options = parsed.options;
    EXPECT_EQ(options.tape->file, "a.csv");
    EXPECT_EQ(options.tape->symbol, "SYM");
    EXPECT_EQ(options.speed.factor, 2.5);
    EXPECT_EQ(options.seconds, 20);
    EXPECT_TRUE(options.headless);
    EXPECT_EQ(options.outDirectory, "pictures");
    EXPECT_EQ(options.seed, 9u);
    EXPECT_EQ(options.instruments, 10);
    EXPECT_EQ(options.keep, 5);
    EXPECT_EQ(options.recordFile, "b.tape");
    EXPECT_EQ(options.proof, "layout");
    EXPECT_TRUE(options.selfTestFault);
    EXPECT_TRUE(parse("--speed max").options.speed.max);
    EXPECT_EQ(parse("--keep 1 --keep=2").options.keep, 2);
    EXPECT_EQ(parse("--tape=a=b.csv:c").options.tape->file, "a=b.csv");
}

TEST(Options, MistakesNameTheOptionWhatWasFoundAndWhatWasExpected) {
    const std::pair<const char*, const char*> cases[] = {
        {"--speed fast", "--speed: found \"fast\", expected a number above 0 and up to 1000000, or max"},
        {"--speed 0", "--speed: found \"0\", expected a number above 0 and up to 1000000, or max"},
        {"--speed -1", "--speed: found \"-1\", expected a number above 0 and up to 1000000, or max"},
        {"--speed nan", "--speed: found \"nan\", expected a number above 0 and up to 1000000, or max"},
        {"--speed 1e300", "--speed: found \"1e300\", expected a number above 0 and up to 1000000, or max"},
        {"--speed 1x", "--speed: found \"1x\", expected a number above 0 and up to 1000000, or max"},
        {"--speed", "--speed: found nothing after it, expected a number above 0 and up to 1000000, or max"},
        {"--seconds 0", "--seconds: found \"0\", expected a whole number from 1 to 1000000"},
        {"--seconds 1.5", "--seconds: found \"1.5\", expected a whole number from 1 to 1000000"},
        {"--instruments -3", "--instruments: found \"-3\", expected a whole number from 1 to 1000000"},
        {"--keep 99999999999999999999",
         "--keep: found \"99999999999999999999\", expected a whole number from 1 to 10000000"},
        {"--seed x", "--seed: found \"x\", expected a whole number from 0 to 18446744073709551615"},
        {"--tape a.csv:", "--tape: found \"a.csv:\", expected FILE or FILE:SYMBOL"},
        {"--tape :SYM", "--tape: found \":SYM\", expected FILE or FILE:SYMBOL"},
        {"--tape", "--tape: found nothing after it, expected FILE or FILE:SYMBOL"},
        {"--out ''", "--out: found \"\", expected a directory"},
        {"--tape --seconds 2", "--tape: found \"--seconds\", expected FILE or FILE:SYMBOL"},
        {"--out --headless", "--out: found \"--headless\", expected a directory"},
        {"--record=--x", "--record: found \"--x\", expected a file"},
        {"--headless --proof nothing", "--proof: found \"nothing\", expected find or layout"},
        {"--proof", "--proof: found nothing after it, expected find or layout"},
        {"--proof find", "--proof: found \"find\", expected --headless with it"},
        {"--headless=1", "--headless: found \"1\", expected no value"},
        {"--out=", "--out: found \"\", expected a directory"},
        {"--bogus=1", "unknown option \"--bogus\"; --help lists them"},
        {"--bogus", "unknown option \"--bogus\"; --help lists them"},
        {"a.csv", "unknown option \"a.csv\"; --help lists them"},
        {"--keep x --speed y", "--keep: found \"x\", expected a whole number from 1 to 10000000"},
    };
    for (const auto& [line, error] : cases) EXPECT_EQ(parse(line).error, error) << line;
}

TEST(Options, FilesAreCheckedBeforeAnythingOpens) {
    const test::TestFile good("Time,Price,Volume\n09:30:00,1,1\n"), bad("nonsense\n");
    auto check = [](const std::string& line) { return checkFiles(parse(line).options); };
    EXPECT_EQ(check("--tape " + good.name), "");
    EXPECT_EQ(check("--tape " + good.name + " --record no-such-file.tape"), "");
    EXPECT_EQ(check("--record " + good.name), "");
    EXPECT_TRUE(check("--tape " + bad.name).starts_with(bad.name + ": line 1: "));
    for (const std::string& record : {good.name, "./" + good.name}) {
        EXPECT_EQ(check("--tape " + good.name + " --record " + record),
                  "--record: found \"" + record + "\", expected another file than the tape's");
    }
}

TEST(Options, TheSymbolFollowsTheLastColonThatIsNoDriveLetters) {
    struct {
        const char *text, *file, *symbol;
    } const cases[] = {
        {"trades.csv", "trades.csv", "trades"},
        {"a/b.c/trades-2012.x.csv", "a/b.c/trades-2012.x.csv", "trades-2012.x"},
        {"a\\trades.csv", "a\\trades.csv", "trades"},
        {"trades.csv:ABC", "trades.csv", "ABC"},
        {"a:b.csv:ABC", "a:b.csv", "ABC"},
        {"C:\\data\\trades.csv", "C:\\data\\trades.csv", "trades"},
        {"C:trades.csv", "C:trades.csv", "trades"},
        {"z:/trades.csv:A B", "z:/trades.csv", "A B"},
        {"ab:c", "ab", "c"},
        {"1:c", "1", "c"},
        {"folder/.hidden", "folder/.hidden", ".hidden"},
        {"noextension", "noextension", "noextension"},
        {"folder/", "folder/", ""},
    };
    for (const auto& c : cases) {
        const TapeName name = splitTapeName(c.text);
        EXPECT_EQ(name.file, c.file) << c.text;
        EXPECT_EQ(name.symbol, c.symbol) << c.text;
    }
}

}  // namespace
