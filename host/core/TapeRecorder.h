// Writes what a feed hands out as a tape of the project's own format. Replayed, it gives the same ticks.
#pragma once

#include "host/core/FeedSink.h"

#include <cstdio>
#include <memory>
#include <string>

namespace terminal {

class TapeRecorder final : public FeedSink {
public:
    // Creates `file`, named in UTF-8, anew and writes the header line. See error().
    explicit TapeRecorder(const std::string& file);
    ~TapeRecorder() override;  // closes, errors unseen: call close() to see them

    // Writes what is left and closes; true if all that was ever handed over is in the file. Further events are dropped.
    bool close();
    // "" while all is well, else the message with the file as given. After an error nothing more is written.
    const std::string& error() const { return m_error; }

    void instrument(const Instrument& news) override;
    void quote(const Quote& news) override;
    void order(const OrderEvent& news) override;
    void trade(const Trade& news) override;
    void level(const BookLevel& news) override;
    void tickEnd(MarketTime time) override;

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void flush();
    void fail(const char* what);

    std::string m_fileName;
    std::unique_ptr<std::FILE, CloseFile> m_file;
    std::string m_tick;    // the events of the tick under way
    std::string m_buffer;  // whole lines that wait to be written
    std::string m_error;
};

}  // namespace terminal
