#include "host/TerminalRun.h"

#include <cstdio>

#include "host/HostEntries.h"
#include "host/LogPane.h"
#include "host/core/Simulator.h"
#include "host/core/Tape.h"
#include "host/core/WatchStore.h"
#include "platform/Framework.h"

namespace terminal {

namespace {
constexpr const char* settingsName = "terminal-settings.ini";
constexpr const char* proofName = "restart-settings.ini";
constexpr const char* logName = "terminal.log";

bool isFolder(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// Makes a folder and those above it. False: it is not there afterwards.
bool makeFolder(const std::string& path) {
    for (std::size_t at = path.find_first_of("/\\", 1); at != std::string::npos; at = path.find_first_of("/\\", at + 1))
        ::CreateDirectoryA(path.substr(0, at).c_str(), nullptr);
    ::CreateDirectoryA(path.c_str(), nullptr);
    return isFolder(path);
}
}  // namespace

TerminalRun::TerminalRun(const Options& given)
    : options(given),
      settings(disk, quor::pathOfNarrow(outPath(settingsName))),
      proofStore(disk, quor::pathOfNarrow(outPath(proofName))) {}

void TerminalRun::openProofStore() {
    std::remove(outPath(proofName).c_str());
    proofStore.load();
    writeFirstUserColumns(proofStore);
    useSettings(&proofStore);
}

bool TerminalRun::reopenProofStore() {
    const bool written = proofStore.save(quor::kReplacePatience);
    return proofStore.load() && written;
}

bool TerminalRun::saveStores() {
    if (recorder) recorder->close();
    if (settings.save(quor::kReplacePatience)) return true;
    Log::instance().add(settingsNotWritten);
    return false;
}

std::string TerminalRun::open() {
    if (options.tape)
        if (std::string message = checkTape(*options.tape); !message.empty()) return message;
    if (!makeFolder(options.outDirectory)) return options.outDirectory + ": this folder cannot be made";
    Log::instance().openFile(outPath(logName));
    if (!settings.load()) Log::instance().add("The settings could not be read; nothing will be saved in this run.");
    writeFirstUserColumns(settings);
    useSettings(&settings);
    if (!options.recordFile.empty()) {
        recorder = std::make_unique<TapeRecorder>(options.recordFile);
        if (!recorder->error().empty()) return recorder->error();
    }
    SimulatorSettings simulator;
    simulator.seed = options.seed;
    simulator.instruments = options.instruments;
    auto source = options.tape ? openTape(*options.tape) : makeSimulator(simulator);
    feed = std::make_unique<Feed>(std::move(source), options.speed, recorder.get());
    return {};
}

std::string TerminalRun::feedName() const {
    if (!options.tape) return "simulator, " + std::to_string(options.instruments) + " instruments";
    return options.tape->file;
}

}  // namespace terminal
