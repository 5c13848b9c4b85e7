#include "host/core/Options.h"
#include "tests/core/host/HostTestTools.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace terminal;
using terminal::test::TestFile;

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

TEST(Options, AllOfThemAreRead) {
    const ParsedOptions parsed = parse(
        "--tape a.csv:SYM --speed 2.5 --seconds 20 --headless --out pictures --seed 9 "
        "--instruments 10 --keep 5 --record b.tape --proof layout --self-test-fault");
    ASSERT_EQ(parsed.error, "");
    const Options& options = parsed.options;
    EXPECT_EQ(options.tape->file + "|" + options.tape->symbol, "a.csv|SYM");
    EXPECT_EQ(options.outDirectory + "|" + options.recordFile + "|" + options.proof, "pictures|b.tape|layout");
    EXPECT_EQ(options.speed.factor, 2.5);
    EXPECT_EQ(secondsToRun(options), 20);
    EXPECT_TRUE(options.headless && options.selfTestFault);
    EXPECT_TRUE(options.seed == 9 && options.instruments == 10 && options.keep == 5);
    EXPECT_TRUE(parse("--speed max").options.speed.max);
    EXPECT_EQ(parse("--keep 1 --keep=2").options.keep, 2);
    EXPECT_EQ(parse("--tape=a=b.csv:c").options.tape->file, "a=b.csv");
    EXPECT_FALSE(secondsToRun(parse("").options));
    EXPECT_EQ(secondsToRun(parse("--headless").options), 15);
}

TEST(Options, MistakesNameTheOptionWhatWasFoundAndWhatWasExpected) {
    const std::pair<const char*, const char*> cases[] = {
        {"--speed 0", "--speed: found \"0\", expected a number above 0 and up to 1000000, or max"},
        {"--speed", "--speed: found nothing after it, expected a number above 0 and up to 1000000, or max"},
        {"--seconds 0", "--seconds: found \"0\", expected a whole number from 1 to 1000000"},
        {"--instruments 1.5", "--instruments: found \"1.5\", expected a whole number from 1 to 1000000"},
        {"--keep 10000001 --speed y", "--keep: found \"10000001\", expected a whole number from 1 to 10000000"},
        {"--tape a.csv:", "--tape: found \"a.csv:\", expected FILE or FILE:SYMBOL"},
        {"--tape --seconds 2", "--tape: found \"--seconds\", expected FILE or FILE:SYMBOL"},
        {"--out ''", "--out: found \"\", expected a directory"},
        {"--headless --proof nothing", "--proof: found \"nothing\", expected find or layout"},
        {"--proof find", "--proof: found \"find\", expected --headless with it"},
        {"--headless=1", "--headless: found \"1\", expected no value"},
        {"--bogus=1", "unknown option \"--bogus\"; --help lists them"}};
    for (const auto& [line, error] : cases) EXPECT_EQ(parse(line).error, error) << line;
}

TEST(Options, FilesAreCheckedBeforeAnythingOpens) {
    const TestFile good("Time,Price,Volume\n09:30:00,1,1\n"), bad("nonsense\n");
    auto check = [](const std::string& line) { return checkFiles(parse(line).options); };
    EXPECT_EQ(check("--tape " + good.name + " --record no-such-file.tape"), "");
    EXPECT_EQ(check("--record " + good.name), "");
    EXPECT_TRUE(check("--tape " + bad.name).starts_with(bad.name + ": line 1: "));
    for (const std::string& record : {good.name, "./" + good.name}) {
        EXPECT_EQ(check("--tape " + good.name + " --record " + record),
                  "--record: found \"" + record + "\", expected another file than the tape's");
    }
}

TEST(Options, TheSymbolFollowsTheLastColonThatIsNoDriveLetters) {
    const struct {
        const char *text, *file, *symbol;
    } cases[] = {{"a\\b.c/trades-2012.x.csv", "a\\b.c/trades-2012.x.csv", "trades-2012.x"},
                 {"a:b.csv:ABC", "a:b.csv", "ABC"},
                 {"C:trades.csv", "C:trades.csv", "trades"},
                 {"z:/trades.csv:A B", "z:/trades.csv", "A B"},
                 {"1:c", "1", "c"},
                 {"folder\\.hidden", "folder\\.hidden", ".hidden"},
                 {"folder/", "folder/", ""}};
    for (const auto& c : cases) {
        const TapeName name = splitTapeName(c.text);
        EXPECT_EQ(name.file, c.file) << c.text;
        EXPECT_EQ(name.symbol, c.symbol) << c.text;
    }
}

}  // namespace
