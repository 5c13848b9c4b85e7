#include "host/core/Options.h"

#include "host/core/MarketText.h"
#include "host/core/Utf8.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

namespace terminal {
namespace {

constexpr double kLargestSpeed = 1'000'000;
constexpr int kHeadlessSeconds = 15;

std::string joined(const std::vector<std::string>& names, const char* between) {
    std::string all;
    for (const std::string& name : names) all += (all.empty() ? "" : between) + name;
    return all;
}

// Walks the arguments; the first mistake ends it.
class Parser {
public:
    Parser(int count, const char* const* arguments, const std::vector<std::string>& proofs)
        : m_count(count), m_arguments(arguments), m_proofs(proofs) {}

    ParsedOptions run() {
        while (m_next < m_count && m_parsed.error.empty()) takeArgument(m_arguments[m_next++]);
        const Options& o = m_parsed.options;
        if (!o.proof.empty() && !o.headless && !o.help) fail("--proof", o.proof, "--headless with it");
        return std::move(m_parsed);
    }

private:
    void takeArgument(std::string_view argument) {
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string_view::npos;
        m_hasInline = equals != std::string_view::npos;
        if (m_hasInline) m_inline = argument.substr(equals + 1);
        const std::string_view name = argument.substr(0, equals);
        takeOption(name);
        if (m_hasInline) fail(name, m_inline, "no value");  // nobody has asked for it
    }

    void takeOption(std::string_view name) {
        Options& o = m_parsed.options;
        if (name == "--headless")
            o.headless = true;
        else if (name == "--self-test-fault")
            o.selfTestFault = true;
        else if (name == "--help")
            o.help = true;
        else if (name == "--tape")
            o.tape = tape();
        else if (name == "--speed")
            o.speed = speed();
        else if (name == "--seconds")
            o.seconds = number(name, 1, 1'000'000);
        else if (name == "--out")
            o.outDirectory = text(name, "a directory");
        else if (name == "--seed")
            o.seed = seed();
        else if (name == "--instruments")
            o.instruments = number(name, 1, 1'000'000);
        else if (name == "--keep")
            o.keep = number(name, 1, 10'000'000);
        else if (name == "--proof")
            o.proof = proof();
        else if (name == "--record")
            o.recordFile = text(name, "a file");
        else
            m_parsed.error = "unknown option " + quoteForMessage(name) + "; --help lists them";
    }

    void fail(std::string_view name, std::string_view found, const std::string& expected) {
        if (m_parsed.error.empty())
            m_parsed.error = std::string(name) + ": found " + quoteForMessage(found) + ", expected " + expected;
    }

    // The option's value; an absent or empty one is a mistake, and one that is an option: a value was forgotten there.
    std::string text(std::string_view name, const std::string& expected) {
        if (m_next >= m_count && !m_hasInline) {
            m_parsed.error = std::string(name) + ": found nothing after it, expected " + expected;
            return {};
        }
        std::string value = m_hasInline ? std::string(m_inline) : m_arguments[m_next++];
        m_hasInline = false;
        if (value.empty() || value.starts_with("--")) fail(name, value, expected);
        return value;
    }

    int number(std::string_view name, std::uint64_t least, std::uint64_t most) {
        const std::string expected = "a whole number from " + std::to_string(least) + " to " + std::to_string(most);
        const std::string value = text(name, expected);
        const auto parsed = parseNumber(value, most);
        if (!parsed || *parsed < least) fail(name, value, expected);
        return static_cast<int>(parsed.value_or(least));
    }

    std::uint64_t seed() {
        const std::string expected = "a whole number from 0 to 18446744073709551615";
        const std::string value = text("--seed", expected);
        const auto parsed = parseNumber(value, ~std::uint64_t{0});
        if (!parsed) fail("--seed", value, expected);
        return parsed.value_or(0);
    }

    Speed speed() {
        const std::string expected = "a number above 0 and up to 1000000, or max";
        const std::string value = text("--speed", expected);
        if (value == "max") return {.max = true};
        Speed speed;
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), speed.factor);
        const bool whole = error == std::errc{} && end == value.data() + value.size();
        if (!whole || !(speed.factor > 0 && speed.factor <= kLargestSpeed)) fail("--speed", value, expected);
        return speed;
    }

    TapeName tape() {
        const std::string expected = "FILE or FILE:SYMBOL";
        const std::string value = text("--tape", expected);
        TapeName name = splitTapeName(value);
        if (name.file.empty() || name.symbol.empty()) fail("--tape", value, expected);
        return name;
    }

    std::string proof() {
        const std::string expected = joined(m_proofs, " or ");
        std::string value = text("--proof", expected);
        if (std::find(m_proofs.begin(), m_proofs.end(), value) == m_proofs.end()) fail("--proof", value, expected);
        return value;
    }

    int m_count;
    const char* const* m_arguments;
    const std::vector<std::string>& m_proofs;
    int m_next = 0;
    bool m_hasInline = false;  // the argument under way brought its value with it, and it is not yet taken
    std::string_view m_inline;
    ParsedOptions m_parsed;
};

bool isSlash(char c) { return c == '/' || c == '\\'; }

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

std::string stemOf(std::string_view file) {
    std::size_t begin = file.size();
    while (begin > 0 && !isSlash(file[begin - 1]) && file[begin - 1] != ':') --begin;
    const std::string_view name = file.substr(begin);
    const std::size_t dot = name.rfind('.');
    return std::string(dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot));
}

}  // namespace

TapeName splitTapeName(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const bool drive = colon == 1 && isLetter(text[0]);
    if (colon == std::string::npos || drive) return {text, stemOf(text)};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

std::optional<int> secondsToRun(const Options& options) {
    if (options.seconds || !options.headless) return options.seconds;
    return kHeadlessSeconds;
}

ParsedOptions parseOptions(int count, const char* const* arguments, const std::vector<std::string>& proofs) {
    return Parser(count, arguments, proofs).run();
}

std::string checkFiles(const Options& options) {
    if (!options.tape) return {};
    const std::string& record = options.recordFile;
    std::error_code none;  // files that are not there are no such case
    if (record == options.tape->file ||
        (!record.empty() && std::filesystem::equivalent(systemPath(record), systemPath(options.tape->file), none)))
        return "--record: found \"" + record + "\", expected another file than the tape's";
    return checkTape(*options.tape);
}

std::string usageText(const std::vector<std::string>& proofs) {
    return std::string(
               "Options of the demo terminal:\n"
               "  --tape FILE[:SYMBOL]  replay a tape; SYMBOL names its instrument (default: the file's stem)\n"
               "  --speed X|max         times as fast as it happened, or without waiting (default 1)\n"
               "  --seconds N           end after N seconds (default: none; 15 with --headless)\n"
               "  --headless            no window to be seen: pictures, a summary line and the self-check\n"
               "  --out DIR             where the pictures go (default out)\n"
               "  --seed N              of the simulated market (default 1)\n"
               "  --instruments N       of the simulated market (default 500)\n"
               "  --keep N              trades kept in the trades pane (default 100000)\n"
               "  --record FILE         write what happens as a tape\n"
               "  --proof NAME          with --headless: of what it proves at its end, this alone: ") +
           joined(proofs, ", ") +
           "\n"
           "  --self-test-fault     make the self-check find a fault\n"
           "  --help                this text\n";
}

}  // namespace terminal
