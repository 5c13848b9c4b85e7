#include "host/core/TapeRecorder.h"

#include "host/core/MarketText.h"
#include "host/core/TapeFormat.h"
#include "host/core/Utf8.h"

namespace terminal {
namespace {

constexpr std::size_t kWriteSize = 256 * 1024;

}  // namespace

TapeRecorder::TapeRecorder(const std::string& file) : m_fileName(file), m_file(openFile(file, "wb")) {
    m_buffer.assign(kQuorTapeHeader);
    m_buffer += '\n';
    if (!m_file) fail("cannot be opened for writing");
}

TapeRecorder::~TapeRecorder() { close(); }

void TapeRecorder::fail(const char* what) {
    m_error = m_fileName + " " + what;
    m_file.reset();
}

void TapeRecorder::flush() {
    if (!m_file || m_buffer.empty()) return;
    if (std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_file.get()) != m_buffer.size()) fail("cannot be written");
    m_buffer.clear();
}

bool TapeRecorder::close() {
    flush();
    if (m_file && std::fclose(m_file.release()) != 0) fail("cannot be written");
    return m_error.empty();
}

void TapeRecorder::instrument(const Instrument& news) { appendEvent(m_tick, news); }
void TapeRecorder::quote(const Quote& news) { appendEvent(m_tick, news); }
void TapeRecorder::order(const OrderEvent& news) { appendEvent(m_tick, news); }
void TapeRecorder::trade(const Trade& news) { appendEvent(m_tick, news); }
void TapeRecorder::level(const BookLevel& news) { appendEvent(m_tick, news); }

void TapeRecorder::tickEnd(MarketTime time) {
    if (m_file) {
        TextBuffer buffer;
        m_buffer += formatDateTime(time, buffer);
        m_buffer += m_tick;
        m_buffer += '\n';
        if (m_buffer.size() >= kWriteSize) flush();
    }
    m_tick.clear();
}

}  // namespace terminal
