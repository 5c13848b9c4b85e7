#include "host/core/Tape.h"

#include "host/core/LineReader.h"
#include "host/core/MarketText.h"
#include "host/core/TapeFormat.h"

namespace terminal {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // what some editors put before UTF-8

class Tape final : public TickSource {
public:
    explicit Tape(TapeName name) : m_name(std::move(name)), m_lines(m_name.file, kLongestTapeLine) {}

    Next next(Tick& tick) override {
        tick.time = 0;
        tick.events.clear();
        const Next result = m_lines.isOpen() ? read(tick) : fail("cannot be opened for reading");
        if (result != Next::tick) tick.events.clear();
        return result;
    }
    const std::string& error() const override { return m_error; }
    std::int64_t lineNumber() const { return m_lines.lineNumber(); }

private:
    Next read(Tick& tick) {
        std::string_view line;
        for (;;) {
            switch (m_lines.next(line)) {
                case LineReader::Next::line:
                    break;
                case LineReader::Next::end:
                    return m_format ? Next::end : fail("is empty; expected a tape");
                case LineReader::Next::failed:
                    return fail("cannot be read further");
                case LineReader::Next::tooLong:
                    return badLine({"line", line, "a line of at most 1048576 bytes"});
            }
            if (m_lines.lineNumber() == 1 && line.starts_with(kByteOrderMark))
                line.remove_prefix(kByteOrderMark.size());
            if (line.empty()) continue;
            if (!m_format) {
                const bool header = !looksLikeSnapshot(line);
                if (!recognise(line)) return Next::failed;
                if (header) continue;
            }
            LineFault fault;
            return m_format->parse(line, tick, fault) ? Next::tick : badLine(fault);
        }
    }

    bool recognise(std::string_view line) {
        if (line == kQuorTapeHeader)
            m_format = makeQuorTape();
        else if (line == kTradesTapeHeader)
            m_format = makeTradesTape(m_name.symbol);
        else if (looksLikeSnapshot(line))
            m_format = makeSnapshotTape(m_name.symbol);
        else
            badLine({"first line", line, "\"quor-tape 1\", \"Time,Price,Volume\" or a book snapshot of whole numbers"});
        return m_format != nullptr;
    }

    Next badLine(const LineFault& fault) {
        return fail("line " + std::to_string(m_lines.lineNumber()) + ": " + fault.what + ": found " +
                        quoteForMessage(fault.found) + ", expected " + fault.expected,
                    ": ");
    }
    Next fail(const std::string& what, const char* separator = " ") {
        m_error = m_name.file + separator + what;
        return Next::failed;
    }

    TapeName m_name;
    LineReader m_lines;
    std::unique_ptr<TapeFormat> m_format;  // null until the first line that is not empty
    std::string m_error;
};

}  // namespace

std::string_view takeField(std::string_view& rest, char separator, bool& more) {
    const std::size_t end = rest.find(separator);
    more = end != std::string_view::npos;
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(more ? end + 1 : rest.size());
    return field;
}

std::string checkTape(const TapeName& name) {
    Tape tape(name);
    Tick tick;
    while (tape.lineNumber() < kCheckedTapeLines) {
        const TickSource::Next next = tape.next(tick);
        if (next == TickSource::Next::failed && tape.lineNumber() <= kCheckedTapeLines) return tape.error();
        if (next != TickSource::Next::tick) break;
    }
    return {};
}

std::unique_ptr<TickSource> openTape(const TapeName& name) { return std::make_unique<Tape>(name); }

}  // namespace terminal
