#include "host/TerminalRun.h"

#include <filesystem>
#include <system_error>

#include "host/HostEntries.h"
#include "host/LogPane.h"
#include "host/core/Simulator.h"
#include "host/core/Tape.h"
#include "host/core/Utf8.h"
#include "host/core/WatchStore.h"

namespace terminal {

namespace {
constexpr const char* settingsName = "terminal-settings.ini";
constexpr const char* proofName = "restart-settings.ini";
constexpr const char* logName = "terminal.log";

// Makes a folder and those above it. False: it is not there afterwards.
bool makeFolder(const std::string& path) {
    std::error_code none;  // a folder that is there already is told as one, too
    std::filesystem::create_directories(systemPath(path), none);
    return std::filesystem::is_directory(systemPath(path), none);
}
}  // namespace

TerminalRun::TerminalRun(const Options& given)
    : options(given), settings(disk, outPath(settingsName)), proofStore(disk, outPath(proofName)) {}

void TerminalRun::openProofStore() {
    std::error_code none;
    std::filesystem::remove(systemPath(outPath(proofName)), none);
    proofStore.load();
    writeFirstUserColumns(proofStore);
    useSettings(&proofStore);
}

bool TerminalRun::reopenProofStore() {
    const bool written = proofStore.save();
    return proofStore.load() && written;
}

std::string TerminalRun::open() {
    if (std::string message = checkFiles(options); !message.empty()) return message;
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
